#include "library/library_look.h"

#include "config/global_settings.h"
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

GridColours GridColours::fromSettings(const GlobalSettings& settings)
{
    const auto number = [&settings](const QString& key, int builtIn) {
        return static_cast<int>(settings.GetKeyValueLong(u"Color"_s, key, builtIn));
    };
    const auto colour = [&number](const QString& key, int builtIn) {
        return Colour::fromBgr(number(key, builtIn));
    };
    GridColours result;
    result.note = {colour(u"Note1Color"_s, 0xC0C0C0), colour(u"Note2Color"_s, 0x28A2F0),
                   colour(u"Note3Color"_s, 0xFFFF00), colour(u"Note4Color"_s, 0x32FA32),
                   colour(u"Note5Color"_s, 0x00FFFF)};
    result.noteText = colour(u"NoteTextColor"_s, 0);
    result.noteTextBold = number(u"NoteTextBold"_s, -1) != 0;
    result.playNow = colour(u"PlayNowColor"_s, 0x32FA32);
    result.rowShowDel = colour(u"RowShowDEL"_s, 0x0000FF);
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
