#include "library/shown_request.h"

#include "config/config_objects.h"
#include "platform/system/letter_case.h"
#include "platform/system/trim_blanks.h"

#include <QStringList>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Kinds and fields of nodes in lower case. What is none of them is named by its text.
const QStringList kFolderNames = {u"dir"_s, u"path"_s, u"cddir"_s};
const QStringList kNumberKinds = {u"playlist"_s, u"statistik"_s, u"fid"_s, u"image"_s};

} // namespace

ShownRequest shownRequest(const TreeRequest& request)
{
    using Kind = ShownRequest::Kind;
    const QString kind = lowerCase(request.kind);
    if (kFolderNames.contains(kind) || kFolderNames.contains(lowerCase(request.field))) {
        return {Kind::Folder, request.value};
    }
    if (kNumberKinds.contains(kind) || request.byNumber != 0 || kind.endsWith(":where"_L1)) {
        return {Kind::Other, {}};
    }
    // Stars are the search's own, at either end.
    QString text = request.value;
    while (text.startsWith(u'*')) {
        text.remove(0, 1);
    }
    while (text.endsWith(u'*')) {
        text.chop(1);
    }
    return {Kind::Text, trimBlanks(text)};
}

ShownRequest shownRequest(LibraryView view)
{
    return {view == LibraryView::DBGridDel ? ShownRequest::Kind::Deleted
                                           : ShownRequest::Kind::Missing,
            {}};
}

QString nameOf(const ShownRequest& request, const ConfigObjects& texts)
{
    using Kind = ShownRequest::Kind;
    switch (request.kind) {
    case Kind::Nothing:
    case Kind::SearchLine:
    case Kind::Other:
        break;
    case Kind::Text:
        return texts.text(u"library.view.text"_s, request.text);
    case Kind::Folder:
        return texts.text(u"library.view.folder"_s, request.text);
    case Kind::Deleted:
        return texts.text(u"library.view.deleted"_s);
    case Kind::Missing:
        return texts.text(u"library.view.missing"_s);
    }
    return {};
}

} // namespace melovane
