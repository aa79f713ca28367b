#include "playlistfiles/export_fixture.h"

#include <QFile>

namespace melovane {

using namespace Qt::Literals::StringLiterals;
using End = ExportResult::End;
using Reason = ExportFailure::Reason;

namespace {

/// Links lie where copies are to go.
class ExportOntoLinks : public test::ExportFixture
{};

TEST_F(ExportOntoLinks, ALinkToATracksFileIsReplacedItselfAndTheTrackStays)
{
    addTrack({.Titel = u"other"_s, .DName = u"04.mp3"_s}, "other");
    addList({addTrack({.Titel = u"Licht"_s}, "light"), addTrack({.Titel = u"Meer"_s}, "sea"),
             addTrack({.Titel = u"Wind"_s}, "wind")});
    ASSERT_TRUE(QFile::link(music + u"/04.mp3"_s, target + u"/Licht.mp3"_s));
    ASSERT_TRUE(QFile::link(music + u"/Licht.mp3"_s, target + u"/Meer.mp3"_s));
    ASSERT_TRUE(QFile::link(music + u"/Wind.mp3"_s, target + u"/Wind.mp3"_s));
    const ExportResult result = run(u"%N"_s);
    EXPECT_EQ(result.end, End::Done);
    EXPECT_TRUE(result.failures.empty());
    EXPECT_TRUE(result.replaced.isEmpty());
    EXPECT_EQ(readTrack(u"04.mp3"_s), "other");
    EXPECT_EQ(readTrack(u"Licht.mp3"_s), "light");
    EXPECT_EQ(readTrack(u"Wind.mp3"_s), "wind");
    for (const auto& [name, bytes] :
         {std::pair(u"Licht.mp3"_s, "light"), std::pair(u"Meer.mp3"_s, "sea"),
          std::pair(u"Wind.mp3"_s, "wind")}) {
        EXPECT_EQ(readCopy(name), bytes);
        EXPECT_FALSE(files.facts(target + u'/' + name)->isLink) << name.toStdString();
    }
}

TEST_F(ExportOntoLinks, ALinkToNothingIsReplacedAndMakesNoFileAtItsEnd)
{
    addList({addTrack({.Titel = u"Licht"_s}, "light")});
    ASSERT_TRUE(QFile::link(music + u"/gone.mp3"_s, target + u"/Licht.mp3"_s));
    ASSERT_TRUE(QFile::link(music + u"/gone.m3u"_s, target + u"/Hauptset.m3u"_s));
    const ExportResult result = run(u"%N"_s);
    EXPECT_EQ(result.end, End::Done);
    EXPECT_EQ(readCopy(u"Licht.mp3"_s), "light");
    EXPECT_EQ(listed(), QStringList{u"Licht.mp3"_s});
    EXPECT_EQ(files.names(music), QStringList{u"Licht.mp3"_s});
}

TEST_F(ExportOntoLinks, TheListFileIsNotWrittenThroughALinkIntoTheLibrary)
{
    addTrack({.Titel = u"other"_s}, "other");
    addList({addTrack({.Titel = u"Licht"_s})});
    ASSERT_TRUE(QFile::link(music + u"/other.mp3"_s, target + u"/Hauptset.m3u"_s));
    EXPECT_EQ(run(u"%N"_s).end, End::Done);
    EXPECT_EQ(readTrack(u"other.mp3"_s), "other");
    EXPECT_EQ(listed(), QStringList{u"Licht.mp3"_s});
}

TEST_F(ExportOntoLinks, ATrackWhoseOwnFileIsALinkIsNeitherReplacedByAnotherNorByItsOwnCopy)
{
    const QString store = suite.dataFolder() + u"/Lager"_s;
    files.makeFolders(store);
    const auto moveBehindLink = [&](const QString& name) {
        ASSERT_TRUE(QFile::rename(music + u'/' + name, store + u'/' + name));
        ASSERT_TRUE(QFile::link(store + u'/' + name, music + u'/' + name));
    };
    addTrack({.Titel = u"other"_s, .DName = u"Licht.mp3"_s}, "other");
    const QString own = addTrack({.Titel = u"Meer"_s}, "sea");
    moveBehindLink(u"Licht.mp3"_s);
    moveBehindLink(u"Meer.mp3"_s);
    addList({addTrack({.Titel = u"Licht"_s, .DName = u"x.mp3"_s}, "light"), own});
    target = music + u"-link"_s;
    ASSERT_TRUE(QFile::link(music, target));
    const ExportResult result = run(u"%N"_s);
    ASSERT_EQ(result.failures.size(), 1U);
    EXPECT_EQ(result.failures[0].reason, Reason::LibraryFile);
    EXPECT_EQ(readCopy(u"Licht.mp3"_s), "other");
    EXPECT_TRUE(files.facts(music + u"/Licht.mp3"_s)->isLink);
    EXPECT_TRUE(files.facts(music + u"/Meer.mp3"_s)->isLink);
    EXPECT_EQ(listed(), QStringList{u"Meer.mp3"_s});
}

TEST_F(ExportOntoLinks, ALinkGivesNoSpaceBack)
{
    addTrack({.Titel = u"other"_s, .DName = u"04.mp3"_s}, QByteArray(8000, 'x'));
    addList({addTrack({.Titel = u"a"_s}, QByteArray(8000, 'x')),
             addTrack({.Titel = u"b"_s}, QByteArray(8000, 'x'))});
    ASSERT_TRUE(QFile::link(music + u"/04.mp3"_s, target + u"/a.mp3"_s));
    files.free = 16 * 1024;
    const ExportResult result = run(u"%N"_s);
    EXPECT_EQ(result.end, End::NoSpace);
    EXPECT_EQ(result.needed, 20 * 1024) << "two blocks a file, one for the list";
}

} // namespace

} // namespace melovane
