#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>

namespace melovane::fuzz {

/// A folder for one file after the other, in memory where there is room: whether a disk keeps what
/// it was given is not the question here.
class Scratch
{
public:
    Scratch()
        : m_folder((QFileInfo(kMemory).isWritable() ? kMemory : QDir::tempPath()) +
                   QStringLiteral("/mlv-formats-XXXXXX"))
    {}

    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }

    [[nodiscard]] QString folder() const { return m_folder.path(); }

    /// \return full name of the file, which holds these bytes and nothing else
    [[nodiscard]] QString file(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qFatal("no place to write");
        }
        return file.fileName();
    }

    [[nodiscard]] QByteArray read(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    inline static const QString kMemory = QStringLiteral("/dev/shm");

    QTemporaryDir m_folder;
};

} // namespace melovane::fuzz
