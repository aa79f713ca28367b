#include "library/view_fixture.h"
#include "platform/system/keyboard.h"

#include <set>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class HeldKeys : public Keyboard
{
public:
    [[nodiscard]] bool isDown(int code) const override { return codes.count(code) != 0; }

    std::set<int> codes;
};

/// Three tracks in the grid, the second one current.
struct Mp3dbActionsTest : public test::LibraryViewTest
{
    Mp3dbActionsTest()
    {
        library.add({{u"Licht A"_s, u"Ostwind"_s, u"Prisma"_s, u"4"_s, 0},
                     {u"Licht B"_s, u"Kanalratten"_s, u"Unter Tage"_s, {}, 0},
                     {u"Licht C"_s, u"Fort"_s, {}, {}, 0}});
        start();
        search.setText(u"Licht"_s);
        grid.current = 1;
        library.settings->SetKeyboard(&keyboard);
        sent.clear();
    }

    [[nodiscard]] QString fid(qint64 row)
    {
        return view.Data1().cell(row, view.Data1().Recordset()->fieldIndex(u"FID")).toText();
    }

    [[nodiscard]] Value cell(qint64 row, QStringView column)
    {
        return view.Data1().cell(row, view.Data1().Recordset()->fieldIndex(column));
    }

    HeldKeys keyboard;
    QStringList sent;
    MLVMessageBus::Subscription listener = library.bus.subscribe([this](const MLVMessage& message) {
        sent.append(QString(message.Command + u' ' + message.Value1.toText()).trimmed());
    });
    BusSender others{library.bus, u"MLVDB"_s};
};

// ---- the monitor player

TEST_F(Mp3dbActionsTest, TheVolumeButtonShowsHowLoudTheMonitorIsAndAsksForItsWindow)
{
    QStringList pictures;
    QObject::connect(&view, &ctl_MP3DB::volumeIconChanged,
                     [&](const QString& picture) { pictures.append(picture); });
    for (const int volume : {0, 1, 4000, 4001, 6000, 6001, 10'000, 70'000, -1}) {
        others.SendMessage(u"Volume.Monitor.Change.Icon"_s, volume);
    }
    EXPECT_EQ(pictures,
              (QStringList{u"volume0"_s, u"volume1"_s, u"volume1"_s, u"volume2"_s, u"volume2"_s,
                           u"volume"_s, u"volume"_s, u"volume"_s, u"volume0"_s}));
    sent.clear();
    view.toolPressed(u"all.volume"_s);
    EXPECT_EQ(sent, QStringList{u"Volume.Monitor.Show"_s});
}

// ---- double click

TEST_F(Mp3dbActionsTest, ADoubleClickWithSetting0OpensTheCellEdit)
{
    library.settings->SetGridSwapEditPlay(0);
    view.rowActivated(1);
    EXPECT_EQ(grid.edits, 1);
    EXPECT_TRUE(sent.isEmpty());
}

TEST_F(Mp3dbActionsTest, ADoubleClickOnACellThatTakesNothingOpensTheTagPanel)
{
    library.settings->SetGridSwapEditPlay(0);
    grid.currentCell = columnOf(u"Play"_s);
    view.rowActivated(1);
    EXPECT_EQ(grid.edits, 0);
    EXPECT_EQ(sent, QStringList{u"show.tagedit.mp3db "_s + fid(1)});
}

TEST_F(Mp3dbActionsTest, ThePencilOpensOneTrackInThePanelAndSeveralInTheTagTool)
{
    grid.selected = {{1, 1}};
    view.toolPressed(u"all.book"_s);
    EXPECT_EQ(sent, QStringList{u"show.tagedit.mp3db "_s + fid(1)});
    sent.clear();
    grid.selected = {{0, 1}};
    view.toolPressed(u"all.book"_s);
    EXPECT_EQ(sent.filter(u"show.tag"_s), QStringList{u"show.tageditor"_s});
}

TEST_F(Mp3dbActionsTest, TheButtonOfThePanelNamesTheCurrentTrack)
{
    view.toolPressed(u"all.tagpanel"_s);
    EXPECT_EQ(sent, QStringList{u"show.tagedit.mp3db "_s + fid(1)});
}

TEST_F(Mp3dbActionsTest, ADoubleClickWithSetting1PlaysTheTrackOnTheMonitor)
{
    library.settings->SetGridSwapEditPlay(1);
    view.rowActivated(1);
    EXPECT_EQ(sent, QStringList{u"player.monitor.play.start "_s + fid(1)});
    EXPECT_EQ(grid.selected, (std::vector<RowRange>{{1, 1}}));
    sent.clear();
    view.toolPressed(u"play.center"_s);
    view.rowActivated(1);
    EXPECT_EQ(sent.last(), u"player.monitor.play.center "_s + fid(1));
}

