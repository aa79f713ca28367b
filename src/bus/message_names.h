#pragma once

#include <QStringView>

/// Names of the messages among the views: keep, other programs of the suite host the same views.
///
/// Receivers don't tell cases apart; the spelling here is that of the senders. Behind "From" stand
/// the views that send a name, behind "To" those that act on it, and then the values in their
/// order. "Player" is the suite's player, which shows the same playlist view in a window of its
/// own; "anybody" is a menu, a key or a plug-in of any program.
namespace melovane::bus {

// The library view.

/// From Tree, ctl_MP3DB. To ctl_MP3DB: all its rows go to the end of the list on the screen. The
/// tool button of that key does it with the selection.
inline constexpr QStringView kAllDbAppend = u"all.db.append";
/// From Tree. To ctl_MP3DB: all its rows go to the end of the list on the screen.
inline constexpr QStringView kAllDbAppendAktuell = u"all.db.append.aktuell";
/// From Tree, ctl_MP3DB. To ctl_MP3DB: all its rows go before the current entry of the list. The
/// tool button of that key does it with the selection.
inline constexpr QStringView kAllDbInsert = u"all.db.insert";
/// From anybody. To ctl_MP3DB, as kAllDbInsert.
inline constexpr QStringView kAllDbInsertAktuell = u"all.db.insert.aktuell";
/// From MLVDB. To ctl_MP3DB: number, FID.
inline constexpr QStringView kBpmFindFid = u"bpm.find.fid";
/// From MLVDB. To ctl_MP3DB: the settings were changed.
inline constexpr QStringView kChangeConfig = u"change.config";
/// From MLVDB. To ctl_MP3DB: folder, "Path". Of a disc: folder, "CDDIR", name of the disc.
inline constexpr QStringView kContextClickRow = u"context.click.row";
/// From MLVDB. To Tree, ctl_MP3DB: folder, name of the volume.
inline constexpr QStringView kContextShowDir = u"context.show.dir";
/// From MLVDB. To ctl_MP3DB: path of the image.
inline constexpr QStringView kSleeveViewerClickImage = u"sleeveviewer.click.image";
/// From MLVDB. To ctl_MP3DB: the tempo of its current track is to be found.
inline constexpr QStringView kDbBeatGauge = u"db.BeatGauge.Menu.Click";
/// From MLVDB. To ctl_MP3DB: the same by hand.
inline constexpr QStringView kDbBeatGaugeManuell = u"db.BeatGauge.Menu.Manuell.Click";
/// From MLVDB. To ctl_MP3DB: the current track becomes a favourite, or is one no longer.
inline constexpr QStringView kDbSetFavorit = u"db.set.favorit";
/// From MLVDB, Tree. To ctl_MP3DB, MLVDB: value, field such as "Interpret", and for some fields a
/// third value that narrows it.
inline constexpr QStringView kTreeClickRow = u"tree.click.row";

// Both grids.

/// From MLVDB, when its menu bar is made. To ctl_Playlist, PlaylistFavorit, Tree, ctl_MP3DB: make
/// your tool bars. An empty text.
inline constexpr QStringView kCreateToolBars = u"create.toolbars";
/// From MLVDB: another library, or new content in it. To ctl_Playlist, ctl_MP3DB.
inline constexpr QStringView kDbChange = u"db.change";
/// From MLVDB: let go of the database. To ctl_Playlist, ctl_MP3DB.
inline constexpr QStringView kDbDisconnect = u"db.disconnect";
/// From MLVDB: the database may be opened again. To ctl_Playlist, ctl_MP3DB.
inline constexpr QStringView kDbReconnect = u"db.reconnect";
/// From EditTag, ctl_MP3DB, ctl_Playlist: a track was changed. To ctl_Playlist, Tree, ctl_MP3DB:
/// FID.
inline constexpr QStringView kDbRefreshByFid = u"db.refresh.by.fid";
/// From MLVDB. To ctl_Playlist, ctl_MP3DB: the selection goes into the table of the tag editor.
/// Number of the view that is meant, see bus/view_number.h.
inline constexpr QStringView kFillTempEditTable = u"fill.temp.edit.table";
/// From ctl_Playlist: another entry is current. To Tree, ctl_MP3DB, EditTag: FID.
inline constexpr QStringView kInfoFromFid = u"info.from.fid";
/// From MLVDB. To ctl_Playlist, ctl_MP3DB: the current track opens in the sample tool. Number of
/// the view that is meant. The entry of the context menu has the same word as its tag.
inline constexpr QStringView kShowMelovaneKiv = u"show.melovane.kiv";
/// From MLVDB: colours, fonts or the theme were changed. To ctl_Playlist, PlaylistFavorit, Tree,
/// ctl_MP3DB.
inline constexpr QStringView kUpdateColor = u"update.color";
/// From anybody. To ctl_Playlist, Tree, ctl_MP3DB. "tolltip" is its spelling everywhere.
inline constexpr QStringView kUpdateToolTipText = u"update.tolltip.text";
/// From anybody. To ctl_Playlist, ctl_MP3DB: debug print, nothing here.
inline constexpr QStringView kPrintSendCommands = u"print.send.commands";
/// From MLVDB. To ctl_Playlist, ctl_MP3DB: volume of the monitor.
inline constexpr QStringView kVolumeMonitorChangeIcon = u"Volume.Monitor.Change.Icon";
/// The tool button of that key asks for the volume monitor.
inline constexpr QStringView kAllVolume = u"all.volume";

// Layouts of the grids: one name each for the library and for the playlist.

/// From MLVDB. To ctl_MP3DB: the columns get the width of their content.
inline constexpr QStringView kAutosizeMp3db = u"autosize.mp3db";
/// From MLVDB. To ctl_Playlist.
inline constexpr QStringView kAutosizePlaylist = u"autosize.playlist";
/// From MLVDB, at start. To ctl_MP3DB: file name of the layout.
inline constexpr QStringView kLoadLayoutMp3db = u"load.layout.mp3db";
/// From MLVDB, at start. To ctl_Playlist: file name of the layout.
inline constexpr QStringView kLoadLayoutPlaylist = u"load.layout.playlist";
/// From MLVDB, when the user has changed it. To ctl_MP3DB: file name of the layout.
inline constexpr QStringView kLoadLayoutChangeMp3db = u"load.layout.change.mp3db";
/// From MLVDB, when the user has changed it. To ctl_Playlist: file name of the layout.
inline constexpr QStringView kLoadLayoutChangePlaylist = u"load.layout.change.playlist";
/// From MLVDB. To ctl_MP3DB: write the layout.
inline constexpr QStringView kSaveLayoutMp3db = u"save.layout.mp3db";
/// From MLVDB. To ctl_Playlist: write the layout.
inline constexpr QStringView kSaveLayoutPlaylist = u"save.layout.playlist";

// The playlist view.

/// From PlaylistFavorit. To ctl_Playlist: number of the playlist that it opens, whether it is
/// locked.
inline constexpr QStringView kPlaylistAktivieren = u"playlist.aktivieren";
/// From PlaylistFavorit. To ctl_Playlist: the same for a jingle list.
inline constexpr QStringView kJinglelistAktivieren = u"jinglelist.aktivieren";
/// From ctl_MP3DB. To ctl_Playlist: drag text of the tracks that go to the end.
inline constexpr QStringView kPlaylistAppendData = u"playlist.append.data";
/// From ctl_MP3DB. To ctl_Playlist: drag text of the tracks that go before the current entry.
inline constexpr QStringView kPlaylistInsertData = u"playlist.insert.data";
/// From ctl_MP3DB, for all its rows. To ctl_Playlist, as kPlaylistAppendData.
inline constexpr QStringView kPlaylistAllDbAppendData = u"playlist.all.db.append.data";
/// From ctl_MP3DB, for all its rows. To ctl_Playlist, as kPlaylistAppendData.
inline constexpr QStringView kPlaylistAllDbAppendAktuellData =
    u"playlist.all.db.append.aktuell.data";
/// From ctl_MP3DB, for all its rows. To ctl_Playlist, as kPlaylistInsertData.
inline constexpr QStringView kPlaylistAllDbInsertData = u"playlist.all.db.insert.data";
/// From ctl_MP3DB, for all its rows. To the player: drag text.
inline constexpr QStringView kPlaylistAllDbInsertAktuellData =
    u"playlist.all.db.insert.aktuell.data";
/// From ctl_Playlist: an insert has ended. To PlaylistFavorit: number of the list.
inline constexpr QStringView kPlaylistInsertDataEnd = u"playlist.insert.data.end";
/// From ctl_Playlist: entries were changed. To PlaylistFavorit, MLVDB: number of the list.
inline constexpr QStringView kPlaylistChange = u"playlist.change";
/// From anybody. To ctl_Playlist: the selection goes to the end of the playing list.
inline constexpr QStringView kToAktivPlaylist = u"ToAktivPlaylist";
/// From MLVDB. To ctl_Playlist: the tempo of its current entry is to be found.
inline constexpr QStringView kPlaylistBeatGauge = u"playlist.BeatGauge.Menu.Click";
/// From MLVDB. To ctl_Playlist: the same by hand.
inline constexpr QStringView kPlaylistBeatGaugeManuell = u"playlist.BeatGauge.Menu.Manuell.Click";
/// From MLVDB: the BPM finder has measured a track. To ctl_Playlist: entry, list.
inline constexpr QStringView kBeatGaugeBpm = u"beatgauge.bpm";
/// From anybody. To ctl_Playlist: each entry of the list gets the mix style of the current one.
inline constexpr QStringView kMixstyleAllCopy = u"mixstyle.all.copy";
/// From anybody. To ctl_Playlist: each entry of the list loses its mix style.
inline constexpr QStringView kMixstyleAllDel = u"mixstyle.all.del";
/// From anybody. To ctl_Playlist: the current entry mixes into the next.
inline constexpr QStringView kPlaylistSetPlayNormal = u"playlist.set.play.normal";
/// From anybody. To ctl_Playlist: the current entry plays in a loop.
inline constexpr QStringView kPlaylistSetPlayLoop = u"playlist.set.play.loop";
/// From anybody. To ctl_Playlist: the player stops behind the current entry.
inline constexpr QStringView kPlaylistSetPlayStop = u"playlist.set.play.stop";
/// From anybody. To ctl_Playlist: number of the list whose entries are to be as never played.
inline constexpr QStringView kPlaylistReset = u"playlist.reset";
/// From PlaylistFavorit: key of the row, its picture, whether it is locked now. From anybody:
/// whether the list on the screen is locked now. To ctl_Playlist, Tree.
inline constexpr QStringView kPlaylistSetLock = u"playlist.set.lock";
/// From MLVDB, PlaylistFavorit, Tree. To ctl_Playlist, PlaylistFavorit, Tree: number of the list,
/// or nothing.
inline constexpr QStringView kRefreshPlaylist = u"refresh.playlist";
/// From MLVDB. To ctl_Playlist: entry that plays, entry that comes next.
inline constexpr QStringView kRefreshPlaylistPlid = u"refresh.playlist.plid";
/// From anybody. To the player. The tool button of that key switches the loop.
inline constexpr QStringView kPlaylistJingleLoop = u"playlist.jingle.loop";

// What the playlist view tells the player.

/// From ctl_Playlist. To the player: entry whose play action was changed.
inline constexpr QStringView kPlaylistAktionChange = u"playlist.aktion.change";
/// From ctl_Playlist. To the player: entry whose loop was switched, its row.
inline constexpr QStringView kPlaylistLoop = u"playlist.loop";
/// From ctl_Playlist. To the player: row of the jingle whose loop was switched.
inline constexpr QStringView kPlaylistJingleChangePlaymode = u"playlist.jingle.change.playmode";
/// From ctl_Playlist, when the sample tool has changed an entry. To the player: number of the
/// list.
inline constexpr QStringView kJinglePlaylistChange = u"jingle.playlist.change";
/// From ctl_Playlist in the player's window. To the player: list, entry, FID.
inline constexpr QStringView kPlaylistPositionDblclick = u"playlist.position.dblclick";
/// From ctl_Playlist in the player's window. To the player: jingle list, entry, FID.
inline constexpr QStringView kJinglelistPositionDblclick = u"jinglelist.position.dblclick";
/// From anybody. To the player.
inline constexpr QStringView kJinglePlayerSetVolume = u"Jingle.Player.Set.Volume";

// The trees and the panel of lists.

/// From MLVDB: "start" when the window is made, else nothing. To PlaylistFavorit, Tree.
inline constexpr QStringView kRefreshAll = u"refresh.all";
/// From MLVDB, Tree: the marked lists are others. To PlaylistFavorit, MLVDB.
inline constexpr QStringView kFavoritRefresh = u"favorit.refresh";
/// From MLVDB, PlaylistFavorit. To PlaylistFavorit, Tree, MLVDB: number of a list, or nothing.
inline constexpr QStringView kRefreshPlaylistTree = u"refresh.playlist.tree";
/// From MLVDB. To Tree: one digit for each tree, as a text.
inline constexpr QStringView kRefreshTree = u"refresh.tree";
/// From Tree. To MLVDB: the table of that tree is to be made anew.
inline constexpr QStringView kRefreshTreeAlbum = u"refresh.tree.album";
/// From Tree. To MLVDB.
inline constexpr QStringView kRefreshTreeDir = u"refresh.tree.dir";
/// From EditTag, Tree. To MLVDB.
inline constexpr QStringView kRefreshTreeGenre = u"refresh.tree.genre";
/// From Tree. To MLVDB.
inline constexpr QStringView kRefreshTreeInterpret = u"refresh.tree.interpret";
/// From anybody: the panel is filled for the first time. To PlaylistFavorit.
inline constexpr QStringView kStart = u"start";
/// From Tree: the current row is another. To nobody here.
inline constexpr QStringView kTreeEnterCell = u"tree.enter.cell";
/// From PlaylistFavorit: a list was made the playing one. To the player, Tree: its number.
inline constexpr QStringView kPlaylistPlay = u"playlist.play";
/// From PlaylistFavorit. To the player: the same for a jingle list.
inline constexpr QStringView kPlaylistJinglePlay = u"playlist.Jingle.play";
/// From PlaylistFavorit. To itself: the figures of the current list are shown. Its number.
inline constexpr QStringView kPlaylistEigenschaften = u"playlist.eigenschaften";
/// From MLVDB. To PlaylistFavorit: it names its current list with kPlaylistSaveFileShow.
inline constexpr QStringView kPlaylistSaveFile = u"playlist.save.file";
/// From PlaylistFavorit. To MLVDB: number of the list that is exported, empty for the one on the
/// screen.
inline constexpr QStringView kPlaylistSaveFileShow = u"playlist.save.file.show";
/// From anybody. To PlaylistFavorit, Tree: key or number of a group whose name was changed.
inline constexpr QStringView kUpdateGroupName = u"update.group.name";
/// From anybody. To PlaylistFavorit: key or number of a list whose name was changed.
inline constexpr QStringView kUpdatePlaylistName = u"update.playlist.name";
/// From anybody: the order of lists was changed. To Tree.
inline constexpr QStringView kUpdateSortPlaylist = u"update.sort.playlist";
/// From PlaylistFavorit, Tree. To ctl_Playlist, PlaylistFavorit, Tree, MLVDB: key of a row, its
/// text.
inline constexpr QStringView kUpdateTreeRow = u"update.tree.row";

// The tag panel.

/// From frmEditBox. To EditTag: name of the genre.
inline constexpr QStringView kEditBoxAddNewGenre = u"editbox.add.new.genre";
/// From EditTag. To MLVDB: the box for a new genre opens.
inline constexpr QStringView kEditTagShowEditBoxNewGenre = u"edittag.show.editbox.new.genre";
/// From EditTag. To MLVDB: the track is heard from where it starts. FID, position in frames.
inline constexpr QStringView kPlayFromStartPos = u"play.from.start.pos";
/// From EditTag. To MLVDB: the same from where it stops; 0 or less is its end.
inline constexpr QStringView kPlayFromStopPos = u"play.from.stop.pos";
/// From ctl_MP3DB. To MLVDB: the tag panel shows or hides. FID, whether the user wants to edit, so
/// that it is never hidden.
inline constexpr QStringView kShowTagEditMp3db = u"show.tagedit.mp3db";
/// From ctl_Playlist. To MLVDB: the same.
inline constexpr QStringView kShowTagEditPlaylist = u"show.tagedit.playlist";
/// From ctl_MP3DB, ctl_Playlist. To MLVDB: the tag editor opens. The entry of the context menu has
/// the same word as its tag.
inline constexpr QStringView kShowTagEditor = u"show.tageditor";

// The main window.

/// From ctl_MP3DB. To MLVDB: FID that the player is to play next.
inline constexpr QStringView kDjPlayerPlayNext = u"dj.player.play.next";
/// From ctl_MP3DB. To MLVDB: FID that the player is to play at once.
inline constexpr QStringView kDjPlayerPlaySofort = u"dj.player.play.sofort";
/// From anybody. To MLVDB: FID whose tempo is to be found.
inline constexpr QStringView kBeatGaugeFidAuto = u"beatgauge.playlist.fid.auto";
/// From anybody. To MLVDB: the same by hand.
inline constexpr QStringView kBeatGaugeFidManuell = u"beatgauge.playlist.fid.manuell";
/// From ctl_MP3DB, ctl_Playlist. To MLVDB, the monitor player: FID, and from ctl_Playlist also
/// entry, start and stop.
inline constexpr QStringView kMonitorPlayStart = u"player.monitor.play.start";
/// From ctl_MP3DB, ctl_Playlist. To MLVDB, as kMonitorPlayStart, from the middle of the track.
inline constexpr QStringView kMonitorPlayCenter = u"player.monitor.play.center";
/// From ctl_MP3DB, ctl_Playlist. To MLVDB, as kMonitorPlayStart.
inline constexpr QStringView kMonitorPlayStop = u"player.monitor.play.stop";
/// From ctl_MP3DB, ctl_Playlist. To MLVDB: the monitor player begins to seek.
inline constexpr QStringView kMonitorSeek = u"player.monitor.seek";
/// From ctl_MP3DB, ctl_Playlist. To MLVDB: place in the track.
inline constexpr QStringView kMonitorSeekSet = u"player.monitor.seek.set";
/// From anybody. To MLVDB: "Sleeve.Viewer", its argument.
inline constexpr QStringView kRunProc = u"Run.Proc";
/// From ctl_MP3DB. To MLVDB: FID of the row under the pointer.
inline constexpr QStringView kShowContextMenuMp3db = u"show.context.menu.mp3db";
/// From ctl_Playlist. To MLVDB: FID of the row under the pointer.
inline constexpr QStringView kShowContextMenuPlaylist = u"show.context.menu.playlist";
/// From ctl_MP3DB, ctl_Playlist. To MLVDB: "DB" or "PL".
inline constexpr QStringView kShowGridLayout = u"show.gridlayout";
/// From all. To MLVDB: the text.
inline constexpr QStringView kShowStatusText = u"show.statustext";
/// From ctl_Playlist. To MLVDB: the window of the volume monitor shows.
inline constexpr QStringView kVolumeMonitorShow = u"Volume.Monitor.Show";

// Names without a receiver or a sender in the console. A name that gets both leaves its list.

/// Sent by views of the console; what acts on them stands in the player, or in a view that the
/// console's window does not show.
inline constexpr QStringView kForOthers[] = {
    kPlaylistAktionChange,
    kPlaylistLoop,
    kPlaylistJingleChangePlaymode,
    kJinglePlaylistChange,
    kPlaylistPositionDblclick,
    kJinglelistPositionDblclick,
    kPlaylistJinglePlay,
    kPlaylistAllDbInsertAktuellData,
    kTreeEnterCell,
};

/// Here they are keys of tool buttons, which a view answers itself: nobody sends them.
inline constexpr QStringView kButtonKeys[] = {kAllVolume, kPlaylistJingleLoop};

/// Neither sent nor acted on here: a view that begins to must use them as the suite does.
inline constexpr QStringView kUnused[] = {
    kPrintSendCommands,
    kJinglePlayerSetVolume,
};

} // namespace melovane::bus
