#pragma once

#include "platform/db/value.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace melovane {

class Database;
class DBEngine;
class Recordset;

/// Reads entries of playlists, one after the other, over one connection.
///
/// Order of use: DBOpen, any number of GetDataRec and RecClose, DBClose. The destructor closes what
/// is left open.
class GetPLData
{
public:
    explicit GetPLData(DBEngine& engine);
    ~GetPLData();

    /// \throws DbError
    void DBOpen(const QString& name);
    void DBClose();

    /// The row of an entry with all columns; at its end for an unknown number or a text that is
    /// none. It belongs to this object until RecClose. \throws DbError, also without DBOpen
    [[nodiscard]] Recordset& GetDataRec(const QString& plid);
    void RecClose();

    /// Entries by number, with all columns.
    struct Entries
    {
        QStringList columns; ///< PLID in front
        QHash<qint64, std::vector<Value>> rows;
    };

    /// Many entries at once; unknown numbers, and texts that are none, are left out.
    /// \throws DbError, also without DBOpen
    [[nodiscard]] Entries entries(const QStringList& plids) const;

private:
    DBEngine& m_engine;
    std::unique_ptr<Database> m_database;
    std::unique_ptr<Recordset> m_row;
};

} // namespace melovane
