#include "library/library_look.h"

#include "config/update_colors.h"
#include "platform/system/clock.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 kDaySeconds = qint64{24} * 60 * 60;

bool isField(const QString& field, QLatin1StringView name)
{
    return field.compare(name, Qt::CaseInsensitive) == 0;
}

} // namespace

GridColours GridColours::from(const UpdateColors& colours)
{
    GridColours result;
    static_cast<NoteColours&>(result) = NoteColours::from(colours);
    result.playNow = colours.colour(u"PlayNowColor"_s);
    result.rowShowDel = colours.colour(u"RowShowDEL"_s);
    result.shownTrack = colours.gridStyle(u"FIDBOLD"_s).value_or(CellStyle());
    return result;
}

LibraryLook::LibraryLook(const Clock& clock)
    : m_clock(clock)
{}

bool LibraryLook::playedWithin(const Value& play, qint64 seconds) const
{
    const QDateTime moment = play.toDateTime();
    return moment.isValid() && moment.secsTo(m_clock.now()) <= seconds;
}

QString LibraryLook::text(const QString& field, const Value& value) const
{
    if (isField(field, "Play"_L1) && !value.isNull()) {
        if (m_playIsTimeOfDay) {
            return value.toDateTime().toString(u"HH:mm:ss"_s);
        }
        return playText(value, m_clock.now());
    }
    if (isField(field, "DBit"_L1)) {
        return bitRateText(value);
    }
    return value.toText();
}

CellStyle LibraryLook::style(const QString& field, const RowValues& row) const
{
    CellStyle style;
    if (!m_shownTrack.isEmpty() && row.value(u"FID"_s).toText() == m_shownTrack) {
        style = m_colours.shownTrack;
    }
    if (!row.value(u"favorit"_s).isNull()) {
        style.ground = CellGround::Favourite;
    }
    if (row.value(u"DEL"_s).toLong() != 0) {
        style.text = m_colours.rowShowDel;
        style.struckOut = true;
    }
    if (isField(field, "Note"_L1)) {
        m_colours.addTo(style, row.value(u"Note"_s));
    } else if (isField(field, "Play"_L1) && playedWithin(row.value(u"Play"_s), kDaySeconds)) {
        style.tint = m_colours.playNow;
    } else if (isField(field, "Titel"_L1) && !m_heardTrack.isEmpty() &&
               row.value(u"FID"_s).toText() == m_heardTrack) {
        style.ground = CellGround::Heard;
        style.icon = u"volume"_s;
        style.iconText = m_heardMeaning;
    }
    return style;
}

} // namespace melovane
