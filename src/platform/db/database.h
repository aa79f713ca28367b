#pragma once

#include "platform/db/bulk_insert.h"
#include "platform/db/definitions.h"
#include "platform/db/recordset.h"
#include "platform/db/row_walk.h"

#include <memory>
#include <vector>

namespace melovane {

class QueryDef;

/// Tables and links of a database. Names are compared without regard to case. Each change is made
/// at once and seen by other connections at their next statement.
class TableDefs
{
public:
    virtual ~TableDefs() = default;

    /// All tables in catalogue order (order of creation), links included, system tables left out.
    [[nodiscard]] virtual std::vector<TableDef> All() const = 0;

    /// \throws DbError kObjectNotFound (or kItemNotFound) when there is none of that name
    [[nodiscard]] virtual TableDef Item(const QString& name) const = 0;

    [[nodiscard]] virtual bool Contains(const QString& name) const = 0;

    /// Names of the tables that are no links, in catalogue order. Opens no side file.
    [[nodiscard]] virtual QStringList ownNames() const = 0;

    /// What TableDef::Connect says, without a look at the side file that All() and Item() open for
    /// its columns: nobody's file is touched that the link may lead to by mistake. Empty for a
    /// table that is no link. \throws DbError kItemNotFound when there is none of that name
    [[nodiscard]] virtual QString connectOf(const QString& name) const = 0;

    /// Makes the table, or the link when Connect is not empty. A link needs no existing file.
    /// \throws DbError kObjectExists when the name is taken by a table or a query
    virtual void Append(const TableDef& table) = 0;

    /// Drops a table with its rows, or a link without touching its file.
    virtual void Delete(const QString& name) = 0;
};

/// Stored queries of a database, kept as text of the suite's dialect.
class QueryDefs
{
public:
    virtual ~QueryDefs() = default;

    /// Names in catalogue order.
    [[nodiscard]] virtual QStringList Names() const = 0;

    [[nodiscard]] virtual bool Contains(const QString& name) const = 0;

    /// \throws DbError kItemNotFound when there is none of that name
    [[nodiscard]] virtual std::unique_ptr<QueryDef> Item(const QString& name) const = 0;

    virtual void Delete(const QString& name) = 0;
};

/// A stored query, opened. Names of parameters have no regard to case.
class QueryDef
{
public:
    virtual ~QueryDef() = default;

    [[nodiscard]] virtual QString Name() const = 0;
    [[nodiscard]] virtual QString SQL() const = 0;
    [[nodiscard]] virtual QueryType Type() const = 0;

    /// Result columns; empty for an action query.
    [[nodiscard]] virtual std::vector<FieldDef> Fields() const = 0;
    [[nodiscard]] virtual std::vector<ParameterDef> Parameters() const = 0;

    /// Sets a parameter for the next Execute or OpenRecordset; it keeps its value until set again.
    /// \throws DbError kItemNotFound for an unknown name
    virtual void SetParameter(const QString& name, const Value& value) = 0;

    virtual void Execute() = 0;
    [[nodiscard]] virtual int RecordsAffected() const = 0;
    [[nodiscard]] virtual std::unique_ptr<Recordset> OpenRecordset() = 0;
    virtual void Close() = 0;
};

/// One connection to a database file and the side files that its links name.
///
/// Closed by its destructor. No statement is ever left open between two calls, so a connection
/// never holds a lock that could stop a sibling. Every change is one immediate transaction of its
/// own unless BeginTrans was called.
class Database
{
public:
    virtual ~Database() = default;

    /// Full path of the file.
    [[nodiscard]] virtual QString Name() const = 0;

    /// A set over a statement, a table or a stored query without parameters; on its first row, or
    /// at the end when it is empty. \throws DbError with the place of the fault when the statement
    /// is not understood
    [[nodiscard]] virtual std::unique_ptr<Recordset> OpenRecordset(const QString& source) = 0;

    /// Shows every row of a select statement once, in its order, as the file holds them at one
    /// moment.
    ///
    /// For reading whole tables: neither keys nor rows are kept, so it costs a fraction of a
    /// Recordset. The visit changes nothing in the tables that are walked. What it throws ends the
    /// walk.
    virtual void walkRows(const QString& statement, const RowVisit& visit) = 0;

