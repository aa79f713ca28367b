#include "fuzz/formats/formats.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include <gtest/gtest.h>

namespace melovane::fuzz {
namespace {

using namespace Qt::Literals::StringLiterals;

QDir corpusOf(const char* name)
{
    return QDir(QString::fromUtf8(MLV_CORPUS_FOLDER) + u'/' + QString::fromLatin1(name));
}

std::vector<Format> formats()
{
    return {changeDir(), disc(),        dragText(),    entryTexts(),    layout(),   messagePacket(),
            mounts(),    sampleState(), schemaTexts(), searchHistory(), settings(), snapshot(),
            sound(),     tags(),        tagSplice(),   theme(),         treeKey(),  undoStep()};
}

class FormatReplay : public testing::TestWithParam<Format>
{};

TEST_P(FormatReplay, NoKeptInputBreaksTheReader)
{
    const QDir folder = corpusOf(GetParam().name);
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    EXPECT_GT(names.size(), 0);
    EXPECT_LT(names.size(), 200);
    for (const QString& name : names) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(GetParam().check(file.readAll()).toStdString(), "") << name.toStdString();
    }
}

TEST_P(FormatReplay, WhatItsOwnWriterMakesIsRead)
{
    const std::vector<QByteArray> seeds = GetParam().seeds();
    EXPECT_FALSE(seeds.empty());
    for (const QByteArray& bytes : seeds) {
        EXPECT_EQ(GetParam().check(bytes).toStdString(), "") << bytes.toHex().toStdString();
    }
}

/// A file that broke off, or of which a byte fell over: what every disk does one day.
TEST_P(FormatReplay, NoDamageOfWhatItsWriterMakesBreaksTheReader)
{
    for (const QByteArray& bytes : GetParam().seeds()) {
        const qsizetype step = qMax<qsizetype>(1, bytes.size() / 200);
        for (qsizetype at = 0; at < bytes.size(); at += step) {
            EXPECT_EQ(GetParam().check(bytes.left(at)).toStdString(), "") << at;
            QByteArray damaged = bytes;
            damaged[at] = char(damaged[at] ^ 0x81);
            EXPECT_EQ(GetParam().check(damaged).toStdString(), "") << at;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Each, FormatReplay, testing::ValuesIn(formats()), [](const auto& each) {
    return std::string(each.param.name);
});

TEST(FormatReplayTest, EveryFolderOfKeptInputsIsReplayed)
{
    // These three have a program of their own.
    QSet<QString> known{u"dialect"_s, u"m3u"_s, u"template"_s};
    for (const Format& format : formats()) {
        known.insert(QString::fromLatin1(format.name));
    }
    const QStringList folders =
        QDir(QString::fromUtf8(MLV_CORPUS_FOLDER)).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    EXPECT_EQ(QSet<QString>(folders.begin(), folders.end()), known);
}

} // namespace
} // namespace melovane::fuzz
