#include "playlists/list_model.h"

#include "platform/db/database.h"

#include <algorithm>
#include <utility>

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;
using Kind = ModelStep::Kind;

namespace {

/// Lists longer than this are made shorter.
constexpr size_t kLongList = 24;

/// Track 1 has the identifier behind this number.
constexpr qint64 kFirstTrack = Q_INT64_C(800000000000);

/// Of no entry.
constexpr int kNoEntry = 1'000'000;

bool isTrack(int id)
{
    return id < ListModel::kWithoutLength;
}

int highest(const std::vector<ListModel::Entry>& list)
{
    int sid = 0;
    for (const ListModel::Entry& entry : list) {
        sid = std::max(sid, entry.sid);
    }
    return list.empty() ? 0 : sid;
}

void sort(std::vector<ListModel::Entry>& list)
{
    std::stable_sort(list.begin(), list.end(), [](const auto& one, const auto& two) {
        // The younger first; one that has no number yet is the youngest.
        return one.sid < two.sid ||
               (one.sid == two.sid && two.plid != 0 && (one.plid == 0 || one.plid > two.plid));
    });
}

/// A number from 0 to limit - 1.
int below(std::mt19937& random, int limit)
{
    return limit <= 0 ? 0 : std::uniform_int_distribution(0, limit - 1)(random);
}

int randomEntry(std::mt19937& random, const std::vector<ListModel::Entry>& list)
{
    return list.empty() ? kNoEntry : list[size_t(below(random, int(list.size())))].plid;
}

QList<int> randomTracks(std::mt19937& random, int most)
{
    QList<int> ids;
    for (int i = 0; i <= below(random, most); ++i) {
        ids.append(1 + below(random, ListModel::kTracks));
    }
    return ids;
}

/// What another program does to a list.
enum Foreign
{
    kAppends,
    kRemoves,
    kMovesToTheEnd,
    kSwapsWithTheFirst,
    kForeignChanges
};

} // namespace

ListModel::ListModel(Database& database)
    : m_lists(read(database))
{}

ListModel::Lists ListModel::read(Database& database)
{
    Lists lists;
    const auto names = database.OpenRecordset(u"select nid from pl_name"_s);
    for (; !names->Eof(); names->MoveNext()) {
        lists[names->value(0).toLong()] = {};
    }
    const auto rows = database.OpenRecordset(
        u"select pnid, plid, sid, fid from pl_all order by pnid, sid, plid desc"_s);
    for (; !rows->Eof(); rows->MoveNext()) {
        lists[rows->value(0).toLong()].push_back(
            {rows->value(1).toLong(), rows->value(2).toLong(),
             int(rows->value(3).toText().toLongLong() - kFirstTrack)});
    }
    return lists;
}

QString ListModel::textOf(const Lists& lists)
{
    QStringList parts;
    for (const auto& [number, list] : lists) {
        QStringList entries;
        for (const Entry& entry : list) {
            entries.append(u"%1:%2"_s.arg(entry.sid).arg(entry.track));
        }
        parts.append(u"%1: %2"_s.arg(number).arg(entries.join(u' ')));
    }
    return parts.join(u" | "_s);
}

QString ListModel::text() const
{
    return textOf(m_lists);
}

QString ListModel::textOf(Database& database)
{
    return textOf(read(database));
}

bool ListModel::adopt(Database& database)
{
    const Lists found = read(database);
    if (textOf(found) != text()) {
        return false;
    }
    for (auto& [number, list] : m_lists) {
        const std::vector<Entry>& rows = found.at(number);
        for (size_t i = 0; i < list.size(); ++i) {
            if (list[i].plid != 0 && list[i].plid != rows[i].plid) {
                return false;
            }
            list[i].plid = rows[i].plid;
        }
    }
    if (std::exchange(m_isNew, false)) {
        for (auto& [number, list] : m_undo.back().after) {
            list = m_lists.at(number);
        }
    }
    return true;
}

std::vector<ListModel::Entry> ListModel::entriesOf(int list) const
{
    const auto found = m_lists.find(list);
    return found == m_lists.end() ? std::vector<Entry>() : found->second;
}

