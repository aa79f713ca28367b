#include "trees/track_counts.h"

#include "platform/db/database.h"
#include "platform/system/files.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kDisc = int(VolumeKind::Optical);
constexpr qint64 kMsPerDay = 86'400'000;
constexpr qint64 kMsPerSecond = 1000;

std::uint64_t paired(std::uint32_t high, std::uint32_t low)
{
    return std::uint64_t(high) << 32U | low;
}

/// The day that `format` shows of a day number: it rounds to the millisecond, then to the second.
qint64 shownDay(double day)
{
    const double whole = std::floor(day);
    const qint64 ms = std::llround((day - whole) * double(kMsPerDay));
    const qint64 seconds = ms / kMsPerSecond + (ms % kMsPerSecond >= kMsPerSecond / 2 ? 1 : 0);
    return qint64(whole) + (seconds * kMsPerSecond >= kMsPerDay ? 1 : 0);
}

} // namespace

namespace {

/// The columns of a walk, each once.
class WalkedColumns
{
public:
    CountedColumn add(const TrackCounter::Column& column)
    {
        qsizetype number = m_names.indexOf(column.name);
        if (number < 0) {
            number = m_names.size();
            m_names.append(column.name);
            m_texts.emplace_back();
        }
        std::shared_ptr<Spellings>& texts = m_texts[std::size_t(number)];
        if (column.isText && !texts) {
            texts = std::make_shared<Spellings>();
        }
        return {int(number), texts};
    }

    [[nodiscard]] const QStringList& names() const { return m_names; }

    void read(const WalkedRow& row) const
    {
        for (std::size_t i = 0; i < m_texts.size(); ++i) {
            if (m_texts[i]) {
                m_texts[i]->read(row, int(i));
            }
        }
    }

private:
    QStringList m_names;
    std::vector<std::shared_ptr<Spellings>> m_texts; ///< by column; null where none is told apart
};

} // namespace

void countTracks(Database& library, const std::vector<TrackCounter*>& counters)
{
    WalkedColumns columns;
    std::vector<TrackCounter*> ofAll;
    for (TrackCounter* counter : counters) {
        std::vector<CountedColumn> own;
        for (const TrackCounter::Column& column : counter->columns()) {
            own.push_back(columns.add(column));
        }
        counter->begin(std::move(own));
        if (counter->countsDeleted()) {
            ofAll.push_back(counter);
        }
    }
    QString statement = u"select "_s + columns.names().join(u',');
    if (ofAll.empty()) {
        library.walkRows(statement + u" from db_all where DEL = False"_s,
                         [&](const WalkedRow& row) {
                             columns.read(row);
                             for (TrackCounter* counter : counters) {
                                 counter->add(row);
                             }
                         });
        return;
    }
    const auto isLive = int(columns.names().size());
    library.walkRows(statement + u",DEL = False from db_all"_s, [&](const WalkedRow& row) {
        columns.read(row);
        for (TrackCounter* counter : row.number(isLive) != 0 ? counters : ofAll) {
            counter->add(row);
        }
    });
}

// ---- values

std::vector<TrackCounter::Column> ValueCounter::columns() const
{
    std::vector<Column> columns;
    for (const QString& name : m_names) {
        columns.push_back({name});
    }
    return columns;
}

void ValueCounter::begin(std::vector<CountedColumn> columns)
{
    m_columns = std::move(columns);
}

void ValueCounter::add(const WalkedRow& row)
{
    Q_UNUSED(row)
    const std::uint32_t first = m_columns.front().texts->present();
    const std::uint32_t last = m_columns.back().texts->present();
    if (first == 0 || last == 0) {
        return;
    }
    const std::uint32_t place = placeOf(first, last);
    if (place == m_counted.size()) {
        m_counted.push_back({paired(first, last), 0});
    }
    ++m_counted[place].count;
}

/// Of a group that is met for the first time: the place behind all others.
std::uint32_t ValueCounter::placeOf(std::uint32_t first, std::uint32_t last)
{
    const auto next = std::uint32_t(m_counted.size());
    if (m_columns.size() > 1) {
        return m_pairs.placeOf(paired(first, last), next);
    }
    if (m_single.size() <= first) {
        m_single.resize(m_columns.front().texts->texts().size());
    }
    if (m_single[first] == 0) {
        m_single[first] = next + 1;
    }
    return m_single[first] - 1;
}

std::vector<ValueCounter::Group> ValueCounter::groups() const
{
    std::vector<Group> groups;
    if (m_counted.empty()) {
        return groups;
    }
    const Spellings& firsts = *m_columns.front().texts;
    const Spellings& lasts = *m_columns.back().texts;
    std::vector<std::pair<std::uint64_t, std::size_t>> order;
    order.reserve(m_counted.size());
    for (std::size_t i = 0; i < m_counted.size(); ++i) {
        const std::uint64_t key = m_counted[i].key;
        order.emplace_back(paired(firsts.ranks()[key >> 32U], lasts.ranks()[std::uint32_t(key)]),
                           i);
    }
    std::sort(order.begin(), order.end());
    for (std::size_t i = 0; i < order.size(); ++i) {
        const Counted& counted = m_counted[order[i].second];
        if (i == 0 || order[i - 1].first != order[i].first) {
            Group& group = groups.emplace_back();
            group.names.append(firsts.texts()[counted.key >> 32U]);
            if (m_columns.size() > 1) {
                group.names.append(lasts.texts()[std::uint32_t(counted.key)]);
            }
        }
        groups.back().count += counted.count;
    }
    return groups;
}

