#pragma once

#include <QByteArray>
#include <QString>

/// Texts of the suite as names of the system and back.
///
/// A file name of Linux is any bytes but 0 and "/". Names are read as UTF-8; each byte that is not
/// part of valid UTF-8 becomes a letter of the private range U+EF80 to U+EFFF (0xEF00 plus the
/// byte), which survives databases, settings and playlists and turns into the byte again. A valid
/// name with a letter of that range is taken apart the same way, so every name comes back as it
/// was.
namespace melovane::linuxnames {

[[nodiscard]] QString decode(const QByteArray& name);
[[nodiscard]] QByteArray encode(const QString& name);

/// The bytes to hand to the system for a path of the suite. A backslash separates like "/", unless
/// the path exists as it stands. Empty for a path that no system call takes (empty, or with a zero
/// character).
[[nodiscard]] QByteArray systemPath(const QString& path);

} // namespace melovane::linuxnames
