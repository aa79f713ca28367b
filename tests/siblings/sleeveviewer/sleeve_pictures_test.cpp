#include "platform/linux/id3_cover.h"
#include "siblings/sleeveviewer/sleeve_pictures.h"
#include "siblings/sleeveviewer/sleeve_track.h"
#include "support/mp3_maker.h"
#include "support/suite_fixture.h"
#include "trackedit/kept_covers.h"

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class SleevePictures : public SuiteFixture
{
protected:
    /// Names of what is found for a track in the folder "music".
    [[nodiscard]] QStringList names(const QString& image)
    {
        const SleeveTrack track{
            .FID = u"1"_s, .title = {}, .image = image, .audioFile = music.file(u"a.mp3"_s)};
        QStringList names;
        for (const QString& file : sleevePictures(suite.files, tags, suite.dataFolder(), track)) {
            names.append(file.startsWith(music.path()) ? file.sliced(music.path().size() + 1)
                                                       : file.sliced(suite.dataFolder().size()));
        }
        return names;
    }

    linux_media::Id3CoverReader tags;
    TempFolder music;
};

TEST_F(SleevePictures, TheCoverComesFirstThenUsualNamesThenTheRest)
{
    music.write(u"a.mp3"_s, "x");
    for (const QString& name : {u"back.jpg"_s, u"Folder.JPG"_s, u"booklet 1.png"_s, u"cover.jpeg"_s,
                                u"notes.txt"_s, u".hidden.jpg"_s, u"scan.bmp"_s, u"x.webp"_s}) {
        music.write(name, "x");
    }
    suite.write(u"Image/836123456001.jpg"_s, "x");
    EXPECT_EQ(names(u"836123456001"_s),
              (QStringList{u"/Image/836123456001.jpg"_s, u"cover.jpeg"_s, u"Folder.JPG"_s,
                           u"back.jpg"_s, u"booklet 1.png"_s, u"scan.bmp"_s}));
}

TEST_F(SleevePictures, ACoversNameStandsInTheLibraryWithAndWithoutItsEnd)
{
    suite.write(u"Image/one.jpg"_s, "x");
    suite.write(u"Image/temp/two.jpg"_s, "x");
    EXPECT_EQ(names(u"one"_s), QStringList{u"/Image/one.jpg"_s});
    EXPECT_EQ(names(u"one.JPG"_s), QStringList{u"/Image/one.jpg"_s});
    EXPECT_EQ(names(u"two"_s), QStringList{u"/Image/temp/two.jpg"_s});
    EXPECT_EQ(names({}), QStringList());
}

TEST_F(SleevePictures, ANameThatLeadsOutOfTheFolderIsNoCover)
{
    suite.write(u"secret.jpg"_s, "x");
    suite.write(u"Image/keep.jpg"_s, "x");
    for (const QString& name : {u"../secret"_s, u"..\\secret"_s, u"/etc/passwd"_s}) {
        EXPECT_EQ(names(name), QStringList()) << name.toStdString();
    }
}

TEST_F(SleevePictures, OfAFolderOfThousandsTwoHundredAreLookedAt)
{
    for (int i = 0; i < 300; ++i) {
        music.write(u"%1.jpg"_s.arg(i), "x");
    }
    music.write(u"zz.jpg"_s, "x");
    music.write(u"front.png"_s, "x");
    const QStringList found = names({});
    EXPECT_EQ(found.size(), kMaxPictures);
    EXPECT_EQ(found.first(), u"front.png"_s);
}

/// An audio file whose tag of version 2.3 holds a small front cover.
QByteArray audioWithCover(const QByteArray& cover)
{
    const QByteArray content =
        QByteArray(1, '\0') + "image/png" + QByteArray("\0\x03\0", 3) + cover;
    const QByteArray frame =
        "APIC" + QByteArray(3, '\0') + char(content.size()) + QByteArray(2, '\0') + content;
    return "ID3\x03" + QByteArray(5, '\0') + char(frame.size()) + frame + shortStream();
}

