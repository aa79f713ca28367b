#pragma once

#include "playlists/command_map.h"
#include "playlists/playlist_ids.h"
#include "store/mix_style.h"

#include <QString>

namespace melovane {

/// A playlist entry in memory, as views, messages and the player see it. The order of the fields is
/// that of the suite's record: keep.
///
/// A null column reads as the empty text or 0.
struct MlvPlaylistDetail
{
    QString FID;
    Plid PLID{};
    Pnid PNID{};
    QString Titel;
    QString Interpret;
    int Pitch = 0;
    int Volume = 0;
    QString DName;
    int DKhz = 0; ///< Hz
    int DBit = 0; ///< kbit/s
    QString BPM;
    int FrameStart = 0;
    int FrameStop = 0; ///< never 0 for a track with a length
    int Normalize = 0;
    QString Path;
    int DriveTyp = 0;
    QString DriveName;
    QString MixIn; ///< as stored; the style below has the default filled in
    QString MixOut;
    QString eq;
    int MixTime = 0; ///< milliseconds, the default filled in
    MLVMixStyle mixInStyle;
    MLVMixStyle mixOutStyle;
    MlvEQStyle eqStyle;
    QString file;              ///< full path where the file lies today; empty when it is nowhere
    bool firstRequest = false; ///< set by callers; asked for by nobody here
    bool saveDefault = false;  ///< asks PlaylistSaveStartStopDefault to write
    int Aktion = 0;
    QString Command;
    CommandMap commands; ///< empty when Command cannot be read
    GroupId GRID{};
};

} // namespace melovane
