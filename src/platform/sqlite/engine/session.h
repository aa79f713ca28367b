#pragma once

#include "platform/sqlite/engine/catalogue.h"
#include "platform/sqlite/engine/name_index.h"
#include "platform/sqlite/engine/schema_change.h"
#include "platform/sqlite/engine/searched_table.h"
#include "platform/sqlite/engine/transactions.h"
#include "platform/sqlite/index/column_index.h"

namespace melovane::sqlite {

/// A statement ready to run as long as the catalogue stays as it was.
struct Prepared
{
    QString text; ///< as the caller wrote it
    Translation translation;
    NameIndex columns;    ///< numbers of the result columns
    NameIndex parameters; ///< numbers of the parameters
    /// Side files that it names: schema and its version when it was translated.
    std::vector<std::pair<QString, qint64>> sideFiles;
    qint64 catalogueVersion = 0;
    std::optional<SearchStatement> search; ///< set when the column index may answer it
    bool seenAgain = false;                ///< asked for more than once, so worth keeping compiled
};

/// Everything behind one open database file: the connection, the catalogue, the transactions, and
/// what was learned about statements. Outlives the Database that uses it when it is kept for the
/// next one.
class Session
{
public:
    /// \param index of the same file, or null for a program that does not search
    Session(const QString& path,
            const ConnectionOptions& options,
            std::shared_ptr<ColumnIndex> index = nullptr);

    [[nodiscard]] Connection& connection() { return m_connection; }

    [[nodiscard]] const Attachments& attachments() const { return m_attachments; }

    [[nodiscard]] Transactions& transactions() { return m_transactions; }

    /// The catalogue as it is now.
    [[nodiscard]] Catalogue& catalogue();
    [[nodiscard]] SchemaChange schemaChange();

    [[nodiscard]] QDateTime now() const { return m_now(); }

    /// \param allowParameters unknown names become parameters, as in a stored query
    /// \throws DbError with the text as statement
    [[nodiscard]] std::shared_ptr<const Prepared> translate(const QString& text,
                                                            bool allowParameters);

    /// True when the statement can still be run as it was translated.
    [[nodiscard]] bool holds(const Prepared& statement);

    /// To be called before rows of a statement are read that was translated some time ago.
    void requireReadable(const Prepared& statement);

    /// To be called before each change. \throws DbError when it must not be made now
    void requireWritable() { m_transactions.requireWritable(); }

    /// Runs an action statement as one change. \return rows touched
    int execute(const Prepared& statement, const std::vector<Value>& parameters);

    /// Rows changed here or seen to be doubtful: rows fetched under another number are read anew.
    [[nodiscard]] qint64 epoch() const { return m_epoch; }

    void nextEpoch() { ++m_epoch; }

    /// \see Database::DataVersion
    [[nodiscard]] qint64 dataVersion();
    /// \see Database::fileVersion
    [[nodiscard]] qint64 fileVersion();

    /// The rows of a statement as the column index finds them, or null: SQLite is to answer.
    [[nodiscard]] std::shared_ptr<const KeySource> indexedKeys(const Prepared& statement);
    /// The same for a statement that counts.
    [[nodiscard]] std::optional<qint64> indexedCount(const Prepared& statement);

    /// What the column index reads; for loading it while nobody searches.
    [[nodiscard]] IndexedFile& searchedTable() { return m_searchedTable; }

    /// Undoes the innermost transaction, if there is one.
    void rollback() noexcept;

    /// Undoes what is open; for giving the session to the next user.
    void settle() noexcept;

private:
    void refreshCatalogue();
    [[nodiscard]] bool isCurrent(const Prepared& statement);
    [[nodiscard]] bool isOfSearchedTable(const Translation& translation) const;
    /// A new table and its rows as one change. \return rows
    int makeTable(const Translation& translation, const std::vector<Value>& parameters);
    std::shared_ptr<Prepared> makePrepared(const QString& text, bool allowParameters);

    Connection m_connection;
    Attachments m_attachments;
    Catalogue m_catalogue;
    Transactions m_transactions;
    std::function<QDateTime()> m_now;
    std::shared_ptr<ColumnIndex> m_index; ///< null: no search is answered from memory
    SearchedTable m_searchedTable;
    QHash<QString, std::shared_ptr<Prepared>> m_prepared;
    qint64 m_epoch = 0;
    qint64 m_refreshedIn = 0; ///< number of the transaction in which the catalogue was looked at
    qint64 m_mainVersion = -1;
    qint64 m_sideVersion = 0;
    qint64 m_foreignChanges = 0;
};

/// The session while a Database has it. Recordsets and queries hold it weakly, so that they notice
/// that their database was closed.
class SessionLease
{
public:
    SessionLease(std::unique_ptr<Session> session,
                 std::function<void(std::unique_ptr<Session>)> giveBack)
        : m_session(std::move(session))
        , m_giveBack(std::move(giveBack))
    {}

    ~SessionLease() { m_giveBack(std::move(m_session)); }

    SessionLease(const SessionLease&) = delete;
    SessionLease& operator=(const SessionLease&) = delete;

    [[nodiscard]] Session& session() const { return *m_session; }

private:
    std::unique_ptr<Session> m_session;
    std::function<void(std::unique_ptr<Session>)> m_giveBack;
};

/// The session of a lease. \throws DbError kObjectClosed when its database was closed
[[nodiscard]] Session& openSession(const std::weak_ptr<SessionLease>& lease);

} // namespace melovane::sqlite
