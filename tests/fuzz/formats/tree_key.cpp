#include "trees/tree_key.h"

#include "fuzz/formats/formats.h"

#include <QStringList>

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

QString keyFault(const QString& key)
{
    const auto parts = treekey::split(key);
    const auto click = treekey::clickValues(key);
    if (parts.has_value() != click.has_value()) {
        return u"a row that selects something, or does not"_s;
    }
    if (parts && (parts->value.isEmpty() || parts->value.contains(u"??"_s))) {
        return u"a click without a value"_s;
    }
    if (click) {
        (void)treekey::libraryRequest(*click);
        (void)treekey::enterMessage(*parts);
    }
    (void)treekey::typeOf(key);
    (void)treekey::idOf(key);
    if (!treekey::playlistId(key).isEmpty() && !treekey::groupId(key).isEmpty()) {
        return u"a list and a group in one row"_s;
    }
    const QString favourite = treekey::madeFavourite(key);
    return treekey::madeFavourite(favourite) == favourite ? QString() : u"made a favourite twice"_s;
}

QString check(const QByteArray& bytes)
{
    // A saved state is many keys.
    const QString state = QString::fromUtf8(bytes);
    for (const QString& key :
         state.split(treekey::kStateSeparator.toString(), Qt::SkipEmptyParts)) {
        if (const QString fault = keyFault(key); !fault.isEmpty()) {
            return fault + u": "_s + key;
        }
    }
    return {};
}

std::vector<QByteArray> seeds()
{
    const QStringList keys{treekey::directory(u"/music/Rock"_s),
                           treekey::discDirectory(u"DISC"_s, u"/rock"_s),
                           treekey::genreArtist(u"Rock"_s, u"Queen"_s),
                           treekey::artistLetter(u'A'),
                           treekey::artistDigits(),
                           treekey::statisticsDay(u"01.01.2026"_s, 20260101),
                           treekey::group(3),
                           treekey::playlist(17),
                           treekey::jingleGroup(),
                           treekey::jingleList(18),
                           treekey::favouriteAlbum(u"Gold"_s),
                           treekey::runProc(u"f"_s, u"x"_s)};
    std::vector<QByteArray> result{keys.join(treekey::kStateSeparator.toString()).toUtf8()};
    for (const QString& key : keys) {
        result.push_back(key.toUtf8());
    }
    return result;
}

} // namespace

Format treeKey()
{
    return {"tree_key", check, seeds};
}

} // namespace melovane::fuzz
