#include "care/double_look.h"

#include "config/config_objects.h"
#include "store/milli_sec_to_min.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

DoubleRows::DoubleRows(const Doubles& doubles, const ConfigObjects& texts)
    : m_doubles(doubles)
    , m_texts(texts)
{}

std::vector<GridColumn> DoubleRows::columns() const
{
    const auto column = [&](Column number, const QString& key, double width,
                            CellAlignment alignment = CellAlignment::Left) {
        return GridColumn{.field = columnName(number),
                          .heading = key.isEmpty() ? QString() : m_texts.text(key),
                          .width = width,
                          .alignment = alignment,
                          .stretched = alignment == CellAlignment::Left};
    };
    constexpr auto kRight = CellAlignment::Right;
    return {
        column(kState, {}, 3, CellAlignment::Centre), column(kGroup, u"double.group"_s, 8, kRight),
        column(kTitle, u"find.track"_s, 16),          column(kArtist, u"double.artist"_s, 12),
        column(kFile, u"double.file"_s, 24),          column(kLength, u"find.length"_s, 8, kRight),
        column(kRate, u"double.rate"_s, 9, kRight),   column(kLists, u"double.lists"_s, 10, kRight),
        column(kPlays, u"double.plays"_s, 9, kRight), column(kNote, u"double.note"_s, 6, kRight)};
}

std::optional<DoubleRows::Place> DoubleRows::at(qint64 row) const
{
    return row < 0 || row >= rowCount() ? std::nullopt : std::optional(m_places[size_t(row)]);
}

Value DoubleRows::cell(qint64 row, int column) const
{
    const auto place = at(row);
    if (!place || place->group >= int(m_doubles.groups().size())) {
        return {};
    }
    const DoubleTrack& track =
        m_doubles.groups()[size_t(place->group)].tracks[size_t(place->track)];
    switch (column) {
    case kGroup:
        return place->track == 0 ? Value(place->group + 1) : Value();
    case kTitle:
        return track.title;
    case kArtist:
        return track.artist;
    case kFile:
        return track.place();
    case kLength:
        return Mod_MilliSecToMin::MilliSecToMin(track.milliseconds);
    case kRate:
        return track.rate();
    case kLists:
        return track.entries;
    case kPlays:
        return track.plays;
    case kNote:
        return track.note;
    default:
        return {};
    }
}

QString DoubleRows::text(const QString&, const Value& value) const
{
    return value.toText();
}

CellStyle DoubleRows::style(const QString& field, const RowValues& row) const
{
    CellStyle style;
    const auto place = at(row.row());
    if (!place || place->group >= int(m_doubles.groups().size())) {
        return style;
    }
    const DoubleGroup& group = m_doubles.groups()[size_t(place->group)];
    const bool isKept = place->track == group.kept;
    const bool goes = group.isChosen && !isKept;
    if (field.toInt() == kState) {
        style.icon = !group.isChosen ? u"unticked"_s : isKept ? u"ticked"_s : u"delete"_s;
        style.iconText = m_texts.text(!group.isChosen ? u"double.staysboth"_s
                                      : isKept        ? u"double.kept"_s
                                                      : u"double.goes"_s);
    }
    style.struckOut = goes && field.toInt() == kTitle;
    style.dimmed = goes;
    style.bold = group.isChosen && isKept && field.toInt() == kTitle;
    return style;
}

void DoubleRows::show()
{
    m_places.clear();
    for (size_t group = 0; group < m_doubles.groups().size(); ++group) {
        const size_t tracks = m_doubles.groups()[group].tracks.size();
        for (size_t track = 0; track < tracks; ++track) {
            m_places.push_back({int(group), int(track)});
        }
    }
    emit refreshed();
}

} // namespace melovane
