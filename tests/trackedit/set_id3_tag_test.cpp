#include "support/suite_folders.h"
#include "trackedit/set_id3_tag.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace melovane::Mod_Set_ID3_TAG {
namespace {

using namespace Qt::Literals::StringLiterals;

class FileTailWriter : public testing::Test
{
protected:
    QString make(const QByteArray& bytes)
    {
        const QString path = folder.write(u"track.mp3"_s, bytes);
        EXPECT_TRUE(files.setModified(path, date));
        return path;
    }

    [[nodiscard]] QByteArray content() const { return folder.read(u"track.mp3"_s); }

    test::TempFolder folder;
    LinuxFiles files;
    QDateTime date{QDate(2001, 2, 3), QTime(4, 5, 6)};
    FileTail tail{"rest", u"Tätel"_s, u"Artist"_s, u"Album"_s, u"1999"_s, u"Comment"_s, 17};
};

TEST_F(FileTailWriter, TheRecordHas174BytesAndItsMarks)
{
    const QByteArray bytes = tailBytes(tail);
    ASSERT_EQ(bytes.size(), 174);
    EXPECT_EQ(bytes.first(9), QByteArray("AUD\x2C\x01rest"));
    EXPECT_EQ(bytes.sliced(46, 9), QByteArray("TAGT\xE4tel\0", 9));
    EXPECT_EQ(bytes.sliced(46 + 93, 4), QByteArray("1999"));
    EXPECT_EQ(uchar(bytes.back()), 17);
}

TEST_F(FileTailWriter, TextsThatAreTooLongAreCut)
{
    FileTail large;
    large.Title = QString(10000, u'x');
    large.privateRest = QByteArray(10000, 'y');
    large.Year = u"20261"_s;
    EXPECT_EQ(tailBytes(large).size(), 174);
}

TEST_F(FileTailWriter, AFileShorterThan174BytesGivesFalseAndStays)
{
    const QByteArray audio(173, 'a');
    EXPECT_FALSE(writeFileTail(files, make(audio), tail));
    EXPECT_EQ(content(), audio);
    EXPECT_FALSE(writeFileTail(files, folder.file(u"missing.mp3"_s), tail));
}

TEST_F(FileTailWriter, ATailWithThePrivateBlockIsOverwrittenInPlace)
{
    const QByteArray audio(500, 'a');
    EXPECT_TRUE(writeFileTail(files, make(audio + tailBytes(FileTail())), tail));
    EXPECT_EQ(content(), audio + tailBytes(tail));
}

TEST_F(FileTailWriter, ATagBlockAloneIsReplacedAndTheFileGrowsBy46Bytes)
{
    const QByteArray audio(500, 'a');
    EXPECT_TRUE(writeFileTail(files, make(audio + "TAG" + QByteArray(125, ' ')), tail));
    EXPECT_EQ(content(), audio + tailBytes(tail));
}

TEST_F(FileTailWriter, WithoutAnyBlockTheTailTakesTheLastByteOfTheAudio)
{
    const QByteArray audio(500, 'a');
    EXPECT_TRUE(writeFileTail(files, make(audio), tail));
    EXPECT_EQ(content(), audio.first(499) + tailBytes(tail));
}

TEST_F(FileTailWriter, TheDateStaysAndWriteProtectionIsCleared)
{
    const QString path = make(QByteArray(500, 'a'));
    ASSERT_EQ(::chmod(path.toUtf8().constData(), 0444), 0);
    EXPECT_TRUE(writeFileTail(files, path, tail));
    EXPECT_EQ(files.facts(path)->modified, date);
}

/// Files whose writing fails.
class FullDisk : public LinuxFiles
{
public:
    void writeWhole(const QString& path, const QByteArray&) override
    {
        throw IoError(path, u"no space left"_s);
    }
};

TEST_F(FileTailWriter, AFailureLeavesTheFileAsItWas)
{
    const QByteArray audio(500, 'a');
    FullDisk full;
    EXPECT_FALSE(writeFileTail(full, make(audio), tail));
    EXPECT_EQ(content(), audio);
    EXPECT_EQ(folder.read(u"track.mp3"_s), audio);
    EXPECT_EQ(files.names(folder.path()).size(), 1);
}

TEST(Registry, ATextOfAProgramComesBack)
{
    test::SuiteFolders suite;
    LinuxEnvironment& environment = suite.environment();
    const QString key = u"Software\\Melovane\\MelovaneDB"_s;
    EXPECT_TRUE(writeRegistryText(environment, RootKey::CurrentUser, key, u"a"_s, u"text"_s));
    EXPECT_EQ(readRegistryValue(environment, RootKey::CurrentUser, key, u"a"_s), u"text"_s);
    EXPECT_EQ(environment.userValue(u"MelovaneDB"_s, u"a"_s), u"text"_s);
}

TEST(Registry, AnEmptyTextIsStoredAsOneBlank)
{
    test::SuiteFolders suite;
    const QString key = u"Software\\Melovane\\MelovaneDB"_s;
    EXPECT_TRUE(
        writeRegistryText(suite.environment(), RootKey::CurrentUser, key, u"a"_s, QString()));
    EXPECT_EQ(readRegistryValue(suite.environment(), RootKey::CurrentUser, key, u"a"_s), u" "_s);
}

TEST(Registry, ATextEndsAtItsFirstZeroCharacter)
{
    test::SuiteFolders suite;
    const QString key = u"Software/Melovane/X"_s;
    const QString text = u"front"_s + QChar(u'\0') + u"back"_s;
    EXPECT_TRUE(writeRegistryText(suite.environment(), RootKey::CurrentUser, key, u"a"_s, text));
    EXPECT_EQ(readRegistryValue(suite.environment(), RootKey::CurrentUser, key, u"a"_s),
              u"front"_s);
}

TEST(Registry, ForeignKeysAndMachineWideWritesAreRefused)
{
    test::SuiteFolders suite;
    suite.folder().write(suite.places().machineFile, "AppPathConfig=local\n");
    LinuxEnvironment& environment = suite.environment();
    const QString machine = u"SOFTWARE\\melovane"_s;
    EXPECT_EQ(readRegistryValue(environment, RootKey::LocalMachine, machine, u"AppPathConfig"_s),
              u"local"_s);
    EXPECT_FALSE(writeRegistryText(environment, RootKey::LocalMachine, machine, u"a"_s, u"x"_s));
    EXPECT_FALSE(writeRegistryText(environment, RootKey::CurrentUser, u"Software\\Other\\X"_s,
                                   u"a"_s, u"x"_s));
    EXPECT_EQ(
        readRegistryValue(environment, RootKey::LocalMachine, u"System"_s, u"AppPathConfig"_s),
        QString());
}

TEST(ControlWindow, IsToldByItsClassName)
{
    const auto named = [](const QString& name) { return [name](int) { return name; }; };
    EXPECT_TRUE(isControlWindow(named(u"AfxOleControl42"_s), 1));
    EXPECT_TRUE(isControlWindow(named(u"x.AfxOleControl42.7"_s), 1));
    EXPECT_FALSE(isControlWindow(named(u"afxolecontrol42"_s), 1));
    EXPECT_FALSE(isControlWindow(named(QString()), 1));
    EXPECT_FALSE(isControlWindow(named(QString(240, u'x') + u"AfxOleControl42"_s), 1));
}

} // namespace
} // namespace melovane::Mod_Set_ID3_TAG
