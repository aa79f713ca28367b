#include "platform/linux/linux_tag_writer.h"
#include "platform/linux/tag_journal.h"
#include "platform/linux/tag_reader.h"
#include "raw_tag.h"
#include "support/as_nobody.h"
#include "support/mp3_maker.h"
#include "support/temp_folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

using namespace melovane;
using namespace melovane::demomusic;
using namespace melovane::linux_media;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

constexpr time_t kLongAgo = 1'000'000'000;

struct stat factsOf(const QString& path)
{
    struct stat facts = {};
    EXPECT_EQ(::lstat(QFile::encodeName(path).constData(), &facts), 0) << path.toStdString();
    return facts;
}

class TagWriterTest : public testing::Test
{
protected:
    /// A file of one second with a date of long ago.
    QString write(const QByteArray& tag, const QByteArray& tail = {})
    {
        return writeTo(u"music/x.mp3"_s, tag, tail);
    }

    QString writeTo(const QString& name, const QByteArray& tag, const QByteArray& tail = {})
    {
        const QString path = m_folder.write(name, tag + m_sound + tail);
        const timespec times[2] = {{kLongAgo, 0}, {kLongAgo, 123'456'789}};
        EXPECT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0), 0);
        return path;
    }

    TagWriting set(const QString& path, const TagChanges& changes)
    {
        const std::vector<TagWork> work = {{path, changes}};
        return m_writer.write(work).at(0);
    }

    TagWriting setTitle(const QString& path, const QString& title = u"New"_s)
    {
        return set(path, {.Titel = title});
    }

    QByteArray bytes(const QString& path) { return m_folder.read(path); }

    QString title(const QString& path) { return LinuxTagReader().read(path).tags.id3v2.Titel; }

    /// Names of all files below the folder that are no music.
    [[nodiscard]] QStringList leftovers() const
    {
        const auto hidden = QDir::Files | QDir::Hidden | QDir::System;
        QStringList names = QDir(m_folder.file(u"music"_s)).entryList({u".mlv-*"_s}, hidden);
        return names + QDir(m_folder.file(u"state"_s)).entryList(hidden);
    }

    TempFolder m_folder;
    QByteArray m_sound = constantStream(FrameFormat(), 40);
    QByteArray m_roomy = Id3v2Writer(3).text("TIT2", u"Old"_s).frame("PRIV", "x"_ba).tag(500);
    QByteArray m_tight = Id3v2Writer(3).text("TIT2", u"Old"_s).frame("PRIV", "x"_ba).tag();
    LinuxTagWriter m_writer{m_folder.file(u"state"_s)};
};

TEST_F(TagWriterTest, ATagThatFitsIsWrittenInPlaceAndNothingElseMoves)
{
    const QString path = write(m_roomy);
    const auto before = factsOf(path);
    const TagWriting result = setTitle(path);
    EXPECT_EQ(result.fault, TagWriteFault::None);
    EXPECT_TRUE(result.changed);
    const auto after = factsOf(path);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_size, before.st_size);
    EXPECT_EQ(after.st_mtim.tv_sec, kLongAgo);
    EXPECT_EQ(after.st_mtim.tv_nsec, 123'456'789);
    EXPECT_EQ(bytes(path).mid(m_roomy.size()), m_sound);
    EXPECT_EQ(title(path), u"New"_s);
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(TagWriterTest, ATagThatDoesNotFitMovesTheSoundByWholeBlocksAndLeavesRoom)
{
    for (const QByteArray& tag : {m_tight, QByteArray()}) {
        const QString path = write(tag);
        const auto before = factsOf(path);
        const TagWriting result = setTitle(path, QString(3200, u'n'));
        ASSERT_EQ(result.fault, TagWriteFault::None) << result.detail.toStdString();
        EXPECT_TRUE(result.changed);
        const QByteArray after = bytes(path);
        const RawTag found = rawTag(after);
        EXPECT_EQ((found.size - tag.size()) % 4096, 0);
        EXPECT_GE(found.rest.size(), 1024);
        EXPECT_EQ(after.mid(found.size), m_sound);
        EXPECT_EQ(factsOf(path).st_mtim.tv_nsec, before.st_mtim.tv_nsec);
        EXPECT_NE(factsOf(path).st_ino, before.st_ino) << "an open player keeps the old file";
        EXPECT_EQ(title(path), QString(3200, u'n'));
        EXPECT_EQ(leftovers(), QStringList());
    }
}

