#include "siblings/mediaintake/intake_report.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

int IntakeReport::leftOver() const
{
    return found - known - rowsWritten() - missing - static_cast<int>(duplicates.size()) -
           static_cast<int>(refused.size());
}

QString fileCount(int number)
{
    return number == 1 ? u"1 Datei"_s : u"%1 Dateien"_s.arg(number);
}

QString summary(const IntakeReport& report)
{
    QStringList parts;
    const auto count = [&](qsizetype number, const QString& what) {
        if (number != 0) {
            parts.append(u"%1 %2"_s.arg(QString::number(number), what));
        }
    };
    count(report.added, u"neu"_s);
    count(report.changed, u"neu gelesen"_s);
    count(report.moved, u"am neuen Ort"_s);
    count(report.returned, u"wieder da"_s);
    count(report.known,
          report.mode == IntakeMode::NewFiles ? u"schon in der Datenbank"_s : u"unverändert"_s);
    count(static_cast<qsizetype>(report.duplicates.size()), u"doppelt"_s);
    count(report.missing, u"nicht gefunden"_s);
    count(static_cast<qsizetype>(report.refused.size()), u"abgelehnt"_s);
    count(report.leftOver(), u"nicht gelesen"_s);
    QString text = fileCount(report.found) + u" geprüft"_s;
    if (!parts.isEmpty()) {
        text += u": "_s + parts.join(u", "_s);
    }
    if (report.cancelled) {
        text += u" (abgebrochen)"_s;
    }
    return text + u'.';
}

QStringList reportLines(const IntakeReport& report)
{
    QStringList lines = {summary(report)};
    if (!report.failure.isEmpty()) {
        lines.append(report.failure);
    }
    for (const auto* list : {&report.refused, &report.duplicates}) {
        for (const Refusal& refusal : *list) {
            lines.append(refusal.path + u": "_s + refusal.reason);
        }
    }
    return lines;
}

} // namespace melovane
