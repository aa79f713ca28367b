#include "tagbench/bench_look.h"

#include "config/config_objects.h"
#include "views/warning_colour.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The column of the pencil; it stands over the identifier, which nobody wants to read.
const QString kMark = u"FID"_s;

/// Of a column, in figures: all that begin on the screen fit a window of 1400 units.
constexpr double kWidest = 20;

TrackField fieldOf(const QString& column)
{
    const TrackFieldRow* const known = findTrackField(column);
    return known ? known->field : TrackField::FID;
}

} // namespace

BenchLook::BenchLook(const BenchTracks& tracks, const ConfigObjects& texts, NoteColours colours)
    : m_tracks(tracks)
    , m_texts(texts)
    , m_colours(colours)
{}

QString BenchLook::text(const QString& field, const Value& value) const
{
    return field == kMark ? QString() : value.toText();
}

CellStyle BenchLook::style(const QString& field, const RowValues& row) const
{
    CellStyle style;
    const int track = m_tracks.track(row.row());
    if (field == kMark) {
        const bool isNew = m_tracks.at(track).fid.isEmpty();
        if (isNew || m_tracks.at(track).isChanged()) {
            style.icon = isNew ? u"import"_s : u"edit"_s;
            style.iconText = m_texts.text(isNew ? u"bench.isnew"_s : u"bench.ischanged"_s);
        }
        return style;
    }
    const TrackField known = fieldOf(field);
    style.pending = m_tracks.isChanged(track, known);
    style.dimmed = known == kBenchPlace && !style.pending;
    if (known == TrackField::Note) {
        m_colours.addTo(style, row.value(field));
    }
    return style;
}

std::vector<GridColumn> BenchLook::columns() const
{
    const auto column = [&](TrackField field, bool shown, bool stretched = false) {
        const TrackFieldRow& known = rowOf(field);
        return GridColumn{.field = known.column.toString(),
                          .heading = m_texts.text(headingKey(known.column)),
                          .width = std::min(known.gridWidth, kWidest),
                          .alignment = known.alignment,
                          .shown = shown,
                          .stretched = stretched};
    };
    std::vector<GridColumn> result;
    result.push_back(
        {.field = kMark, .heading = {}, .width = 3, .alignment = CellAlignment::Centre});
    result.push_back(column(kBenchPlace, true, true));
    result.push_back(column(TrackField::Titel, true, true));
    for (const TrackField field :
         {TrackField::Interpret, TrackField::Album, TrackField::Genre, TrackField::Jahr,
          TrackField::Track, TrackField::BPM, TrackField::Note}) {
        result.push_back(column(field, true));
    }
    for (const TrackField field : benchFields()) {
        const bool isThere = std::ranges::any_of(
            result, [&](const GridColumn& there) { return there.field == columnOf(field); });
        if (!isThere) {
            result.push_back(column(field, false));
        }
    }
    return result;
}

BenchEditing::BenchEditing(BenchTracks& tracks)
    : m_tracks(tracks)
{}

bool BenchEditing::canEdit(qint64 row, const QString& field) const
{
    const TrackField known = fieldOf(field);
    return row >= 0 && row < m_tracks.rowCount() && known != kBenchPlace && known != kBenchCover &&
           benchSlot(known) >= 0;
}

QStringList BenchEditing::choices(const QString& field) const
{
    return fieldOf(field) == TrackField::Genre ? m_genres : QStringList();
}

bool BenchEditing::commit(qint64 row, const QString& field, const QString& text)
{
    const TrackField known = fieldOf(field);
    if (!canEdit(row, field) || !benchText(known, text)) {
        return false;
    }
    m_tracks.change({{m_tracks.track(row), known, text}});
    return true;
}

PreviewLook::PreviewLook(const PreviewRows& rows, const ConfigObjects& texts, bool ticks)
    : m_rows(rows)
    , m_texts(texts)
    , m_ticks(ticks)
{}

QString PreviewLook::text(const QString&, const Value& value) const
{
    return value.toText();
}

CellStyle PreviewLook::style(const QString& field, const RowValues& row) const
{
    CellStyle style;
    const PreviewRow& shown = m_rows.preview().rows[size_t(row.row())];
    const int column = field.toInt();
    const bool isFirst = column == 0;
    const bool isLast = column == m_rows.columnCount() - 1;
    if (m_ticks && isFirst) {
        style.icon = shown.ticked ? u"ticked"_s : u"unticked"_s;
        style.iconText = m_texts.text(shown.ticked ? u"bench.ticked"_s : u"bench.unticked"_s);
    }
    if (shown.warns && isLast) {
        style.icon = u"warning"_s;
        style.iconText = m_texts.text(u"bench.warning");
        style.text = kWarningColour;
    }
    style.dimmed = !shown.ticked || (!m_ticks && isLast && !shown.warns) || (m_ticks && column < 2);
    style.pending = m_ticks && isLast && shown.ticked;
    return style;
}

} // namespace melovane