    /// For adding rows of these columns to a table or link. Columns that are not named get their
    /// defaults. \throws DbError when there is no such table or column
    [[nodiscard]] virtual std::unique_ptr<BulkInsert> bulkInsert(const QString& table,
                                                                 const QStringList& columns) = 0;

    /// Runs one action statement (or a stored action query by name).
    virtual void Execute(const QString& statement) = 0;

    /// Rows touched by the last Execute.
    [[nodiscard]] virtual int RecordsAffected() const = 0;

    [[nodiscard]] virtual TableDefs& tableDefs() = 0;
    [[nodiscard]] virtual QueryDefs& queryDefs() = 0;

    /// Stores a query under a name; an empty name makes one that is not stored.
    /// \throws DbError kObjectExists when the name is taken
    virtual std::unique_ptr<QueryDef> CreateQueryDef(const QString& name, const QString& sql) = 0;

    /// Transactions nest; only the outermost commit writes. Prefer Transaction.
    ///
    /// After an error that undid the whole transaction (a full disk), and after a commit that
    /// failed, every further change fails until Rollback was called for each level: the rest of a
    /// change is never written without its beginning.
    virtual void BeginTrans() = 0;
    /// The same for a change of side files: takes the write lock of the file that holds the table,
    /// and none of this file as long as nothing in it is changed. So the library stays free for
    /// others. \throws DbError kObjectNotFound, kFileNotFound, kLocked
    virtual void BeginTransOn(const QString& table) = 0;
    virtual void CommitTrans() = 0;
    /// Never throws.
    virtual void Rollback() = 0;

    /// A number that changes whenever another connection has committed a change to this file or to
    /// one of its side files. Costs about a microsecond.
    [[nodiscard]] virtual qint64 DataVersion() = 0;
    /// The same for this file alone: it stays when others change a side file only.
    [[nodiscard]] virtual qint64 fileVersion() = 0;

    /// Ends the connection. Recordsets opened on it then fail with kObjectClosed.
    virtual void Close() = 0;
};

/// The statements between its making and commit() are one change; without commit() they are undone.
class Transaction
{
public:
    explicit Transaction(Database& database);
    /// See Database::BeginTransOn.
    Transaction(Database& database, const QString& table);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit();

private:
    Database& m_database;
    bool m_open = true;
};

/// Where new database files are made.
class Workspace
{
public:
    virtual ~Workspace() = default;

    /// A new empty file. The locale text is accepted and has no effect: texts always compare
    /// without regard to case. \throws DbError kObjectExists when the file exists
    [[nodiscard]] virtual std::unique_ptr<Database> CreateDatabase(const QString& name,
                                                                   const QString& locale) = 0;
};

/// Value of DBEngine::Idle that makes later reads see what other connections committed.
inline constexpr int dbRefreshCache = 8;

/// Locale text of new database files.
inline constexpr char16_t kDatabaseLocale[] = u";LANGID=0x0409;CP=1252;COUNTRY=0";

/// The entry to everything that is stored.
class DBEngine
{
public:
    virtual ~DBEngine() = default;

    /// Opens a file shared and for writing; never creates one.
    /// \throws DbError kFileNotFound, kPreviousEngineFile, kUnrecognisedFormat, kCorrupt,
    /// kCannotOpen, kReleased
    [[nodiscard]] virtual std::unique_ptr<Database> OpenDatabase(const QString& name) = 0;

    /// With dbRefreshCache: every open connection sees what others committed, at its next read.
    virtual void Idle(int action) = 0;

    /// The workspace of that number; there is only number 0.
    [[nodiscard]] virtual Workspace& Workspaces(int index) = 0;

    /// Copies a database, also one that is in use, to another file, which is replaced. Written
    /// beside and renamed, so the target is whole or untouched. \throws DbError
    virtual void BackupDatabase(const QString& source, const QString& target) = 0;

    /// Lets go of every file handle on that database that no open Database needs.
    virtual void Release(const QString& name) = 0;

    /// Leaves that database to another program: lets go of it as Release does, and of its side
    /// files, and refuses every open of it with kReleased, by whatever name, until TakeBack. What
    /// this program wrote meanwhile would be lost, for the other one may put another file in its
    /// place. A Database that is still open works on.
    virtual void GiveAway(const QString& name) = 0;

    /// The database may be opened again, whether or not it was given away.
    virtual void TakeBack(const QString& name) = 0;
};

} // namespace melovane
