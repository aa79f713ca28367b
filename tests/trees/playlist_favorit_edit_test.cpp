#include "trees/favorit_panel.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

using PlaylistFavoritEdit = test::PlaylistFavoritTest;

// ---- new rows and names

TEST_F(PlaylistFavoritEdit, ANewPlaylistStandsLastInTheGroupOfTheCurrentRowAndWaitsForItsName)
{
    press(u"all.newdoc"_s, rowOf(lists.main));
    const int row = rowOf(lists.reserve) + 1;
    EXPECT_EQ(tree.row(row).text, u"New Playlist 14.03.26 15.09"_s);
    EXPECT_EQ(tree.row(row).picture, u"tree.playlist"_s);
    EXPECT_EQ(tree.current, row);
    EXPECT_EQ(tree.editedRow, row);
    EXPECT_EQ(lists.order(lists.friday), u"Hauptset,Warm-up,Reserve,New Playlist 14.03.26 15.09"_s);
    const int list = panel.GetPlaylistID(row).toInt();
    EXPECT_FALSE(lists.of(list, u"updatetime"_s).isEmpty());
    EXPECT_EQ(lists.of(list, u"activ"_s), u"-1"_s);
}

TEST_F(PlaylistFavoritEdit, ANewListBelowTheJinglesIsAJingleList)
{
    press(u"all.newdoc"_s, 0);
    EXPECT_EQ(tree.row(3).text, u"Neue Jingleliste 14.03.26"_s);
    EXPECT_EQ(tree.row(3).picture, u"Tree.Jingle.Playlist"_s);
    EXPECT_TRUE(treekey::isJingleRow(tree.row(3).key));
    EXPECT_EQ(lists.order(-1), u"Kennung,Wetter,Neue Jingleliste 14.03.26"_s);
}

TEST_F(PlaylistFavoritEdit, ANewPlaylistWithoutAGroupIsNotMade)
{
    press(u"all.newdoc"_s, -1);
    EXPECT_EQ(lists.value(u"select count(*) from pl_name"_s).toLong(), 6);
    EXPECT_TRUE(lists.messages.first().startsWith(u"show.statustext|"_s));
}

TEST_F(PlaylistFavoritEdit, ANewPlaylistFromTheEmptyViewFindsItsGroupOrMakesOne)
{
    tree.current = tree.find(treekey::jingleGroup());
    panel.newPlaylist();
    EXPECT_EQ(lists.order(lists.friday).count(u','), 3) << "it stands in the first group";
    EXPECT_EQ(numberOf(lists.open), lists.value(u"select max(nid) from pl_name"_s).toLong());
    tree.editing = false;
    tree.current = rowOf(lists.dance);
    panel.newPlaylist();
    EXPECT_EQ(lists.order(lists.saturday).count(u','), 1);
    tree.editing = false;
    lists.execute(u"delete from pl_name"_s);
    lists.execute(u"delete from pl_group"_s);
    send(u"favorit.refresh"_s);
    panel.newPlaylist();
    EXPECT_EQ(lists.column(u"select grid from pl_name"_s),
              lists.column(u"select grid from pl_group"_s));
    EXPECT_TRUE(tree.editing) << "it waits for its name";
}

TEST_F(PlaylistFavoritEdit, ANewGroupComesLastAndWaitsForItsName)
{
    press(u"all.newdir"_s, -1);
    const int row = tree.rowCount() - 1;
    EXPECT_EQ(tree.row(row).text, u"New Group 14.03.26 15.09"_s);
    EXPECT_EQ(tree.editedRow, row);
    EXPECT_EQ(lists.column(u"select sid from pl_group order by grid"_s).last(), u"1000000"_s);
}

