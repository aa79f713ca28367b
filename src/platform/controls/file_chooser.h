#pragma once

#include <QString>
#include <QStringList>

namespace melovane {

/// What a file is asked for.
struct FileQuestion
{
    QString title;        ///< of the dialog
    QString start;        ///< folder in which it opens, or a suggested file
    QString kind;         ///< what the files are, in the user's words
    QStringList patterns; ///< of their names: "*.m3u"
};

/// Asks the user for files.
class FileChooser
{
public:
    virtual ~FileChooser() = default;

    /// Existing files, empty when the user did not choose.
    [[nodiscard]] virtual QStringList openFiles(const FileQuestion& question) = 0;

    /// A file to be written, empty when the user did not choose. Whether an existing one may be
    /// replaced was asked.
    [[nodiscard]] virtual QString saveFile(const FileQuestion& question) = 0;
};

} // namespace melovane
