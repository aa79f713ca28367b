#include "tagbench/bench_tracks.h"

#include "platform/system/path_text.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kPlaceSlot = kBenchSlots - 1;
constexpr int kCoverSlot = kBenchSlots - 2;
constexpr int kFidColumn = kBenchSlots;

/// Steps that can be taken back: more than anybody wants, less than a memory holds.
constexpr size_t kMaxSteps = 200;

TrackField fieldOf(int slot)
{
    return slot == kPlaceSlot   ? kBenchPlace
           : slot == kCoverSlot ? kBenchCover
                                : benchFields()[size_t(slot)];
}

} // namespace

QString BenchTrack::shownPlace() const
{
    // A name that stands in the library may hold a sign that separates folders elsewhere.
    return place().startsWith(folder) ? place().sliced(folder.size()) : path::fileName(place());
}

bool BenchTrack::isChangedInTag() const
{
    return !std::equal(stored.begin(), stored.begin() + kPlaceSlot, now.begin());
}

BenchTracks::BenchTracks(QObject* parent)
    : GridSource(parent)
{}

void BenchTracks::setTracks(std::vector<BenchTrack> tracks)
{
    m_tracks.clear();
    m_done.clear();
    m_undone.clear();
    endTyping();
    m_changedCells = 0;
    m_filter.clear();
    addTracks(std::move(tracks));
}

void BenchTracks::addTracks(std::vector<BenchTrack> tracks)
{
    std::ranges::move(tracks, std::back_inserter(m_tracks));
    filter();
    emit changed();
}

const QString& BenchTracks::text(int track, TrackField field) const
{
    return at(track).now[size_t(benchSlot(field))];
}

const QString& BenchTracks::storedText(int track, TrackField field) const
{
    return at(track).stored[size_t(benchSlot(field))];
}

std::optional<QString> BenchTracks::common(const std::vector<int>& tracks, TrackField field) const
{
    if (tracks.empty()) {
        return {};
    }
    const QString& first = text(tracks.front(), field);
    const bool isOne =
        std::ranges::all_of(tracks, [&](int track) { return text(track, field) == first; });
    return isOne ? std::optional(first) : std::nullopt;
}

int BenchTracks::changedTracks() const
{
    return int(std::ranges::count_if(m_tracks, &BenchTrack::isChanged));
}

void BenchTracks::put(int track, int slot, const QString& text)
{
    BenchTrack& changed = m_tracks[size_t(track)];
    QString& now = changed.now[size_t(slot)];
    const QString& stored = changed.stored[size_t(slot)];
    m_changedCells += int(text != stored) - int(now != stored);
    now = text;
}

bool BenchTracks::enter(Step step)
{
    if (step.empty()) {
        return false;
    }
    for (const Change& change : step) {
        put(change.track, change.slot, change.after);
    }
    m_done.push_back(std::move(step));
    if (m_done.size() > kMaxSteps) {
        m_done.erase(m_done.begin());
    }
    m_undone.clear();
    tell();
    return true;
}

void BenchTracks::tell()
{
    emit cellsChanged();
    emit changed();
}

bool BenchTracks::change(const std::vector<BenchCell>& cells)
{
    endTyping();
    Step step;
    for (const BenchCell& cell : cells) {
        const std::optional<QString> after = benchText(cell.field, cell.text);
        const QString& before = text(cell.track, cell.field);
        if (after && *after != before) {
            step.push_back({cell.track, benchSlot(cell.field), before, *after});
        }
    }
    return enter(std::move(step));
}

/// What comes next is a step of its own.
void BenchTracks::endTyping()
{
    m_typedTracks.clear();
    m_draftOwner = nullptr;
}

/// The last step goes as if it had never been; nothing is told.
void BenchTracks::takeBackLast()
{
    for (const Change& change : m_done.back()) {
        put(change.track, change.slot, change.before);
    }
    m_done.pop_back();
}

bool BenchTracks::draft(const QObject* owner, const std::function<std::vector<BenchCell>()>& make)
{
    const bool goesOn = isDraftOf(owner);
    if (goesOn) {
        takeBackLast();
    }
    const bool isChanged = change(make());
    if (isChanged) {
        m_draftOwner = owner;
    } else if (goesOn) {
        tell();
    }
    return isChanged || goesOn;
}

