#include "support/temp_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace melovane::test {

TempFolder::TempFolder()
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
