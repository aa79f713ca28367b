#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_file_lock.h"
#include "platform/linux/linux_files.h"
#include "support/temp_folder.h"

#include <QDir>
#include <QRandomGenerator>

#include <sys/stat.h>
#include <unistd.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class SettingsFile : public testing::Test
{
protected:
    [[nodiscard]] QString value(const QString& key) const
    {
        return profile.value(file, u"A"_s, key).value_or(u"(none)"_s);
    }

    bool write(const QString& key, const std::optional<QString>& text)
    {
        return profile.write(file, u"A"_s, key, text);
    }

    test::TempFolder folder;
    QString file = folder.file(u"melovane.ini"_s);
    LinuxFiles files;
    IniProfile profile{files};
};

TEST_F(SettingsFile, AMissingFileReadsAsEmptyAndTheFirstWriteMakesIt)
{
    EXPECT_EQ(value(u"k"_s), u"(none)"_s);
    EXPECT_EQ(profile.section(file, u"A"_s), QStringList());
    EXPECT_TRUE(write(u"k"_s, u"Müsik"_s));
    EXPECT_EQ(folder.read(file), u"[A]\nk=Müsik\n"_s.toUtf8());
}

TEST_F(SettingsFile, ReadingMakesNoFile)
{
    EXPECT_EQ(value(u"k"_s), u"(none)"_s);
    EXPECT_TRUE(files.names(folder.path()).isEmpty());
}

TEST_F(SettingsFile, SeveralChangesAreOneWriteAndAnUnusableOneKeepsNoOtherOut)
{
    folder.write(file, "[A]\nold=1\n");
    EXPECT_TRUE(
        profile.writeAll(file, {{u"A"_s, u"old"_s, std::nullopt}, {u"B"_s, u"new"_s, u"2"_s}}));
    EXPECT_EQ(folder.read(file), "[A]\n\n[B]\nnew=2\n");
    EXPECT_FALSE(profile.writeAll(file, {{u"B"_s, u"a=b"_s, u"x"_s}, {u"B"_s, u"k"_s, u"3"_s}}));
    EXPECT_EQ(folder.read(file), "[A]\n\n[B]\nnew=2\nk=3\n");
    EXPECT_FALSE(profile.writeAll(folder.path(), {{u"A"_s, u"k"_s, u"1"_s}}));
}

TEST_F(SettingsFile, ForeignKeysCommentsOrderAndLineEndsSurviveAWrite)
{
    folder.write(file,
                 "; comment\r\nfree text\r\n\r\n[Foreign]\r\nZ = \"1\"\nA=2\r\n[A]\r\nk=1\r\n");
    EXPECT_TRUE(write(u"k"_s, u"2"_s));
    EXPECT_TRUE(write(u"new"_s, u"3"_s));
    EXPECT_EQ(folder.read(file), "; comment\r\nfree text\r\n\r\n[Foreign]\r\nZ = \"1\"\nA=2\r\n"
                                 "[A]\r\nk=2\r\nnew=3\r\n");
}

TEST_F(SettingsFile, AByteOrderMarkSurvives)
{
    folder.write(file, "\xEF\xBB\xBF[A]\nk=1\n");
    EXPECT_EQ(value(u"k"_s), u"1"_s);
    EXPECT_TRUE(write(u"k"_s, u"2"_s));
    EXPECT_EQ(folder.read(file), "\xEF\xBB\xBF[A]\nk=2\n");
}

TEST_F(SettingsFile, OldEncodingsAreReadAndWrittenAsUtf8)
{
    folder.write(file, "[A]\nk=M\xFCsik \x80\n");
    EXPECT_EQ(value(u"k"_s), u"Müsik €"_s);
    EXPECT_TRUE(write(u"n"_s, u"1"_s));
    EXPECT_EQ(folder.read(file), u"[A]\nk=Müsik €\nn=1\n"_s.toUtf8());
    folder.write(file, QByteArray("\xFF\xFE[\0A\0]\0\n\0k\0=\0\xFC\0", 16));
    EXPECT_EQ(value(u"k"_s), u"ü"_s);
    EXPECT_TRUE(write(u"k"_s, u"ö"_s));
    EXPECT_EQ(folder.read(file), "\xEF\xBB\xBF" + u"[A]\nk=ö"_s.toUtf8());
}

