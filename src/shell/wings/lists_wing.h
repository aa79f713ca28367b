#pragma once

#include "platform/linux/tag_reader.h"
#include "playlistfiles/mlv_m3u.h"
#include "playlists/list_history.h"
#include "playlists/mlv_function.h"
#include "playlists/pl_insert_move_del.h"
#include "playlists/undo_redo.h"

namespace melovane {

struct Machine;
struct SuiteWing;

/// The lists themselves: what reads, changes and undoes them, and their files.
struct ListsWing
{
    ListsWing(Machine& machine, SuiteWing& suite);

    linux_media::LinuxTagReader tagReader;
    ListHistory history;
    MLVFunction functions;
    ModUndoRedo snapshots;
    cls_PLInsertMoveDel edits;
    MlvM3U m3u;
};

} // namespace melovane