Kind ListModel::randomKind(std::mt19937& random, Others others) const
{
    // A move that is taken back, and what is taken back, changed by others and then done once more,
    // are rare by chance alone.
    if (others == Others::Write && m_lastKind == Kind::Undo && below(random, 3) == 0) {
        return Kind::Foreign;
    }
    if (m_lastKind == Kind::Move && !m_undo.empty() && below(random, 2) == 0) {
        return Kind::Undo;
    }
    if (m_lastKind == Kind::Foreign && below(random, 2) == 0) {
        return m_redo.empty() ? Kind::Undo : Kind::Redo;
    }
    const auto kind = Kind(below(random, others == Others::Write ? 11 : 10));
    const bool isLast = m_lists.size() < 2;
    const bool isIdle =
        (kind == Kind::Undo && m_undo.empty()) || (kind == Kind::Redo && m_redo.empty());
    // Of an editor that was killed there are steps of which its follower knows nothing.
    const bool mayBeIdle = others == Others::Write && below(random, 4) == 0;
    if ((isIdle && !mayBeIdle) || (kind == Kind::DeleteList && (isLast || below(random, 4) != 0))) {
        return Kind::AppendTracks;
    }
    return kind;
}

/// Entries of a list, now and then of any other; now and then one that is not there, or one that
/// was named before.
QList<int> ListModel::randomEntries(std::mt19937& random, int list, int most) const
{
    QList<int> ids;
    for (int i = 0; i <= below(random, most); ++i) {
        auto source = m_lists.find(list);
        if (below(random, 3) == 0) {
            source = m_lists.begin();
            std::advance(source, below(random, int(m_lists.size())));
        }
        ids.append(below(random, 12) == 0 ? kNoEntry : randomEntry(random, source->second));
    }
    return ids;
}

ModelStep ListModel::randomStep(std::mt19937& random, Others others) const
{
    ModelStep step;
    step.kind = randomKind(random, others);
    auto chosen = m_lists.begin();
    std::advance(chosen, below(random, int(m_lists.size())));
    step.list = chosen->first;
    const std::vector<Entry>& entries = chosen->second;
    const bool isLong = entries.size() > kLongList;
    if (isLong && (step.kind == Kind::AppendTracks || step.kind == Kind::InsertCopies)) {
        step.kind = Kind::Delete;
    }
    const int most = isLong ? 12 : 5;
    step.position = below(random, highest(entries) + 4);
    const bool ofTracks = step.kind == Kind::AppendTracks || step.kind == Kind::InsertTracks;
    step.ids = ofTracks ? randomTracks(random, most) : randomEntries(random, step.list, most);
    if (step.kind == Kind::Swap) {
        step.ids = {randomEntry(random, entries)};
        step.position = below(random, 2) == 0 ? -1 : 1;
    } else if (step.kind == Kind::Foreign) {
        step.ids = {randomEntry(random, entries)};
        step.position = below(random, kForeignChanges);
    } else if (!ofTracks && below(random, 5) == 0) {
        step.position = -10000;
    }
    return step;
}

std::vector<ListModel::Entry> ListModel::allEntries() const
{
    std::vector<Entry> all;
    for (const auto& [number, list] : m_lists) {
        all.insert(all.end(), list.begin(), list.end());
    }
    return all;
}

ListHistory::Outcome
ListModel::take(std::vector<Change>& from, std::vector<Change>& to, bool isUndo)
{
    if (from.empty()) {
        return ListHistory::Outcome::Nothing;
    }
    const Change change = from.back();
    const Lists& known = isUndo ? change.after : change.before;
    const Lists& target = isUndo ? change.before : change.after;
    Lists concerned = change.before;
    concerned.insert(change.after.begin(), change.after.end());
    for (const auto& [number, list] : concerned) {
        const auto expected = known.find(number);
        if (entriesOf(number) !=
            (expected == known.end() ? std::vector<Entry>() : expected->second)) {
            return ListHistory::Outcome::ChangedElsewhere;
        }
    }
    for (const auto& [number, list] : concerned) {
        m_lists.erase(number);
    }
    m_lists.insert(target.begin(), target.end());
    to.push_back(change);
    from.pop_back();
    return ListHistory::Outcome::Done;
}

