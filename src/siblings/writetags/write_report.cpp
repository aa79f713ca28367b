#include "siblings/writetags/write_report.h"

#include "bus/event_guard.h"
#include "config/config_objects.h"
#include "config/counted_text.h"
#include "config/refusals.h"
#include "platform/system/readable_name.h"
#include "siblings/writetags/write_tags.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

QString faultText(const ConfigObjects& texts, TagWriteFault fault)
{
    switch (fault) {
    case TagWriteFault::NotFound:
        return texts.text(u"writetags.notfound");
    case TagWriteFault::ReadOnly:
        return texts.text(u"writetags.readonly");
    case TagWriteFault::NoAudio:
        return texts.text(u"writetags.noaudio");
    case TagWriteFault::TagSize:
        return texts.text(u"writetags.tagsize");
    case TagWriteFault::Full:
        return texts.text(u"writetags.full");
    case TagWriteFault::Changed:
        return texts.text(u"writetags.changed");
    case TagWriteFault::None:
    case TagWriteFault::Failed:
        break;
    }
    return texts.text(u"writetags.failed");
}

} // namespace

QString reasonText(const ConfigObjects& texts, const UnwrittenFile& file)
{
    const QString reason = faultText(texts, file.fault);
    return file.detail.isEmpty() ? reason
                                 : u"%1 (%2)"_s.arg(reason, systemReasonText(texts, file.detail));
}

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
        lines.append(readableName(file.path) + u": "_s + reasonText(texts, file));
    }
    return lines;
}

} // namespace melovane