TEST_F(TagWriterTest, AFileThatHoldsAllOfItIsNotTouched)
{
    const QString path = write(m_tight);
    const auto before = factsOf(path);
    const TagWriting result = setTitle(path, u"Old"_s);
    EXPECT_EQ(result.fault, TagWriteFault::None);
    EXPECT_FALSE(result.changed);
    EXPECT_EQ(factsOf(path).st_ctim.tv_nsec, before.st_ctim.tv_nsec);
}

TEST_F(TagWriterTest, TheOldTagAtTheEndIsKeptInStepAndNeverAdded)
{
    const QByteArray privateBlock = "AUD" + QByteArray(43, 'p');
    const QByteArray oldTag = id3v1Tag({"Old", "A", "B", "1999", "c", 3, 17});
    for (const QByteArray& tag : {m_roomy, m_tight, QByteArray()}) {
        const QString path = write(tag, privateBlock + oldTag);
        const QString title = QString(2000, u'n');
        EXPECT_TRUE(setTitle(path, title).changed);
        const QByteArray tail = bytes(path).last(m_sound.size() + 46 + 128);
        EXPECT_EQ(tail.first(m_sound.size() + 46), m_sound + privateBlock);
        EXPECT_EQ(tail.last(128).first(33), "TAG" + QByteArray(30, 'n'));
        EXPECT_EQ(tail.last(95), oldTag.last(95));
    }
    const QString path = write(m_roomy);
    EXPECT_TRUE(setTitle(path).changed);
    EXPECT_TRUE(bytes(path).endsWith(m_sound));
}

TEST_F(TagWriterTest, OnlyTheOldTagIsWrittenWhenTheNewOneHoldsIt)
{
    const QString path = write(m_tight, id3v1Tag({"Other", "A", "B", "1999", "c", 3, 17}));
    EXPECT_TRUE(setTitle(path, u"Old"_s).changed);
    EXPECT_TRUE(bytes(path).startsWith(m_tight + m_sound));
    EXPECT_EQ(bytes(path).last(128).mid(3, 4), QByteArray("Old\0", 4));
}

TEST_F(TagWriterTest, RightsOwnerAndAttributesStay)
{
    // Older kernels keep no attributes of users in memory, where temporary folders may lie.
    const QTemporaryDir onDisc(QDir::currentPath() + u"/attributes-XXXXXX"_s);
    // Version 2: owner, user 33, group, mask and others, each with its rights and number.
    constexpr char kAccessList[] = "system.posix_acl_access";
    const QByteArray list = QByteArray::fromHex("02000000"
                                                "01000600ffffffff"
                                                "0200040021000000"
                                                "04000400ffffffff"
                                                "10000400ffffffff"
                                                "20000000ffffffff");
    for (const QByteArray& tag : {m_roomy, m_tight}) {
        const QString path = writeTo(onDisc.filePath(u"x.mp3"_s), tag);
        const QByteArray name = QFile::encodeName(path);
        ASSERT_EQ(::setxattr(name.constData(), "user.melovane.test", "value", 5, 0), 0);
        ASSERT_EQ(
            ::setxattr(name.constData(), kAccessList, list.constData(), size_t(list.size()), 0), 0);
        ASSERT_TRUE(::geteuid() != 0 || ::chown(name.constData(), 65534, 65534) == 0);
        ASSERT_EQ(::chmod(name.constData(), 0640), 0);
        const auto before = factsOf(path);

        EXPECT_TRUE(setTitle(path, QString(3000, u'n')).changed);

        const auto after = factsOf(path);
        EXPECT_EQ(after.st_mode, before.st_mode);
        EXPECT_EQ(after.st_uid, before.st_uid);
        EXPECT_EQ(after.st_gid, before.st_gid);
        char value[8] = {};
        EXPECT_EQ(::getxattr(name.constData(), "user.melovane.test", value, sizeof value), 5);
        QByteArray kept(list.size(), '\0');
        EXPECT_EQ(::getxattr(name.constData(), kAccessList, kept.data(), size_t(kept.size())),
                  list.size());
        EXPECT_EQ(kept.toHex(), list.toHex());
    }
}

