#include "fuzz/formats/formats.h"
#include "playlists/drag_list.h"

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

QString check(const QByteArray& bytes)
{
    const QString text = QString::fromUtf8(bytes);
    const DragList list = parseDragList(text);
    if (text.left(list.type.size()) != list.type) {
        return u"a kind that the text does not begin with"_s;
    }
    for (const QString& id : list.ids) {
        if (id.contains(u',') || id.contains(u':')) {
            return u"an id of several: "_s + id;
        }
    }
    const QString again = list.type + u':' + list.ids.join(u',');
    return list.ids.isEmpty() || parseDragList(again).ids == list.ids
               ? QString()
               : u"reads back otherwise: "_s + again;
}

std::vector<QByteArray> seeds()
{
    return {"DRAG_TYP_PLID:1,2,3", "DRAG_TYP_FID_MP3DB:800000000001,800000000002:1", "",
            "DRAG_TYP_PLID:"};
}

} // namespace

Format dragText()
{
    return {"drag_text", check, seeds};
}

} // namespace melovane::fuzz
