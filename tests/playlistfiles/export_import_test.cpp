#include "platform/system/timers.h"
#include "playlistfiles/export_run.h"
#include "playlistfiles/m3u_fixture.h"
#include "playlistfiles/template_path.h"

#include <QDir>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Nothing waits in these tests.
class StillLoop : public MessageLoop
{
public:
    [[nodiscard]] std::unique_ptr<Timer> makeTimer(std::chrono::milliseconds,
                                                   std::function<void()>) override
    {
        return nullptr;
    }

    void turn() override {}
};

class ExportedFolder : public test::M3uTest
{
protected:
    /// Exports the list to a folder, and moves that folder to another place.
    QString exportAndMove(Pnid list, const QString& pathTemplate)
    {
        const QString stick = music.file(u"stick"_s);
        QDir().mkpath(stick);
        SavePlaylistFiles exporter(
            {*lists.engine, *lists.settings, lists.files, lists.locator, loop});
        const ExportResult result = exporter.run({list, stick, pathTemplate});
        EXPECT_EQ(result.end, ExportResult::End::Done);
        EXPECT_TRUE(result.failures.empty());
        const QString elsewhere = music.file(u"elsewhere/%1"_s.arg(++m_moved));
        QDir().mkpath(music.file(u"elsewhere"_s));
        EXPECT_TRUE(QDir().rename(stick, elsewhere));
        return elsewhere + u"/Party.m3u"_s;
    }

    StillLoop loop;

private:
    int m_moved = 0;
};

TEST_F(ExportedFolder, ImportsWithAllTracksElsewhereWhateverTheTemplateWas)
{
    QStringList tracks;
    for (int number = 0; number < 150; ++number) {
        tracks.append(addTrack(u"Ä %1.mp3"_s.arg(number)));
    }
    const Pnid list{lists.library.addPlaylist({.Name = u"Party"_s, .tracks = tracks})};
    for (const QString& pathTemplate : Template2Path::offered()) {
        const QString file = exportAndMove(list, pathTemplate);
        EXPECT_EQ(m3u.LoadPlaylist(file), 0) << pathTemplate.toStdString();
        EXPECT_EQ(lists.column(u"select FID from TEMP_PLImportM3U order by sid"_s), tracks)
            << pathTemplate.toStdString();
    }
    EXPECT_TRUE(told.isEmpty()) << told.join(u'\n').toStdString();
}

TEST_F(ExportedFolder, ImportsIntoALibraryThatKnowsNoneOfTheTracks)
{
    QStringList tracks;
    for (int number = 0; number < 12; ++number) {
        tracks.append(addTrack(u"Lied %1.mp3"_s.arg(number)));
    }
    const Pnid list{lists.library.addPlaylist({.Name = u"Party"_s, .tracks = tracks})};
    const QString file = exportAndMove(list, u"%G/%TP_%N"_s);
    lists.execute(u"delete from pl_all"_s);
    lists.execute(u"delete from db_all"_s);
    EXPECT_EQ(m3u.LoadPlaylist(file), 0);
    EXPECT_EQ(loaded().size(), 12);
    EXPECT_EQ(loaded().first(), u"01_Lied 0.mp3.mp3"_s);
    EXPECT_EQ(lists.value(u"select count(*) as anz from db_all"_s).toLong(), 12);
}

} // namespace

} // namespace melovane
