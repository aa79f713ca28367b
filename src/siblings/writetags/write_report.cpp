#include "siblings/writetags/write_report.h"

#include "bus/event_guard.h"
#include "config/config_objects.h"
#include "config/counted_text.h"
#include "config/refusals.h"
#include "platform/system/readable_name.h"
#include "siblings/writetags/write_tags.h"
#include "trackedit/unwritten_tags.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

QString summary(const ConfigObjects& texts, const WriteTagsReport& report, const QString& database)
{
    QStringList lines{countedText(texts, u"writetags.written"_s, report.written)};
    if (!report.failures.empty()) {
        lines.append(countedText(texts, u"writetags.unwritten"_s, qint64(report.failures.size())));
    }
    if (report.isLent) {
        lines.append(texts.text(u"library.lent.refused"));
    }
    if (report.dbError != 0) {
        lines.append(databaseFaultText(texts, report.dbError, report.dbText, database));
    }
    return lines.join(u'\n');
}

QStringList
reportLines(const ConfigObjects& texts, const WriteTagsReport& report, const QString& database)
{
    QStringList lines{summary(texts, report, database)};
    for (const UnwrittenFile& file : report.failures) {
        lines.append(readableName(file.path) + u": "_s +
                     unwrittenReason(texts, file.fault, file.detail));
    }
    return lines;
}

} // namespace melovane
