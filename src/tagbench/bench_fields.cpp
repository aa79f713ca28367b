#include "tagbench/bench_fields.h"

#include "platform/system/leading_number.h"
#include "platform/system/trim_blanks.h"

#include <algorithm>
#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

using F = TrackField;

constexpr std::array<F, kBenchSlots - 2> kFields = {
    F::Titel, F::Interpret, F::Album, F::Kommentar, F::Jahr,     F::Track,
    F::BPM,   F::Genre,     F::Note,  F::Kategorie, F::Stimmung, F::Situation,
    F::Tempo, F::User1,     F::User2, F::User3,     F::User4,    F::User5};

QString cutToWidth(TrackField field, QString text)
{
    const int width = rowOf(field).type.width;
    if (width <= 0 || text.size() <= width) {
        return text;
    }
    text.truncate(text[width - 1].isHighSurrogate() ? width - 1 : width);
    return trimBlanks(text);
}

/// The number at the beginning of a text as it was typed, with a total behind it where one may
/// stand; empty when there is none.
QString numberText(TrackField field, const QString& typed)
{
    const double number = leadingNumber(typed);
    if (number == 0) {
        return {};
    }
    const auto isNumber = [](const QString& text) {
        bool is = false;
        text.toDouble(&is);
        return is;
    };
    const qsizetype slash = field == F::Track ? typed.indexOf(u'/') : -1;
    const bool isWhole = slash < 0
                             ? isNumber(typed)
                             : isNumber(typed.first(slash)) && isNumber(typed.sliced(slash + 1));
    return isWhole ? typed : QString::number(number);
}

} // namespace

std::span<const TrackField> benchFields()
{
    return kFields;
}

QString imageOf(const QString& cover)
{
    return cover == kNoCover ? QString() : cover;
}

int benchSlot(TrackField field)
{
    if (field == kBenchPlace) {
        return kBenchSlots - 1;
    }
    if (field == kBenchCover) {
        return kBenchSlots - 2;
    }
    const auto* const found = std::ranges::find(kFields, field);
    return found == kFields.end() ? -1 : int(found - kFields.begin());
}

std::optional<QString> benchText(TrackField field, const QString& typed)
{
    if (field == kBenchPlace || field == kBenchCover) {
        return typed;
    }
    QString text = typed;
    for (QChar& sign : text) {
        const bool isLine = sign == u'\n' && field == F::Kommentar;
        if ((sign.unicode() < 0x20 || sign.unicode() == 0x7F) && !isLine) {
            sign = u' ';
        }
    }
    text = trimBlanks(text);
    if (field == F::Note) {
        const bool isMark = text.size() == 1 && text[0] >= u'1' && text[0] <= u'5';
        const bool isNone = text.isEmpty() || text == "0"_L1;
        return isMark ? std::optional(text) : isNone ? std::optional(QString()) : std::nullopt;
    }
    if (rowOf(field).edit == TrackEdit::Number) {
        text = numberText(field, text);
    }
    return cutToWidth(field, text);
}

} // namespace melovane
