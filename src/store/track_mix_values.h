#pragma once

#include <QString>

#include <memory>

namespace melovane {

class Database;
class DBEngine;
class Recordset;

/// Reads the few fields that the player needs of one track after the other, over one connection.
///
/// For the suite's player; nothing in the console calls it.
///
/// Order of use: DBOpen, any number of GetData, RecClose, DBClose. The destructor closes what is
/// left open.
class GetMP3DBData
{
public:
    explicit GetMP3DBData(DBEngine& engine);
    ~GetMP3DBData();

    /// Opens the file and keeps it open. \throws DbError
    void DBOpen(const QString& name);
    void DBClose();

    /// Ends the reading of the last row; the fields keep what was read.
    void RecClose();

    /// Reads one track into the fields; nulls read as empty and 0. False, with all fields empty,
    /// for an unknown identifier or without DBOpen. \throws DbError
    bool GetData(const QString& fid);

    QString MixIn;
    QString MixOut;
    int MixTime = 0; ///< milliseconds
    QString DTime;
    QString eq;
    int FrameStart = 0;
    int FrameStop = 0;
    int Normalize = 0;
    int Pitch = 0;
    int Volume = 0;
    QString Start; ///< FrameStart as a time text "mm:ss"
    QString Stop;  ///< FrameStop as a time text "mm:ss"

private:
    void clear();

    DBEngine& m_engine;
    std::unique_ptr<Database> m_database;
    std::unique_ptr<Recordset> m_row;
};

} // namespace melovane
