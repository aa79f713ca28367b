#pragma once

#include "platform/system/clock.h"
#include "playlists/list_catalogue.h"
#include "playlists/list_history.h"
#include "playlists/pl_insert_move_del.h"
#include "playlists/undo_redo.h"
#include "store/file_locator.h"
#include "support/suite_fixture.h"

namespace melovane::test {

/// A suite with all that changes lists.
class Lists : public Suite
{
public:
    Lists();

    /// Tracks "800000000001" and so on, each a minute longer than the one before.
    QStringList addTracks(int count);

    /// A list whose entries stand at the given positions, of one track each; returns its number.
    Pnid addList(const QList<int>& positions, const QString& name = QStringLiteral("Party"));

    /// "position:track" of a list in its order, tracks counted from 1: "1:1 2:2".
    [[nodiscard]] QString entries(Pnid list) const;

    /// PLIDs of a list in its order.
    [[nodiscard]] QStringList plids(Pnid list) const;

    [[nodiscard]] int entryCount(Pnid list) const;

    [[nodiscard]] static QString tracksText(const QList<int>& tracks);
    [[nodiscard]] static QString entriesText(const QStringList& plids);
    [[nodiscard]] static QString fid(int track);

    std::unique_ptr<GlobalSettings> settings = makeSettings();
    ModUndoRedo snapshots{files, dataFolder()};
    ErrorSink sink = [this](const QString& where, const QString& what) {
        log.append(where + QStringLiteral(": ") + what);
    };
    ListHistory history{*engine, files, clock, *settings, sink};
    cls_PLInsertMoveDel edits{*engine, snapshots, history};
    FileLocator locator{files, dataFolder()};
    PlaylistParts parts{*engine, *settings, files, locator, history, sink};
    ListCatalogue names{parts};
};

} // namespace melovane::test