TEST_F(PlaylistFavoritEdit, EachPairOfMarksInANameFormatIsADateAndALoneOneStays)
{
    ListCatalogue& names = lists.lists.catalogue();
    EXPECT_EQ(names.nameFromFormat(u"#DD# und #MM#!"_s), u"14 und 03!"_s);
    EXPECT_EQ(names.nameFromFormat(u"Nr # 5"_s), u"Nr # 5"_s);
    EXPECT_EQ(names.nameFromFormat(u"#YYYY##"_s), u"2026#"_s);
    EXPECT_EQ(names.nameFromFormat(u"a##b"_s), u"ab"_s);
    EXPECT_EQ(names.nameFromFormat(u"'#HH.NN'#\""_s), u"'15.09'\""_s);
    EXPECT_EQ(names.nameFromFormat({}), QString());
}

TEST_F(PlaylistFavoritEdit, AZeroOrNoLetterOfADateInANameFormatStandsForItself)
{
    ListCatalogue& names = lists.lists.catalogue();
    EXPECT_EQ(names.nameFromFormat(u"#DD.MM.20YY#"_s), u"14.03.2026"_s);
    EXPECT_EQ(names.nameFromFormat(u"Bar #1.0#"_s), u"Bar 1.0"_s);
    EXPECT_EQ(names.nameFromFormat(u"#Bar# #007#"_s), u"Bar 007"_s);
}

TEST_F(PlaylistFavoritEdit, ARenamedPlaylistWaitsToBeSavedAndTheOtherPanelsLearnItsName)
{
    panel.rowEdited(rowOf(lists.dance), u" Don't stop "_s);
    EXPECT_EQ(lists.of(lists.dance, u"name"_s), u"Don*t stop"_s);
    EXPECT_EQ(lists.of(lists.dance, u"sicherung"_s), u"-1"_s);
    EXPECT_EQ(tree.row(rowOf(lists.dance)).text, u"Don*t stop"_s);
    EXPECT_EQ(lists.messages,
              QStringList{u"update.tree.row|PLG?Playlist??%1|Don*t stop "_s.arg(lists.dance)});
}

TEST_F(PlaylistFavoritEdit, ARenamedGroupTellsItsName)
{
    panel.rowEdited(groupRow(lists.friday), u"Freitags"_s);
    EXPECT_EQ(lists.value(u"select name from pl_group where grid=%1"_s.arg(lists.friday)).toText(),
              u"Freitags"_s);
    EXPECT_EQ(lists.messages,
              QStringList{u"update.tree.row|PLGROUP?Gruppe??%1|Freitags"_s.arg(lists.friday)});
}

