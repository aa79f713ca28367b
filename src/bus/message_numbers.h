#pragma once

#include <QtGlobal>

/// Numbers of the messages between the programs of the suite, and the numbers inside them: keep,
/// every program of the suite sends or expects them.
namespace melovane::message {

/// The main window handles numbers from the first to the last; all others it ignores.
inline constexpr qint32 kFirstOfConsole = 1036;
inline constexpr qint32 kLastOfConsole = 1079;

// To the console.

/// The settings program has chosen another sound card.
inline constexpr qint32 kSoundCardChanged = 1036;
/// Let go of the database. lParam is the control that gets the answer: the same number with
/// kDatabaseIsFree.
inline constexpr qint32 kReleaseDatabase = 1037;
/// lParam of the answer to kReleaseDatabase.
inline constexpr qint32 kDatabaseIsFree = 2;
/// The database may be opened again.
inline constexpr qint32 kReconnectDatabase = 1038;
/// The settings were changed.
inline constexpr qint32 kConfigChanged = 1039;
/// wParam is the number of a playlist. To the player: a playlist was changed; both numbers 0.
inline constexpr qint32 kRefreshPlaylist = 1042;
/// lParam is the playlist entry, wParam the playlist.
inline constexpr qint32 kRefreshPlaylistEntry = 1045;
/// The importer has put something into the database.
inline constexpr qint32 kDatabaseChanged = 1048;
/// The player asks the console to stand beside it.
inline constexpr qint32 kDock = 1049;
inline constexpr qint32 kReloadLibrary = 1050;
inline constexpr qint32 kUndock = 1051;
inline constexpr qint32 kRefreshFavourites = 1052;
/// What a job behind the console has done; wParam tells the kind, others than these mean nothing.
inline constexpr qint32 kJobResult = 1056;
/// wParam of kJobResult: lParam is the number of changes that were taken over, 0 for none.
inline constexpr qint32 kJobChanges = 100;
/// wParam of kJobResult: lParam in decimals is the mask of the trees to load again.
inline constexpr qint32 kJobTree = 200;
/// The BPM finder has measured a track. lParam is the playlist entry.
inline constexpr qint32 kBpmFound = 1069;
/// lParam is the volume of the monitor, 0 to 10000.
inline constexpr qint32 kMonitorVolume = 1074;
/// wParam of kMonitorVolume: the pictures of the volume buttons follow.
inline constexpr qint32 kMonitorVolumeIcon = 210;
/// Stop the monitor: somebody else plays on it now.
inline constexpr qint32 kStopMonitor = 1078;
/// wParam goes to the views. To the player: load the playlist tree again; both numbers 0.
inline constexpr qint32 kRefreshPlaylistTree = 1079;

/// Posts that only make the console read again: of equal ones that wait one is enough.
inline constexpr qint32 kRefreshes[] = {
    kConfigChanged, kRefreshPlaylist,   kRefreshPlaylistEntry, kDatabaseChanged,
    kReloadLibrary, kRefreshFavourites, kRefreshPlaylistTree};

// To the player; the track stands in the row of table `todo` of the same number.

inline constexpr qint32 kPlayNext = 1046;
inline constexpr qint32 kPlayNow = 1047;

// To other programs.

/// To the jobs program: end.
inline constexpr qint32 kEndJobs = 1058;
/// To the volume monitor: show the window.
inline constexpr qint32 kShowVolumeMonitor = 1075;
/// To the sample tool: edit the entry that was handed over in its state file.
inline constexpr qint32 kEditSample = 1229;

// From the sample tool to the playlist view.

/// These two hand over a value of the entry.
inline constexpr qint32 kSampleValue1 = 1224;
inline constexpr qint32 kSampleValue2 = 1225;
/// wParam is a window that is brought to the top.
inline constexpr qint32 kBringWindowToTop = 1231;

// Text messages to the console.

/// A field of a track was clicked; the number tells which field the text is of.
inline constexpr qint32 kFieldClicked = 3075;
inline constexpr qint32 kFieldIsArtist = 11011;
inline constexpr qint32 kFieldIsTitle = 11012;
/// The cover viewer has chosen the image of that name.
inline constexpr qint32 kImageChosen = 3077;
/// The BPM finder asks for a track.
inline constexpr qint32 kBpmWantsTrack = 3078;

// Between two copies of the console.

/// The second copy asks the first one to come to the front, and ends.
inline constexpr qint32 kBringToFront = 2001;
/// A text: files that the second copy was called with, see OpenedFiles.
inline constexpr qint32 kOpenFiles = 2002;
/// The answer of a copy that opens them.
inline constexpr qint32 kFilesTaken = 1;

// Of the suite's own care.

/// To any program that keeps a journal of its messages: lParam is the control that gets it as a
/// text of the same number, one message a line, before the answer 1.
inline constexpr qint32 kTellJournal = 2003;

} // namespace melovane::message
