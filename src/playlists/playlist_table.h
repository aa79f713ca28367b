#pragma once

#include "platform/db/value.h"
#include "playlists/list_delta.h"
#include "playlists/list_step.h"
#include "playlists/playlist_ids.h"
#include "store/track_fields.h"

#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <vector>

namespace melovane {

class Database;

/// Tables whose rows make up the user's lists.
inline constexpr QStringView kEntryTable = u"pl_all";
inline constexpr QStringView kListTable = u"pl_name";
inline constexpr QStringView kGroupTable = u"pl_group";

/// The table of the tracks, whose changes are steps, too. Its key is a number written as text.
inline constexpr QStringView kTrackTable = u"db_all";

/// The table of what was played, which has no key; \see movePlays()
inline constexpr QStringView kPlayTable = u"pl_stat";

/// How far a step reaches into the rows of tracks.
enum class TrackReach
{
    Fields, ///< never where their files lie, for the files would not follow
    Places, ///< that, too: files that were found stay where they are
    Rows,   ///< whole rows that go or come, and what was played of them
};

[[nodiscard]] TrackReach trackReach(ListAction action);

/// Whether a step of that reach keeps a column of a track; its key is in none.
[[nodiscard]] bool isTakenBack(QStringView trackColumn, TrackReach reach);

/// Whether the column says where the file of a track lies.
[[nodiscard]] bool isPlaceColumn(QStringView trackColumn);

/// The fields of a track that an entry takes over when it is made, and then has values of its own
/// for, in columns of the same names.
inline constexpr std::array kTakenFields = {
    TrackField::FrameStart, TrackField::FrameStop, TrackField::Pitch, TrackField::Volume,
    TrackField::MixIn,      TrackField::MixOut,    TrackField::eq};

/// The key column of one of the tables above; empty for any other.
[[nodiscard]] QString keyColumnOf(QStringView table);

/// All columns of a table as this database has them, the key in front. \throws DbError
[[nodiscard]] QStringList columnsOf(Database& database, QStringView table);

using Rows = std::vector<std::vector<Value>>;

/// Rows that meet a condition, in the order of their keys. \throws DbError
[[nodiscard]] Rows readRows(Database& database,
                            QStringView table,
                            const QStringList& columns,
                            const QString& condition);

/// The number of an entry in a drag text; nothing for a text that is no whole number.
[[nodiscard]] std::optional<qint64> entryNumber(QStringView text);
/// The numbers among them, each once.
[[nodiscard]] std::vector<qint64> entryNumbers(const QStringList& texts);

/// Conditions "column in (1,2,3)" that together name all keys, in portions that the engine takes
/// well.
[[nodiscard]] QStringList keyConditions(QStringView column, const std::vector<qint64>& keys);

/// Counts the entries of a list afresh and marks it as changed and not yet saved. \throws DbError
void updateEntryCount(Database& database, Pnid list);

/// Marks a list as changed and not yet saved: its file is written again. Whatever writes values
/// that stand in that file, or decides where it lies, calls it within its own transaction. \throws
/// DbError
void markChanged(Database& database, Pnid list);

/// The lists that hold one of the tracks. \throws DbError
[[nodiscard]] std::vector<Pnid> listsWith(Database& database, const QStringList& fids);

/// What the entries of a list and their order come down to: equal texts mean that nobody has added,
/// removed or moved one. Cheap also for long lists. \throws DbError
[[nodiscard]] QString orderMark(Database& database, Pnid list);

/// True when the rows that a difference would write are as it takes them for: those it alters or
/// removes have the values of its beginning, those it adds are not there. Of lists and groups only
/// the being there counts, their other columns change all the time. \throws DbError
[[nodiscard]] bool standsBefore(Database& database, const ListDelta& delta, TrackReach reach);

/// Writes a difference. Rows that are gone are left out, rows that are in the place of added ones
/// give way. \throws DbError also for a table or column that is none of the lists', and for more of
/// tracks than the reach allows
void applyDelta(Database& database, const ListDelta& delta, TrackReach reach);

} // namespace melovane