TEST_F(Mp3dbActionsTest, ADoubleClickWithSetting2AppendsTheSelectionToThePlaylist)
{
    library.settings->SetGridSwapEditPlay(2);
    grid.selected = {{0, 1}};
    view.rowActivated(1);
    EXPECT_EQ(sent, (QStringList{
                        u"playlist.append.data DRAG_TYP_FID_MP3DB:%1,%2"_s.arg(fid(0), fid(1))}));
}

TEST_F(Mp3dbActionsTest, CtrlWithTheMouseOrEnterAppendsWhateverTheSettingIs)
{
    for (int setting : {0, 1, 2}) {
        for (int key : {1, 13}) {
            library.settings->SetGridSwapEditPlay(setting);
            keyboard.codes = {17, key};
            sent.clear();
            view.rowActivated(1);
            EXPECT_EQ(sent, QStringList{u"playlist.append.data DRAG_TYP_FID_MP3DB:"_s + fid(1)});
        }
    }
    EXPECT_EQ(grid.edits, 0);
}

TEST_F(Mp3dbActionsTest, ADoubleClickBesideTheRowsDoesNothing)
{
    view.rowActivated(-1);
    view.rowActivated(3);
    EXPECT_EQ(grid.edits, 0);
    EXPECT_TRUE(sent.isEmpty());
}

// ---- rating, delete, favourite

TEST_F(Mp3dbActionsTest, ARatingIsWrittenShownAndToldToAll)
{
    view.digitPressed(1);
    EXPECT_EQ(cell(1, u"Note").toText(), u"5"_s);
    EXPECT_EQ(sent, QStringList{u"db.refresh.by.fid "_s + fid(1)});
    view.digitPressed(6);
    EXPECT_EQ(cell(1, u"Note").toText(), u"5"_s);
}

TEST_F(Mp3dbActionsTest, DeleteTogglesTheSelectedRows)
{
    grid.selected = {{0, 1}};
    view.deletePressed();
    EXPECT_EQ(cell(0, u"DEL").toLong(), -1);
    EXPECT_EQ(cell(1, u"DEL").toLong(), -1);
    view.toolPressed(u"all.delete"_s);
    EXPECT_EQ(cell(0, u"DEL").toLong(), 0);
}

TEST_F(Mp3dbActionsTest, TheBusMakesTheCurrentTrackAFavourite)
{
    others.SendMessage(u"db.set.favorit"_s);
    EXPECT_FALSE(cell(1, u"favorit").isNull());
}

// ---- selection, clipboard, drags

TEST_F(Mp3dbActionsTest, CommandsOfTheKeysActOnlyWithTheFocus)
{
    grid.keyboard = false;
    EXPECT_FALSE(view.SendKeyUp(u"copy"_s));
    EXPECT_EQ(clipboard.text(), QString());
    grid.keyboard = true;
    EXPECT_TRUE(view.SendKeyUp(u"copy"_s));
    EXPECT_EQ(clipboard.text(), u"DRAG_TYP_FID_MP3DB:"_s + fid(1));
    EXPECT_TRUE(view.SendKeyUp(u"selall"_s));
    EXPECT_EQ(grid.selected, (std::vector<RowRange>{{0, 2}}));
    EXPECT_TRUE(view.SendKeyUp(u"append"_s));
    EXPECT_TRUE(sent.last().startsWith(u"playlist.append.data DRAG_TYP_FID_MP3DB:"_s));
    EXPECT_TRUE(view.SendKeyUp(u"insert"_s));
    EXPECT_TRUE(view.SendKeyUp(u"play.stop"_s));
    EXPECT_FALSE(view.SendKeyUp(u"nichts"_s));
}

TEST_F(Mp3dbActionsTest, SetAllBookmarksSelectsAllRowsAndGivesTheirIds)
{
    EXPECT_EQ(view.SetAllBookmarks(), (QStringList{fid(0), fid(1), fid(2)}).join(u','));
    EXPECT_EQ(grid.selected, (std::vector<RowRange>{{0, 2}}));
    others.SendMessage(u"All.DB.Append.Aktuell"_s);
    EXPECT_TRUE(
        sent.first().startsWith(u"playlist.all.db.append.aktuell.data DRAG_TYP_FID_MP3DB:"_s));
}