// ---- days

std::vector<TrackCounter::Column> DayCounter::columns() const
{
    return {{u"DTSImport"_s, false}};
}

void DayCounter::begin(std::vector<CountedColumn> columns)
{
    m_column = columns.front().number;
}

void DayCounter::add(const WalkedRow& row)
{
    if (row.isNull(m_column)) {
        return;
    }
    const double day = row.real(m_column);
    if (!row.isNumber(m_column) || !isDayNumber(day) || !isDayNumber(day + 1)) {
        m_isPlain = false;
        return;
    }
    const qint64 shown = shownDay(day);
    const std::uint32_t place =
        m_places.placeOf(std::uint64_t(shown), std::uint32_t(m_days.size()));
    if (place == m_days.size()) {
        m_days.emplace_back(shown, 0);
    }
    ++m_days[place].second;
}

std::optional<std::vector<DayCounter::Group>> DayCounter::groups() const
{
    if (!m_isPlain) {
        return std::nullopt;
    }
    std::vector<std::pair<qint64, qint64>> days = m_days;
    std::sort(days.begin(), days.end());
    std::vector<Group> groups;
    groups.reserve(days.size());
    for (const auto& [day, count] : days) {
        groups.push_back({fromDayNumber(double(day)).date().toString(u"dd.MM.yyyy"_s), count});
    }
    return groups;
}

// ---- folders

std::vector<TrackCounter::Column> FolderCounter::columns() const
{
    return {{u"Path"_s}, {u"DriveTyp"_s, false}, {u"DriveName"_s}};
}

void FolderCounter::begin(std::vector<CountedColumn> columns)
{
    m_paths = std::move(columns[0]);
    m_types = std::move(columns[1]);
    m_labels = std::move(columns[2]);
}

std::uint32_t FolderCounter::volumeOf(int typ, std::uint32_t label)
{
    const auto isLast = [&] {
        const Volume& last = m_volumes[m_lastVolume];
        return last.typ == typ && last.label == label;
    };
    if (m_volumes.empty() || !isLast()) {
        m_lastVolume = m_volumeNumbers.placeOf(paired(std::uint32_t(typ), label),
                                               std::uint32_t(m_volumes.size()));
        if (m_lastVolume == m_volumes.size()) {
            m_volumes.push_back({typ, label});
        }
    }
    return m_lastVolume;
}

void FolderCounter::add(const WalkedRow& row)
{
    const std::uint32_t path = m_paths.texts->present();
    if (path == 0) {
        return;
    }
    const std::uint32_t volume =
        volumeOf(int(row.number(m_types.number)), m_labels.texts->present());
    const std::uint32_t place = placeOf(path, volume);
    if (place == m_counted.size()) {
        m_counted.push_back({path, volume, 0});
    }
    ++m_counted[place].count;
}

/// Most folders lie on one volume: they are found by the number of their path.
std::uint32_t FolderCounter::placeOf(std::uint32_t path, std::uint32_t volume)
{
    const auto next = std::uint32_t(m_counted.size());
    if (m_firsts.size() <= path) {
        m_firsts.resize(m_paths.texts->texts().size());
    }
    std::uint32_t& first = m_firsts[path];
    if (first == 0) {
        first = next + 1;
        return next;
    }
    const bool isFirst = m_counted[first - 1].volume == volume;
    return isFirst ? first - 1 : m_others.placeOf(paired(path, volume), next);
}

std::vector<TrackFolder> FolderCounter::folders() const
{
    if (m_counted.empty()) {
        return {};
    }
    const std::vector<std::uint32_t>& paths = m_paths.texts->ranks();
    const std::vector<std::uint32_t>& labels = m_labels.texts->ranks();

    struct Key
    {
        std::uint32_t path;
        std::uint32_t label; ///< from 1 on discs, 0 elsewhere
        std::size_t place;
    };

    std::vector<Key> order;
    order.reserve(m_counted.size());
    for (std::size_t i = 0; i < m_counted.size(); ++i) {
        const Volume& volume = m_volumes[m_counted[i].volume];
        order.push_back(
            {paths[m_counted[i].path], volume.typ == kDisc ? labels[volume.label] + 1 : 0, i});
    }
    std::sort(order.begin(), order.end(), [](const Key& a, const Key& b) {
        return std::tie(a.path, a.label, a.place) < std::tie(b.path, b.label, b.place);
    });
    std::vector<TrackFolder> folders;
    std::uint32_t labelRank = 0;
    for (std::size_t i = 0; i < order.size(); ++i) {
        const Counted& counted = m_counted[order[i].place];
        const Volume& volume = m_volumes[counted.volume];
        const QString& label = m_labels.texts->texts()[volume.label];
        const int tracks = int(counted.count);
        if (i == 0 || order[i - 1].path != order[i].path || order[i - 1].label != order[i].label) {
            folders.push_back({m_paths.texts->texts()[counted.path], label, volume.typ, tracks});
            labelRank = labels[volume.label];
            continue;
        }
        TrackFolder& folder = folders.back();
        if (labels[volume.label] > labelRank) {
            folder.DriveName = label;
            labelRank = labels[volume.label];
        }
        if (volume.typ > folder.DriveTyp) {
            // The view shows the spelling beside the greatest type.
            folder.Path = m_paths.texts->texts()[counted.path];
            folder.DriveTyp = volume.typ;
        }
        folder.anzahl += tracks;
    }
    return folders;
}

} // namespace melovane