TEST_F(TagWriterTest, AllNamesOfAFileShowTheNewTag)
{
    for (const QByteArray& tag : {m_roomy, m_tight}) {
        const QString path = write(tag);
        const QString other = m_folder.file(u"music/other.mp3"_s);
        QFile::remove(other);
        ASSERT_EQ(::link(QFile::encodeName(path).constData(), QFile::encodeName(other).constData()),
                  0);
        const auto before = factsOf(path);
        EXPECT_TRUE(setTitle(path, QString(3000, u'n')).changed);
        EXPECT_EQ(factsOf(path).st_ino, before.st_ino);
        EXPECT_EQ(factsOf(path).st_nlink, 2U);
        EXPECT_EQ(factsOf(path).st_mtim.tv_sec, kLongAgo);
        EXPECT_EQ(title(other), QString(3000, u'n'));
        EXPECT_TRUE(bytes(other).endsWith(m_sound));
        EXPECT_EQ(leftovers(), QStringList());
    }
}

TEST_F(TagWriterTest, ALinkStaysALinkAndItsFileIsWritten)
{
    const QString path = write(m_tight);
    const QString link = m_folder.file(u"link.mp3"_s);
    ASSERT_TRUE(QFile::link(u"music/x.mp3"_s, link));
    EXPECT_TRUE(setTitle(link).changed);
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(title(path), u"New"_s);
}