TEST_F(SettingsFile, OneLineOfAnOldProgramDoesNotTurnTheUmlautsOfOthers)
{
    folder.write(file, u"[A]\nnew=Müsik\n"_s.toUtf8() + "old=M\xFCsik\n");
    EXPECT_EQ(value(u"new"_s), u"Müsik"_s);
    EXPECT_EQ(value(u"old"_s), u"Müsik"_s);
}

TEST_F(SettingsFile, ASiblingsChangeIsSeenAtOnce)
{
    IniProfile sibling(files);
    for (int i = 0; i < 50; ++i) {
        const QString text = QString::number(i % 10);
        EXPECT_TRUE(sibling.write(file, u"A"_s, u"k"_s, text));
        EXPECT_EQ(value(u"k"_s), text);
        // An editor that writes in place, same size, same moment.
        folder.write(file, "[A]\nk=x\n");
        EXPECT_EQ(value(u"k"_s), u"x"_s);
    }
}

TEST_F(SettingsFile, AnOldFileIsSeenToChangeToo)
{
    folder.write(file, "[A]\nk=1\n");
    const QDateTime old(QDate(2020, 1, 1), QTime(0, 0));
    ASSERT_TRUE(files.setModified(file, old));
    EXPECT_EQ(value(u"k"_s), u"1"_s);
    folder.write(file, "[A]\nk=2\n");
    ASSERT_TRUE(files.setModified(file, old));
    EXPECT_EQ(value(u"k"_s), u"2"_s);
    ASSERT_TRUE(files.remove(file));
    EXPECT_EQ(value(u"k"_s), u"(none)"_s);
}

TEST_F(SettingsFile, TheSameValueAgainLeavesTheFileAlone)
{
    EXPECT_TRUE(write(u"k"_s, u"1"_s));
    const auto before = files.facts(file);
    EXPECT_TRUE(write(u"k"_s, u"1"_s));
    EXPECT_TRUE(write(u"missing"_s, std::nullopt));
    EXPECT_EQ(files.facts(file)->inode, before->inode);
}

TEST_F(SettingsFile, ModeAndLinkOfTheFileSurvive)
{
    folder.write(u"real/settings.ini"_s, "[A]\nk=1\n");
    ASSERT_EQ(::chmod(folder.file(u"real/settings.ini"_s).toUtf8().constData(), 0640), 0);
    ASSERT_EQ(::symlink("real/settings.ini", file.toUtf8().constData()), 0);
    EXPECT_TRUE(write(u"k"_s, u"2"_s));
    EXPECT_EQ(folder.read(u"real/settings.ini"_s), "[A]\nk=2\n");
    struct stat facts = {};
    ASSERT_EQ(::stat(file.toUtf8().constData(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777U, 0640U);
    EXPECT_TRUE(files.fileExists(folder.file(u"real/settings.ini.lock"_s)));
}

TEST_F(SettingsFile, AWriteToAReadOnlyFileFailsWithoutAWord)
{
    folder.write(file, "[A]\nk=1\n");
    ASSERT_EQ(::chmod(file.toUtf8().constData(), 0444), 0);
    EXPECT_FALSE(write(u"k"_s, u"2"_s));
    EXPECT_EQ(folder.read(file), "[A]\nk=1\n");
}

TEST_F(SettingsFile, AFolderInItsPlaceReadsAsEmptyAndStays)
{
    ASSERT_TRUE(files.makeFolder(file));
    EXPECT_EQ(value(u"k"_s), u"(none)"_s);
    EXPECT_FALSE(write(u"k"_s, u"1"_s));
    EXPECT_TRUE(files.folderExists(file));
    EXPECT_FALSE(profile.write(folder.file(u"missing/x.ini"_s), u"A"_s, u"k"_s, u"1"_s));
    EXPECT_TRUE(profile.unwritten().contains(folder.file(u"missing/x.ini"_s)));
    EXPECT_FALSE(profile.write(QString(), u"A"_s, u"k"_s, u"1"_s));
}

TEST_F(SettingsFile, AFileWithoutANameLeavesNothingInTheFolderThatTheProgramStandsIn)
{
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(folder.path()));
    EXPECT_FALSE(profile.write(QString(), u"A"_s, u"k"_s, u"1"_s));
    EXPECT_TRUE(QDir::setCurrent(before));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList());
}

