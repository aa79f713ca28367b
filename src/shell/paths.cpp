#include "shell/paths.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

QString GetVersionString()
{
    return u"%1.%2 build(%3)"_s.arg(MLV_VERSION_MAJOR)
        .arg(MLV_VERSION_MINOR)
        .arg(MLV_VERSION_REVISION);
}

QString mainWindowCaption()
{
    return u"Melovane DB "_s + GetVersionString();
}

int databaseLevelOfThisRelease()
{
    return u"%1%2%3"_s.arg(MLV_VERSION_MAJOR)
        .arg(MLV_VERSION_MINOR)
        .arg(MLV_VERSION_REVISION)
        .toInt();
}

} // namespace melovane
