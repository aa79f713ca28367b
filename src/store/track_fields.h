#pragma once

#include "platform/controls/grid_control.h"
#include "platform/db/value.h"
#include "store/all_data.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <cstddef>
#include <initializer_list>
#include <span>
#include <variant>

namespace melovane {

class GlobalSettings;

/// The fields of a track: the columns of `db_all`, in the order of the table.
enum class TrackField
{
    FID,
    Titel,
    Interpret,
    Album,
    Genre,
    Jahr,
    Track,
    Kommentar,
    Note,
    BPM,
    Path,
    DName,
    DLen,
    DTime,
    DTimeMsec,
    DKhz,
    DBit,
    DTSDatei,
    DTSImport,
    DriveTyp,
    DriveName,
    DEL,
    FrameStart,
    FrameStop,
    Normalize,
    Pitch,
    Volume,
    MixIn,
    MixOut,
    eq,
    MixTime,
    Play,
    PlayCountDay,
    PlayCountAll,
    favorit,
    Image,
    Kategorie,
    Situation,
    Stimmung,
    Tempo,
    User1,
    User2,
    User3,
    User4,
    User5,
};

inline constexpr std::size_t kTrackFieldCount = std::size_t(TrackField::User5) + 1;

/// A place in an order. Places leave gaps, so that a field is put between two others without
/// touching them; only their order counts. 0: not in it.
using TrackFieldPlace = int;

/// Type of a column. The width counts letters; only Text has one.
struct TrackColumnType
{
    FieldType type;
    int width = 0;
};

/// Where a field stands in the tag of an audio file.
struct TagFrame
{
    QStringView id;               ///< ID3v2.3; empty: not in the file
    QStringView description = {}; ///< of a TXXX frame
    QStringView idOf24 = id;      ///< where ID3v2.4 calls it otherwise
};

/// What the user may do with the cell of a field in the library grid.
enum class TrackEdit
{
    Barred,
    Free,
    Number, ///< a text that reads as 0 empties the cell
    Genre,  ///< the names of the genres are offered
};

/// How the search line finds texts in a field.
struct TrackSearch
{
    TrackFieldPlace place = 0;
    /// Searched while this setting is not 0; null: always.
    int (GlobalSettings::*chosenBy)() const = nullptr;
    QStringView spelling = {}; ///< in statements, where it differs from the column: keep
};

/// How a grid begins with a field.
struct TrackColumn
{
    TrackFieldPlace place = 0;
    bool shown = false; ///< else it waits in the choice of columns
};

/// Where the record of a track keeps a field; fields that stand in no record hold nothing.
using TrackMember = std::variant<std::monostate,
                                 QString MlvAllData::*,
                                 int MlvAllData::*,
                                 MLVMixStyle MlvAllData::*,
                                 MlvEQStyle MlvAllData::*>;

/// All that the program knows of one field of a track.
///
/// Grids, search and edits need no more than the row. The record of a track, the statement of a
/// list and the tag of a file name their fields themselves: a field that they hold has a member
/// there, see docs/house.md.
struct TrackFieldRow
{
    TrackField field;
    QStringView column; ///< in `db_all`; programs share the spelling: keep
    TrackColumnType type;
    TagFrame frame;
    TrackEdit edit;
    QStringView tree; ///< tree that is out of date when the user has changed the field
    TrackSearch search;
    double gridWidth; ///< in figures of the grid's font
    CellAlignment alignment;
    TrackColumn library;  ///< in the grid of the library
    TrackColumn playlist; ///< in the grid of a playlist
    TrackFieldPlace recordPlace;
    TrackMember member;
};

/// All rows, in the order of the table; a row stands at the number of its field.
[[nodiscard]] std::span<const TrackFieldRow> trackFields();

[[nodiscard]] const TrackFieldRow& rowOf(TrackField field);

/// The name of the column, for statements and rows.
[[nodiscard]] QStringView columnOf(TrackField field);

/// Names of columns in the order given.
[[nodiscard]] QStringList columnNames(std::span<const TrackField> fields);

/// The same as a statement lists them: "FID, Titel".
[[nodiscard]] QString columnList(std::span<const TrackField> fields);
[[nodiscard]] QString columnList(std::initializer_list<TrackField> fields);

/// The row of a column without regard to letter case; null for a name that is no field of a track.
/// It compares names: not for loops over rows of a table.
[[nodiscard]] const TrackFieldRow* findTrackField(QStringView column);

/// Key of the text that heads a column of a grid, also of one that is no field of a track.
[[nodiscard]] QString headingKey(QStringView column);

/// The fields of the record MlvAllData in its order.
[[nodiscard]] std::span<const TrackField> recordFields();

/// The fields that the search line looks into, in the order of its statements.
[[nodiscard]] std::span<const TrackField> searchedFields();

/// A field as a column of a grid that a view begins with; the heading is the field's name.
/// \param start one of the row's two grids
[[nodiscard]] GridColumn gridColumn(const TrackFieldRow& row, const TrackColumn& start);

/// The fields that the grid of the library begins with, from left to right.
[[nodiscard]] std::span<const TrackField> libraryGridFields();

/// The fields among the columns that the grid of a playlist begins with, from left to right.
[[nodiscard]] std::span<const TrackField> playlistGridFields();

} // namespace melovane
