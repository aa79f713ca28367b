#include "support/temp_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace melovane::test {

namespace {

/// Where folders of tests lie: in memory when the system has such a place, since tests write far
/// more often than a disk likes to be synced.
QString templateName()
{
    const QFileInfo memory(QStringLiteral("/dev/shm"));
    const QString room = memory.isWritable() ? memory.filePath() : QDir::tempPath();
    return room + QStringLiteral("/mlv-XXXXXX");
}

} // namespace

TempFolder::TempFolder()
    : m_folder(templateName())
{
    EXPECT_TRUE(m_folder.isValid());
}

QString TempFolder::file(const QString& name) const
{
    return QDir::isAbsolutePath(name) ? name : m_folder.filePath(name);
}

QString TempFolder::write(const QString& name, const QByteArray& bytes) const
{
    QFile out(file(name));
    QDir().mkpath(QFileInfo(out).path());
    EXPECT_TRUE(out.open(QIODevice::WriteOnly));
    EXPECT_EQ(out.write(bytes), bytes.size());
    return out.fileName();
}

QByteArray TempFolder::read(const QString& name) const
{
    QFile in(file(name));
    EXPECT_TRUE(in.open(QIODevice::ReadOnly)) << name.toStdString();
    return in.readAll();
}

} // namespace melovane::test
