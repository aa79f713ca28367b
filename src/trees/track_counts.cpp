#include "trees/track_counts.h"

#include "platform/db/database.h"
#include "platform/system/files.h"
#include "trees/counting_thread.h"

#include <algorithm>
#include <array>
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

/// The columns of a walk, each once.
class WalkedColumns
{
public:
    CountedColumn add(const TrackCounter::Column& column)
    {
        const auto known = std::size_t(m_names.indexOf(column.name));
        if (known < m_texts.size()) {
            return {known, m_texts[known]};
        }
        m_names.append(column.name);
        m_kinds.push_back(column.kind);
        m_texts.push_back(column.kind == TrackBlock::Kind::Text ? std::make_shared<Spellings>()
                                                                : nullptr);
        return {m_texts.size() - 1, m_texts.back()};
    }

    [[nodiscard]] const QStringList& names() const { return m_names; }

    [[nodiscard]] const std::vector<TrackBlock::Kind>& kinds() const { return m_kinds; }

    void read(const TrackBlock& block) const
    {
        for (std::size_t i = 0; i < m_texts.size(); ++i) {
            if (m_texts[i]) {
                m_texts[i]->read(block, i);
            }
        }
    }

private:
    QStringList m_names;
    std::vector<TrackBlock::Kind> m_kinds;
    std::vector<std::shared_ptr<Spellings>> m_texts; ///< by column; null where none is told apart
};

} // namespace

void countTracks(Database& library, const std::vector<TrackCounter*>& counters)
{
    WalkedColumns columns;
    bool isOfAll = false;
    for (TrackCounter* counter : counters) {
        std::vector<CountedColumn> own;
        for (const TrackCounter::Column& column : counter->columns()) {
            own.push_back(columns.add(column));
        }
        counter->begin(std::move(own));
        isOfAll = isOfAll || counter->countsDeleted();
    }
    CountingThread counting(columns.kinds(), [&](const TrackBlock& block) {
        columns.read(block);
        for (TrackCounter* counter : counters) {
            counter->add(block);
        }
    });
    const QString statement = "select "_L1 + columns.names().join(u',');
    const auto isLive = int(columns.names().size());
    library.walkRows(isOfAll ? statement + u",DEL = False from db_all"_s
                             : statement + u" from db_all where DEL = False"_s,
                     [&](const WalkedRow& row) {
                         counting.block().add(row, !isOfAll || row.number(isLive) != 0);
                         if (counting.block().isFull()) {
                             counting.pass();
                         }
                     });
    counting.pass();
    counting.finish();
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

void ValueCounter::add(const TrackBlock& block)
{
    const bool areEmpty =
        std::any_of(m_columns.begin(), m_columns.end(),
                    [](const CountedColumn& column) { return column.texts->areEmpty(); });
    if (areEmpty) {
        return;
    }
    if (m_columns.size() > 1) {
        addPairs(block);
    } else {
        addSingles(block);
    }
}

bool ValueCounter::counts(const TrackBlock& block, std::size_t row) const
{
    return block.isLive(row) || m_tracks == Tracks::All;
}

void ValueCounter::addSingles(const TrackBlock& block)
{
    const Spellings& texts = *m_columns.front().texts;
    m_singles.resize(texts.texts().size());
    for (std::size_t row = 0; row < block.size(); ++row) {
        const std::uint32_t number = texts.numbers()[row];
        if (number == 0 || !counts(block, row)) {
            continue;
        }
        Counted& counted = m_singles[number];
        if (counted.count == 0) {
            counted.met = m_met++;
        }
        ++counted.count;
    }
}

void ValueCounter::addPairs(const TrackBlock& block)
{
    const std::vector<std::uint32_t>& firsts = m_columns.front().texts->numbers();
    const std::vector<std::uint32_t>& lasts = m_columns.back().texts->numbers();
    for (std::size_t row = 0; row < block.size(); ++row) {
        m_pairs.fetch(paired(firsts[row], lasts[row]));
    }
    for (std::size_t row = 0; row < block.size(); ++row) {
        if (firsts[row] != 0 && lasts[row] != 0 && counts(block, row)) {
            m_pairs.add(paired(firsts[row], lasts[row]));
        }
    }
}

/// In the order of the names, those of one name in the order of their meeting.
std::vector<ValueCounter::Spelled> ValueCounter::spelled() const
{
    std::vector<Spelled> all;
    const std::vector<std::uint32_t>& firsts = m_columns.front().texts->ranks();
    const std::vector<std::uint32_t>& lasts = m_columns.back().texts->ranks();
    for (std::uint32_t number = 0; number < m_singles.size(); ++number) {
        if (const Counted& counted = m_singles[number]; counted.count != 0) {
            all.push_back({lasts[number], counted.met, counted.count, number});
        }
    }
    for (const PairTally::Entry& pair : m_pairs.entries()) {
        const std::uint64_t rank = paired(firsts[pair.key >> 32U], lasts[std::uint32_t(pair.key)]);
        all.push_back({rank, pair.met, pair.count, pair.key});
    }
    std::sort(all.begin(), all.end(), [](const Spelled& a, const Spelled& b) {
        return std::tie(a.rank, a.met) < std::tie(b.rank, b.met);
    });
    return all;
}

std::vector<ValueCounter::Group> ValueCounter::groups() const
{
    std::vector<Group> groups;
    const Spelled* previous = nullptr;
    const std::vector<Spelled> all = spelled();
    for (const Spelled& each : all) {
        if (!previous || previous->rank != each.rank) {
            Group& group = groups.emplace_back();
            if (m_columns.size() > 1) {
                group.names.append(m_columns.front().texts->texts()[each.key >> 32U]);
            }
            group.names.append(m_columns.back().texts->texts()[std::uint32_t(each.key)]);
        }
        previous = &each;
        groups.back().count += each.count;
    }
    return groups;
}

// ---- days

std::vector<TrackCounter::Column> DayCounter::columns() const
{
    return {{u"DTSImport"_s, TrackBlock::Kind::Day}};
}

void DayCounter::begin(std::vector<CountedColumn> columns)
{
    m_column = columns.front().number;
}

void DayCounter::add(const TrackBlock& block)
{
    for (std::size_t row = 0; row < block.size() && m_isPlain; ++row) {
        const TrackBlock::Day& day = block.day(m_column, row);
        if (day.isNull || !block.isLive(row)) {
            continue;
        }
        if (!day.isNumber || !isDayNumber(day.number) || !isDayNumber(day.number + 1)) {
            m_isPlain = false;
            return;
        }
        m_days.add(std::uint64_t(shownDay(day.number)));
    }
}

std::optional<std::vector<DayCounter::Group>> DayCounter::groups() const
{
    if (!m_isPlain) {
        return std::nullopt;
    }
    std::vector<std::pair<qint64, qint64>> days;
    for (const PairTally::Entry& day : m_days.entries()) {
        days.emplace_back(qint64(day.key), day.count);
    }
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
    return {{u"Path"_s}, {u"DriveTyp"_s, TrackBlock::Kind::Whole}, {u"DriveName"_s}};
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
        const auto next = std::uint32_t(m_volumes.size());
        const auto [known, isNew] =
            m_volumeNumbers.try_emplace(paired(std::uint32_t(typ), label), next);
        m_lastVolume = known->second;
        if (isNew) {
            m_volumes.push_back({typ, label});
        }
    }
    return m_lastVolume;
}

