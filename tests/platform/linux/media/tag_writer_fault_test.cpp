// Whatever operation on a file fails, whenever the program dies and whatever others do meanwhile:
// the audio file is wholly the old or wholly the new one.

#include "faulty_files.h"
#include "platform/linux/linux_tag_writer.h"
#include "support/mp3_maker.h"
#include "support/temp_folder.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>

namespace {

using namespace melovane;
using namespace melovane::demomusic;
using namespace melovane::linux_media;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;
namespace faulty = melovane::test::faultyfiles;

/// The three ways in which a file is written.
enum class Way
{
    InPlace,
    Copy,
    Anew,
};

const TagChanges kChanges{.Titel = u"New and much longer "_s + QString(1500, u'n'),
                          .Track = u"5"_s};

class FaultyTagWriting : public testing::TestWithParam<Way>
{
protected:
    void SetUp() override
    {
        makeFile();
        EXPECT_EQ(write().fault, TagWriteFault::None);
        m_new = bytes();
        ASSERT_NE(m_new, m_old);
    }

    void TearDown() override { faulty::disarm(); }

    void makeFile()
    {
        const bool hasRoom = GetParam() == Way::InPlace;
        m_old =
            Id3v2Writer(3).text("TIT2", u"Old"_s).frame("PRIV", "x"_ba).tag(hasRoom ? 6000 : 0) +
            constantStream(FrameFormat(), 40) + id3v1Tag({"Old", "A", "B", "1999", "c", 3, 17});
        QFile::remove(path());
        m_folder.write(u"music/x.mp3"_s, m_old);
        if (GetParam() == Way::Anew) {
            QFile::remove(m_folder.file(u"music/y"_s));
            EXPECT_EQ(::link(QFile::encodeName(path()).constData(),
                             QFile::encodeName(m_folder.file(u"music/y"_s)).constData()),
                      0);
        }
    }

    [[nodiscard]] QString path() const { return m_folder.file(u"music/x.mp3"_s); }

    [[nodiscard]] QByteArray bytes() const { return m_folder.read(u"music/x.mp3"_s); }

    TagWriting write()
    {
        const std::vector<TagWork> work = {{path(), kChanges}};
        return LinuxTagWriter(m_folder.file(u"state"_s)).write(work).at(0);
    }

    void repair() { LinuxTagWriter(m_folder.file(u"state"_s)).repair(); }

    [[nodiscard]] QStringList leftovers() const
    {
        const auto hidden = QDir::Files | QDir::Hidden | QDir::System;
        return QDir(m_folder.file(u"music"_s)).entryList({u".mlv-*"_s}, hidden) +
               QDir(m_folder.file(u"state"_s)).entryList(hidden);
    }

