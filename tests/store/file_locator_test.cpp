#include "platform/linux/linux_files.h"
#include "store/file_locator.h"
#include "support/temp_folder.h"

#include <QDir>
#include <QRandomGenerator>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

namespace {

/// Two folders with music, and a data folder whose ChangeDir.conf each test writes.
class ExistFile : public testing::Test
{
protected:
    ExistFile() { QDir().mkpath(dataFolder()); }

    [[nodiscard]] QString dataFolder() const { return m_folder.file(u"data"_s); }

    [[nodiscard]] QString music(const QString& name) const { return m_folder.file(name); }

    void mappings(const QByteArray& bytes) { m_folder.write(u"data/ChangeDir.conf"_s, bytes); }

    void track(const QString& name) { m_folder.write(name, "x"); }

    /// Looks a track up with a locator of its own; the folder comes back in m_path.
    QString find(const QString& path, const QString& name)
    {
        m_path = path;
        return FileLocator(m_files, dataFolder()).ExistFile(m_path, name);
    }

    test::TempFolder m_folder;
    LinuxFiles m_files;
    QString m_path;
};

} // namespace

TEST_F(ExistFile, AFileInItsStoredFolderIsFoundThereAndTheFolderStays)
{
    track(u"new/a.mp3"_s);
    EXPECT_EQ(find(music(u"new/"_s), u" a.mp3 "_s), music(u"new/a.mp3"_s));
    EXPECT_EQ(m_path, music(u"new/"_s));
}

TEST_F(ExistFile, AFolderWithoutItsClosingSeparatorIsJoinedWithOne)
{
    track(u"new/a.mp3"_s);
    EXPECT_EQ(find(music(u"new"_s), u"a.mp3"_s), music(u"new/a.mp3"_s));
}

TEST_F(ExistFile, WithoutMappingsAMissingFileGivesFolderAndNameAsStored)
{
    EXPECT_EQ(find(u"C:\\Music\\"_s, u"a.mp3"_s), u"C:\\Music\\a.mp3"_s);
    EXPECT_EQ(m_path, u"C:\\Music\\"_s);
}

TEST_F(ExistFile, AMappingLeadsToTheNewFolderAndChangesThePathArgument)
{
    track(u"new/Rock/a.mp3"_s);
    mappings(QByteArray("C:\\Music ?? ") + music(u"new"_s).toUtf8());
    EXPECT_EQ(find(u"C:\\Music\\Rock\\"_s, u"a.mp3"_s), music(u"new/Rock/a.mp3"_s));
    EXPECT_EQ(m_path, music(u"new/Rock/"_s));
}

TEST_F(ExistFile, AMappingWithoutTheFileGivesFolderAndNameAsStored)
{
    track(u"new/other.mp3"_s);
    mappings(QByteArray("C:\\Music ?? ") + music(u"new"_s).toUtf8());
    EXPECT_EQ(find(u"C:\\Music\\"_s, u"a.mp3"_s), u"C:\\Music\\a.mp3"_s);
    EXPECT_EQ(m_path, u"C:\\Music\\"_s);
}

TEST_F(ExistFile, OfTwoMatchingMappingsTheFirstInTheFileThatHitsWins)
{
    track(u"first/a.mp3"_s);
    track(u"second/a.mp3"_s);
    track(u"second/b.mp3"_s);
    mappings(QByteArray("C:\\Music ?? ") + music(u"first"_s).toUtf8() + "\nC:\\Music ?? " +
             music(u"second"_s).toUtf8() + "\n");
    EXPECT_EQ(find(u"C:\\Music\\"_s, u"a.mp3"_s), music(u"first/a.mp3"_s));
    EXPECT_EQ(find(u"C:\\Music\\"_s, u"b.mp3"_s), music(u"second/b.mp3"_s));
}

TEST_F(ExistFile, AMappingWithThreePiecesIsIgnored)
{
    track(u"new/a.mp3"_s);
    mappings(QByteArray("C:\\Music ?? ") + music(u"new"_s).toUtf8() + " ?? x");
    EXPECT_EQ(find(u"C:\\Music\\"_s, u"a.mp3"_s), u"C:\\Music\\a.mp3"_s);
}

TEST_F(ExistFile, AMappingWhoseTargetIsNoFolderIsIgnored)
{
    track(u"new/a.mp3"_s);
    mappings(QByteArray("C:\\Music ?? ") + music(u"new/a.mp3"_s).toUtf8() + "\nC:\\Music ?? " +
             music(u"gone"_s).toUtf8() + "\n");
    EXPECT_EQ(find(u"C:\\Music\\"_s, u"a.mp3"_s), u"C:\\Music\\a.mp3"_s);
}

TEST_F(ExistFile, TheNewFolderIsFoundWithoutRegardToLetterCase)
{
    track(u"New/a.mp3"_s);
    mappings(QByteArray("C:\\Music ?? ") + music(u"nEW"_s).toUtf8());
    EXPECT_EQ(find(u"C:\\Music\\"_s, u"a.mp3"_s), music(u"New/a.mp3"_s));
}

