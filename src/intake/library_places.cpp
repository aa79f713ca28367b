#include "intake/library_places.h"

#include "platform/db/sql_text.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "store/track_fields.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

QString lastPart(const QString& folder)
{
    return path::fileName(path::withoutSeparator(folder));
}

} // namespace

LibraryPlaces::LibraryPlaces(Database& database, const Files& files)
    : m_database(database)
    , m_files(files)
    , m_byPlace(database.CreateQueryDef({},
                                        u"parameters pPath memo, pName memo; "_s +
                                            statement(u"Path=pPath and DName=pName"_s)))
{}

LibraryPlaces::~LibraryPlaces() = default;

QString LibraryPlaces::statement(const QString& condition)
{
    using F = TrackField;
    return u"select %1 from db_all where "_s.arg(
               columnList({F::FID, F::Path, F::DName, F::DEL, F::DriveTyp, F::DriveName})) +
           condition;
}

StoredPlace LibraryPlaces::rowFrom(const Recordset& row)
{
    return {row.value(0).toText(), row.value(1).toText(), row.value(2).toText(),
            row.value(3).toLong(), row.value(4).toLong(), row.value(5).toText()};
}

std::optional<StoredPlace> LibraryPlaces::placeOf(const QString& fid)
{
    const auto rows = m_database.OpenRecordset(statement(u"FID="_s + sql::text(fid)));
    return rows->Eof() ? std::nullopt : std::optional(rowFrom(*rows));
}

std::optional<StoredPlace> LibraryPlaces::rowOf(const QString& folder, const QString& name)
{
    m_byPlace->SetParameter(u"pPath"_s, folder);
    m_byPlace->SetParameter(u"pName"_s, name);
    const auto rows = m_byPlace->OpenRecordset();
    for (; !rows->Eof(); rows->MoveNext()) {
        StoredPlace place = rowFrom(*rows);
        // The statement takes names that differ in letter case; on disk they are others.
        if (place.Path == folder && place.DName == name) {
            return place;
        }
    }
    return std::nullopt;
}

std::optional<StoredPlace> LibraryPlaces::rowUnderOtherNames(const QString& folder,
                                                             const QString& name)
{
    for (const QString& other : storedNames(folder)) {
        if (other != folder) {
            if (auto place = rowOf(other, name)) {
                return place;
            }
        }
    }
    return std::nullopt;
}

std::optional<StoredPlace> LibraryPlaces::find(const QString& folder, const QString& name)
{
    if (m_comparedSince != m_database.DataVersion()) {
        if (auto place = rowOf(folder, name)) {
            return place;
        }
    }
    if (auto place = rowUnderOtherNames(folder, name)) {
        return place;
    }
    const auto facts = m_files.facts(folder + name);
    if (!facts || !facts->isLink) {
        return std::nullopt;
    }
    const QString canonical = m_files.canonical(folder + name);
    const QString behind = path::withSeparator(path::parent(canonical));
    const QString nameBehind = path::fileName(canonical);
    auto place = rowOf(behind, nameBehind);
    return place ? place : rowUnderOtherNames(behind, nameBehind);
}

void LibraryPlaces::added(const QString& folder)
{
    const Folder& facts = folderOf(folder);
    if (facts.identity) {
        QStringList& names = m_storedNames[*facts.identity];
        if (!names.contains(folder)) {
            names.append(folder);
        }
    }
}

const LibraryPlaces::Folder& LibraryPlaces::folderOf(const QString& path)
{
    auto known = m_folders.constFind(path);
    if (known == m_folders.cend()) {
        Folder folder;
        if (const auto facts = m_files.facts(path); facts && facts->isFolder) {
            folder = {Identity(facts->device, facts->inode), m_files.canonical(path)};
        }
        known = m_folders.insert(path, folder);
    }
    return *known;
}

const QStringList& LibraryPlaces::storedNames(const QString& path)
{
    static const QStringList none;
    const Folder folder = folderOf(path);
    if (!folder.identity) {
        return none;
    }
    auto known = m_storedNames.constFind(*folder.identity);
    if (known == m_storedNames.cend()) {
        known = m_storedNames.insert(*folder.identity, findStoredNames(path));
    }
    return *known;
}

/// Asks the disk about few of the stored folders. One that is the same folder under another name
/// either has a link or a mount above its last part, which then is the same; or it is the link
/// itself, and its files stand in the folder.
QStringList LibraryPlaces::findStoredNames(const QString& path)
{
    readStored();
    const Folder folder = folderOf(path);
    QStringList candidates = m_byLastPart.values(lastPart(folder.canonical));
    const QStringList names = m_files.names(path);
    for (const QString& name : names) {
        candidates.append(m_byFirstFile.values(name));
    }
    QStringList result;
    for (const QString& candidate : std::as_const(candidates)) {
        if (!result.contains(candidate) && folderOf(candidate).identity == folder.identity) {
            result.append(candidate);
        }
    }
    return result;
}

void LibraryPlaces::readStored()
{
    if (m_readStored) {
        return;
    }
    m_readStored = true;
    const auto rows = m_database.OpenRecordset(
        u"select Path, min(DName) as FirstName from db_all group by Path"_s);
    for (; !rows->Eof(); rows->MoveNext()) {
        const QString folder = rows->value(0).toText();
        m_byLastPart.insert(lastPart(folder), folder);
        m_byFirstFile.insert(rows->value(1).toText(), folder);
    }
}

} // namespace melovane