TEST_F(SleevePictures, ACoverInTheTagAloneIsShownAndOneInItsFileIsNotShownTwice)
{
    const QString audio = music.write(u"a.mp3"_s, audioWithCover("bild"));
    music.write(u"back.jpg"_s, "x");
    EXPECT_EQ(names({}), (QStringList{u"a.mp3"_s, u"back.jpg"_s}));
    EXPECT_FALSE(isPictureName(audio));
    EXPECT_EQ(tags.cover(audio), "bild");
    suite.write(u"Image/one.jpg"_s, "x");
    EXPECT_EQ(names(u"one"_s), (QStringList{u"/Image/one.jpg"_s, u"back.jpg"_s}));
}

TEST_F(SleevePictures, OfATrackWhoseCoverWasTakenOffNoPictureOfTheTagIsShown)
{
    music.write(u"a.mp3"_s, audioWithCover("bild"));
    music.write(u"back.jpg"_s, "x");
    KeptCovers covers(suite.files, suite.dataFolder(), tags);
    covers.chosen({u"1"_s}, u"836123456001"_s);
    covers.chosen({u"1"_s}, {});
    covers.written(u"1"_s, u"836123456001"_s);
    EXPECT_EQ(names({}), QStringList{u"back.jpg"_s}) << "the file has yet to follow";
    covers.written(u"1"_s, {});
    EXPECT_EQ(names({}), (QStringList{u"a.mp3"_s, u"back.jpg"_s}))
        << "somebody else has put one in";
    // A picture of another kind that was left there stands for no track.
    QByteArray other = audioWithCover("bild");
    other[other.indexOf('\x03', 10)] = '\x04';
    music.write(u"a.mp3"_s, other);
    ASSERT_EQ(tags.cover(music.file(u"a.mp3"_s)), "bild");
    EXPECT_EQ(names({}), QStringList{u"back.jpg"_s});
}

TEST_F(SleevePictures, AFolderThatIsGoneHasNone)
{
    const SleeveTrack track{
        .FID = u"1"_s, .title = {}, .image = {}, .audioFile = u"/no/such/folder/a.mp3"_s};
    EXPECT_EQ(sleevePictures(suite.files, tags, suite.dataFolder(), track), QStringList());
}

class SleeveTracksTest : public SuiteFixture
{
protected:
    SleeveTracks tracks{*suite.engine, suite.files, suite.dataFolder()};
};

TEST_F(SleeveTracksTest, ATrackIsFoundByItsNumberAndByItsCover)
{
    const QString fid = suite.library.add(
        {.Titel = u"Lied"_s, .Interpret = u"Anna"_s, .Path = u"/m/x/"_s, .DName = u"a b.mp3"_s});
    suite.execute(u"update db_all set Image='%1.jpg' where FID='%1'"_s.arg(fid));
    const SleeveTrack track = tracks.byFid(suite.dbName(), fid);
    EXPECT_EQ(track, (SleeveTrack{.FID = fid,
                                  .title = u"Anna - Lied"_s,
                                  .image = fid + u".jpg"_s,
                                  .audioFile = u"/m/x/a b.mp3"_s}));
    EXPECT_EQ(tracks.byImage(suite.dbName(), fid), track);
    EXPECT_EQ(tracks.byImage(suite.dbName(), fid + u".jpg"_s), track);
}

TEST_F(SleeveTracksTest, HostileWordsFindNothingAndHarmNothing)
{
    static_cast<void>(suite.library.add({.Titel = u"Lied"_s}));
    for (const QString& text : {QString(), u"x' or '1'='1"_s, u"*"_s, QString(100'000, u'\''),
                                u"'; drop table db_all; --"_s}) {
        EXPECT_EQ(tracks.byFid(suite.dbName(), text), SleeveTrack());
        EXPECT_EQ(tracks.byImage(suite.dbName(), text), SleeveTrack());
    }
    EXPECT_EQ(suite.value(u"select count(*) from db_all"_s).toLong(), 1);
}

TEST_F(SleeveTracksTest, ALibraryThatIsNotThereHasNone)
{
    EXPECT_EQ(tracks.byFid(suite.file(u"away.mdb"_s), u"1"_s), SleeveTrack());
}

} // namespace
} // namespace melovane::test