TEST_F(TagWriterTest, AFileOfAFolderThatNobodyMayWriteIsWrittenAnewInItsPlace)
{
    const QString path = write(m_tight);
    const QByteArray folder = QFile::encodeName(m_folder.file(u"music"_s));
    ASSERT_TRUE(AsNobody::give(QFile::encodeName(path)));
    ASSERT_TRUE(AsNobody::give(QFile::encodeName(m_folder.path())));
    ASSERT_EQ(::chmod(folder.constData(), 0555), 0);
    {
        const AsNobody nobody;
        const auto before = factsOf(path);
        const TagWriting result = setTitle(path, QString(3000, u'n'));
        EXPECT_EQ(result.detail, QString());
        EXPECT_TRUE(result.changed);
        EXPECT_EQ(factsOf(path).st_ino, before.st_ino);
        EXPECT_EQ(title(path), QString(3000, u'n'));
        EXPECT_TRUE(bytes(path).endsWith(m_sound));
    }
    ASSERT_EQ(::chmod(folder.constData(), 0755), 0);
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(TagWriterTest, AFileThatCannotBeRepairedKeepsNoOtherOneFromIt)
{
    const QString hopeless = writeTo(u"music/a.mp3"_s, m_tight);
    const QString torn = writeTo(u"music/b.mp3"_s, m_roomy);
    const QByteArray before = bytes(torn);
    const QByteArray after = before.left(2048).replace(100, 500, QByteArray(500, 'n'));
    const QByteArray folder = QFile::encodeName(m_folder.file(u"state"_s));
    {
        TagJournal journal(folder);
        const QByteArray copy = journal.pathForCopy();
        QFile cut(QFile::decodeName(copy));
        ASSERT_TRUE(cut.open(QIODevice::WriteOnly));
        journal.addRewrite(QFile::encodeName(hopeless), factsOf(hopeless), copy,
                           QByteArray(9000, 'x'), 10, {});
        journal.addOverwrite(QFile::encodeName(torn), factsOf(torn),
                             {{0, before.left(2048), after}});
        journal.sync();
        journal.keep();
    }
    QFile file(torn);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_EQ(file.write(after.left(512)), 512);
    file.close();
    ASSERT_NE(bytes(torn), before);
    LinuxTagWriter(m_folder.file(u"state"_s)).repair();
    EXPECT_EQ(bytes(torn), before);
}

TEST_F(TagWriterTest, WhatMayNotBeWrittenIsToldAndStays)
{
    const QString path = write(m_roomy);
    const QByteArray before = bytes(path);
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0444), 0);
    const TagWriting result = setTitle(path);
    EXPECT_EQ(result.fault, TagWriteFault::ReadOnly);
    EXPECT_EQ(result.detail, u"Permission denied"_s);
    EXPECT_FALSE(result.changed);
    EXPECT_EQ(bytes(path), before);

    EXPECT_EQ(setTitle(m_folder.file(u"music/none.mp3"_s)).fault, TagWriteFault::NotFound);
    EXPECT_EQ(setTitle(m_folder.file(u"music"_s)).fault, TagWriteFault::Failed);
    EXPECT_EQ(setTitle(QString()).fault, TagWriteFault::NotFound);
    const QString pipe = m_folder.file(u"music/pipe.mp3"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_EQ(setTitle(pipe).fault, TagWriteFault::Failed);
    ASSERT_TRUE(QFile::link(u"loop.mp3"_s, m_folder.file(u"music/loop.mp3"_s)));
    EXPECT_EQ(setTitle(m_folder.file(u"music/loop.mp3"_s)).fault, TagWriteFault::NotFound);
}

