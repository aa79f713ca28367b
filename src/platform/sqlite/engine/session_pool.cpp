#include "platform/sqlite/engine/session_pool.h"

#include "platform/db/db_fault.h"

#include <QCryptographicHash>

#include <algorithm>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// Operations inside operations need a second session of the same file, hardly a third.
constexpr int kWaitingPerFile = 2;

/// False when the file was replaced or removed since the session opened it, or the session could
/// not be brought to rest.
bool isUsable(Session& session)
{
    return session.connection().isCurrent() && !session.connection().inTransaction();
}

} // namespace

std::shared_ptr<SessionLease> SessionPool::open(const QString& path)
{
    requireOwn(path);
    std::unique_ptr<Session> session = takeWaiting(path);
    if (!session) {
        session = std::make_unique<Session>(path, m_options, indexOf(path));
    }
    auto lease = std::make_shared<SessionLease>(
        std::move(session), [pool = weak_from_this()](std::unique_ptr<Session> returned) {
            if (const auto alive = pool.lock()) {
                alive->giveBack(std::move(returned));
            }
        });
    std::erase_if(m_inUse, [](const auto& known) { return known.expired(); });
    m_inUse.push_back(lease);
    return lease;
}

std::unique_ptr<Session> SessionPool::takeWaiting(const QString& path)
{
    m_waiting.remove_if([](const auto& waiting) { return !isUsable(*waiting); });
    for (auto waiting = m_waiting.begin(); waiting != m_waiting.end(); ++waiting) {
        if ((*waiting)->connection().path() == path) {
            std::unique_ptr<Session> session = std::move(*waiting);
            m_waiting.erase(waiting);
            return session;
        }
    }
    return nullptr;
}

void SessionPool::giveBack(std::unique_ptr<Session> session)
{
    session->settle();
    // Side files of a lent one are opened by names of their own, too: meanwhile none waits.
    if (!isUsable(*session) || !m_givenAway.isEmpty()) {
        return;
    }
    const QString path = session->connection().path();
    m_waiting.push_front(std::move(session));
    int kept = 0;
    m_waiting.remove_if([&](const auto& waiting) {
        return waiting->connection().path() == path && ++kept > kWaitingPerFile;
    });
}

std::shared_ptr<ColumnIndex> SessionPool::indexOf(const QString& path)
{
    const std::optional<FileId> id = fileId(path);
    if (!m_search.figures || !id) {
        return nullptr;
    }
    FileIndex& known = m_indexes[path];
    if (!known.index || known.id != *id) {
        known = {*id, std::make_shared<ColumnIndex>(indexOptions(path))};
    }
    return known.index;
}

IndexOptions SessionPool::indexOptions(const QString& path)
{
    return {m_search.figures, slicesOf(path), snapshotOf(path), m_options.time, m_search.timeout};
}

IndexOptions::StartSlices SessionPool::slicesOf(const QString& path)
{
    if (!m_search.whenIdle) {
        return {};
    }
    return [this, path](const std::weak_ptr<ColumnIndex>& index) {
        m_search.whenIdle([pool = weak_from_this(), index, path] {
            const auto alive = pool.lock();
            const auto loading = index.lock();
            return alive && loading && alive->loadSlice(path, *loading);
        });
    };
}

/// A file name for each database, whatever its path holds.
QString SessionPool::snapshotOf(const QString& path) const
{
    if (m_search.snapshotFolder.isEmpty()) {
        return {};
    }
    const QByteArray name =
        QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1).toHex();
    return m_search.snapshotFolder + u'/' + QString::fromLatin1(name) + u".index"_s;
}

bool SessionPool::loadSlice(const QString& path, ColumnIndex& index)
{
    try {
        const std::shared_ptr<SessionLease> lease = open(path);
        return index.loadSlice(lease->session().searchedTable());
    } catch (const DbError&) {
        // The file is gone or damaged; a search would say so.
        index.abandonLoad();
        return false;
    }
}

void SessionPool::release(const QString& path)
{
    m_indexes.remove(path);
    const std::optional<FileId> file = fileId(path);
    m_waiting.remove_if([&](const auto& waiting) {
        Connection& connection = waiting->connection();
        // The same file may have been opened by another name.
        return connection.path() == path || connection.id() == file ||
               (file && waiting->attachments().holds(*file)) || !connection.isCurrent();
    });
}

void SessionPool::giveAway(const QString& path)
{
    release(path);
    m_waiting.clear();
    takeBack(path);
    m_givenAway.append(path);
}

bool SessionPool::isGivenAway(const QString& path) const
{
    if (m_givenAway.isEmpty()) {
        return false;
    }
    const std::optional<FileId> file = fileId(path);
    return std::any_of(m_givenAway.begin(), m_givenAway.end(), [&](const QString& given) {
        // The file may have been replaced since, so its identity is asked for anew.
        return given == path || (file && fileId(given) == file);
    });
}

void SessionPool::requireOwn(const QString& path) const
{
    if (isGivenAway(path)) {
        throw dbError(DbFault::FileGivenAway, path);
    }
}

void SessionPool::refreshAll()
{
    for (const std::weak_ptr<SessionLease>& lease : m_inUse) {
        if (const auto open = lease.lock()) {
            open->session().nextEpoch();
        }
    }
}

} // namespace melovane::sqlite
