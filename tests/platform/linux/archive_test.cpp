#include "platform/linux/zstd_archive.h"
#include "support/temp_folder.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

namespace {

bool goOn(qint64)
{
    return true;
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class Archive : public testing::Test
{
protected:
    Archive()
    {
        QRandomGenerator random(7);
        m_large.resize(3'000'001);
        for (char& byte : m_large) {
            byte = static_cast<char>(random.bounded(16));
        }
    }

    /// The facts, a large file, an empty one and one of a whole block.
    void write()
    {
        ASSERT_TRUE(m_archives.write(m_archive,
                                     {{.name = u"facts"_s, .bytes = "Anlass=täglich\n"},
                                      {.name = u"large"_s, .file = make(u"large"_s, m_large)},
                                      {.name = u"empty"_s, .file = make(u"empty"_s, {})},
                                      {.name = u"block"_s, .bytes = QByteArray(512, 'x')}},
                                     goOn));
    }

    [[nodiscard]] bool unpack()
    {
        QDir(folder.path()).mkdir(u"out"_s);
        return m_archives.unpack(
            m_archive, [this](const QString& name) { return out(name); }, goOn);
    }

    [[nodiscard]] QString out(const QString& name) const
    {
        return folder.path() + u"/out/"_s + name;
    }

    [[nodiscard]] QString make(const QString& name, const QByteArray& bytes) const
    {
        QFile file(folder.path() + u'/' + name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }

    void replace(const QByteArray& bytes) const
    {
        QFile file(m_archive);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
    }

    test::TempFolder folder;
    ZstdArchives m_archives;
    QString m_archive = folder.path() + u"/archive"_s;
    QByteArray m_large;
};

} // namespace

TEST_F(Archive, WhatWasPackedComesBackByteByByte)
{
    write();
    ASSERT_TRUE(unpack());
    EXPECT_EQ(contentOf(out(u"facts"_s)), "Anlass=täglich\n");
    EXPECT_TRUE(contentOf(out(u"large"_s)) == m_large);
    EXPECT_TRUE(QFile::exists(out(u"empty"_s)));
    EXPECT_EQ(QFile(out(u"empty"_s)).size(), 0);
    EXPECT_EQ(contentOf(out(u"block"_s)), QByteArray(512, 'x'));
    EXPECT_LT(QFile(m_archive).size(), m_large.size() * 7 / 10);
}

TEST_F(Archive, TheFirstMemberIsReadWithoutTheOthers)
{
    write();
    const QByteArray bytes = contentOf(m_archive);
    replace(bytes.left(400));
    EXPECT_EQ(m_archives.first(m_archive), "Anlass=täglich\n");
}

TEST_F(Archive, OneThatIsThereIsNotReplaced)
{
    write();
    const QByteArray bytes = contentOf(m_archive);
    EXPECT_THROW(write(), IoError);
    EXPECT_TRUE(contentOf(m_archive) == bytes);
}

TEST_F(Archive, EveryCutIsTold)
{
    write();
    const QByteArray bytes = contentOf(m_archive);
    for (int part = 0; part < 40; ++part) {
        replace(bytes.left(bytes.size() * part / 40));
        EXPECT_THROW((void)m_archives.unpack(
                         m_archive, [](const QString&) { return QString(); }, goOn),
                     IoError)
            << part;
    }
    replace(bytes.chopped(1));
    EXPECT_THROW((void)m_archives.unpack(
                     m_archive, [](const QString&) { return QString(); }, goOn),
                 IoError);
}

TEST_F(Archive, EveryChangedByteIsTold)
{
    write();
    const QByteArray bytes = contentOf(m_archive);
    QRandomGenerator random(11);
    for (int round = 0; round < 60; ++round) {
        QByteArray other = bytes;
        const qsizetype at = random.bounded(int(bytes.size()));
        other[at] = static_cast<char>(other[at] ^ (1 << random.bounded(8)));
        replace(other);
        EXPECT_THROW((void)m_archives.unpack(
                         m_archive, [](const QString&) { return QString(); }, goOn),
                     IoError)
            << at;
    }
}

TEST_F(Archive, OneThatIsGivenUpLeavesNoFile)
{
    int calls = 0;
    EXPECT_FALSE(m_archives.write(m_archive, {{.name = u"large"_s, .bytes = m_large}},
                                  [&calls](qint64) { return ++calls < 1; }));
    EXPECT_FALSE(QFile::exists(m_archive));
}

TEST_F(Archive, AMissingFileLeavesNoArchive)
{
    EXPECT_THROW((void)m_archives.write(
                     m_archive, {{.name = u"x"_s, .file = folder.path() + u"/gone"_s}}, goOn),
                 IoError);
    EXPECT_FALSE(QFile::exists(m_archive));
}
