#include "platform/linux/linux_files.h"
#include "playlistfiles/kiv_interface.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

class KivFile : public testing::Test
{
protected:
    KivFile()
    {
        MlvPlaylistDetail entry;
        entry.FID = u"823456789012"_s;
        entry.DName = u"Licht.mp3"_s;
        entry.file = u"/neu/Licht.mp3"_s;
        entry.PLID = Plid{17};
        entry.FrameStart = 12;
        entry.FrameStop = 8269;
        entry.Interpret = u"Öhrlich & Söhne"_s;
        entry.Titel = u"Licht, Luft, \"Sonne\""_s;
        entry.Path = u"C:\\Musik\\"_s;
        entry.BPM = u"128.5 bpm"_s;
        state.replyTo = 1234567890;
        state.setEntry(entry);
    }

    test::TempFolder folder;
    test::TempFolder program;
    LinuxFiles files;
    KivInterface state{files, folder.path(), program.path()};
    KivInterface other{files, folder.path(), program.path()};
};

TEST_F(KivFile, IsWrittenByteByByteAsTheToolReadsIt)
{
    state.KivSave();
    EXPECT_EQ(folder.read(u"global.kiv"_s), "823456789012\n"
                                            "Licht.mp3\n"
                                            "/neu/Licht.mp3\n"
                                            " 1234567890 \n"
                                            " 17 \n"
                                            " 0 \n"
                                            " 12 \n"
                                            " 8269 \n"
                                            "Öhrlich & Söhne\n"
                                            "Licht, Luft, \"Sonne\"\n"
                                            "C:\\Musik\\\n"
                                            " 128 \n");
}

TEST_F(KivFile, AMinusTakesThePlaceOfTheBlank)
{
    state.FrameStart = -5;
    state.KivSave();
    EXPECT_TRUE(folder.read(u"global.kiv"_s).contains("\n-5 \n"));
    other.KivLoad();
    EXPECT_EQ(other.FrameStart, -5);
}

TEST_F(KivFile, ReplacesAnOldOne)
{
    folder.write(u"global.kiv"_s, QByteArray(9000, 'x'));
    state.KivSave();
    EXPECT_TRUE(folder.read(u"global.kiv"_s).startsWith("823456789012\n"));
    EXPECT_LT(folder.read(u"global.kiv"_s).size(), 200);
}

TEST_F(KivFile, ATitleWithACommaSurvivesARoundTripAndSoDoesAllElse)
{
    state.KivSave();
    other.KivLoad();
    EXPECT_EQ(other.FID, state.FID);
    EXPECT_EQ(other.DName, state.DName);
    EXPECT_EQ(other.file, state.file);
    EXPECT_EQ(other.replyTo, 1234567890);
    EXPECT_EQ(other.PLID, Plid{17});
    EXPECT_EQ(other.FrameStart, 12);
    EXPECT_EQ(other.FrameStop, 8269);
    EXPECT_EQ(other.Interpret, state.Interpret);
    EXPECT_EQ(other.Titel, u"Licht, Luft, \"Sonne\""_s);
    EXPECT_EQ(other.Path, state.Path);
    EXPECT_EQ(other.tempo, 128);
}

TEST_F(KivFile, ALineEndInATitleMovesNoLine)
{
    state.Titel = u"one\ntwo\r\nthree"_s;
    state.KivSave();
    other.KivLoad();
    EXPECT_EQ(other.Titel, u"one two  three"_s);
    EXPECT_EQ(other.Path, state.Path);
    EXPECT_EQ(other.tempo, 128);
}

TEST_F(KivFile, AMissingFileLeavesAllFieldsAsTheyWere)
{
    state.KivLoad();
    EXPECT_EQ(state.FID, u"823456789012"_s);
    EXPECT_EQ(state.PLID, Plid{17});
    EXPECT_EQ(state.FrameStop, 8269);
    EXPECT_EQ(state.Titel, u"Licht, Luft, \"Sonne\""_s);
    EXPECT_EQ(state.tempo, 128);
}

TEST_F(KivFile, AShortFileLeavesTheFieldsThatItLacks)
{
    folder.write(u"global.kiv"_s, "1\nneu.mp3\n/x\n 5 \n 6 ");
    state.KivLoad();
    EXPECT_EQ(state.FID, u"1"_s);
    EXPECT_EQ(state.DName, u"neu.mp3"_s);
    EXPECT_EQ(state.PLID, Plid{6});
    EXPECT_EQ(state.FrameStart, 12);
    EXPECT_EQ(state.Titel, u"Licht, Luft, \"Sonne\""_s);
}

TEST_F(KivFile, AnotherSystemsLineEndsAndLettersAreRead)
{
    folder.write(u"global.kiv"_s, "\"a, b\" ,Licht, l.mp3\r\n/x\r\n 5\r\n6 ,7\r\n 8, 9,\xD6hr\r\n"
                                  "T\r\nP\r\n120,5\r\n");
    state.KivLoad();
    EXPECT_EQ(state.FID, u"a, b"_s);
    EXPECT_EQ(state.DName, u"Licht, l.mp3"_s);
    EXPECT_EQ(state.replyTo, 5);
    EXPECT_EQ(state.PLID, Plid{6});
    EXPECT_EQ(state.reserved, 7);
    EXPECT_EQ(state.FrameStart, 8);
    EXPECT_EQ(state.FrameStop, 9);
    EXPECT_EQ(state.Interpret, u"Öhr"_s);
    EXPECT_EQ(state.Path, u"P"_s);
    EXPECT_EQ(state.tempo, 120);
}

TEST_F(KivFile, AnyBytesAreReadWithoutFailing)
{
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("\n"), QByteArray("\n\n\n\n\n\n\n\n\n\n\n\n"), QByteArray("\""),
          QByteArray("   "), QByteArray(", , ,"), QByteArray("\0\0\0", 3), QByteArray(3000, ' '),
          QByteArray("1\n2\n3\n99999999999999\nx\n"), QByteArray("\xFF\xFE\n\0", 4)}) {
        folder.write(u"global.kiv"_s, bytes);
        other.KivLoad();
    }
    EXPECT_EQ(other.tempo, 0);
}

TEST_F(KivFile, AFolderOfThatNameOrAFileTooLargeIsNoStateFile)
{
    files.makeFolder(folder.file(u"global.kiv"_s));
    state.KivSave();
    state.KivLoad();
    state.KivKill();
    EXPECT_EQ(state.FrameStop, 8269);
    EXPECT_TRUE(files.folderExists(folder.file(u"global.kiv"_s)));
}

TEST_F(KivFile, KillDeletesItAndDoesNothingWithoutOne)
{
    state.KivSave();
    state.KivKill();
    EXPECT_FALSE(files.fileExists(folder.file(u"global.kiv"_s)));
    state.KivKill();
    EXPECT_TRUE(files.names(folder.path()).isEmpty());
}

TEST_F(KivFile, AnotherPathIsUsedWhenItIsGivenAndBlanksAreNone)
{
    state.fileName = folder.file(u"mein.kiv"_s);
    state.KivSave();
    EXPECT_EQ(files.names(folder.path()), QStringList{u"mein.kiv"_s});
    state.fileName = u"   "_s;
    state.KivSave();
    EXPECT_EQ(files.names(folder.path()), (QStringList{u"global.kiv"_s, u"mein.kiv"_s}));
}

} // namespace

} // namespace melovane