TEST_F(SettingsFile, RandomBytesAreReadWithoutHarmAndNotChanged)
{
    QRandomGenerator random(3);
    for (int round = 0; round < 50; ++round) {
        QByteArray bytes;
        for (int i = 0; i < 4000; ++i) {
            bytes += char(random.bounded(256));
        }
        folder.write(file, bytes);
        EXPECT_EQ(value(u"k"_s), u"(none)"_s);
        EXPECT_EQ(folder.read(file), bytes);
        EXPECT_TRUE(write(u"k"_s, u"1"_s));
        EXPECT_EQ(value(u"k"_s), u"1"_s);
    }
}

TEST_F(SettingsFile, AFileOf100MegabytesReadsAsEmptyAndIsNotChanged)
{
    folder.write(file, "[A]\nk=1\n");
    constexpr qint64 size = 100LL * 1024 * 1024;
    ASSERT_EQ(::truncate(file.toUtf8().constData(), size), 0);
    EXPECT_EQ(value(u"k"_s), u"(none)"_s);
    EXPECT_FALSE(write(u"k"_s, u"2"_s));
    EXPECT_EQ(files.facts(file)->size, size);
}

TEST_F(SettingsFile, AHeldLockStopsAWriteAndLosesNothing)
{
    EXPECT_TRUE(write(u"k"_s, u"1"_s));
    IniProfile hasty(files, std::chrono::milliseconds(20));
    auto lock = lockFile(file + u".lock"_s, std::chrono::milliseconds(0));
    ASSERT_NE(lock, nullptr);
    EXPECT_FALSE(hasty.write(file, u"A"_s, u"k"_s, u"2"_s));
    EXPECT_FALSE(hasty.replace(file, folder.write(u"other"_s, "x")));
    EXPECT_EQ(value(u"k"_s), u"1"_s);
    lock.reset();
    EXPECT_TRUE(hasty.write(file, u"A"_s, u"k"_s, u"2"_s));
}

TEST_F(SettingsFile, ReplaceTakesTheWholeContentOfAnotherFile)
{
    folder.write(file, "[A]\nk=1\n");
    const QString other = folder.write(u"~melovane.ini"_s, "[A]\r\nk=2\r\n");
    EXPECT_EQ(value(u"k"_s), u"1"_s);
    EXPECT_TRUE(profile.replace(file, other));
    EXPECT_EQ(folder.read(file), "[A]\r\nk=2\r\n");
    EXPECT_EQ(value(u"k"_s), u"2"_s);
    EXPECT_FALSE(profile.replace(file, folder.file(u"missing"_s)));
    EXPECT_EQ(value(u"k"_s), u"2"_s);
}

/// Files on which nothing can be written.
class FullDisk : public LinuxFiles
{
public:
    void writeWhole(const QString& path, const QByteArray&) override
    {
        throw IoError(path, u"no space left"_s);
    }
};

TEST_F(SettingsFile, AFullDiskLeavesTheFileAsItWas)
{
    folder.write(file, "[A]\nk=1\n");
    FullDisk full;
    IniProfile other(full);
    EXPECT_FALSE(other.write(file, u"A"_s, u"k"_s, u"2"_s));
    EXPECT_EQ(folder.read(file), "[A]\nk=1\n");
}

} // namespace
} // namespace melovane
