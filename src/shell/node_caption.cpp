#include "shell/node_caption.h"

#include "platform/system/letter_case.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

QString nodeCaption(const QString& value, const QString& field)
{
    static constexpr QStringView kNodes = u",interpret,titel,album,genre,statistik,playlist,path,";
    // A condition is no name either.
    if (lowerCase(value) == upperCase(value) || value.contains(u'*') ||
        field.endsWith(":where"_L1)) {
        return {};
    }
    const bool known = kNodes.contains(lowerCase(field));
    return (known ? field : u"Info"_s) + u" :: "_s + value;
}

} // namespace melovane
