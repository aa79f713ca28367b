#pragma once

#include "platform/sqlite/engine/session.h"

#include <list>

namespace melovane::sqlite {

/// Sessions of an engine: those in use, and a few that wait for the next use of the same file,
/// since operations open and close their database all the time.
class SessionPool : public std::enable_shared_from_this<SessionPool>
{
public:
    /// \param figures null: searches are not answered from memory
    /// \param whenIdle runs work from the message loop until it returns false; may be empty
    /// \param snapshotFolder see EngineOptions
    SessionPool(ConnectionOptions options,
                std::shared_ptr<IndexFigures> figures,
                std::function<void(std::function<bool()>)> whenIdle,
                QString snapshotFolder)
        : m_options(std::move(options))
        , m_figures(std::move(figures))
        , m_whenIdle(std::move(whenIdle))
        , m_snapshotFolder(std::move(snapshotFolder))
    {}

    /// A session of the file, waiting or new. \throws DbError as DBEngine::OpenDatabase
    [[nodiscard]] std::shared_ptr<SessionLease> open(const QString& path);

    /// Closes the waiting sessions that have the file open, as their own or as a side file.
    void release(const QString& path);

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
    [[nodiscard]] ColumnIndex::StartSlices slicesOf(const QString& path);
    [[nodiscard]] QString snapshotOf(const QString& path) const;
    [[nodiscard]] bool loadSlice(const QString& path, ColumnIndex& index);
    void giveBack(std::unique_ptr<Session> session);
    std::unique_ptr<Session> takeWaiting(const QString& path);

    ConnectionOptions m_options;
    std::shared_ptr<IndexFigures> m_figures;
    std::function<void(std::function<bool()>)> m_whenIdle;
    QString m_snapshotFolder;
    QHash<QString, FileIndex> m_indexes;           ///< by path
    std::list<std::unique_ptr<Session>> m_waiting; ///< given back last stands first
    std::vector<std::weak_ptr<SessionLease>> m_inUse;
};

} // namespace melovane::sqlite
