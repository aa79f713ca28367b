#include "trees/info_cover.h"

#include "platform/system/files.h"
#include "platform/system/path_text.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

QString coverFile(Files& files, const QString& dataFolder, const QString& image)
{
    const QString folder = path::join(dataFolder, u"Image");
    if (!files.folderExists(folder) && !files.makeFolders(folder)) {
        return {};
    }
    const bool leadsOut = std::any_of(image.begin(), image.end(), path::isSeparator);
    if (image.isEmpty() || leadsOut) {
        return {};
    }
    return files.resolve(path::join(folder, image + u".jpg"_s));
}

} // namespace melovane
