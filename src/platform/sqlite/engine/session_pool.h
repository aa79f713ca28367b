#pragma once

#include "platform/sqlite/engine/session.h"

#include <QStringList>

#include <list>

namespace melovane::sqlite {

/// How searches are answered from memory; see EngineOptions.
struct SearchOptions
{
    std::shared_ptr<IndexFigures> figures; ///< null: they are not
    std::function<void(std::function<bool()>)> whenIdle;
    QString snapshotFolder;
    std::chrono::milliseconds timeout{60};
};

/// Sessions of an engine: those in use, and a few that wait for the next use of the same file,
/// since operations open and close their database all the time.
class SessionPool : public std::enable_shared_from_this<SessionPool>
{
public:
    SessionPool(ConnectionOptions options, SearchOptions search)
        : m_options(std::move(options))
        , m_search(std::move(search))
    {}

    /// A session of the file, waiting or new. \throws DbError as DBEngine::OpenDatabase
    [[nodiscard]] std::shared_ptr<SessionLease> open(const QString& path);

    /// Closes the waiting sessions that have the file open, as their own or as a side file.
    void release(const QString& path);

    /// The same, and open() refuses the file until takeBack(). No session waits until then, for
    /// those of its side files do not know whose they are: one in use is closed when it is given
    /// back.
    void giveAway(const QString& path);

    void takeBack(const QString& path) { m_givenAway.removeAll(path); }

    /// \throws DbError kReleased for a file that was given away, by this or another name
    void requireOwn(const QString& path) const;

    /// Makes every session in use read anew what others may have changed.
    void refreshAll();

    [[nodiscard]] const ConnectionOptions& options() const { return m_options; }

private:
    struct FileIndex
    {
        FileId id;
        std::shared_ptr<ColumnIndex> index;
    };

    [[nodiscard]] std::shared_ptr<ColumnIndex> indexOf(const QString& path);
    [[nodiscard]] IndexOptions indexOptions(const QString& path);
    [[nodiscard]] IndexOptions::StartSlices slicesOf(const QString& path);
    [[nodiscard]] QString snapshotOf(const QString& path) const;
    [[nodiscard]] bool loadSlice(const QString& path, ColumnIndex& index);
    [[nodiscard]] bool isGivenAway(const QString& path) const;
    void giveBack(std::unique_ptr<Session> session);
    std::unique_ptr<Session> takeWaiting(const QString& path);

    ConnectionOptions m_options;
    SearchOptions m_search;
    QHash<QString, FileIndex> m_indexes;           ///< by path
    std::list<std::unique_ptr<Session>> m_waiting; ///< given back last stands first
    std::vector<std::weak_ptr<SessionLease>> m_inUse;
    QStringList m_givenAway; ///< paths
};

} // namespace melovane::sqlite
