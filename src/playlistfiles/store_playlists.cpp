#include "playlistfiles/store_playlists.h"

#include "bus/event_guard.h"
#include "config/config_objects.h"
#include "config/counted_text.h"
#include "config/global_settings.h"
#include "config/refusals.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/system/files.h"
#include "platform/system/letter_case.h"
#include "platform/system/path_text.h"
#include "playlistfiles/m3u_writer.h"

#include <vector>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Names in one folder. Owners that want the same one, also in other letter case, get their number
/// behind it: a name never passes from one owner to another because a third one was renamed.
class FolderNames
{
public:
    void want(qint64 owner, const Value& name)
    {
        const QString wanted = m3uline::fileName(name);
        m_wanted.insert(owner, wanted);
        ++m_owners[lowerCase(wanted)];
    }

    [[nodiscard]] QString nameOf(qint64 owner) const
    {
        const QString wanted = m_wanted.value(owner);
        if (m_owners.value(lowerCase(wanted)) < 2) {
            return wanted;
        }
        const QString number = u" (%1)"_s.arg(owner);
        return m3uline::fileName(wanted, number.size()) + number;
    }

private:
    QHash<qint64, QString> m_wanted;
    QHash<QString, int> m_owners;
};

struct ChangedList
{
    Pnid list;
    QString name;
};

std::vector<ChangedList> changedLists(Database& database)
{
    std::vector<ChangedList> lists;
    const auto rows = database.OpenRecordset(u"select * from VPLGROUP_SAVE order by nid"_s);
    for (; !rows->Eof(); rows->MoveNext()) {
        lists.push_back({Pnid(rows->value(u"NID").toLong()), rows->value(u"plname").toText()});
    }
    return lists;
}

/// Lines that a message tells one by one.
constexpr qsizetype kMaxTold = 8;

} // namespace

QString toldLines(const ConfigObjects& texts, const QStringList& lines)
{
    QStringList told = lines.first(qMin(lines.size(), kMaxTold));
    if (lines.size() > kMaxTold) {
        told.append(countedText(texts, u"store.more"_s, lines.size() - kMaxTold));
    }
    return told.join(u'\n');
}

QString leftOutText(const ConfigObjects& texts, const QStringList& entries)
{
    return countedText(texts, u"m3u.leftout"_s, entries.size(), toldLines(texts, entries));
}

StorePlaylists::StorePlaylists(DBEngine& engine,
                               const GlobalSettings& settings,
                               Files& files,
                               const ConfigObjects& texts)
    : m_engine(engine)
    , m_settings(settings)
    , m_files(files)
    , m_texts(texts)
{}

QHash<Pnid, QString> StorePlaylists::places(Database& database) const
{
    // The lists of a group that is gone stand in a folder without a name.
    FolderNames folders;
    QHash<qint64, FolderNames> names;
    const auto groups = database.OpenRecordset(u"select grid, name from pl_group order by grid"_s);
    for (; !groups->Eof(); groups->MoveNext()) {
        folders.want(groups->value(0).toInt64(), groups->value(1));
        names[groups->value(0).toInt64()];
    }
    QHash<Pnid, qint64> groupOf;
    const auto lists =
        database.OpenRecordset(u"select nid, grid, name from pl_name where grid>0 order by nid"_s);
    for (; !lists->Eof(); lists->MoveNext()) {
        const qint64 group = lists->value(1).toInt64();
        if (!names.contains(group)) {
            folders.want(group, Value());
        }
        names[group].want(lists->value(0).toInt64(), lists->value(2));
        groupOf.insert(Pnid(lists->value(0).toLong()), group);
    }
    QHash<Pnid, QString> places;
    for (auto list = groupOf.cbegin(); list != groupOf.cend(); ++list) {
        const QString folder =
            path::join(m_settings.PlaylistVerzeichnis(), folders.nameOf(list.value()));
        places.insert(
            list.key(),
            path::join(folder, names[list.value()].nameOf(numberOf(list.key())) + u".m3u"_s));
    }
    return places;
}

void StorePlaylists::store(Database& database, Pnid list, const QString& file)
{
    const QString folder = path::parent(file);
    if (!m_files.makeFolders(folder)) {
        throw IoError(folder, m_texts.text(u"store.nofolder"_s, folder));
    }
    // The write lock is held from the reading on, so that nobody's change is marked as saved.
    Transaction whole(database);
    database.Execute(u"update pl_name set sicherung=false where nid="_s +
                     sql::number(numberOf(list)));
    [[maybe_unused]] const QString written =
        M3uWriter(database, m_files).write(list, file, M3uWriter::Names::Full, {});
    whole.commit();
}

StorePlaylists::Result StorePlaylists::run(const std::function<void(const QString& file)>& written)
{
    Result result;
    const auto database = m_engine.OpenDatabase(m_settings.DbName());
    const QHash<Pnid, QString> files = places(*database);
    for (const ChangedList& changed : changedLists(*database)) {
        try {
            const QString file = files.value(changed.list);
            store(*database, changed.list, file);
            ++result.written;
            for (const QString& entry : M3uWriter(*database, m_files).withoutTrack(changed.list)) {
                result.leftOut.append(changed.name + u", "_s + entry);
            }
            if (written) {
                written(file);
            }
        } catch (const DbError& error) {
            result.failures.append(
                changed.name + u": "_s +
                databaseFaultText(m_texts, error.number(), error.text(), m_settings.DbName()));
        } catch (const IoError& error) {
            result.failures.append(changed.name + u": "_s +
                                   systemReasonText(m_texts, error.reason()));
        }
    }
    return result;
}

} // namespace melovane
