#include "care/check_report.h"

#include "config/config_objects.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

QString keyOf(Flaw flaw)
{
    switch (flaw) {
    case Flaw::Unreadable:
        return u"check.Unreadable"_s;
    case Flaw::PageDamaged:
        return u"check.PageDamaged"_s;
    case Flaw::IndexDamaged:
        return u"check.IndexDamaged"_s;
    case Flaw::TableLost:
        return u"check.TableLost"_s;
    case Flaw::TemplateFilled:
        return u"check.TemplateFilled"_s;
    case Flaw::JobUnknown:
        return u"check.JobUnknown"_s;
    case Flaw::CountWrong:
        return u"check.CountWrong"_s;
    case Flaw::EntryWithoutTrack:
        return u"check.EntryWithoutTrack"_s;
    case Flaw::EntryWithoutList:
        return u"check.EntryWithoutList"_s;
    case Flaw::ListWithoutGroup:
        return u"check.ListWithoutGroup"_s;
    case Flaw::PlayWithoutTrack:
        return u"check.PlayWithoutTrack"_s;
    case Flaw::TrackWithoutId:
        return u"check.TrackWithoutId"_s;
    case Flaw::SideFileMissing:
        return u"check.SideFileMissing"_s;
    case Flaw::SideFileDamaged:
        return u"check.SideFileDamaged"_s;
    case Flaw::HistoryDamaged:
        return u"check.HistoryDamaged"_s;
    case Flaw::ListFileMissing:
        return u"check.ListFileMissing"_s;
    }
    return {};
}

} // namespace

QStringList reportLines(const ConfigObjects& texts, const std::vector<Finding>& findings)
{
    QStringList lines;
    for (const Finding& finding : findings) {
        lines.append(texts.text(keyOf(finding.flaw), finding.what));
    }
    return lines;
}

} // namespace melovane
