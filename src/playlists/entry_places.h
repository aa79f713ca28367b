#pragma once

#include "playlists/list_edit.h"
#include "playlists/pl_data.h"
#include "playlists/playlist_ids.h"
#include "store/row_statements.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace melovane {

class Database;

/// Where an entry stands.
struct EntryPlace
{
    Plid entry;
    Pnid list;
    Sid position;
};

/// A position as the table can hold it: beyond 32 bits it stops at the last one.
[[nodiscard]] Sid clampedSid(qint64 position);

/// One above the highest position of a list; 1 for an empty one. \throws DbError, as all below
[[nodiscard]] qint64 nextSid(Database& database, Pnid list);

/// The entries of a list from a position on, in their order: of equal positions, which only an
/// inserted list file makes, the younger entry, the one with the higher number, stands first.
[[nodiscard]] std::vector<EntryPlace> placesFrom(Database& database, Pnid list, Sid position);

/// Nothing for an entry that is gone.
[[nodiscard]] std::optional<EntryPlace> placeOf(Database& database, Plid entry);

/// The entry in front of another (step -1) or behind it (1) in the same list; nothing at the ends.
/// One whose track is gone is passed over: no grid shows it, so the user cannot mean it.
[[nodiscard]] std::optional<EntryPlace>
neighbourOf(Database& database, const EntryPlace& place, int step);

/// The lists of the entries that meet a condition.
[[nodiscard]] std::vector<Pnid> listsOf(Database& database, const QString& condition);

/// Writes places of entries and tells the edit.
class PlaceWriter
{
public:
    PlaceWriter(Database& database, ListEdit& edit);

    void write(const EntryPlace& from, Pnid list, Sid position);

private:
    ListEdit& m_edit;
    RowUpdate m_update;
};

/// Exchanges two entries of a list, `lower` behind `upper`; what stands between them stays. Where
/// others share their positions, those behind move on as far as the order needs it; the two never
/// end on one.
void swapNeighbours(Database& database,
                    ListEdit& edit,
                    const EntryPlace& upper,
                    const EntryPlace& lower);

/// Gives the entries from `position` on the positions `newFirst`, newFirst + 1 and so on; so gaps
/// among them are closed.
void makeRoom(Database& database, ListEdit& edit, Pnid list, Sid position, qint64 newFirst);

/// Gives entries, of whatever list, the positions `first`, first + 1 and so on in `list`. Each id
/// uses a position, also an unknown one.
void moveEntries(Database& database,
                 ListEdit& edit,
                 const QStringList& ids,
                 Pnid list,
                 qint64 first);

/// What an id that no entry has does to the positions of those behind it.
enum class UnknownEntry
{
    KeepsItsPlace,
    HasNoPlace
};

/// Adds copies of entries, with all their columns but number, list and position, from `first` on.
void addCopies(Database& database,
               const GetPLData::Entries& sources,
               const QStringList& ids,
               Pnid list,
               qint64 first,
               UnknownEntry unknown);

} // namespace melovane
