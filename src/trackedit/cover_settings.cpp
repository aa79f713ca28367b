#include "trackedit/cover_settings.h"

#include "config/global_settings.h"
#include "platform/system/path_text.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kSection = u"Global"_s;

/// Where the last picture was found.
const QString kFolder = u"NewImage.Such.DIR"_s;

/// Largest width of a cover in pixels, and its quality.
const QString kMostWidth = u"Import.Image.Max.Size"_s;
const QString kQuality = u"Import.Image.Quality"_s;
constexpr int kFirstWidth = 500;
constexpr int kFirstQuality = 75;

} // namespace

CoverSettings CoverSettings::of(const GlobalSettings& settings)
{
    return {std::max(1, settings.GetKeyValueLong(kSection, kMostWidth, kFirstWidth)),
            settings.GetKeyValueLong(kSection, kQuality, kFirstQuality),
            settings.GetKeyValue(kSection, kFolder, QString())};
}

void CoverSettings::keepFolderOf(GlobalSettings& settings, const QString& picture)
{
    settings.WriteKeyValue(kSection, kFolder, path::parent(picture));
}

} // namespace melovane
