#include "views/track_look.h"

#include "config/update_colors.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Value of `DBit` for a bit rate that varies: keep.
constexpr int kVariableBitRate = -99;

constexpr qint64 kHalfDaySeconds = qint64{12} * 60 * 60;

} // namespace

NoteColours NoteColours::from(const UpdateColors& colours)
{
    return {{colours.colour(u"Note1Color"_s), colours.colour(u"Note2Color"_s),
             colours.colour(u"Note3Color"_s), colours.colour(u"Note4Color"_s),
             colours.colour(u"Note5Color"_s)},
            colours.colour(u"NoteTextColor"_s),
            colours.GetColor(u"NoteTextBold"_s) != 0};
}

void NoteColours::addTo(CellStyle& style, const Value& rating) const
{
    const int mark = rating.toLong();
    if (mark >= 1 && mark <= 5) {
        style.badge = note[static_cast<size_t>(mark - 1)];
        style.badgeText = noteText;
        style.bold = noteTextBold;
        style.struckOut = false;
    }
}

QString playText(const Value& play, const QDateTime& now)
{
    const QDateTime moment = play.toDateTime();
    if (!moment.isValid()) {
        return play.toText();
    }
    const bool recent = moment.secsTo(now) <= kHalfDaySeconds;
    return moment.toString(recent ? u"HH:mm"_s : u"dd.MM.yy"_s);
}

QString bitRateText(const Value& rate)
{
    return rate.toLong() == kVariableBitRate ? u"VBR"_s : rate.toText();
}

Value storedRating(int digit)
{
    return digit == 0 ? Value() : Value(QString::number(6 - digit));
}

} // namespace melovane
