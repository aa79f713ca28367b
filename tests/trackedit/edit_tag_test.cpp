#include "bus/message_names.h"
#include "platform/db/recordset.h"
#include "trackedit/edit_tag.h"
#include "trackedit/panel_fixture.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class TagPanel : public test::TagPanelTest
{
protected:
    [[nodiscard]] QString shown(PanelField field) const { return form.texts[size_t(field)]; }

    /// The user types in a field.
    void type(PanelField field, const QString& text)
    {
        form.setText(field, text);
        panel.typed(field, text);
    }

    void open(const QString& fid)
    {
        panel.showTrack(fid, true);
        messages.clear();
    }

    test::PlainTagForm form;
    EditTag panel{parts(), form};
};

// ---- shown or not

TEST_F(TagPanel, WhileItIsNotInUseNoMessageDoesAnything)
{
    send(bus::kInfoFromFid, one);
    send(bus::kEditBoxAddNewGenre, u"Neu"_s);
    panel.trackEntered(one);
    panel.rate(1);
    EXPECT_TRUE(panel.fid().isEmpty());
    EXPECT_FALSE(form.shown);
    EXPECT_TRUE(form.choices.empty());
    EXPECT_TRUE(entered().isEmpty());
    EXPECT_EQ(cell(u"Note"_s, one), u"5"_s);
}

TEST_F(TagPanel, TheSameMessageShowsItAndTakesItAwayAndAnotherTrackKeepsItOpen)
{
    panel.showTrack(one, false);
    EXPECT_TRUE(form.shown);
    EXPECT_EQ(form.focused, 1);
    EXPECT_EQ(shown(PanelField::Titel), u"Lichter"_s);
    panel.showTrack(two, false);
    EXPECT_TRUE(form.shown);
    EXPECT_EQ(shown(PanelField::Titel), u"Lange Schatten"_s);
    panel.showTrack(two, false);
    EXPECT_FALSE(form.shown);
    EXPECT_FALSE(panel.isActive());
    EXPECT_EQ(left, 1);
}

TEST_F(TagPanel, WhoWantsToEditATrackNeverClosesItByThat)
{
    panel.showTrack(one, true);
    panel.showTrack(one, true);
    EXPECT_TRUE(form.shown);
    EXPECT_EQ(form.focused, 2);
}

TEST_F(TagPanel, ShownAgainAfterItWasClosedItBeginsAnew)
{
    open(one);
    panel.closePressed();
    panel.ShowTagEdit(true);
    EXPECT_TRUE(form.shown);
    EXPECT_TRUE(panel.fid().isEmpty());
    panel.ShowTagEdit(false);
    EXPECT_FALSE(form.shown);
}

TEST_F(TagPanel, ItsHeightIsKeptAndItsRatingsHaveTheColoursOfTheSettings)
{
    open(one);
    EXPECT_EQ(form.height, 0) << "as high as it needs";
    form.height = 311;
    panel.closePressed();
    EXPECT_EQ(settings->GetKeyValue(u"Global"_s, u"EditTag.Height"_s, QString()), u"311"_s);
    form.height = 0;
    open(one);
    EXPECT_EQ(form.height, 311);
    settings->WriteKeyValue(u"Color"_s, u"Note5Color"_s, u"255"_s);
    send(bus::kUpdateColor);
    EXPECT_EQ(form.colours.note[4].toText(), u"#ff0000"_s);
}

// ---- the track

TEST_F(TagPanel, TheFieldsShowTheRowAndTheFootTellsOfTheFile)
{
    open(one);
    EXPECT_EQ(shown(PanelField::Interpret), u"Mara"_s);
    EXPECT_EQ(shown(PanelField::Genre), u"Deep House"_s);
    EXPECT_EQ(form.rating, 1);
    EXPECT_EQ(form.use, PanelUse::Editing);
    EXPECT_EQ(form.track.title, u"Lichter"_s);
    EXPECT_EQ(form.track.start, u"00:11:99"_s);
    EXPECT_EQ(form.track.level, u"-2.13 db"_s);
    ASSERT_GE(form.track.facts.size(), 4U);
    EXPECT_EQ(form.track.facts[0], (PanelTrack::Fact{u"DName"_s, u"Datei"_s, one + u".mp3"_s}));
    EXPECT_EQ(form.track.facts[1], (PanelTrack::Fact{u"Path"_s, u"Path"_s, u"/music/"_s}));
    EXPECT_EQ(form.track.facts[3].text, u"320"_s);
    EXPECT_TRUE(form.track.warning.isEmpty());
}

