#pragma once

#include "store/all_data.h"
#include "store/error_sink.h"

#include <QString>

namespace melovane {

class DBEngine;
class Recordset;

/// What a track without values of its own gets.
struct MixDefaults
{
    QString DefaultMixStyleIN = kDefaultMixStyleIn.toString();
    QString DefaultMixStyleOUT = kDefaultMixStyleOut.toString();
    QString DefaultEQ = kDefaultEqStyle.toString();
    int DefaultMixTime = kDefaultMixTime; ///< milliseconds; below 1 means none
};

/// Fills a record from the current row of a set over `db_all`, column by column.
///
/// A column that the row lacks stops the walk; what stands in front of it in the record is filled.
/// \throws DbError, with `data` filled up to the failing column
void readAllData(const Recordset& row, const MixDefaults& defaults, MlvAllData& data);

/// Reads whole tracks by their identifier.
class TrackReader
{
public:
    /// \param sink learns of failed reads under the name "GetAllDataByFid"
    TrackReader(DBEngine& engine, ErrorSink sink);

    /// The row of `db_all`, read over a connection that is closed again. Never fails: an unknown
    /// identifier or an error gives a record with whatever was read until then, and a log line.
    [[nodiscard]] MlvAllData
    GetAllDataByFid(const QString& dbName, const QString& fid, const MixDefaults& defaults) const;

private:
    DBEngine& m_engine;
    ErrorSink m_sink;
};

} // namespace melovane
