#include "config/refusals.h"

#include "config/config_objects.h"
#include "config/global_settings.h"

#include <algorithm>
#include <array>

namespace melovane {

namespace {

struct Reason
{
    QStringView words; ///< of the C library in its own language: keep
    QStringView text;
};

constexpr std::array kReasons = {
    Reason{u"Operation not permitted", u"system.notpermitted"},
    Reason{u"No such file or directory", u"system.missing"},
    Reason{u"Input/output error", u"system.io"},
    Reason{u"Permission denied", u"system.denied"},
    Reason{u"Device or resource busy", u"system.busy"},
    Reason{u"File exists", u"system.exists"},
    Reason{u"No such device", u"system.nodevice"},
    Reason{u"Not a directory", u"system.nofolder"},
    Reason{u"Is a directory", u"system.folder"},
    Reason{u"Too many open files", u"system.manyfiles"},
    Reason{u"File too large", u"system.large"},
    Reason{u"No space left on device", u"system.full"},
    Reason{u"Read-only file system", u"system.readonly"},
    Reason{u"File name too long", u"system.longname"},
    Reason{u"Too many levels of symbolic links", u"system.links"},
    Reason{u"Stale file handle", u"system.stale"},
    Reason{u"Disk quota exceeded", u"system.quota"},
};

} // namespace

QString systemReasonText(const ConfigObjects& texts, const QString& reason)
{
    const auto* const known =
        std::find_if(kReasons.begin(), kReasons.end(),
                     [&](const Reason& entry) { return reason == entry.words; });
    return known == kReasons.end() ? reason : texts.text(known->text);
}

QString refusedLibraryText(const ConfigObjects& texts,
                           const GlobalSettings& settings,
                           const std::function<bool(const QString& library)>& isLent)
{
    const QString& named = settings.namedDbName();
    if (named != settings.DbName()) {
        return texts.text(u"library.missing", named);
    }
    return isLent(named) ? texts.text(u"library.lent.refused") : QString();
}

} // namespace melovane
