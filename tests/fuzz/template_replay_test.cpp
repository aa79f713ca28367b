#include "fuzz/template_check.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

TEST(TemplateReplay, NoKeptInputLeavesTheTargetFolder)
{
    const QDir folder(QString::fromUtf8(MLV_CORPUS_FOLDER) + u"/template"_s);
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    EXPECT_GT(names.size(), 15);
    EXPECT_LT(names.size(), 200);
    for (const QString& name : names) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(checkTemplate(file.readAll()).toStdString(), "") << name.toStdString();
    }
}

} // namespace

} // namespace melovane::fuzz