TEST_F(TagPanel, AStopOfZeroShowsTheFullLength)
{
    open(two);
    EXPECT_EQ(form.track.stop, u"03:36"_s);
    EXPECT_EQ(form.track.start, u"00:00:00"_s);
    EXPECT_EQ(form.track.level, u"??"_s);
}

TEST_F(TagPanel, ATrackWhoseFileIsNowhereSaysSo)
{
    fileIsThere = false;
    open(one);
    EXPECT_EQ(form.track.warning, u"Datei fehlt, nur in der Datenbank"_s);
}

TEST_F(TagPanel, ItFollowsTheCurrentTrackAndAViewWithoutRowsLeavesItAlone)
{
    open(one);
    send(bus::kInfoFromFid, two);
    EXPECT_EQ(shown(PanelField::Titel), u"Lange Schatten"_s);
    EXPECT_EQ(form.rating, 0);
    panel.trackEntered(one);
    EXPECT_EQ(shown(PanelField::Titel), u"Lichter"_s);
    panel.trackEntered(QString());
    EXPECT_EQ(panel.fid(), one);
    EXPECT_TRUE(entered().isEmpty()) << "looking changes nothing";
}

TEST_F(TagPanel, WithoutATrackTheFieldsAreOffAndASentenceSaysSo)
{
    panel.showTrack(QString(), true);
    EXPECT_EQ(form.use, PanelUse::Empty);
    EXPECT_FALSE(form.why.isEmpty());
    panel.showTrack(u"000000000000"_s, true);
    EXPECT_EQ(form.use, PanelUse::Empty);
    type(PanelField::Titel, u"Nichts"_s);
    loop.pass();
    EXPECT_TRUE(entered().isEmpty());
}

// ---- typing

TEST_F(TagPanel, WhatIsTypedIsWrittenWhenTheHandRestsAndTheOthersHearOfIt)
{
    open(one);
    type(PanelField::Titel, u"Lichter über dem H"_s);
    type(PanelField::Titel, u"Lichter über dem Hafen"_s);
    EXPECT_EQ(cell(u"Titel"_s, one), u"Lichter"_s);
    loop.pass();
    EXPECT_EQ(cell(u"Titel"_s, one), u"Lichter über dem Hafen"_s);
    EXPECT_EQ(entered(), QStringList{one});
    EXPECT_EQ(messages, QStringList{u"db.refresh.by.fid|"_s + one});
    EXPECT_EQ(form.track.title, u"Lichter über dem Hafen"_s);
    EXPECT_EQ(form.waiting, 1);
    loop.pass();
    EXPECT_EQ(entered().size(), 1) << "nothing more to write";
}

TEST_F(TagPanel, OnlyWhatWasTypedIsWritten)
{
    open(one);
    suite.execute(u"update db_all set Album='Anders' where fid='%1'"_s.arg(one));
    type(PanelField::User3, u"Kiste 7"_s);
    loop.pass();
    EXPECT_EQ(cell(u"Album"_s, one), u"Anders"_s);
    EXPECT_EQ(cell(u"User3"_s, one), u"Kiste 7"_s);
    EXPECT_EQ(shown(PanelField::Album), u"Anders"_s);
}

