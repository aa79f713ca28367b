#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace melovane::test {

/// A folder of a test's own, gone with it.
class TempFolder
{
public:
    TempFolder();

    [[nodiscard]] QString path() const { return m_folder.path(); }

    /// Full path of a name in the folder; a full path stays as it is.
    [[nodiscard]] QString file(const QString& name) const;
    /// Writes a file, folders above it included, and returns its path.
    // NOLINTNEXTLINE(modernize-use-nodiscard): the file is the point, not its path.
    QString write(const QString& name, const QByteArray& bytes) const;
    [[nodiscard]] QByteArray read(const QString& name) const;

private:
    QTemporaryDir m_folder;
};

} // namespace melovane::test