bool BenchTracks::type(const std::vector<int>& tracks, TrackField field, const QString& text)
{
    const bool goesOn = !m_typedTracks.empty() && m_typedTracks == tracks &&
                        m_typedField == field && !m_done.empty();
    if (goesOn) {
        // The letters before are part of this step: back to where it began.
        takeBackLast();
    }
    std::vector<BenchCell> cells;
    cells.reserve(tracks.size());
    for (const int track : tracks) {
        cells.push_back({track, field, text});
    }
    const bool isChanged = change(cells);
    if (isChanged) {
        m_typedTracks = tracks;
        m_typedField = field;
    } else if (goesOn) {
        tell();
    }
    return isChanged || goesOn;
}

bool BenchTracks::revert(const std::vector<int>& tracks, TrackField field)
{
    endTyping();
    Step step;
    for (const int track : tracks) {
        if (isChanged(track, field)) {
            step.push_back({track, benchSlot(field), text(track, field), storedText(track, field)});
        }
    }
    return enter(std::move(step));
}

void BenchTracks::undo()
{
    if (m_done.empty()) {
        return;
    }
    endTyping();
    Step step = std::move(m_done.back());
    m_done.pop_back();
    for (auto change = step.rbegin(); change != step.rend(); ++change) {
        put(change->track, change->slot, change->before);
    }
    m_undone.push_back(std::move(step));
    tell();
}

void BenchTracks::redo()
{
    if (m_undone.empty()) {
        return;
    }
    endTyping();
    Step step = std::move(m_undone.back());
    m_undone.pop_back();
    for (const Change& change : step) {
        put(change.track, change.slot, change.after);
    }
    m_done.push_back(std::move(step));
    tell();
}

void BenchTracks::setStored(const std::vector<int>& tracks, const std::vector<BenchCell>& left)
{
    for (const BenchCell& cell : left) {
        put(cell.track, benchSlot(cell.field), storedText(cell.track, cell.field));
    }
    for (const int track : tracks) {
        BenchTrack& written = m_tracks[size_t(track)];
        for (size_t slot = 0; slot < written.now.size(); ++slot) {
            m_changedCells -= int(written.now[slot] != written.stored[slot]);
        }
        if (written.place() != written.storedPlace()) {
            written.folder = written.place().chopped(path::fileName(written.place()).size());
        }
        written.stored = written.now;
    }
    for (const BenchCell& cell : left) {
        put(cell.track, benchSlot(cell.field), cell.text);
    }
    endSteps();
    tell();
}

void BenchTracks::setFound(const std::vector<BenchCell>& cells)
{
    for (const BenchCell& cell : cells) {
        BenchTrack& track = m_tracks[size_t(cell.track)];
        const auto slot = size_t(benchSlot(cell.field));
        const bool wasChanged = track.now[slot] != track.stored[slot];
        track.stored[slot] = cell.text;
        if (!wasChanged) {
            track.now[slot] = cell.text;
        }
        m_changedCells += int(track.now[slot] != track.stored[slot]) - int(wasChanged);
        if (cell.field == kBenchPlace) {
            track.folder = cell.text.chopped(path::fileName(cell.text).size());
        }
    }
    endSteps();
    tell();
}

void BenchTracks::endSteps()
{
    endTyping();
    m_done.clear();
    m_undone.clear();
}

void BenchTracks::setFid(int track, const QString& fid)
{
    m_tracks[size_t(track)].fid = fid;
}

void BenchTracks::setFilter(const QString& text)
{
    if (m_filter != text) {
        m_filter = text;
        filter();
    }
}

bool BenchTracks::isShown(const BenchTrack& track) const
{
    const auto has = [&](const QString& text) {
        return text.contains(m_filter, Qt::CaseInsensitive);
    };
    return m_filter.isEmpty() ||
           std::any_of(track.now.begin(), track.now.begin() + kCoverSlot, has) ||
           has(track.shownPlace());
}

void BenchTracks::filter()
{
    m_shown.clear();
    for (int track = 0; track < count(); ++track) {
        if (isShown(at(track))) {
            m_shown.push_back(track);
        }
    }
    emit refreshed();
}

QString BenchTracks::columnName(int index) const
{
    return index == kFidColumn ? columnOf(TrackField::FID).toString()
                               : columnOf(fieldOf(index)).toString();
}

Value BenchTracks::cell(qint64 row, int column) const
{
    if (row < 0 || row >= rowCount()) {
        return {};
    }
    const BenchTrack& shown = at(track(row));
    if (column == kFidColumn) {
        return shown.fid;
    }
    const QString& text = shown.now[size_t(column)];
    return column == kPlaceSlot ? shown.shownPlace() : text;
}

} // namespace melovane
