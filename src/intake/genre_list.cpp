#include "intake/genre_list.h"

#include "platform/db/database.h"
#include "platform/system/letter_case.h"
#include "platform/system/trim_blanks.h"

#include <QStringList>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Largest number that a tag can store as a genre; it stands for none.
constexpr int kLargestNumber = 255;

bool isNumber(QStringView text)
{
    return !text.isEmpty() && text.size() <= 3 &&
           std::all_of(text.begin(), text.end(),
                       [](QChar sign) { return sign >= u'0' && sign <= u'9'; }) &&
           text.toInt() <= kLargestNumber;
}

} // namespace

void GenreList::LoadGenre(Database& database)
{
    m_byName.clear();
    m_numbers.clear();
    m_byNumber.clear();
    const auto rows =
        database.OpenRecordset(u"select * from genre where genre_id<> 255 order by genre_id"_s);
    const int id = rows->fieldIndex(u"Genre_ID");
    const int name = rows->fieldIndex(u"Name");
    for (; !rows->Eof(); rows->MoveNext()) {
        add(rows->value(id).toLong(), rows->value(name).toText());
    }
}

void GenreList::add(int id, const QString& name)
{
    const QString key = upperCase(trimBlanks(name));
    if (!m_byName.contains(key)) {
        m_byName.insert(key, name);
        m_numbers.insert(key, id);
    }
    if (!m_byNumber.contains(id)) {
        m_byNumber.insert(id, name);
    }
}

int GenreList::numberOf(const QString& name) const
{
    const int number = m_numbers.value(upperCase(trimBlanks(name)), kLargestNumber);
    return number >= 0 && number < kLargestNumber ? number : kLargestNumber;
}

QString GenreList::byName(const QString& name) const
{
    return m_byName.value(upperCase(name), name);
}

QString GenreList::byNumber(const QString& digits) const
{
    return m_byNumber.value(digits.toInt());
}

QString GenreList::nameOf(const QString& tagText) const
{
    static const QString separator = u"; "_s;
    if (!tagText.contains(separator)) {
        return nameOfOne(tagText);
    }
    QStringList names;
    for (const QString& one : tagText.split(separator)) {
        names.append(nameOfOne(one));
    }
    names.removeAll(QString());
    return names.join(separator);
}

QString GenreList::nameOfOne(const QString& tagText) const
{
    const QString text = trimBlanks(tagText);
    if (isNumber(text)) {
        return byNumber(text);
    }
    const qsizetype close = text.indexOf(u')');
    if (!text.startsWith(u'(') || close < 0) {
        return byName(text);
    }
    if (text.startsWith("(("_L1)) {
        return byName(text.mid(1)); // a doubled bracket stands for one that is meant
    }
    const QString inner = text.mid(1, close - 1);
    const bool remix = inner == "RX"_L1;
    if (!isNumber(inner) && !remix && inner != "CR"_L1) {
        return byName(text);
    }
    const QString refined = trimBlanks(text.mid(close + 1));
    if (!refined.isEmpty() && !refined.startsWith(u'(')) {
        return byName(refined);
    }
    if (isNumber(inner)) {
        return byNumber(inner);
    }
    return byName(remix ? u"Remix"_s : u"Cover"_s);
}

} // namespace melovane
