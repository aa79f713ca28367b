#include "playlists/list_model.h"

#include "platform/db/database.h"

#include <algorithm>

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

/// Numbers of tracks or entries; now and then an entry that is not there, or one that was named
/// before.
QList<int>
randomIds(std::mt19937& random, const std::vector<ListModel::Entry>& list, int most, bool ofTracks)
{
    QList<int> ids;
    for (int i = 0; i <= below(random, most); ++i) {
        const bool isKnown = !list.empty() && below(random, 12) != 0;
        const int entry = isKnown ? randomEntry(random, list) : kNoEntry;
        ids.append(ofTracks ? 1 + below(random, ListModel::kTracks) : entry);
    }
    return ids;
}

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
    return true;
}

Kind ListModel::randomKind(std::mt19937& random) const
{
    const auto kind = Kind(below(random, 10));
    const bool isLast = m_lists.size() < 2;
    if ((kind == Kind::Undo && m_undo.empty()) || (kind == Kind::Redo && m_redo.empty()) ||
        (kind == Kind::DeleteList && (isLast || below(random, 4) != 0))) {
        return Kind::AppendTracks;
    }
    return kind;
}

ModelStep ListModel::randomStep(std::mt19937& random) const
{
    ModelStep step;
    step.kind = randomKind(random);
    auto chosen = m_lists.begin();
    std::advance(chosen, below(random, int(m_lists.size())));
    step.list = chosen->first;
    const std::vector<Entry>& entries = chosen->second;
    const bool isLong = entries.size() > kLongList;
    if (isLong && (step.kind == Kind::AppendTracks || step.kind == Kind::InsertCopies)) {
        step.kind = Kind::Delete;
    }
    step.position = below(random, highest(entries) + 4);
    const bool ofTracks = step.kind == Kind::AppendTracks || step.kind == Kind::InsertTracks;
    step.ids = randomIds(random, entries, isLong ? 12 : 5, ofTracks);
    if (step.kind == Kind::Swap) {
        step.ids = {randomEntry(random, entries)};
        step.position = below(random, 2) == 0 ? -1 : 1;
    } else if (!ofTracks && below(random, 5) == 0) {
        step.position = -10000;
    }
    return step;
}

void ListModel::apply(const ModelStep& step)
{
    if (step.kind == Kind::Undo || step.kind == Kind::Redo) {
        auto& from = step.kind == Kind::Undo ? m_undo : m_redo;
        auto& to = step.kind == Kind::Undo ? m_redo : m_undo;
        if (!from.empty()) {
            to.push_back(m_lists);
            m_lists = from.back();
            from.pop_back();
        }
        return;
    }
    const Lists former = m_lists;
    edit(step);
    if (m_lists != former) {
        m_undo.push_back(former);
        m_redo.clear();
    }
}

void ListModel::insert(const ModelStep& step, std::vector<Entry>& list)
{
    const bool ofTracks = step.kind == Kind::InsertTracks;
    const std::vector<Entry> sources = list;
    const int first = step.position == -10000 ? highest(list) + 1 : step.position;
    int next = first + int(step.ids.size()) + (ofTracks ? 1 : 0);
    for (Entry& entry : list) {
        if (entry.sid >= first) {
            entry.sid = next++;
        }
    }
    int place = ofTracks ? first + 1 : first;
    for (const int id : step.ids) {
        if (ofTracks) {
            if (isTrack(id)) {
                list.push_back({0, place++, id});
            }
            continue;
        }
        const auto source = std::find_if(sources.begin(), sources.end(),
                                         [&](const Entry& entry) { return entry.plid == id; });
        if (source != sources.end() && step.kind == Kind::InsertCopies) {
            list.push_back({0, place, source->track});
        }
        for (Entry& entry : list) {
            if (step.kind == Kind::Move && entry.plid == id) {
                entry.sid = place;
            }
        }
        ++place;
    }
}

void ListModel::edit(const ModelStep& step)
{
    std::vector<Entry>& list = m_lists.at(step.list);
    const std::vector<Entry> sources = list;
    const auto place = [&](int plid) {
        return std::find_if(list.begin(), list.end(),
                            [&](const Entry& entry) { return entry.plid == plid; });
    };
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
        std::erase_if(list, [&](const Entry& entry) { return step.ids.contains(entry.plid); });
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
        return;
    }
    sort(list);
}

void perform(const ListTools& tools, const ModelStep& step)
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
        tools.history.undo();
        break;
    case Kind::Redo:
        tools.history.redo();
        break;
    }
}

} // namespace melovane::test
