#include "platform/db/sql_text.h"

#include <QString>

namespace melovane::sql {

QString quoted(QStringView value)
{
    QString result;
    result.reserve(value.size() + 8);
    for (const QChar sign : value) {
        if (sign.isNull()) {
            continue;
        }
        if (sign == u'\'') {
            result.append(sign);
        }
        result.append(sign);
    }
    return result;
}

QString text(QStringView value)
{
    return u'\'' + quoted(value) + u'\'';
}

QString number(qint64 value)
{
    return QString::number(value);
}

QString number(double value)
{
    return QString::number(value, 'f', QLocale::FloatingPointShortest);
}

} // namespace melovane::sql