void FolderCounter::add(const TrackBlock& block)
{
    const std::vector<std::uint32_t>& paths = m_paths.texts->numbers();
    const std::vector<std::uint32_t>& labels = m_labels.texts->numbers();
    std::array<std::uint64_t, TrackBlock::kRows> keys{};
    for (std::size_t row = 0; row < block.size(); ++row) {
        const std::uint32_t volume = volumeOf(int(block.whole(m_types.number, row)), labels[row]);
        keys[row] = paired(paths[row], volume);
        m_folders.fetch(keys[row]);
    }
    for (std::size_t row = 0; row < block.size(); ++row) {
        if (paths[row] != 0 && block.isLive(row)) {
            m_folders.add(keys[row]);
        }
    }
}

std::vector<TrackFolder> FolderCounter::folders() const
{
    const std::vector<std::uint32_t>& paths = m_paths.texts->ranks();
    const std::vector<std::uint32_t>& labels = m_labels.texts->ranks();

    struct Key
    {
        std::uint32_t path;
        std::uint32_t label; ///< from 1 on discs, 0 elsewhere
        std::uint32_t met;
        std::uint32_t count;
        std::uint32_t spelling; ///< of the path
        std::uint32_t volume;
    };

    std::vector<Key> order;
    for (const PairTally::Entry& folder : m_folders.entries()) {
        const auto spelling = std::uint32_t(folder.key >> 32U);
        const auto volume = std::uint32_t(folder.key);
        const Volume& its = m_volumes[volume];
        order.push_back({paths[spelling], its.typ == kDisc ? labels[its.label] + 1 : 0, folder.met,
                         folder.count, spelling, volume});
    }
    std::sort(order.begin(), order.end(), [](const Key& a, const Key& b) {
        return std::tie(a.path, a.label, a.met) < std::tie(b.path, b.label, b.met);
    });
    std::vector<TrackFolder> folders;
    std::uint32_t labelRank = 0;
    for (std::size_t i = 0; i < order.size(); ++i) {
        const Key& key = order[i];
        const Volume& volume = m_volumes[key.volume];
        const QString& label = m_labels.texts->texts()[volume.label];
        const int tracks = int(key.count);
        if (i == 0 || order[i - 1].path != key.path || order[i - 1].label != key.label) {
            folders.push_back({m_paths.texts->texts()[key.spelling], label, volume.typ, tracks});
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
            folder.Path = m_paths.texts->texts()[key.spelling];
            folder.DriveTyp = volume.typ;
        }
        folder.anzahl += tracks;
    }
    return folders;
}

} // namespace melovane
