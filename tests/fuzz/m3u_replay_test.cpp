#include "fuzz/m3u_check.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace melovane::fuzz {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(M3uReplay, NoKeptListBreaksTheReader)
{
    M3uCheck check;
    const QDir folder(QString::fromUtf8(MLV_CORPUS_FOLDER) + u"/m3u"_s);
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    EXPECT_GT(names.size(), 10);
    EXPECT_LT(names.size(), 200);
    for (const QString& name : names) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        EXPECT_EQ(M3uCheck::checkText(bytes).toStdString(), "") << name.toStdString();
        EXPECT_EQ(check.checkImport(bytes).toStdString(), "") << name.toStdString();
    }
    EXPECT_GT(check.entries(), 0);
    EXPECT_GT(check.failures(), 0);
}

} // namespace
} // namespace melovane::fuzz