    TempFolder m_folder;
    QByteArray m_old;
    QByteArray m_new;
};

INSTANTIATE_TEST_SUITE_P(Each,
                         FaultyTagWriting,
                         testing::Values(Way::InPlace, Way::Copy, Way::Anew),
                         [](const auto& each) {
                             return each.param == Way::InPlace ? "InPlace"
                                    : each.param == Way::Copy  ? "Copy"
                                                               : "Anew";
                         });

TEST_P(FaultyTagWriting, AnOperationThatFailsLeavesTheOldFileAndIsToldOrDoesNotMatter)
{
    for (const int error : {EIO, ENOSPC, EACCES}) {
        int operations = 0;
        int told = 0;
        for (bool reached = true; reached;) {
            const int at = ++operations;
            SCOPED_TRACE("operation " + std::to_string(at) + ", error " + std::to_string(error));
            makeFile();
            faulty::arm(at, faulty::Kind::Fails, error);
            const TagWriting result = write();
            reached = faulty::disarm() >= at;
            if (result.fault == TagWriteFault::None) {
                EXPECT_TRUE(result.changed);
                EXPECT_EQ(bytes() == m_new, true);
            } else {
                ++told;
                EXPECT_FALSE(result.changed);
                EXPECT_EQ(bytes() == m_old, true);
            }
            repair();
            EXPECT_EQ(bytes() == (result.fault == TagWriteFault::None ? m_new : m_old), true);
            EXPECT_EQ(leftovers(), QStringList());
        }
        EXPECT_GT(operations, 15);
        EXPECT_GT(told, 10);
    }
}

TEST_P(FaultyTagWriting, AWriterThatDiesAtAnyOperationLeavesAFileThatTheNextOneMakesWhole)
{
    int operations = 0;
    int olds = 0;
    for (bool reached = true; reached;) {
        const int at = ++operations;
        SCOPED_TRACE("operation " + std::to_string(at));
        makeFile();
        faulty::arm(at, faulty::Kind::Dies, EIO);
        (void)write();
        reached = faulty::disarm() >= at;
        repair();
        const QByteArray now = bytes();
        EXPECT_TRUE(now == m_old || now == m_new);
        olds += now == m_old ? 1 : 0;
        EXPECT_EQ(leftovers(), QStringList());
    }
    EXPECT_GT(operations, 15);
    EXPECT_GT(olds, 10);
}

TEST_P(FaultyTagWriting, ARepairThatDiesIsFinishedByTheNext)
{
    for (int died = 1; died < 60; ++died) {
        int operations = 0;
        for (bool reached = true; reached;) {
            const int at = ++operations;
            SCOPED_TRACE("operations " + std::to_string(died) + " and " + std::to_string(at));
            makeFile();
            faulty::arm(died, faulty::Kind::Dies, EIO);
            (void)write();
            faulty::disarm();
            faulty::arm(at, faulty::Kind::Dies, EIO);
            repair();
            reached = faulty::disarm() >= at;
            repair();
            const QByteArray now = bytes();
            EXPECT_TRUE(now == m_old || now == m_new);
            EXPECT_EQ(leftovers(), QStringList());
        }
    }
}

TEST_P(FaultyTagWriting, AFileThatGrowsMeanwhileKeepsWhatItGrewBy)
{
    int operations = 0;
    int told = 0;
    for (bool reached = true; reached;) {
        const int at = ++operations;
        SCOPED_TRACE("operation " + std::to_string(at));
        makeFile();
        faulty::interrupt(at, [this] {
            QFile file(path());
            EXPECT_TRUE(file.open(QIODevice::Append) && file.write("more") == 4);
        });
        const TagWriting result = write();
        reached = faulty::disarm() >= at;
        const QByteArray now = bytes();
        if (result.fault != TagWriteFault::None) {
            ++told;
            EXPECT_EQ(result.fault, TagWriteFault::Changed);
            EXPECT_EQ(now == m_old + "more", true);
        } else {
            // Before it was opened there was no old tag at its end, behind its end all was done.
            EXPECT_TRUE(now.endsWith("more") || now == m_new);
            EXPECT_TRUE(now.startsWith(m_new.first(m_new.size() - 128)));
        }
        repair();
        EXPECT_EQ(bytes() == now, true);
        EXPECT_EQ(leftovers(), QStringList());
    }
    EXPECT_GT(told, 5);
}

TEST_P(FaultyTagWriting, AFileThatIsReplacedMeanwhileIsNeverMixedWithTheOldOne)
{
    const QByteArray other = Id3v2Writer(4).text("TIT2", u"Other"_s).tag(10) +
                             constantStream(FrameFormat{MpegVersion::V1, 192}, 30);
    int operations = 0;
    int told = 0;
    for (bool reached = true; reached;) {
        const int at = ++operations;
        SCOPED_TRACE("operation " + std::to_string(at));
        makeFile();
        faulty::interrupt(at, [&] {
            m_folder.write(u"music/other"_s, other);
            EXPECT_EQ(::rename(QFile::encodeName(m_folder.file(u"music/other"_s)).constData(),
                               QFile::encodeName(path()).constData()),
                      0);
        });
        const TagWriting result = write();
        reached = faulty::disarm() >= at;
        const QByteArray now = bytes();
        const bool written = now.contains("New and") && now.endsWith(other.last(5000));
        EXPECT_TRUE(now == other || now == m_new || written);
        told += result.fault == TagWriteFault::Changed ? 1 : 0;
        repair();
        EXPECT_EQ(bytes() == now, true);
        EXPECT_EQ(leftovers(), QStringList());
    }
    EXPECT_GT(told, 5);
}

TEST_P(FaultyTagWriting, AFileThatVanishesMeanwhileIsToldAndNotMadeAgain)
{
    int operations = 0;
    for (bool reached = true; reached;) {
        const int at = ++operations;
        SCOPED_TRACE("operation " + std::to_string(at));
        makeFile();
        faulty::interrupt(at, [this] { QFile::remove(path()); });
        const TagWriting result = write();
        reached = faulty::disarm() >= at;
        EXPECT_TRUE(result.fault == TagWriteFault::NotFound || result.changed);
        repair();
        EXPECT_EQ(leftovers(), QStringList());
    }
}

/// A writer that another program has changed the file behind: nothing of it is taken back.
TEST_P(FaultyTagWriting, WhatOthersWroteSinceADeathStays)
{
    makeFile();
    const QByteArray others = QByteArray(m_old).replace(0, 3, "ID4");
    int operations = 0;
    for (bool reached = true; reached;) {
        const int at = ++operations;
        SCOPED_TRACE("operation " + std::to_string(at));
        makeFile();
        faulty::arm(at, faulty::Kind::Dies, EIO);
        (void)write();
        reached = faulty::disarm() >= at;
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::ReadWrite) && file.write(others) == others.size() &&
                    file.resize(others.size()));
        file.close();
        repair();
        EXPECT_EQ(bytes() == others, true);
        EXPECT_EQ(leftovers(), QStringList());
    }
}

} // namespace
