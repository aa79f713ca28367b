#include "playlists/name_format.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"

#include <QRegularExpression>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The moment of now by a pattern of a name. Without a letter of a date it stands for itself.
QString dateOfNow(Database& database, QString pattern)
{
    static const QRegularExpression kDateLetter(u"[dmyhns]"_s,
                                                QRegularExpression::CaseInsensitiveOption);
    if (!pattern.contains(kDateLetter)) {
        return pattern;
    }
    // The dialect takes a pattern with a 0 for one of numbers; here it is a sign like others.
    constexpr QChar kZero(0xE000);
    pattern.replace(u'0', kZero);
    return database.OpenRecordset(u"select format(now, "_s + sql::text(pattern) + u')')
        ->value(0)
        .toText()
        .replace(kZero, u'0');
}

} // namespace

QString nameOfFormat(Database& database, const QString& format)
{
    const QStringList parts = format.split(u'#');
    QString made = parts.first();
    for (qsizetype i = 1; i < parts.size(); ++i) {
        // Every second part lies between two marks; the last one may have lost its own.
        if (i % 2 == 0) {
            made += parts[i];
        } else if (i == parts.size() - 1) {
            made += u'#' + parts[i];
        } else if (!parts[i].isEmpty()) {
            made += dateOfNow(database, parts[i]);
        }
    }
    return made;
}

} // namespace melovane