TEST_F(TagWriterTest, FilesThatLieAboutTheirTagsOrHaveNoSoundAreRefused)
{
    const auto faultOf = [this](const QByteArray& content) {
        const QString path = m_folder.write(u"music/odd.mp3"_s, content);
        const TagWriting result = setTitle(path);
        EXPECT_EQ(bytes(path), content);
        return result.fault;
    };
    const Id3v2Writer tag = Id3v2Writer(3).text("TIT2", u"Old"_s);
    EXPECT_EQ(faultOf({}), TagWriteFault::NoAudio);
    EXPECT_EQ(faultOf("ID3"), TagWriteFault::NoAudio);
    EXPECT_EQ(faultOf(tag.tag(50)), TagWriteFault::NoAudio);
    EXPECT_EQ(faultOf(QByteArray(5000, '\0')), TagWriteFault::NoAudio);
    EXPECT_EQ(faultOf("RIFF....WAVE" + m_sound), TagWriteFault::NoAudio);
    EXPECT_EQ(faultOf(tag.tagWithSize(100'000) + m_sound), TagWriteFault::TagSize);
    EXPECT_EQ(faultOf(tag.tagWithSize(2000) + QByteArray(m_sound).replace('\0', 'u')),
              TagWriteFault::NoAudio);
    QByteArray newer = tag.tag();
    newer[3] = 6;
    EXPECT_EQ(faultOf(newer + m_sound), TagWriteFault::TagSize);
    QByteArray many;
    for (int i = 0; i < 20; ++i) {
        many += tag.tag();
    }
    EXPECT_EQ(faultOf(many + m_sound), TagWriteFault::TagSize);
}

TEST_F(TagWriterTest, ZerosAndAnApeTagBehindTheTagStayWhereTheyStand)
{
    const QByteArray ape = "APETAGEX" +
                           QByteArray("\xD0\7\0\0\50\0\0\0\0\0\0\0\0\0\0\xA0\0\0\0\0\0\0\0\0", 24) +
                           QByteArray(40, 'a');
    for (const QByteArray& between : {QByteArray(3000, '\0'), ape, ape + QByteArray(7, '\0')}) {
        const QString path = write(m_tight + between);
        EXPECT_TRUE(setTitle(path).changed);
        EXPECT_EQ(bytes(path).mid(rawTag(bytes(path)).size), between + m_sound);
    }
}

TEST_F(TagWriterTest, AFailureConcernsOnlyItsOwnFile)
{
    std::vector<TagWork> work;
    for (int i = 0; i < 150; ++i) {
        const QString name = u"music/%1.mp3"_s.arg(i);
        const QByteArray tag = i % 3 == 0 ? m_tight : m_roomy;
        work.push_back({i % 10 == 7 ? m_folder.file(u"gone"_s) : writeTo(name, tag),
                        {.Titel = u"title %1 "_s.arg(i) + QString(40, u'n')}});
    }
    const auto results = m_writer.write(work);
    ASSERT_EQ(results.size(), work.size());
    for (size_t i = 0; i < work.size(); ++i) {
        const bool gone = i % 10 == 7;
        EXPECT_EQ(results[i].fault, gone ? TagWriteFault::NotFound : TagWriteFault::None) << i;
        EXPECT_EQ(results[i].changed, !gone) << i;
        if (!gone) {
            EXPECT_EQ(title(work[i].path), work[i].changes.Titel);
        }
    }
    EXPECT_EQ(leftovers(), QStringList());
}

TEST_F(TagWriterTest, TheSameFileTwiceInOneBatchHoldsTheLastChange)
{
    for (const QByteArray& tag : {m_roomy, m_tight}) {
        const QString path = write(tag);
        const QString link = m_folder.file(u"same.mp3"_s);
        QFile::remove(link);
        ASSERT_TRUE(QFile::link(path, link));
        const std::vector<TagWork> work = {{path, {.Titel = u"one"_s, .Album = u"album"_s}},
                                           {link, {.Titel = u"two"_s}},
                                           {path, {.Titel = u"three"_s}}};
        for (const TagWriting& result : m_writer.write(work)) {
            EXPECT_TRUE(result.changed);
        }
        EXPECT_EQ(title(path), u"three"_s);
        EXPECT_EQ(LinuxTagReader().read(path).tags.id3v2.Album, u"album"_s);
    }
}

TEST_F(TagWriterTest, NothingIsWrittenWhereNoJournalCanBeKept)
{
    const QString path = write(m_roomy);
    const QByteArray before = bytes(path);
    m_folder.write(u"state"_s, "a file in the way");
    EXPECT_NE(setTitle(path).fault, TagWriteFault::None);
    EXPECT_EQ(bytes(path), before);
}

TEST_F(TagWriterTest, NamesOfAnyBytesAndOfFullLengthAreWritten)
{
    const QByteArray folder = QFile::encodeName(m_folder.file(u"music"_s)) + '/';
    m_folder.write(u"music/.keep"_s, {});
    for (const QByteArray& name : {QByteArray(251, 'n') + ".mp3", QByteArray("\xFF\xFE.mp3")}) {
        const int file = ::open((folder + name).constData(), O_CREAT | O_WRONLY, 0600);
        ASSERT_GE(file, 0);
        const QByteArray content = m_tight + m_sound;
        ASSERT_EQ(::write(file, content.constData(), size_t(content.size())), content.size());
        ::close(file);
        QString path = m_folder.file(u"music/"_s);
        for (const char byte : name) {
            path += QChar(quint8(byte) < 0x80 ? quint8(byte) : 0xEF00 + quint8(byte));
        }
        EXPECT_TRUE(setTitle(path).changed);
        EXPECT_EQ(title(path), u"New"_s);
        EXPECT_EQ(::unlink((folder + name).constData()), 0);
    }
    EXPECT_EQ(leftovers(), QStringList());
}

} // namespace
