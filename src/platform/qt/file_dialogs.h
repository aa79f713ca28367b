#pragma once

#include <QString>
#include <QStringList>

class QWidget;

namespace melovane {

/// File dialogs. Every window asks here, and none makes a dialog of its own.
///
/// A usual dialog, of the toolkit as of a desktop, opens the files of the folder that it shows, to
/// draw what they hold. The library lies in such folders, and closing any descriptor of a file
/// drops all locks that this process holds on it: the next program that opens the library would
/// take itself for the only one and cut off the memory that both share, which ends this one in the
/// middle of its work. These dialogs tell the kind of a file by its name alone.
///
/// `from` is the folder or the file that is proposed; the nearest folder above it that is there is
/// shown. Without a folder: that of the last answer, and the user's own before the first. A filter
/// reads "words (*.one *.two)"; empty: all files. The answer is empty when the user took
/// none.
[[nodiscard]] QString askFolder(QWidget* owner, const QString& title, const QString& from = {});
[[nodiscard]] QString
askFile(QWidget* owner, const QString& title, const QString& from, const QString& filter);
[[nodiscard]] QStringList
askFiles(QWidget* owner, const QString& title, const QString& from, const QString& filter);
/// Asks before it answers with a file that is there.
[[nodiscard]] QString
askSaveFile(QWidget* owner, const QString& title, const QString& from, const QString& filter);

} // namespace melovane
