#include "care/library_scan.h"

#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/system/files.h"

#include <QHash>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kCount = u"select count(fid) as anz from db_all where drivetyp<>4"_s;
/// The columns that are needed: reading all of them takes four times as long.
const QString kRows = u"select fid, drivename, path, dname, del from db_all where drivetyp<>4"_s;

enum Column
{
    kFid,
    kDriveName,
    kPath,
    kName,
    kDel
};

} // namespace

std::optional<int> delAfterLook(int del, bool isThere)
{
    switch (del) {
    case 0:
        return isThere ? std::nullopt : std::optional(2);
    case -1:
        return isThere ? std::nullopt : std::optional(3);
    case 2:
        return isThere ? std::optional(0) : std::nullopt;
    case 3:
        return isThere ? std::optional(-1) : std::nullopt;
    default:
        return std::nullopt;
    }
}

LibraryScan::LibraryScan(BesideTools tools, QString dataFolder, QString dbName)
    : m_tools(std::move(tools))
    , m_dataFolder(std::move(dataFolder))
    , m_dbName(std::move(dbName))
{}

void LibraryScan::run()
{
    try {
        readTracks();
        lookForTracks();
        m_result.isWhole = !isEnded();
    } catch (const DbError& error) {
        m_result.error = error.number();
        m_result.errorText = error.text();
    }
}

void LibraryScan::readTracks()
{
    const std::unique_ptr<DBEngine> engine = m_tools.makeEngine();
    const auto database = engine->OpenDatabase(m_dbName);
    const qint64 count = database->OpenRecordset(kCount)->value(0).toInt64();
    m_tracks.reserve(size_t(count));
    QHash<std::pair<QByteArray, QByteArray>, int> folders;
    database->walkRows(kRows, [&](const WalkedRow& row) {
        const std::string_view fid = row.bytes(kFid);
        const std::string_view name = row.bytes(kName);
        const std::string_view drive = row.bytes(kDriveName);
        const std::string_view path = row.bytes(kPath);
        const auto key = std::pair(QByteArray(drive.data(), qsizetype(drive.size())),
                                   QByteArray(path.data(), qsizetype(path.size())));
        auto folder = folders.constFind(key);
        if (folder == folders.cend()) {
            folder = folders.insert(key, int(m_folders.size()));
            m_folders.push_back({QString::fromUtf8(key.first), QString::fromUtf8(key.second), {}});
        }
        m_tracks.push_back({qsizetype(m_letters.size()), int(fid.size()), int(name.size()), *folder,
                            int(row.number(kDel))});
        m_letters += fid;
        m_letters += name;
    });
    const QMutexLocker lock(&m_mutex);
    m_whole = qint64(m_tracks.size());
}

void LibraryScan::lookForTracks()
{
    const std::unique_ptr<Files> files = m_tools.makeFiles();
    ListedLocator locator(*files, m_dataFolder, m_tools.filesIn);
    for (const Track& track : m_tracks) {
        if (isEnded()) {
            return;
        }
        const char* const letters = m_letters.data() + track.at;
        const QString name = QString::fromUtf8(letters + track.fidSize, track.nameSize);
        const bool isThere = locator.isThere(m_folders[size_t(track.folder)].path, name);
        if (!isThere) {
            missing(track, name, *files);
        }
        const std::optional<int> del = delAfterLook(track.del, isThere);
        m_result.restored += del && isThere ? 1 : 0;
        const QMutexLocker lock(&m_mutex);
        if (del) {
            m_changes.push_back({QString::fromUtf8(letters, track.fidSize), isThere});
        }
        ++m_done;
    }
}

void LibraryScan::missing(const Track& track, const QString& name, const Files& files)
{
    Folder& folder = m_folders[size_t(track.folder)];
    ++m_result.missing;
    m_result.list += folder.volume + folder.path + name + u'\n';
    if (!folder.isAbsent) {
        folder.isAbsent =
            !folder.volume.isEmpty() && files.volume(folder.path).label != folder.volume;
    }
    if (*folder.isAbsent) {
        ++m_result.absent[folder.volume];
    }
}

bool LibraryScan::isEnded()
{
    const QMutexLocker lock(&m_mutex);
    return m_isEnded;
}

void LibraryScan::end()
{
    const QMutexLocker lock(&m_mutex);
    m_isEnded = true;
}

std::pair<qint64, qint64> LibraryScan::progress()
{
    const QMutexLocker lock(&m_mutex);
    return {m_done, m_whole};
}

std::vector<LibraryScan::Change> LibraryScan::takeChanges(size_t count)
{
    const QMutexLocker lock(&m_mutex);
    const size_t end = std::min(m_changes.size(), m_taken + count);
    std::vector<Change> changes(m_changes.begin() + std::ptrdiff_t(m_taken),
                                m_changes.begin() + std::ptrdiff_t(end));
    m_taken = end;
    return changes;
}

} // namespace melovane