TEST_F(PlaylistFavoritEdit, HostileNamesAreKeptAsFarAsTheColumnHolds)
{
    for (const QString& name :
         {u"a\"b"_s, u"[x]*?#"_s, u"x; delete from pl_name"_s, u"zwei\nZeilen"_s}) {
        panel.rowEdited(rowOf(lists.dance), name);
        EXPECT_EQ(lists.of(lists.dance, u"name"_s), name);
    }
    panel.rowEdited(rowOf(lists.dance), QString(10'000, u'ä'));
    EXPECT_EQ(lists.of(lists.dance, u"name"_s), QString(255, u'ä'));
    panel.rowEdited(rowOf(lists.dance), u"   "_s);
    EXPECT_EQ(lists.of(lists.dance, u"name"_s), QString(255, u'ä'));
}

TEST_F(PlaylistFavoritEdit, TheCountIsNotPartOfTheNameThatIsChanged)
{
    panel.UpdateTreeRow(treekey::playlist(lists.dance), u"Tanz [12] "_s);
    panel.rename(rowOf(lists.dance));
    EXPECT_EQ(tree.editedText, u"Tanz"_s);
    EXPECT_EQ(panel.GetPlaylistname(rowOf(lists.dance)), u"Tanz"_s);
    EXPECT_EQ(withoutCount(u"[12]"_s), u"[12]"_s);
    EXPECT_EQ(withoutCount(u"Tanz [12"_s), u"Tanz [12"_s);
}

TEST_F(PlaylistFavoritEdit, TheJingleGroupCannotBeRenamed)
{
    panel.rename(0);
    EXPECT_FALSE(tree.isEditing());
    panel.rename(rowOf(lists.weather));
    EXPECT_EQ(tree.editedRow, rowOf(lists.weather));
}

// ---- order

TEST_F(PlaylistFavoritEdit, SortingByNameAscends)
{
    lists.open = Pnid(lists.reserve);
    choose(1004, rowOf(lists.reserve));
    EXPECT_EQ(lists.order(lists.friday), u"Hauptset,Reserve,Warm-up"_s);
    EXPECT_EQ(tree.row(groupRow(lists.friday) + 2).text, u"Reserve"_s);
    EXPECT_EQ(tree.current, rowOf(lists.reserve));
}

TEST_F(PlaylistFavoritEdit, SortingByDateOfTheJingleListsWorks)
{
    lists.set(lists.station, u"createtime=#2026-03-01#"_s);
    lists.set(lists.weather, u"createtime=#2025-03-01#"_s);
    choose(1005, rowOf(lists.station));
    EXPECT_EQ(lists.order(-1), u"Wetter,Kennung"_s);
    EXPECT_EQ(lists.of(lists.weather, u"sid"_s), u"1"_s);
    EXPECT_EQ(tree.row(1).text, u"Wetter"_s);
}

TEST_F(PlaylistFavoritEdit, ADroppedListMovesToItsNewPlaceAndAllRowsAreCounted)
{
    lists.open = Pnid(lists.reserve);
    panel.rowDropped(rowOf(lists.reserve), rowOf(lists.main), DropPlace::Above);
    EXPECT_EQ(lists.order(lists.friday), u"Reserve,Hauptset,Warm-up"_s);
    EXPECT_EQ(lists.of(lists.reserve, u"sid"_s), u"5"_s);
    EXPECT_EQ(lists.of(lists.dance, u"sid"_s), u"9"_s);
    EXPECT_TRUE(lists.messages.contains(u"refresh.playlist"_s));
    EXPECT_EQ(tree.current, rowOf(lists.reserve));
    panel.rowDropped(rowOf(lists.reserve), rowOf(lists.warmUp), DropPlace::Below);
    EXPECT_EQ(lists.order(lists.friday), u"Hauptset,Warm-up,Reserve"_s);
}

TEST_F(PlaylistFavoritEdit, AListDroppedOnAGroupBecomesItsLast)
{
    panel.rowDropped(rowOf(lists.main), groupRow(lists.saturday), DropPlace::Into);
    EXPECT_EQ(lists.order(lists.saturday), u"Tanz,Hauptset"_s);
    EXPECT_EQ(lists.order(lists.friday), u"Warm-up,Reserve"_s);
    EXPECT_EQ(picture(lists.main), u"all.audio"_s);
}

TEST_F(PlaylistFavoritEdit, AListThatMovesToAnotherGroupWaitsToBeSavedAndNoOtherDoes)
{
    lists.execute(u"update pl_name set sicherung=false"_s);
    const QString waiting = u"select nid from pl_name where sicherung=true"_s;
    panel.rowDropped(rowOf(lists.reserve), rowOf(lists.main), DropPlace::Above);
    EXPECT_EQ(lists.column(waiting), QStringList());
    panel.rowDropped(rowOf(lists.main), groupRow(lists.saturday), DropPlace::Into);
    EXPECT_EQ(lists.column(waiting), QStringList{QString::number(lists.main)});
}

TEST_F(PlaylistFavoritEdit, APlayingPlaylistDroppedAmongJinglesStopsBeingThePlayingOne)
{
    panel.rowDropped(rowOf(lists.main), 0, DropPlace::Into);
    EXPECT_EQ(lists.order(-1), u"Kennung,Wetter,Hauptset"_s);
    EXPECT_EQ(lists.playing(), QString::number(lists.station));
    EXPECT_EQ(tree.row(tree.current).key, treekey::jingleList(lists.main));
}

TEST_F(PlaylistFavoritEdit, AnOpenListThatChangesItsKindIsOpenedAnewAsWhatItIsNow)
{
    lists.open = Pnid(lists.main);
    const QString asJingles = u"jinglelist.aktivieren|%1|"_s.arg(lists.main);
    const QString asPlaylist = u"playlist.aktivieren|%1|"_s.arg(lists.main);
    panel.rowDropped(rowOf(lists.main), 0, DropPlace::Into);
    EXPECT_EQ(lists.messages.filter(asJingles).size(), 1);
    EXPECT_TRUE(lists.messages.filter(asPlaylist).isEmpty());
    lists.messages.clear();
    panel.rowDropped(rowOf(lists.main), groupRow(lists.saturday), DropPlace::Into);
    EXPECT_EQ(lists.messages.filter(asPlaylist).size(), 1);
    EXPECT_TRUE(lists.messages.filter(asJingles).isEmpty());
}

TEST_F(PlaylistFavoritEdit, AListThatKeepsItsKindOrIsNotOpenIsNotOpenedByADrop)
{
    lists.open = Pnid(lists.main);
    panel.rowDropped(rowOf(lists.main), groupRow(lists.saturday), DropPlace::Into);
    panel.rowDropped(rowOf(lists.reserve), 0, DropPlace::Into);
    EXPECT_TRUE(lists.messages.filter(u"list.aktivieren"_s).isEmpty());
}

TEST_F(PlaylistFavoritEdit, AGroupIsNotMovedByADrop)
{
    const QStringList before = tree.texts();
    panel.rowDropped(groupRow(lists.friday), rowOf(lists.dance), DropPlace::Below);
    panel.rowDropped(rowOf(lists.dance), 99, DropPlace::Below);
    panel.rowDropped(rowOf(lists.dance), rowOf(lists.dance), DropPlace::Below);
    EXPECT_EQ(tree.texts(), before);
    EXPECT_TRUE(lists.messages.isEmpty());
}

// ---- marks

// ---- drops of other views

TEST_F(PlaylistFavoritEdit, TracksAndEntriesDroppedOnAListAreAppendedToIt)
{
    const QString fid = lists.library.add({.Titel = u"Licht"_s});
    const int set = lists.library.addPlaylist(
        {.Name = u"Satz"_s, .GRID = lists.friday, .tracks = {fid}, .SID = 9});
    const QString entry = lists.value(u"select plid from pl_all where pnid=%1"_s.arg(set)).toText();
    for (const QString& text : {u"DRAG_TYP_FID_MP3DB:"_s + fid, u"DRAG_TYP_PLID:"_s + entry}) {
        const DropOffer offer = onRow(rowOf(lists.dance), text);
        EXPECT_EQ(panel.drops().dropEffect(offer), DropEffect::Copy);
        panel.drops().drop(offer);
        EXPECT_EQ(lists.appended.takeLast(), text + u" to %1"_s.arg(lists.dance));
    }
}

TEST_F(PlaylistFavoritEdit, WhatCannotBeAppendedIsRefused)
{
    const QString tracks = u"DRAG_TYP_FID_MP3DB:800000000001"_s;
    const auto effect = [&](int row, const QString& text) {
        return panel.drops().dropEffect(onRow(row, text));
    };
    ASSERT_EQ(effect(rowOf(lists.dance), tracks), DropEffect::Copy);
    EXPECT_EQ(effect(rowOf(lists.station), tracks), DropEffect::Copy);
    EXPECT_EQ(effect(groupRow(lists.friday), tracks), DropEffect::None);
    EXPECT_EQ(effect(-1, tracks), DropEffect::None);
    EXPECT_EQ(effect(rowOf(lists.dance), u"DRAG_TYP_FID_MP3DB:"_s), DropEffect::None);
    EXPECT_EQ(effect(rowOf(lists.dance), u"some words"_s), DropEffect::None);
    lists.mayWrite = false;
    EXPECT_EQ(effect(rowOf(lists.dance), tracks), DropEffect::None) << "a library on a disc";
    lists.mayWrite = true;
    send(u"db.disconnect"_s);
    EXPECT_EQ(effect(rowOf(lists.dance), tracks), DropEffect::None) << "a library that was lent";
    send(u"db.reconnect"_s);
    lists.set(lists.dance, u"lock=true"_s);
    send(u"favorit.refresh"_s);
    EXPECT_EQ(effect(rowOf(lists.dance), tracks), DropEffect::None);
    EXPECT_TRUE(lists.appended.isEmpty());
}

TEST_F(PlaylistFavoritEdit, EntriesStayWithinTheirKindOfLists)
{
    const QString fid = lists.library.add({.Titel = u"Kennmelodie"_s});
    const auto entryOf = [&](int group) {
        const int list = lists.library.addPlaylist(
            {.Name = u"Satz"_s, .GRID = group, .tracks = {fid}, .SID = 9});
        return u"DRAG_TYP_PLID:"_s +
               lists.value(u"select plid from pl_all where pnid=%1"_s.arg(list)).toText();
    };
    const QString jingle = entryOf(-1);
    const QString ordinary = entryOf(lists.friday);
    const auto effect = [&](int list, const QString& text) {
        return panel.drops().dropEffect(onRow(rowOf(list), text));
    };
    EXPECT_EQ(effect(lists.weather, jingle), DropEffect::Copy);
    EXPECT_EQ(effect(lists.dance, jingle), DropEffect::None);
    EXPECT_EQ(effect(lists.weather, ordinary), DropEffect::None);
    EXPECT_EQ(effect(lists.dance, ordinary), DropEffect::Copy);
}

TEST_F(PlaylistFavoritEdit, AListCanBeTakenOutOfThePanelAndPutBack)
{
    choose(1009, rowOf(lists.dance));
    EXPECT_EQ(rowOf(lists.dance), -1);
    EXPECT_EQ(lists.of(lists.dance, u"activ"_s), u"0"_s);
    choose(1010, -1);
    EXPECT_TRUE(tree.row(rowOf(lists.dance)).dimmed);
    choose(1009, rowOf(lists.dance));
    choose(1010, -1);
    EXPECT_FALSE(tree.row(rowOf(lists.dance)).dimmed);
    EXPECT_EQ(lists.of(lists.dance, u"activ"_s), u"-1"_s);
}

TEST_F(PlaylistFavoritEdit, TheMenuHoldsItsEntriesWithLinesUnderTheirNumbers)
{
    choose(0, rowOf(lists.dance));
    const auto& shown = lists.answers.lastPopup;
    ASSERT_EQ(shown.size(), 11);
    for (size_t i = 0; i < shown.size(); ++i) {
        EXPECT_EQ(shown[i].id, 1001 + int(i));
        EXPECT_EQ(shown[i].caption.isEmpty(), i == 2 || i == 5 || i == 7);
    }
    EXPECT_EQ(shown[0].caption, u"Aktivieren"_s);
    EXPECT_EQ(shown[6].caption, u"Eigenschaften Playliste"_s);
    choose(0, 0);
    EXPECT_FALSE(lists.answers.lastPopup[0].enabled);
    EXPECT_FALSE(lists.answers.lastPopup[1].enabled);
}

TEST_F(PlaylistFavoritEdit, WhatTheMenuCannotDoIsGreyAndSaysWhy)
{
    const auto reason = [this](int entry) {
        const auto& shown = lists.answers.lastPopup;
        const auto found = std::find_if(shown.begin(), shown.end(),
                                        [entry](const PopupEntry& e) { return e.id == entry; });
        return found == shown.end() || found->enabled != found->tip.isEmpty() ? u"?"_s : found->tip;
    };
    lists.mayWrite = false;
    choose(0, rowOf(lists.dance));
    for (const int writes : {1001, 1002, 1004, 1005, 1009}) {
        EXPECT_EQ(reason(writes), lists.texts.text(u"library.readonly"_s)) << writes;
    }
    for (const int reads : {1007, 1010, 1011}) {
        EXPECT_EQ(reason(reads), QString()) << reads;
    }
    lists.mayWrite = true;
    choose(0, groupRow(lists.friday));
    EXPECT_EQ(reason(1001), u"Erst eine Playliste auswählen"_s);
    EXPECT_EQ(reason(1002), QString());
    EXPECT_EQ(reason(1011), u"Erst eine Playliste auswählen"_s);
    choose(0, -1);
    EXPECT_EQ(reason(1002), u"Erst eine Gruppe oder Playliste auswählen"_s);
}

TEST_F(PlaylistFavoritEdit, KeysAndDragsChangeNothingInALibraryThatCanOnlyBeReadAndSaySo)
{
    lists.mayWrite = false;
    const QStringList before = tree.texts();
    const QString told = u"show.statustext|"_s + lists.texts.text(u"library.readonly"_s);
    const int row = rowOf(lists.dance);
    for (const std::function<void()>& hand : std::initializer_list<std::function<void()>>{
             [&] { panel.rename(row); }, [&] { panel.deleteRow(row); },
             [&] { panel.rowDropped(row, groupRow(lists.friday), DropPlace::Into); },
             [&] { panel.newPlaylist(); }, [&] { press(u"all.newdir"_s, row); },
             [&] { panel.rowEdited(row, u"Anders"_s); }, [&] { panel.rowActivated(row); }}) {
        lists.messages.clear();
        hand();
        EXPECT_EQ(lists.messages.filter(u"show.statustext"_s), QStringList(told));
    }
    EXPECT_EQ(lists.open, Pnid(lists.dance)) << "it can still be looked at";
    EXPECT_EQ(tree.texts(), before);
    EXPECT_EQ(lists.playing(), u"%1,%2"_s.arg(lists.main).arg(lists.station));
    EXPECT_EQ(lists.of(lists.dance, u"name"_s), u"Tanz"_s);
}

TEST_F(PlaylistFavoritEdit, AListCanBeSavedToAFileFromTheMenu)
{
    choose(1011, rowOf(lists.dance));
    EXPECT_EQ(lists.saved, QList<int>{lists.dance});
    choose(0, 0);
    EXPECT_FALSE(lists.answers.lastPopup[10].enabled);
    EXPECT_EQ(lists.answers.lastPopup[10].caption, u"Als M3U-Datei speichern ..."_s);
}

// ---- deleting

TEST_F(PlaylistFavoritEdit, ADeletionOfALockedListThatIsPlayingShowsTheLockWarning)
{
    press(u"all.lock"_s, rowOf(lists.main));
    lists.answers.expectMessage(lists.texts.text(u"warnDelPlaylistLock"));
    press(u"all.delete"_s, rowOf(lists.main));
    EXPECT_TRUE(lists.answers.messages.first().startsWith(u"Achtung !"_s));
    EXPECT_EQ(lists.of(lists.main, u"name"_s), u"Hauptset"_s);
}

TEST_F(PlaylistFavoritEdit, APlaylistIsDeletedWithItsEntriesAfterTheQuestion)
{
    lists.execute(u"insert into pl_all (pnid, fid) values (%1, '800000000001')"_s.arg(lists.main));
    lists.answers.expectMessage(u"''Hauptset''"_s, WarningAnswer::No);
    press(u"all.delete"_s, rowOf(lists.main));
    EXPECT_GE(rowOf(lists.main), 0);
    lists.answers.expectMessage(u"''Hauptset''"_s, WarningAnswer::Yes);
    press(u"all.delete"_s, rowOf(lists.main));
    EXPECT_EQ(rowOf(lists.main), -1);
    EXPECT_EQ(lists.value(u"select count(*) from pl_name where nid=%1"_s.arg(lists.main)).toLong(),
              0);
    EXPECT_EQ(lists.value(u"select count(*) from pl_all where pnid=%1"_s.arg(lists.main)).toLong(),
              0);
    EXPECT_TRUE(lists.messages.contains(u"refresh.playlist.tree"_s));
    EXPECT_TRUE(lists.messages.contains(u"refresh.playlist|%1"_s.arg(lists.main)));
}

TEST_F(PlaylistFavoritEdit, AGroupWithAnyPlaylistCannotBeDeletedEvenWhenNoneIsMarked)
{
    lists.set(lists.dance, u"activ=false"_s);
    send(u"refresh.all"_s);
    ASSERT_EQ(tree.texts().last(), u"Samstag"_s);
    lists.answers.expectMessage(u"''Samstag''"_s);
    press(u"all.delete"_s, groupRow(lists.saturday));
    EXPECT_EQ(tree.texts().last(), u"Samstag"_s);
    EXPECT_EQ(lists.value(u"select count(*) from pl_group"_s).toLong(), 2);
}

TEST_F(PlaylistFavoritEdit, AnEmptyGroupIsDeletedWithoutAQuestion)
{
    lists.execute(u"delete from pl_name where nid=%1"_s.arg(lists.dance));
    press(u"all.delete"_s, groupRow(lists.saturday));
    EXPECT_EQ(groupRow(lists.saturday), -1);
    EXPECT_EQ(lists.value(u"select count(*) from pl_group"_s).toLong(), 1);
}

TEST_F(PlaylistFavoritEdit, TheJingleGroupHasTheNumberMinusOneAndDeletingItDoesNothing)
{
    EXPECT_EQ(panel.GetGroupID(0), u"-1"_s);
    EXPECT_EQ(lists.value(u"select count(*) from pl_group where grid=-1"_s).toLong(), 0);
    press(u"all.delete"_s, 0);
    EXPECT_EQ(tree.texts().first(), u"Jingle"_s);
    EXPECT_TRUE(lists.answers.messages.isEmpty());
    EXPECT_EQ(lists.order(-1), u"Kennung,Wetter"_s);
}

TEST_F(PlaylistFavoritEdit, AListThatAnotherProgramDeletedMeanwhileDoesNoHarm)
{
    lists.execute(u"delete from pl_name where nid=%1"_s.arg(lists.dance));
    const int row = rowOf(lists.dance);
    press(u"all.lock"_s, row);
    panel.rowEdited(row, u"Fort"_s);
    panel.rowActivated(row);
    EXPECT_EQ(lists.playing(), u"%1,%2"_s.arg(lists.main).arg(lists.station));
    send(u"refresh.playlist.tree"_s);
    EXPECT_EQ(rowOf(lists.dance), -1);
}

TEST_F(PlaylistFavoritEdit, AListThatIsGoneIsNeitherOpenedNorPlayedAndItsRowGoes)
{
    lists.execute(u"delete from pl_name where nid=%1"_s.arg(lists.dance));
    panel.rowActivated(rowOf(lists.dance));
    EXPECT_EQ(lists.messages, QStringList{u"show.statustext|Diese Playliste gibt es nicht mehr"_s});
    EXPECT_EQ(rowOf(lists.dance), -1);
    EXPECT_EQ(lists.playing(), u"%1,%2"_s.arg(lists.main).arg(lists.station));
}

TEST_F(PlaylistFavoritEdit, ADatabaseThatCannotBeReadLeavesTheTreeAsItWas)
{
    const QStringList before = tree.texts();
    lists.settings->SetDbName(lists.file(u"fort.mdb"_s));
    send(u"refresh.all"_s);
    press(u"all.lock"_s, rowOf(lists.dance));
    press(u"all.newdir"_s, -1);
    EXPECT_EQ(tree.texts(), before);
    EXPECT_FALSE(lists.log.isEmpty());
}

} // namespace
} // namespace melovane