TEST_F(TagPanel, AHostileTextIsKeptLetterByLetter)
{
    open(one);
    const QString hostile = u"O'Neil \"[x]* ; drop table db_all -- ä"_s;
    type(PanelField::Kommentar, hostile + QString(10'000, u'z'));
    panel.fieldLeft(PanelField::Kommentar);
    EXPECT_EQ(cell(u"Kommentar"_s, one), hostile + QString(10'000, u'z'));
}

TEST_F(TagPanel, ArtistAlbumAndGenreMarkTheirTrees)
{
    open(one);
    type(PanelField::Interpret, u"Neu"_s);
    type(PanelField::Album, u"Neu"_s);
    panel.fieldLeft(PanelField::Album);
    EXPECT_EQ(suite.column(u"select TreeName from ChangeTree order by TreeName"_s),
              (QStringList{u"Album"_s, u"Interpret"_s}));
}

TEST_F(TagPanel, EscapeGivesAFieldItsFormerTextAlsoBehindAWritingAndThenLeavesThePanel)
{
    open(one);
    panel.fieldEntered(PanelField::Titel);
    type(PanelField::Titel, u"Falsch"_s);
    loop.pass();
    type(PanelField::Titel, u"Falscher"_s);
    panel.escapePressed(PanelField::Titel);
    EXPECT_EQ(shown(PanelField::Titel), u"Lichter"_s);
    EXPECT_EQ(cell(u"Titel"_s, one), u"Lichter"_s);
    EXPECT_EQ(left, 0);
    panel.escapePressed(PanelField::Titel);
    EXPECT_EQ(left, 1);
}

// ---- nothing typed is lost

TEST_F(TagPanel, ATrackThatIsLeftIsWrittenFirst)
{
    open(one);
    type(PanelField::Titel, u"Noch schnell"_s);
    send(bus::kInfoFromFid, two);
    EXPECT_EQ(cell(u"Titel"_s, one), u"Noch schnell"_s);
    EXPECT_EQ(cell(u"Titel"_s, two), u"Lange Schatten"_s);
    EXPECT_EQ(entered(), QStringList{one});
}

TEST_F(TagPanel, ClosingItAndTheEndOfTheProgramWriteWhatWasTyped)
{
    open(one);
    type(PanelField::Titel, u"Zu"_s);
    panel.closePressed();
    EXPECT_EQ(cell(u"Titel"_s, one), u"Zu"_s);
    open(one);
    type(PanelField::Titel, u"Ende"_s);
    panel.end();
    EXPECT_EQ(cell(u"Titel"_s, one), u"Ende"_s);
}

TEST_F(TagPanel, AnotherProgramChangesTheRowAndTheTypedFieldKeepsWhatWasTyped)
{
    open(one);
    type(PanelField::Titel, u"Mein Titel"_s);
    suite.execute(
        u"update db_all set Titel='Fremd', Album='Fremd', Note='1' where fid='%1'"_s.arg(one));
    panel.renewTrack();
    EXPECT_EQ(shown(PanelField::Titel), u"Mein Titel"_s);
    EXPECT_EQ(shown(PanelField::Album), u"Fremd"_s);
    EXPECT_EQ(form.rating, 5);
    loop.pass();
    EXPECT_EQ(cell(u"Titel"_s, one), u"Mein Titel"_s);
    EXPECT_EQ(cell(u"Album"_s, one), u"Fremd"_s);
}

TEST_F(TagPanel, AnotherViewChangesTheRowAndTheFieldsFollow)
{
    open(one);
    suite.execute(u"update db_all set Note='2' where fid='%1'"_s.arg(one));
    send(bus::kDbRefreshByFid, one);
    EXPECT_EQ(form.rating, 4);
}

TEST_F(TagPanel, BeforeAnotherProgramGetsTheLibraryWhatWasTypedIsWritten)
{
    open(one);
    type(PanelField::Titel, u"Rechtzeitig"_s);
    send(bus::kDbDisconnect);
    EXPECT_EQ(cell(u"Titel"_s, one), u"Rechtzeitig"_s);
    EXPECT_EQ(form.use, PanelUse::Locked);
    EXPECT_FALSE(form.why.isEmpty());
    type(PanelField::Titel, u"Zu spät"_s);
    panel.rate(5);
    loop.pass();
    EXPECT_EQ(cell(u"Titel"_s, one), u"Rechtzeitig"_s);
    EXPECT_EQ(cell(u"Note"_s, one), u"5"_s);
    send(bus::kDbReconnect);
    EXPECT_EQ(form.use, PanelUse::Editing);
    EXPECT_EQ(shown(PanelField::Titel), u"Rechtzeitig"_s);
}

TEST_F(TagPanel, WhatCannotBeWrittenStaysInTheFieldAndIsWrittenWhenTheLibraryIsBack)
{
    open(one);
    type(PanelField::Titel, u"Bleibt"_s);
    suite.engine->GiveAway(suite.dbName());
    panel.fieldLeft(PanelField::Titel);
    EXPECT_EQ(shown(PanelField::Titel), u"Bleibt"_s);
    send(bus::kDbDisconnect);
    panel.trackEntered(two);
    suite.engine->TakeBack(suite.dbName());
    send(bus::kDbReconnect);
    EXPECT_EQ(cell(u"Titel"_s, one), u"Bleibt"_s);
    EXPECT_EQ(shown(PanelField::Titel), u"Lange Schatten"_s);
}

TEST_F(TagPanel, WhatCouldNotBeWrittenStandsInTheFieldsAgainWhenItsTrackIsShown)
{
    open(one);
    type(PanelField::Titel, u"Bleibt"_s);
    suite.execute(u"drop table db_edit"_s);
    panel.trackEntered(two);
    EXPECT_EQ(cell(u"Titel"_s, one), u"Lichter"_s);
    EXPECT_FALSE(messages.filter(u"show.statustext"_s).isEmpty());
    panel.trackEntered(one);
    EXPECT_EQ(shown(PanelField::Titel), u"Bleibt"_s);
    suite.execute(u"create table db_edit (fid text(12))"_s);
    panel.fieldLeft(PanelField::Titel);
    EXPECT_EQ(cell(u"Titel"_s, one), u"Bleibt"_s);
}

TEST_F(TagPanel, ATrackThatIsGoneTakesNothingAndSaysSo)
{
    open(one);
    type(PanelField::Titel, u"Weg"_s);
    suite.execute(u"delete * from db_all where fid='%1'"_s.arg(one));
    loop.pass();
    EXPECT_EQ(form.use, PanelUse::Empty);
    EXPECT_TRUE(messages.contains(
        u"show.statustext|Der Titel steht nicht mehr in der Bibliothek, die Änderung entfällt."_s));
    panel.trackEntered(two);
    EXPECT_EQ(form.use, PanelUse::Editing);
}

TEST_F(TagPanel, AnotherLibraryEmptiesThePanelAndTheFormerOneGetsWhatWasTyped)
{
    open(one);
    type(PanelField::Titel, u"Noch hier"_s);
    const QString other = suite.file(u"andere.mdb"_s);
    suite.engine->BackupDatabase(suite.dbName(), other);
    settings->SetDbName(other);
    send(bus::kDbChange);
    EXPECT_EQ(cell(u"Titel"_s, one), u"Noch hier"_s);
    EXPECT_EQ(form.use, PanelUse::Empty);
}

TEST_F(TagPanel, ALibraryThatCanOnlyBeReadLocksTheFieldsWithTheReason)
{
    mayWrite = false;
    open(one);
    EXPECT_EQ(form.use, PanelUse::Locked);
    EXPECT_EQ(form.why, texts.text(u"library.readonly"));
    EXPECT_EQ(shown(PanelField::Titel), u"Lichter"_s);
    panel.rate(3);
    type(PanelField::Titel, u"x"_s);
    panel.chosen(PanelField::Genre, u"x"_s);
    loop.pass();
    EXPECT_TRUE(entered().isEmpty());
}

// ---- lists

TEST_F(TagPanel, TheListsAreFilledOnceFromTheCatalogue)
{
    open(one);
    EXPECT_TRUE(form.choices[PanelField::Stimmung].contains(u"verträumt"_s));
    EXPECT_TRUE(form.choices[PanelField::Kategorie].size() > 1);
    EXPECT_TRUE(form.choices[PanelField::Genre].contains(u"Acid"_s));
    form.choices.clear();
    panel.trackEntered(two);
    EXPECT_TRUE(form.choices.empty());
}

TEST_F(TagPanel, EmptyCatalogueValuesAreLeftOutAndUserValuesFollow)
{
    suite.execute(u"delete * from config"_s);
    suite.execute(u"insert into config (Lang,Name,[Value],Beschreibung) values (-1,'Tempo','User',"
                  "'eigenes')"_s);
    suite.execute(
        u"insert into config (Lang,Name,[Value],Beschreibung) values (49,'Tempo','de.1','  ')"_s);
    suite.execute(u"insert into config (Lang,Name,[Value],Beschreibung) values (49,'Tempo','de.2',"
                  "'mittel')"_s);
    open(one);
    EXPECT_EQ(form.choices[PanelField::Tempo], (QStringList{u"mittel"_s, u"eigenes"_s}));
}

TEST_F(TagPanel, TheSettingDecidesWhereTheGenresComeFrom)
{
    suite.execute(u"insert into tree_genre (Name, anzahl) values ('Hafenmusik', 3)"_s);
    const auto genres = [this](const QString& source) {
        settings->WriteKeyValue(u"Grlobal"_s, u"EditTag.Load.Genre"_s, source);
        test::PlainTagForm other;
        {
            EditTag fresh(parts(), other);
            fresh.showTrack(one, true);
        }
        EXPECT_TRUE(other.isDetached);
        return other.choices[PanelField::Genre];
    };
    EXPECT_EQ(genres(u"Verwendete"_s), QStringList{u"Hafenmusik"_s});
    EXPECT_TRUE(genres(u"ID3"_s).isEmpty()) << "that statement fails and the list stays empty";
    const QStringList all = genres(u"ALL"_s);
    EXPECT_TRUE(all.contains(u"Hafenmusik"_s));
    EXPECT_GT(all.size(), 100);
}

TEST_F(TagPanel, AChoiceInAListIsWrittenAtOnce)
{
    open(one);
    panel.chosen(PanelField::Stimmung, u"verträumt"_s);
    EXPECT_EQ(cell(u"Stimmung"_s, one), u"verträumt"_s);
    EXPECT_EQ(entered(), QStringList{one});
}

TEST_F(TagPanel, EnterWritesInTheFourListsButNotInTheGenre)
{
    open(one);
    type(PanelField::Genre, u"Pop"_s);
    panel.enterPressed(PanelField::Genre);
    EXPECT_EQ(cell(u"Genre"_s, one), u"Deep House"_s);
    panel.fieldLeft(PanelField::Genre);
    EXPECT_EQ(cell(u"Genre"_s, one), u"Pop"_s);
    for (const PanelField field :
         {PanelField::Kategorie, PanelField::Stimmung, PanelField::Situation, PanelField::Tempo}) {
        type(field, u"eigen"_s);
        panel.enterPressed(field);
        EXPECT_EQ(cell(columnOf(field), one), u"eigen"_s);
    }
}

// ---- new genre

TEST_F(TagPanel, TheButtonOfTheGenreAsksTheMainWindowForTheBox)
{
    open(one);
    panel.cmdNewGenre();
    EXPECT_EQ(messages, QStringList{u"edittag.show.editbox.new.genre|"_s});
}

TEST_F(TagPanel, ANewGenreIsOfferedWrittenAndTheTreeIsMadeAnew)
{
    open(one);
    send(bus::kEditBoxAddNewGenre, u"  Hafenmusik "_s);
    EXPECT_EQ(form.choices[PanelField::Genre].last(), u"Hafenmusik"_s);
    EXPECT_EQ(shown(PanelField::Genre), u"Hafenmusik"_s);
    EXPECT_EQ(cell(u"Genre"_s, one), u"Hafenmusik"_s);
    EXPECT_EQ(messages.last(), u"refresh.tree.genre|"_s);
    EXPECT_EQ(messages.filter(u"db.refresh.by.fid"_s).size(), 1);
}

TEST_F(TagPanel, AGenreThatDiffersOnlyInCaseIsNotAddedTwice)
{
    open(one);
    const QStringList before = form.choices[PanelField::Genre];
    ASSERT_TRUE(before.contains(u"Acid"_s));
    send(bus::kEditBoxAddNewGenre, u"aCID"_s);
    EXPECT_EQ(form.choices[PanelField::Genre], before);
    EXPECT_EQ(cell(u"Genre"_s, one), u"aCID"_s);
}

// ---- rating

TEST_F(TagPanel, OptionOneStoresFiveAndOptionFiveStoresOne)
{
    open(two);
    const QStringList stored{u"5"_s, u"4"_s, u"3"_s, u"2"_s, u"1"_s};
    for (int option = 1; option <= 5; ++option) {
        messages.clear();
        panel.rate(option);
        EXPECT_EQ(cell(u"Note"_s, two), stored[option - 1]);
        EXPECT_EQ(form.rating, option);
        EXPECT_EQ(messages, QStringList{u"db.refresh.by.fid|"_s + two});
    }
    panel.rate(0);
    EXPECT_TRUE(suite.value(u"select Note from db_all where fid='%1'"_s.arg(two)).isNull());
    panel.rate(6);
    panel.rate(-1);
    EXPECT_EQ(entered().size(), 6);
}

TEST_F(TagPanel, ARatingWritesWhatWasTypedWithIt)
{
    open(one);
    type(PanelField::Titel, u"Beides"_s);
    panel.rate(2);
    EXPECT_EQ(cell(u"Titel"_s, one), u"Beides"_s);
    EXPECT_EQ(cell(u"Note"_s, one), u"4"_s);
    EXPECT_EQ(entered(), QStringList{one});
}

// ---- cover

TEST_F(TagPanel, ClickingTheImageWhileThePanelIsInactiveDoesNothing)
{
    panel.Mp3Image();
    EXPECT_TRUE(chosenCovers.isEmpty());
    open(one);
    panel.Mp3Image();
    EXPECT_EQ(chosenCovers, QStringList{one});
    panel.closePressed();
    panel.Mp3Image();
    EXPECT_EQ(chosenCovers.size(), 1);
}

TEST_F(TagPanel, ACoverThatComesWhenAnotherTrackIsShownIsDropped)
{
    open(one);
    const auto first = answerCover;
    panel.trackEntered(two);
    answerCover("zwei");
    first("eins");
    EXPECT_EQ(form.cover, "zwei");
    panel.coverChanged(two);
    answerCover("neu");
    EXPECT_EQ(form.cover, "neu");
    EXPECT_EQ(messages.last(), u"db.refresh.by.fid|"_s + two);
}

TEST_F(TagPanel, AnotherImageOfTheRowIsAskedForAndTheSameOneIsNot)
{
    open(one);
    answerCover = {};
    send(bus::kDbRefreshByFid, one);
    EXPECT_FALSE(answerCover);
    suite.execute(u"update db_all set Image='anders' where fid='%1'"_s.arg(one));
    send(bus::kDbRefreshByFid, one);
    EXPECT_TRUE(answerCover);
}

// ---- buttons

TEST_F(TagPanel, StartAndStopAreHeardFromTheirPlaces)
{
    open(one);
    panel.cmdStart();
    panel.cmdStop();
    EXPECT_EQ(messages, (QStringList{u"play.from.start.pos|%1|459"_s.arg(one),
                                     u"play.from.stop.pos|%1|14979"_s.arg(one)}));
}

TEST_F(TagPanel, TheFolderOfTheTrackOpensOrItsPlaceIsTold)
{
    open(one);
    panel.ButtonShowDir();
    EXPECT_EQ(commands, QStringList{u"explorer.exe \"/music/\""_s});
    runs = false;
    panel.ButtonShowDir();
    EXPECT_EQ(messages.last(),
              u"show.statustext|Kein Programm öffnet den Ordner. Er liegt hier: /music/"_s);
}

// ---- steps

TEST_F(TagPanel, WhatWasTypedAndARatingAreStepsThatAreTakenBack)
{
    open(one);
    type(PanelField::Titel, u"Neu"_s);
    loop.pass();
    panel.rate(5);
    ASSERT_TRUE(history.nextUndo());
    EXPECT_EQ(history.undo().step.action, ListAction::Rating);
    EXPECT_EQ(cell(u"Note"_s, one), u"5"_s);
    EXPECT_EQ(history.undo().step.action, ListAction::Tracks);
    EXPECT_EQ(cell(u"Titel"_s, one), u"Lichter"_s);
    send(bus::kDbRefreshByFid, one);
    EXPECT_EQ(shown(PanelField::Titel), u"Lichter"_s);
}

} // namespace
} // namespace melovane
