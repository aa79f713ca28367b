#include "platform/system/print_line.h"

#include <QRegularExpression>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Width of a print zone: a comma in a print list goes on at the next multiple of it.
constexpr qsizetype kPrintZone = 14;

} // namespace

QString printLine(const QStringList& fields)
{
    static const QRegularExpression lineEnds(u"[\r\n]+"_s);
    QString line;
    for (const QString& field : fields) {
        if (!line.isEmpty()) {
            line = line.leftJustified((line.size() / kPrintZone + 1) * kPrintZone);
        }
        line += QString(field).replace(lineEnds, u" "_s);
    }
    return line;
}

} // namespace melovane