/// Keeps a step that changed something; the list it was done to belongs to it in any case.
void ListModel::note(const Lists& former, const ModelStep& step)
{
    if (m_lists == former) {
        return;
    }
    Change change;
    for (const auto& [number, list] : former) {
        const auto now = m_lists.find(number);
        if (number != step.list && now != m_lists.end() && now->second == list) {
            continue;
        }
        change.before[number] = list;
        if (now != m_lists.end()) {
            change.after[number] = now->second;
        }
    }
    m_undo.push_back(change);
    m_redo.clear();
    m_isNew = true;
}

ListHistory::Outcome ListModel::apply(const ModelStep& step)
{
    m_lastKind = step.kind;
    switch (step.kind) {
    case Kind::Undo:
        return take(m_undo, m_redo, true);
    case Kind::Redo:
        return take(m_redo, m_undo, false);
    case Kind::Foreign:
        writeElsewhere(step);
        break;
    default: {
        const Lists former = m_lists;
        edit(step);
        note(former, step);
    }
    }
    return ListHistory::Outcome::Done;
}

void ListModel::writeElsewhere(const ModelStep& step)
{
    std::vector<Entry>& list = m_lists.at(step.list);
    const int next = highest(list) + 1;
    for (Entry& entry : list) {
        if (step.position == kMovesToTheEnd && entry.plid == step.ids.first()) {
            entry.sid = next;
        }
    }
    const auto self = std::find_if(list.begin(), list.end(), [&](const Entry& entry) {
        return entry.plid == step.ids.first();
    });
    if (step.position == kSwapsWithTheFirst && self != list.end()) {
        std::swap(self->sid, list.front().sid);
    }
    if (step.position == kAppends) {
        list.push_back({0, next, 1});
    } else if (step.position == kRemoves) {
        std::erase_if(list, [&](const Entry& entry) { return entry.plid == step.ids.first(); });
    }
    sort(list);
}

/// Entries of all lists go to one place of this one, behind another in the order of their names.
void ListModel::move(const ModelStep& step, int first)
{
    std::vector<Entry>& target = m_lists.at(step.list);
    for (const int id : step.ids) {
        for (auto& [number, list] : m_lists) {
            const auto found = std::find_if(list.begin(), list.end(),
                                            [&](const Entry& entry) { return entry.plid == id; });
            if (found != list.end()) {
                const int track = found->track;
                list.erase(found);
                target.push_back({id, first, track});
                break;
            }
        }
        ++first;
    }
}

void ListModel::insert(const ModelStep& step, std::vector<Entry>& list)
{
    const bool ofTracks = step.kind == Kind::InsertTracks;
    const int first = step.position == -10000 ? highest(list) + 1 : step.position;
    const std::vector<Entry> sources = allEntries();
    int next = first + int(step.ids.size()) + (ofTracks ? 1 : 0);
    for (Entry& entry : list) {
        if (entry.sid >= first) {
            entry.sid = next++;
        }
    }
    if (step.kind == Kind::Move) {
        move(step, first);
        return;
    }
    int place = ofTracks ? first + 1 : first;
    for (const int id : step.ids) {
        if (ofTracks) {
            if (isTrack(id)) {
                list.push_back({0, place++, id});
            }
            continue;
        }
        for (const Entry& source : sources) {
            if (source.plid == id) {
                list.push_back({0, place, source.track});
            }
        }
        ++place;
    }
}

void ListModel::edit(const ModelStep& step)
{
    std::vector<Entry>& list = m_lists.at(step.list);
    const auto place = [&](int plid) {
        return std::find_if(list.begin(), list.end(),
                            [&](const Entry& entry) { return entry.plid == plid; });
    };
    const std::vector<Entry> sources = allEntries();
    int next = highest(list) + 1;
    switch (step.kind) {
    case Kind::AppendTracks:
        for (const int id : step.ids) {
            if (isTrack(id)) {
                list.push_back({0, ++next, id});
            }
        }
        break;
    case Kind::AppendCopies:
        for (const int id : step.ids) {
            for (const Entry& entry : sources) {
                if (entry.plid == id) {
                    list.push_back({0, ++next, entry.track});
                }
            }
        }
        break;
    case Kind::InsertTracks:
    case Kind::InsertCopies:
    case Kind::Move:
        insert(step, list);
        break;
    case Kind::Delete:
        for (auto& [number, each] : m_lists) {
            std::erase_if(each, [&](const Entry& entry) { return step.ids.contains(entry.plid); });
        }
        break;
    case Kind::Swap: {
        const auto self = place(step.ids.first());
        const auto other = self - list.begin() + step.position;
        if (self != list.end() && other >= 0 && other < std::ssize(list)) {
            std::swap(self->sid, list[size_t(other)].sid);
        }
        break;
    }
    case Kind::DeleteList:
        m_lists.erase(step.list);
        return;
    case Kind::Undo:
    case Kind::Redo:
    case Kind::Foreign:
        return;
    }
    sort(list);
}

