#include "playlists/drag_list.h"

#include "platform/system/leading_number.h"
#include "platform/system/trim_blanks.h"

#include <algorithm>

namespace melovane {

DragList parseDragList(const QString& text)
{
    const QStringList fields = text.split(u':');
    DragList list;
    list.type = fields.value(0);
    list.ids = fields.value(1).split(u',');
    if (fields.size() == 3) {
        list.extra = leadingLong(fields[2]);
    }
    const bool hasIds = std::any_of(list.ids.cbegin(), list.ids.cend(),
                                    [](const QString& id) { return !trimBlanks(id).isEmpty(); });
    if (!hasIds) {
        list.ids.clear();
    }
    return list;
}

} // namespace melovane
