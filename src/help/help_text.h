#pragma once

#include <QString>
#include <QStringView>

#include <functional>

namespace melovane::helptext {

/// Puts something in the place of each "{{name}}" of a page; what comes is HTML already.
[[nodiscard]] QString filled(const QString& page,
                             const std::function<QString(const QString& name)>& valueOf);

/// The caption of a control as a reader says it: without the mark of its letter and the dots of
/// its dialog.
[[nodiscard]] QString caption(QString text);

/// What a reader sees of a page, in one line.
[[nodiscard]] QString plain(QString html);

/// What stands between the first two tags of that name; empty without them.
[[nodiscard]] QString inside(const QString& html, QStringView tag);

/// Some words around the first place of `word` in a plain text; its beginning without the word.
[[nodiscard]] QString excerpt(const QString& text, const QString& word);

} // namespace melovane::helptext