TEST_F(ExistFile, AFileSpelledInOtherLetterCaseIsFoundAsTheDiskSpellsIt)
{
    track(u"new/Rock/A.MP3"_s);
    EXPECT_EQ(find(music(u"new/rock/"_s), u"a.mp3"_s), music(u"new/Rock/A.MP3"_s));
    mappings(QByteArray("C:\\Music ?? ") + music(u"new"_s).toUtf8());
    EXPECT_EQ(find(u"C:\\MUSIC\\ROCK\\"_s, u"a.mp3"_s), music(u"new/Rock/A.MP3"_s));
    EXPECT_EQ(m_path, music(u"new/Rock/"_s));
}

TEST_F(ExistFile, AFileInOtherUnicodeFormIsFound)
{
    track(u"new/Mu\u0308sik.mp3"_s);
    EXPECT_EQ(find(music(u"new/"_s), u"M\u00FCsik.mp3"_s), music(u"new/Mu\u0308sik.mp3"_s));
}

TEST_F(ExistFile, AFolderOfTheTracksNameIsNotTheTrack)
{
    QDir().mkpath(music(u"new/a.mp3"_s));
    EXPECT_EQ(find(music(u"new/"_s), u"a.mp3"_s), music(u"new/a.mp3"_s));
    EXPECT_FALSE(m_files.fileExists(music(u"new/a.mp3"_s)));
}

TEST_F(ExistFile, TheMappingsAreReadOnceAtTheFirstNeed)
{
    track(u"new/a.mp3"_s);
    FileLocator locator(m_files, dataFolder());
    QString path = u"C:\\Music\\"_s;
    EXPECT_EQ(locator.ExistFile(path, u"a.mp3"_s), u"C:\\Music\\a.mp3"_s);
    mappings(QByteArray("C:\\Music ?? ") + music(u"new"_s).toUtf8());
    EXPECT_EQ(locator.ExistFile(path, u"a.mp3"_s), u"C:\\Music\\a.mp3"_s);
}

TEST_F(ExistFile, HostileNamesAndFoldersComeBackAsStored)
{
    for (const QString& hostile :
         {u"'; drop table x; --.mp3"_s, u"[a*?].mp3"_s, u"line\nfeed.mp3"_s, QString(10000, u'a'),
          QString(u"zero\0x"_s), u"..\\..\\etc"_s}) {
        EXPECT_EQ(find(u"C:\\M\\"_s, hostile), u"C:\\M\\"_s + hostile);
    }
    EXPECT_EQ(find(u""_s, u""_s), u""_s);
}

namespace {

struct HostileMappings
{
    const char* name;
    QByteArray bytes;
};

QByteArray randomBytes(int size)
{
    QRandomGenerator generator(42);
    QByteArray bytes(size, '\0');
    for (char& byte : bytes) {
        byte = char(generator.bounded(256));
    }
    return bytes;
}

class HostileChangeDir : public ExistFile, public testing::WithParamInterface<HostileMappings>
{};

} // namespace

TEST_P(HostileChangeDir, GivesNoMappingsAndIsLeftAsItIs)
{
    mappings(GetParam().bytes);
    EXPECT_EQ(find(u"C:\\Music\\"_s, u"a.mp3"_s), u"C:\\Music\\a.mp3"_s);
    EXPECT_EQ(m_folder.read(u"data/ChangeDir.conf"_s), GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Files,
    HostileChangeDir,
    testing::Values(HostileMappings{"Empty", {}},
                    HostileMappings{"RandomBytes", randomBytes(100'000)},
                    HostileMappings{"InvalidUtf8", "C:\\Music ?? /tmp/\xff\xfe\xfd\n"},
                    HostileMappings{"OnlyMarks", QByteArray("?").repeated(1000)},
                    HostileMappings{"Zeros", QByteArray(5000, '\0')},
                    HostileMappings{"OneEndlessLine", QByteArray("C:\\Music").repeated(100'000)},
                    HostileMappings{"HundredMegabytes",
                                    QByteArray("C:\\Music ?? /tmp\n").repeated(5'900'000)}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(ExistFile, AFolderInPlaceOfTheMappingFileGivesNoMappings)
{
    QDir().mkpath(dataFolder() + u"/ChangeDir.conf"_s);
    EXPECT_EQ(find(u"C:\\Music\\"_s, u"a.mp3"_s), u"C:\\Music\\a.mp3"_s);
}

TEST_F(ExistFile, ThePlaceOfAFileIsWhereItLiesNowAndEmptyWhenItIsNowhere)
{
    track(u"new/a.mp3"_s);
    mappings(QByteArray("C:\\Music ?? ") + music(u"new"_s).toUtf8() + "\n");
    FileLocator locator(m_files, dataFolder());
    EXPECT_EQ(locator.placeOf(music(u"new/a.mp3"_s)), music(u"new/a.mp3"_s));
    EXPECT_EQ(locator.placeOf(u"C:\\Music\\a.mp3"_s), music(u"new/a.mp3"_s));
    EXPECT_TRUE(locator.placeOf(u"C:\\Music\\b.mp3"_s).isEmpty());
    EXPECT_TRUE(locator.placeOf(music(u"gone/a.mp3"_s)).isEmpty());
}
