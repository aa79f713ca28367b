#include "playlistview/playlist_look.h"

#include "config/config_objects.h"
#include "config/update_colors.h"
#include "platform/system/clock.h"
#include "store/milli_sec_to_min.h"
#include "store/track_fields.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;
using Mod_MilliSecToMin::MilliSecToMin;

namespace {

/// Format of MilliSecToMin with hundredths of a second.
constexpr int kWithHundredths = 3;

constexpr std::array<AktionLook, 6> kAktions = {{
    {kAktionMix, u"Aktion.Mix", u"mix"},
    {kAktionStop, u"Aktion.Stop", u"stop"},
    {kAktionLoop, u"Aktion.Loop", u"loop"},
    {kAktionJinglePlay, u"Aktion.JPlay", u"jingle"},
    {kAktionJingle1, u"Aktion.Jingle.1", u"jingle1"},
    {kAktionJingle2, u"Aktion.Jingle.2", u"jingle2"},
}};

bool isField(const QString& field, QLatin1StringView name)
{
    return field.compare(name, Qt::CaseInsensitive) == 0;
}

/// Frames may come from a table that anybody writes; a time beyond all tracks stops at the end.
int msOf(double frames)
{
    return int(std::clamp(frames * Mod_MilliSecToMin::kFrameMs, -2147483647.0, 2147483647.0));
}

/// A column of a playlist's rows that is no field of a track, and its place among those.
struct EntryColumn
{
    TrackFieldPlace place;
    QStringView field;
    double width; ///< in figures of the grid's font
    CellAlignment alignment;
};

constexpr std::array<EntryColumn, 4> kEntryColumns = {{
    {10, u"Aktion", 6, CellAlignment::Centre},
    {20, u"Nr", 5, CellAlignment::Right},
    {70, u"Start", 8, CellAlignment::Right},
    {80, u"Stop", 8, CellAlignment::Right},
}};

} // namespace

const AktionLook* aktionLook(int number)
{
    const auto* found = std::find_if(kAktions.begin(), kAktions.end(),
                                     [number](const auto& look) { return look.number == number; });
    return found == kAktions.end() ? nullptr : found;
}

std::vector<GridColumn> playlistColumns()
{
    std::vector<std::pair<TrackFieldPlace, GridColumn>> placed;
    for (const EntryColumn& own : kEntryColumns) {
        const QString field = own.field.toString();
        placed.push_back({own.place, {field, field, own.width, own.alignment}});
    }
    for (const TrackField field : playlistGridFields()) {
        const TrackFieldRow& row = rowOf(field);
        placed.push_back({row.playlist.place, gridColumn(row, row.playlist)});
    }
    std::sort(placed.begin(), placed.end(),
              [](const auto& one, const auto& two) { return one.first < two.first; });
    std::vector<GridColumn> columns;
    columns.reserve(placed.size());
    for (auto& [place, column] : placed) {
        columns.push_back(std::move(column));
    }
    return columns;
}

PlaylistLook::PlaylistLook(const Clock& clock, const ConfigObjects& texts)
    : m_clock(clock)
    , m_texts(texts)
{}

void PlaylistLook::setColours(const UpdateColors& colours)
{
    m_notes = NoteColours::from(colours);
    m_notes.noteTextBold = false; // the setting is the library's
    m_flagged = colours.colour(u"RowShowDEL"_s);
}

void PlaylistLook::setJingleMode(bool on, int players)
{
    m_jingleMode = on;
    m_players = players;
}

void PlaylistLook::setPlayed(Plid now, Plid next)
{
    m_now = now;
    m_next = next;
}

QString PlaylistLook::text(const QString& field, const Value& value) const
{
    if (isField(field, "Play"_L1)) {
        return playText(value, m_clock.now());
    }
    if (isField(field, "DBit"_L1)) {
        return bitRateText(value);
    }
    if (isField(field, "MixTime"_L1)) {
        const int own = value.toLong();
        return QString::number((own == 0 ? m_defaultMixTime : own) / 1000.0, 'f', 2);
    }
    if (isField(field, "Start"_L1) || isField(field, "Stop"_L1)) {
        return MilliSecToMin(msOf(value.toDouble()), kWithHundredths);
    }
    return value.toText();
}

QString PlaylistLook::rowText(const QString& field, const Value& value, const RowValues& row) const
{
    if (isField(field, "Nr"_L1)) {
        return QString::number(row.row() + 1) + u'.';
    }
    if (isField(field, "Aktion"_L1)) {
        return {};
    }
    const bool isStop = isField(field, "Stop"_L1);
    if (!isStop && !isField(field, "DTime"_L1)) {
        return text(field, value);
    }
    const double stop = row.value(u"FrameStop"_s).toDouble();
    const int end = stop == 0 ? row.value(u"DTimeMsec"_s).toLong() : msOf(stop);
    if (isStop) {
        return MilliSecToMin(end, kWithHundredths);
    }
    const double start = row.value(u"FrameStart"_s).toDouble();
    return stop == 0 ? MilliSecToMin(std::max(0, end - std::max(0, msOf(start))))
                     : MilliSecToMin(msOf(stop - start));
}

bool PlaylistLook::isHeard(Plid entry, const RowValues& row) const
{
    if (m_heard != Plid{}) {
        return entry == m_heard;
    }
    return !m_heardTrack.isEmpty() && row.value(u"FID"_s).toText() == m_heardTrack;
}

CellGround PlaylistLook::groundOf(const RowValues& row) const
{
    if (m_jingleMode) {
        return row.row() < m_players ? CellGround::Playing : CellGround::Plain;
    }
    const auto entry = Plid(row.value(u"PLID"_s).toLong());
    if (entry == Plid{}) {
        return CellGround::Plain;
    }
    if (entry == m_now) {
        return CellGround::Playing;
    }
    if (entry == m_next) {
        return CellGround::Next;
    }
    return isHeard(entry, row) ? CellGround::Heard : CellGround::Plain;
}

CellStyle PlaylistLook::style(const QString& field, const RowValues& row) const
{
    CellStyle style;
    style.dimmed = m_locked;
    if (row.value(u"DEL"_s).toLong() != 0) {
        style.text = m_flagged;
        style.struckOut = true;
    }
    const bool isAktion = isField(field, "Aktion"_L1);
    if (isField(field, "Note"_L1)) {
        m_notes.addTo(style, row.value(u"Note"_s));
    } else if (isAktion || isField(field, "Nr"_L1)) {
        style.ground = groundOf(row);
        style.bold = m_jingleMode && style.ground == CellGround::Playing;
    }
    if (isAktion) {
        const int aktion = row.value(u"Aktion"_s).toLong();
        if (const AktionLook* const look = aktionLook(aktion)) {
            style.icon = look->icon.toString();
            style.iconText = m_texts.text(look->key);
        }
    } else if (!m_jingleMode && style.ground != CellGround::Plain) {
        // Never by colour alone: what is heard carries the loudspeaker, what comes next the arrow.
        style.icon = style.ground == CellGround::Next ? u"forward"_s : u"volume"_s;
        if (style.ground == CellGround::Heard) {
            style.iconText = m_texts.text(u"look.heard");
        }
    }
    return style;
}

} // namespace melovane
