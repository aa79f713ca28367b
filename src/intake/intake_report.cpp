#include "intake/intake_report.h"

#include "config/config_objects.h"
#include "platform/system/readable_name.h"

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

int IntakeReport::leftOver() const
{
    return found - known - rowsWritten() - missing - static_cast<int>(duplicates.size()) -
           static_cast<int>(skipped.refused.size());
}

QString fileCount(const ConfigObjects& texts, int number)
{
    return texts.text(number == 1 ? u"intake.files.one" : u"intake.files", number);
}

QString summary(const ConfigObjects& texts, const IntakeReport& report)
{
    const bool isNew = report.mode == IntakeMode::NewFiles;
    const std::pair<qsizetype, QStringView> counts[] = {
        {report.added, u"intake.added"},
        {report.changed, u"intake.changed"},
        {report.moved, u"intake.moved"},
        {report.returned, u"intake.returned"},
        {report.known, isNew ? QStringView(u"intake.known") : QStringView(u"intake.unchanged")},
        {report.duplicates.size(), u"intake.duplicate"},
        {report.missing, u"intake.missing"},
        {report.skipped.refused.size(), u"intake.refused"},
        {report.leftOver(), u"intake.leftover"},
    };
    QStringList parts;
    for (const auto& [number, name] : counts) {
        if (number != 0) {
            parts.append(texts.text(name, qint64{number}));
        }
    }
    const bool all = report.leftOver() == 0;
    QString text =
        texts.text(all ? u"intake.checked" : u"intake.found", fileCount(texts, report.found));
    if (!parts.isEmpty()) {
        text += u": "_s + parts.join(u", "_s);
    }
    if (report.cancelled) {
        text += texts.text(u"intake.cancelled");
    }
    text += u'.';
    if (!report.skipped.kinds.isEmpty()) {
        text += u' ' + texts.text(u"intake.kinds", kindsText(report.skipped));
    }
    return text;
}

QStringList reportLines(const ConfigObjects& texts, const IntakeReport& report)
{
    QStringList lines = {summary(texts, report)};
    if (!report.failure.isEmpty()) {
        lines.append(report.failure);
    }
    for (const auto* list : {&report.skipped.refused, &report.duplicates}) {
        for (const Refusal& refusal : *list) {
            lines.append(shortened(refusal.path, kMaxInLog) + u": "_s +
                         shortened(reasonText(texts, refusal), kMaxInLog));
        }
    }
    return lines;
}

} // namespace melovane
