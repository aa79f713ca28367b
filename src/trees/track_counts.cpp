#include "trees/track_counts.h"

#include "platform/db/database.h"
#include "platform/db/text_compare.h"
#include "platform/system/files.h"

#include <algorithm>
#include <cmath>
#include <numeric>
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

std::uint32_t Spellings::add(const WalkedRow& row, int column)
{
    const std::string_view bytes = row.bytes(column);
    if (const auto known = m_numbers.find(bytes); known != m_numbers.end()) {
        return known->second;
    }
    const auto number = std::uint32_t(m_texts.size());
    m_numbers.emplace(bytes, number);
    m_texts.push_back(row.text(column));
    return number;
}

std::vector<std::uint32_t> Spellings::ranks() const
{
    std::vector<QString> keys;
    keys.reserve(m_texts.size());
    for (const QString& text : m_texts) {
        keys.push_back(textcompare::sortKey(text));
    }
    std::vector<std::uint32_t> order(m_texts.size());
    std::iota(order.begin(), order.end(), 0U);
    std::sort(order.begin(), order.end(),
              [&](std::uint32_t a, std::uint32_t b) { return keys[a] < keys[b]; });
    std::vector<std::uint32_t> ranks(m_texts.size());
    std::uint32_t rank = 0;
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (i > 0 && keys[order[i - 1]] != keys[order[i]]) {
            ++rank;
        }
        ranks[order[i]] = rank;
    }
    return ranks;
}

void countTracks(Database& library, const std::vector<TrackCounter*>& counters)
{
    QStringList columns;
    std::vector<std::pair<TrackCounter*, int>> placed;
    for (TrackCounter* counter : counters) {
        placed.emplace_back(counter, int(columns.size()));
        columns += counter->columns();
    }
    const QString statement =
        u"select "_s + columns.join(u',') + u" from db_all where DEL = False"_s;
    library.walkRows(statement, [&](const WalkedRow& row) {
        for (const auto& [counter, first] : placed) {
            counter->add(row, first);
        }
    });
}

// ---- values

void ValueCounter::add(const WalkedRow& row, int first)
{
    const bool isPair = m_columns.size() > 1;
    if (row.bytes(first).empty() || (isPair && row.bytes(first + 1).empty())) {
        return;
    }
    const std::uint64_t key =
        paired(m_first.add(row, first), isPair ? m_second.add(row, first + 1) : 0);
    const auto [place, isNew] = m_places.try_emplace(key, m_counted.size());
    if (isNew) {
        m_counted.push_back({key, 0});
    }
    ++m_counted[place->second].count;
}

std::vector<ValueCounter::Group> ValueCounter::groups() const
{
    const bool isPair = m_columns.size() > 1;
    const std::vector<std::uint32_t> first = m_first.ranks();
    const std::vector<std::uint32_t> second = m_second.ranks();
    std::vector<std::pair<std::uint64_t, std::size_t>> order;
    order.reserve(m_counted.size());
    for (std::size_t i = 0; i < m_counted.size(); ++i) {
        const std::uint64_t key = m_counted[i].key;
        order.emplace_back(paired(first[key >> 32U], isPair ? second[std::uint32_t(key)] : 0), i);
    }
    std::sort(order.begin(), order.end());
    std::vector<Group> groups;
    for (std::size_t i = 0; i < order.size(); ++i) {
        const Counted& counted = m_counted[order[i].second];
        if (i == 0 || order[i - 1].first != order[i].first) {
            Group& group = groups.emplace_back();
            group.names.append(m_first.texts()[counted.key >> 32U]);
            if (isPair) {
                group.names.append(m_second.texts()[std::uint32_t(counted.key)]);
            }
        }
        groups.back().count += counted.count;
    }
    return groups;
}

// ---- days

void DayCounter::add(const WalkedRow& row, int first)
{
    if (row.isNull(first)) {
        return;
    }
    const double day = row.real(first);
    if (!row.isNumber(first) || !isDayNumber(day) || !isDayNumber(day + 1)) {
        m_isPlain = false;
        return;
    }
    ++m_days[shownDay(day)];
}

std::optional<std::vector<DayCounter::Group>> DayCounter::groups() const
{
    if (!m_isPlain) {
        return std::nullopt;
    }
    std::vector<std::pair<qint64, qint64>> days(m_days.begin(), m_days.end());
    std::sort(days.begin(), days.end());
    std::vector<Group> groups;
    groups.reserve(days.size());
    for (const auto& [day, count] : days) {
        groups.push_back({fromDayNumber(double(day)).date().toString(u"dd.MM.yyyy"_s), count});
    }
    return groups;
}

// ---- folders

QStringList FolderCounter::columns() const
{
    return {u"Path"_s, u"DriveTyp"_s, u"DriveName"_s};
}

std::uint32_t FolderCounter::volumeOf(const WalkedRow& row, int first)
{
    const int typ = int(row.number(first + 1));
    const std::uint32_t label = m_labels.add(row, first + 2);
    const auto [place, isNew] = m_volumeNumbers.try_emplace(paired(std::uint32_t(typ), label),
                                                            std::uint32_t(m_volumes.size()));
    if (isNew) {
        m_volumes.push_back({typ, label});
    }
    return place->second;
}

void FolderCounter::add(const WalkedRow& row, int first)
{
    if (row.bytes(first).empty()) {
        return;
    }
    const std::uint32_t path = m_paths.add(row, first);
    const std::uint32_t volume = volumeOf(row, first);
    const auto [place, isNew] = m_places.try_emplace(paired(path, volume), m_counted.size());
    if (isNew) {
        m_counted.push_back({path, volume, 0});
    }
    ++m_counted[place->second].count;
}

std::vector<TrackFolder> FolderCounter::folders() const
{
    const std::vector<std::uint32_t> paths = m_paths.ranks();
    const std::vector<std::uint32_t> labels = m_labels.ranks();

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
        const QString& label = m_labels.texts()[volume.label];
        const int tracks = int(counted.count);
        if (i == 0 || order[i - 1].path != order[i].path || order[i - 1].label != order[i].label) {
            folders.push_back({m_paths.texts()[counted.path], label, volume.typ, tracks});
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
            folder.Path = m_paths.texts()[counted.path];
            folder.DriveTyp = volume.typ;
        }
        folder.anzahl += tracks;
    }
    return folders;
}

} // namespace melovane
