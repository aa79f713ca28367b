#pragma once

#include "platform/media/cue_finder.h"
#include "playlists/playlist_ids.h"
#include "store/error_sink.h"
#include "views/command_gate.h"

#include <QStringList>

#include <functional>
#include <optional>

namespace melovane {

class Clipboard;
class Clock;
class cls_PLInsertMoveDel;
class ConfigObjects;
class DBEngine;
class GlobalSettings;
class GridControl;
class ListHistory;
class MessageLoop;
class MLVFunction;
class MLVMessageBus;
struct MlvPlaylistDetail;
class ModUndoRedo;
class PointerControl;
class Warnings;

/// The controls that the playlist view speaks to; they outlive it.
struct PlaylistControls
{
    GridControl& grid;
    PointerControl& pointer;
    Clipboard& clipboard;
    Warnings& warnings;
};

/// What changes lists; outlives the view.
struct PlaylistTools
{
    MLVFunction& functions;
    cls_PLInsertMoveDel& edits;
    ListHistory& history;
    ModUndoRedo& snapshots;
};

/// What the playlist view is made over; all of it outlives the view.
struct PlaylistViewParts
{
    DBEngine& engine;
    GlobalSettings& settings;
    const ConfigObjects& texts;
    const Clock& clock;
    MessageLoop& loop;
    MLVMessageBus& bus;
    PlaylistTools tools;
    ErrorSink log = {}; ///< hears of messages that the view failed on
};

/// What the playlist view has other parts of the program do.
struct PlaylistActions
{
    /// Name of the program that the view stands in.
    QString program;
    /// Starts the BPM finder; cmd is "auto" or "manuell".
    std::function<void(const QString& cmd, const QString& fid, const QString& plid)> startBeatGauge;
    /// Where the monitor player plays or stands, in frames; 0 without a track.
    std::function<int()> monitorFrame;
    /// Where a stored file lies on this machine; empty when it is not there.
    std::function<QString(const QString& file)> locate;
    /// Whether a folder lies there now; without it only a name without an extension counts as one.
    std::function<bool(const QString& place)> isFolder;
    /// Identifiers of the tracks that files and folders hold, in their order; a file that is new
    /// enters the library. What could not be taken has been told.
    std::function<QStringList(const QStringList& places)> tracksOf;
    std::function<void(const QString& name, const GridControl& grid)> saveLayout;
    std::function<void(const QString& name, GridControl& grid)> loadLayout;
    /// Puts the entries of list files into a list: at a position, or at the end without one. True
    /// when there are new entries.
    std::function<bool(const QStringList& files, Pnid list, std::optional<Sid> target, int aktion)>
        insertLists = [](const QStringList&, Pnid, std::optional<Sid>, int) { return false; };
    /// Opens an entry in the sample tool.
    std::function<void(const MlvPlaylistDetail& entry)> editSample = {};
    /// Where the sound of a file begins and ends: looked for so many milliseconds from either end,
    /// sound being what is louder than so much of 32768. Nothing for a file that cannot be read.
    std::function<std::optional<CueRange>(const QString& file, int withinMs, int loudness)> cuesOf =
        [](const QString&, int, int) { return std::nullopt; };
    /// Makes a list that the user can name, and opens it; without it there is no button for that.
    std::function<void()> newList = {};
    /// What commands find around the view.
    CommandWorld world = {};
    /// Lets the user hear on the monitor how one entry goes over into another.
    std::function<void(const MlvPlaylistDetail& from, const MlvPlaylistDetail& to)> rehearse = {};
};

} // namespace melovane