namespace {

void swapWithTheFirst(Database& database, const QString& list, const QString& entry)
{
    const auto self = database.OpenRecordset(u"select sid from pl_all"_s + entry);
    const auto first = database.OpenRecordset(
        u"select top 1 plid, sid from pl_all where pnid=%1 order by sid, plid desc"_s.arg(list));
    if (!self->Eof()) {
        const QString plid = first->value(0).toText();
        const QString sid = first->value(1).toText();
        database.Execute(
            u"update pl_all set sid=%1 where plid=%2"_s.arg(self->value(0).toText(), plid));
        database.Execute(u"update pl_all set sid=%1"_s.arg(sid) + entry);
    }
}

void writeElsewhere(Database& database, const ModelStep& step)
{
    Transaction change(database);
    const QString list = QString::number(step.list);
    const int next = database.OpenRecordset(u"select max(sid) from pl_all where pnid="_s + list)
                         ->value(0)
                         .toLong() +
                     1;
    const QString entry = u" where pnid=%1 and plid=%2"_s.arg(list).arg(step.ids.first());
    if (step.position == kAppends) {
        database.Execute(
            u"insert into pl_all (pnid, sid, fid) values (%1, %2, '%3')"_s.arg(list).arg(next).arg(
                kFirstTrack + 1));
    } else if (step.position == kRemoves) {
        database.Execute(u"delete from pl_all"_s + entry);
    } else if (step.position == kMovesToTheEnd) {
        database.Execute(u"update pl_all set sid=%1"_s.arg(next) + entry);
    } else {
        swapWithTheFirst(database, list, entry);
    }
    const QString count =
        database.OpenRecordset(u"select count(*) from pl_all where pnid="_s + list)
            ->value(0)
            .toText();
    database.Execute(u"update pl_name set anzahl=%1 where nid=%2"_s.arg(count, list));
    change.commit();
}

} // namespace

ListHistory::Outcome perform(const ListTools& tools, const ModelStep& step)
{
    const Pnid list{step.list};
    const Sid position{step.position};
    QStringList ids;
    QStringList fids;
    for (const int id : step.ids) {
        ids.append(QString::number(id));
        fids.append(QString::number(kFirstTrack + id));
    }
    const QString entries = u"DRAG_TYP_PLID:"_s + ids.join(u',');
    const QString tracks = u"DRAG_TYP_FID_MP3DB:"_s + fids.join(u',');
    switch (step.kind) {
    case Kind::AppendTracks:
        tools.edits.AppendFromMP3DB(tracks, list, kAktionMix);
        break;
    case Kind::InsertTracks:
        tools.edits.InsertFromMP3DB(position, list, tracks, kAktionMix);
        break;
    case Kind::InsertCopies:
        tools.edits.InsertORMoveFromPlaylist(1, position, list, entries, 0);
        break;
    case Kind::AppendCopies:
        tools.edits.InsertORMoveFromPlaylist(99, position, list, entries, 0);
        break;
    case Kind::Move:
        tools.edits.InsertORMoveFromPlaylist(2, position, list, entries, 0);
        break;
    case Kind::Delete:
        tools.edits.DeletePlaylistRecords(entries, list);
        break;
    case Kind::Swap:
        tools.edits.swapWithNeighbour(Plid{step.ids.first()}, list, step.position);
        break;
    case Kind::DeleteList:
        tools.names.deleteList(list);
        break;
    case Kind::Undo:
        return tools.history.undo().outcome;
    case Kind::Redo:
        return tools.history.redo().outcome;
    case Kind::Foreign:
        writeElsewhere(tools.others, step);
        break;
    }
    return ListHistory::Outcome::Done;
}

} // namespace melovane::test
