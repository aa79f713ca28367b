#include "platform/system/trim_blanks.h"

namespace melovane {

QString trimBlanks(QStringView text)
{
    while (text.startsWith(u' ')) {
        text = text.sliced(1);
    }
    while (text.endsWith(u' ')) {
        text.chop(1);
    }
    return text.toString();
}

} // namespace melovane
