#include "library/search_text.h"

#include "platform/system/letter_case.h"
#include "platform/system/trim_blanks.h"
#include "store/track_fields.h"

#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

struct ShortForm
{
    QStringView start;
    SearchForm form;
    TrackField field;
};

constexpr std::array<ShortForm, 6> kShortForms = {{
    {u"N=", SearchForm::Equal, TrackField::Note},
    {u"N<", SearchForm::TextGreater, TrackField::Note},
    {u"C>", SearchForm::NumberGreater, TrackField::PlayCountAll},
    {u"C=", SearchForm::NumberGreater, TrackField::PlayCountAll},
    {u"B>", SearchForm::TextGreater, TrackField::BPM},
    {u"B=", SearchForm::Equal, TrackField::BPM},
}};

/// Length of a short form of a rating with its mark: "N=1".
constexpr qsizetype kMarkLength = 3;

QString reduced(const QString& text)
{
    QString result = upperCase(text);
    for (const QString& letters : {u"OTE"_s, u"OUNT"_s, u"PM"_s}) {
        result.remove(letters);
    }
    return result;
}

/// The stored value of the mark behind "N=" or "N<".
QString storedRating(const QString& shortForm)
{
    const QChar mark = shortForm.size() < kMarkLength ? QChar() : shortForm[kMarkLength - 1];
    return mark >= u'1' && mark <= u'5' ? QString(QChar('6' - (mark.unicode() - '0'))) : QString();
}

} // namespace

SearchRequest readSearchText(const QString& text)
{
    const QString shortForm = reduced(text);
    for (const ShortForm& known : kShortForms) {
        if (!shortForm.startsWith(known.start)) {
            continue;
        }
        QString value = shortForm;
        if (known.field == TrackField::Note) {
            value = storedRating(shortForm);
        } else if (known.field == TrackField::BPM) {
            value.remove(known.start.toString());
        } else {
            value.remove(u"C>"_s).remove(u"C="_s);
        }
        return {known.form, columnOf(known.field).toString(), value};
    }
    return {SearchForm::Text, {}, text};
}

bool isHalfShortForm(const SearchRequest& request)
{
    const bool compares =
        request.form == SearchForm::TextGreater || request.form == SearchForm::NumberGreater;
    return compares && trimBlanks(request.value).isEmpty();
}

QStringList searchExamples()
{
    return {u"Count>1"_s, u"Note=1"_s, u"BPM=130"_s};
}

bool belongsIntoSearchList(const QString& text, const QStringList& list)
{
    const bool isExample =
        text.startsWith("bpm"_L1) || text.startsWith("count"_L1) || text.startsWith("Note"_L1);
    return !trimBlanks(text).isEmpty() && !isExample && !list.contains(text);
}

} // namespace melovane
