#include "library/library_note.h"

#include "config/config_objects.h"

#include <QLocale>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Letters of a search text that a title has room for.
constexpr int kShownLetters = 60;

bool isOfSearchLine(const ShownRequest& request)
{
    return request.kind == ShownRequest::Kind::Nothing ||
           request.kind == ShownRequest::Kind::SearchLine;
}

EmptyNote noteOfView(LibraryView view, const ShownRequest& request, const ConfigObjects& texts)
{
    if (request.kind == ShownRequest::Kind::Text) {
        return {texts.text(u"library.nohits.title"_s, request.text.left(kShownLetters)), {}, {}};
    }
    if (request.kind == ShownRequest::Kind::Folder) {
        return {texts.text(u"library.norows"_s), nameOf(request, texts), {}};
    }
    if (view == LibraryView::DBGridDel) {
        return {texts.text(u"library.nodeleted"_s), {}, {}};
    }
    return {texts.text(view == LibraryView::DBGridNoExist ? u"library.nomissing"_s
                                                          : u"library.norows"_s),
            {},
            {}};
}

EmptyNote noteBeforeSearch(qint64 librarySize, const ConfigObjects& texts)
{
    const QString title =
        librarySize == 1 ? u"library.nosearch.title.one"_s : u"library.nosearch.title"_s;
    return {texts.text(title, groupedNumber(librarySize)), texts.text(u"library.nosearch.text"_s),
            texts.text(u"library.nosearch.button"_s)};
}

EmptyNote noteOfSearch(const QString& text, const ConfigObjects& texts)
{
    const bool inside = text.startsWith(u'*');
    return {texts.text(u"library.nohits.title"_s, text.left(kShownLetters)),
            texts.text(inside ? u"library.nohits.inside"_s : u"library.nohits.begin"_s),
            inside ? QString() : texts.text(u"library.nohits.button"_s)};
}

} // namespace

QString groupedNumber(qint64 number)
{
    return QLocale(QLocale::German).toString(number).replace(u'.', QChar(0x202F));
}

Emptiness emptinessOf(const LibraryState& state)
{
    if (state.isLent) {
        return Emptiness::Lent;
    }
    if (state.rows > 0) {
        return Emptiness::None;
    }
    if (state.librarySize == 0) {
        return Emptiness::NoLibrary;
    }
    if (state.view != LibraryView::DBGrid || !isOfSearchLine(state.request)) {
        return Emptiness::NothingHere;
    }
    return state.searchText.isEmpty() ? Emptiness::NoSearch : Emptiness::NoHits;
}

EmptyNote libraryNote(const LibraryState& state, const ConfigObjects& texts)
{
    switch (emptinessOf(state)) {
    case Emptiness::None:
        break;
    case Emptiness::Lent:
        return {texts.text(u"library.lent.title"_s), texts.text(u"library.lent.text"_s), {}};
    case Emptiness::NoLibrary:
        return {texts.text(u"library.empty.title"_s), texts.text(u"library.empty.text"_s),
                texts.text(u"library.import"_s)};
    case Emptiness::NothingHere:
        return noteOfView(state.view, state.request, texts);
    case Emptiness::NoSearch:
        return noteBeforeSearch(state.librarySize, texts);
    case Emptiness::NoHits:
        return noteOfSearch(state.searchText, texts);
    }
    return {};
}

} // namespace melovane
