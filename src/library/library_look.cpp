#include "library/library_look.h"

#include "config/update_colors.h"
#include "platform/system/clock.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Value of `DBit` for a bit rate that varies: keep.
constexpr int kVariableBitRate = -99;

constexpr qint64 kDaySeconds = 24 * 60 * 60;

bool isField(const QString& field, QLatin1StringView name)
{
    return field.compare(name, Qt::CaseInsensitive) == 0;
}

} // namespace

GridColours GridColours::from(const UpdateColors& colours)
{
    GridColours result;
    result.note = {colours.colour(u"Note1Color"_s), colours.colour(u"Note2Color"_s),
                   colours.colour(u"Note3Color"_s), colours.colour(u"Note4Color"_s),
                   colours.colour(u"Note5Color"_s)};
    result.noteText = colours.colour(u"NoteTextColor"_s);
    result.noteTextBold = colours.GetColor(u"NoteTextBold"_s) != 0;
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
        const QDateTime moment = value.toDateTime();
        if (m_playIsTimeOfDay) {
            return moment.toString(u"HH:mm:ss"_s);
        }
        return moment.toString(playedWithin(value, kDaySeconds / 2) ? u"HH:mm"_s : u"dd.MM.yy"_s);
    }
    if (isField(field, "DBit"_L1) && value.toLong() == kVariableBitRate) {
        return u"VBR"_s;
    }
    return value.toText();
}

void LibraryLook::addNote(CellStyle& style, const Value& note) const
{
    const int mark = note.toLong();
    if (mark >= 1 && mark <= 5) {
        style.badge = m_colours.note[static_cast<size_t>(mark - 1)];
        style.badgeText = m_colours.noteText;
        style.bold = m_colours.noteTextBold;
        style.struckOut = false;
    }
}

CellStyle LibraryLook::style(const QString& field, const RowValues& row) const
{
    CellStyle style;
    if (!m_shownTrack.isEmpty() && row.value(u"FID"_s).toText() == m_shownTrack) {
        style = m_colours.shownTrack;
    }
    if (row.value(u"DEL"_s).toLong() != 0) {
        style.text = m_colours.rowShowDel;
        style.struckOut = true;
    }
    if (isField(field, "Note"_L1)) {
        addNote(style, row.value(u"Note"_s));
    } else if (isField(field, "Play"_L1) && playedWithin(row.value(u"Play"_s), kDaySeconds)) {
        style.tint = m_colours.playNow;
    }
    return style;
}

} // namespace melovane
