#pragma once

#include <QString>

#include <string_view>

namespace melovane {

/// The text of the bytes in which a file keeps it, see WalkedRow::bytes: UTF-8, in which a
/// surrogate without its partner stands as its three bytes. Other bytes that are no UTF-8 read as
/// U+FFFD.
[[nodiscard]] QString keptText(std::string_view bytes);

/// Appends that text, without a copy of it while its letters lie below U+0800 and room for as many
/// as there are bytes was reserved before.
void appendKept(QString& to, std::string_view bytes);

} // namespace melovane