TEST_F(Mp3dbActionsTest, ADragCarriesTheIdsAndTheFiles)
{
    library.execute(u"update db_all set Path='/music/', DName='b.mp3' where Titel='Licht B'"_s);
    view.Data1().refreshCells();
    grid.selected = {{1, 1}};
    const DragContent content = view.dragContent();
    EXPECT_EQ(content.text, u"DRAG_TYP_FID_MP3DB:"_s + fid(1));
    EXPECT_EQ(content.files(), QStringList{u"/music/b.mp3"_s});
}

// ---- looks

TEST_F(Mp3dbActionsTest, TheTrackOfTheOtherViewIsMarkedAndColoursFollowTheSettings)
{
    others.SendMessage(u"Info.From.FID"_s, fid(2));
    library.settings->WriteKeyValue(u"Color"_s, u"FontSize"_s, u"17"_s);
    others.SendMessage(u"update.color"_s);
    EXPECT_EQ(grid.font.size, 17);

    class RowOfView : public RowValues
    {
    public:
        explicit RowOfView(QString track)
            : m_track(std::move(track))
        {}

        [[nodiscard]] Value value(const QString& field) const override
        {
            return field == u"FID"_s ? Value(m_track) : Value();
        }

    private:
        QString m_track;
    };

    EXPECT_TRUE(view.look().style(u"Titel"_s, RowOfView(fid(2))).bold);
    EXPECT_FALSE(view.look().style(u"Titel"_s, RowOfView(fid(1))).bold);
}

TEST_F(Mp3dbActionsTest, LayoutsAreLoadedAndSavedOverTheBus)
{
    grid.layout = {{u"BPM"_s, u"BPM"_s, 7}};
    others.SendMessage(u"save.layout.mp3db"_s);
    grid.layout = {{u"Titel"_s, u"Titel"_s, 9}};
    others.SendMessage(u"load.layout.change.mp3db"_s, u"gridlayout_db.grx"_s);
    EXPECT_EQ(grid.layout.front().field, u"BPM"_s);
}

TEST_F(Mp3dbActionsTest, ColumnsAreFittedAfterASearchUnlessTheSettingIsOff)
{
    library.settings->SetAutosizeGrid(0);
    search.setText(u"Licht B"_s);
    EXPECT_EQ(grid.fits, 0);
    library.settings->SetAutosizeGrid(1);
    search.setText(u"Licht C"_s);
    EXPECT_EQ(grid.fits, 1);
    EXPECT_TRUE(grid.notFitted.contains(u"note"_s)) << "the rating keeps its narrow width";
    others.SendMessage(u"autosize.mp3db"_s);
    EXPECT_EQ(grid.fits, 2);
}

TEST_F(Mp3dbActionsTest, ColumnsAreFittedAfterEveryWayToTheRows)
{
    library.settings->SetAutosizeGrid(1);
    const auto fitsOf = [this](const std::function<void()>& way) {
        const int before = grid.fits;
        way();
        return grid.fits - before;
    };
    EXPECT_EQ(fitsOf([this] { view.headerClicked(columnOf(u"BPM"_s)); }), 1);
    EXPECT_EQ(fitsOf([this] { view.Refresh(); }), 1);
    EXPECT_EQ(fitsOf([this] { others.SendMessage(u"load.layout.mp3db"_s, u"none.grx"_s); }), 1);
    others.SendMessage(u"db.disconnect"_s);
    EXPECT_EQ(fitsOf([this] { others.SendMessage(u"db.reconnect"_s); }), 1);
}

struct FittedStart : public test::LibraryViewTest
{};

TEST_F(FittedStart, TheRowsOfTheStartHaveFittedColumns)
{
    library.add({{u"Licht"_s, u"Ostwind"_s, {}, {}, 0}});
    library.settings->SetAutosizeGrid(1);
    start();
    EXPECT_EQ(grid.fits, 1);
}

TEST_F(Mp3dbActionsTest, AMessageAboutNewContentKeepsSelectionAndPosition)
{
    grid.selected = {{0, 0}, {2, 2}};
    library.add({{u"Licht 0"_s, u"Neu"_s, {}, {}, 0}});
    others.SendMessage(u"db.change"_s);
    EXPECT_EQ(view.Data1().rowCount(), 4);
    EXPECT_EQ(grid.current, 2);
    EXPECT_EQ(grid.selected, (std::vector<RowRange>{{1, 1}, {3, 3}}));
}

} // namespace
} // namespace melovane
