#include "trees/parked_favorits.h"

#include <algorithm>
#include <optional>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const auto kNoStamp = "null"_L1;
const QString kStampForm = u"#yyyy-MM-dd hh:mm:ss#"_s;

bool isStamp(const QString& text)
{
    return text == kNoStamp || QDateTime::fromString(text, kStampForm).isValid();
}

/// Takes the field in front off the text: a quoted one to its closing quote, a bare one to the next
/// comma or line end. Nothing when the quote is not closed.
std::optional<QString> takeField(QStringView& rest)
{
    if (!rest.startsWith(u'"')) {
        const auto end =
            std::find_if(rest.begin(), rest.end(), [](QChar c) { return c == u',' || c == u'\n'; });
        const QString field = rest.left(end - rest.begin()).toString();
        rest = rest.mid(field.size());
        return field;
    }
    QString field;
    for (qsizetype at = 1; at < rest.size(); ++at) {
        if (rest[at] != u'"') {
            field += rest[at];
        } else if (at + 1 < rest.size() && rest[at + 1] == u'"') {
            field += rest[++at];
        } else {
            rest = rest.mid(at + 1);
            return field;
        }
    }
    return std::nullopt;
}

/// Takes a record off the text, its line end too.
std::optional<QStringList> takeRecord(QStringView& rest)
{
    QStringList fields;
    while (true) {
        const auto field = takeField(rest);
        if (!field) {
            return std::nullopt;
        }
        fields.append(*field);
        if (!rest.isEmpty() && rest[0] != u',' && rest[0] != u'\n') {
            return std::nullopt;
        }
        const bool goesOn = rest.startsWith(u',');
        rest = rest.mid(1);
        if (!goesOn) {
            return fields;
        }
    }
}

} // namespace

QString parkedStamp(const Value& tstamp)
{
    const QDateTime moment = tstamp.toDateTime();
    return moment.isValid() ? moment.toString(kStampForm) : QString(kNoStamp);
}

QString parkedText(const std::vector<ParkedFavorit>& favorits)
{
    QString text;
    for (const ParkedFavorit& favorit : favorits) {
        for (QString name : favorit.names) {
            text += u'"' + name.replace(u'"', u"\"\""_s) + u"\","_s;
        }
        text += favorit.stamp + u'\n';
    }
    return text;
}

std::vector<ParkedFavorit> readParked(const QString& text, int nameCount)
{
    std::vector<ParkedFavorit> favorits;
    QStringView rest = text;
    while (!rest.isEmpty()) {
        if (rest.startsWith(u'\n')) {
            rest = rest.mid(1);
            continue;
        }
        auto fields = takeRecord(rest);
        if (!fields || fields->size() != nameCount + 1 || !isStamp(fields->last())) {
            break;
        }
        const QString stamp = fields->takeLast();
        favorits.push_back({std::move(*fields), stamp});
    }
    return favorits;
}

} // namespace melovane
