#include "care/last_check.h"

#include "config/global_settings.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Section and keys in the settings file: keep.
const QString kSection = u"Check"_s;
const QString kLibrary = u"Library"_s;
const QString kMoment = u"Time"_s;
const QString kFindings = u"Findings"_s;

} // namespace

void keepLastCheck(GlobalSettings& settings, const QString& library, const LastCheck& check)
{
    settings.WriteKeyValue(kSection, kLibrary, library);
    settings.WriteKeyValue(kSection, kMoment, check.moment.toString(Qt::ISODate));
    settings.WriteKeyValue(kSection, kFindings, QString::number(check.findings));
}

std::optional<LastCheck> lastCheck(const GlobalSettings& settings, const QString& library)
{
    const QDateTime moment =
        QDateTime::fromString(settings.GetKeyValue(kSection, kMoment, {}), Qt::ISODate);
    if (!moment.isValid() || settings.GetKeyValue(kSection, kLibrary, {}) != library) {
        return {};
    }
    return LastCheck{moment, settings.GetKeyValueLong(kSection, kFindings, 0)};
}

} // namespace melovane
