#include "trees/tree_children.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/db/text_compare.h"
#include "trees/named_rows.h"
#include "trees/tree_key.h"

#include <optional>

namespace melovane::treerows {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Artists of a genre, with the two forms of the key and the two orders that they are told in.
std::vector<TreeRow> artistsOf(Database& database, const QString& from, const KeyOf& keyOf)
{
    std::vector<TreeRow> result;
    walkNamed(database, from, keyOf, [&](const NamedRow& named) {
        result.push_back(countedRow(named, 2, tickOf(named.favorit())));
    });
    return result;
}

std::vector<TreeRow> artistsOfLetter(Database& database, const QString& predicate)
{
    return artistsOf(database,
                     " from tree_interpret where name "_L1 + predicate + " order by id desc"_L1,
                     treekey::artist);
}

/// A row that artists stand below; no artist stands below two of them.
struct ArtistLetter
{
    textcompare::LikePattern names;
    bool isOfOthers = false; ///< those that do not fit
    std::size_t place = 0;

    [[nodiscard]] bool holds(const QString& folded) const
    {
        return names.matchesFolded(folded) != isOfOthers;
    }
};

/// Nothing for a key of another kind, or with a condition in other words.
std::optional<ArtistLetter> artistLetterOf(const QString& key)
{
    const auto parts = treekey::split(key);
    if (!parts || treekey::typeOf(key) != treekey::Type::ArtistLetter) {
        return std::nullopt;
    }
    QStringView condition = parts->value;
    const bool isOfOthers = condition.startsWith(u"not ");
    condition = condition.sliced(isOfOthers ? 4 : 0);
    const QStringView begin = u"like '";
    if (!condition.startsWith(begin) || !condition.endsWith(u'\'') ||
        condition.size() <= begin.size()) {
        return std::nullopt;
    }
    const QStringView pattern = condition.sliced(begin.size()).chopped(1);
    return ArtistLetter{textcompare::LikePattern(pattern), isOfOthers};
}

} // namespace

std::vector<TreeRow> children(Database& database, const QString& key)
{
    const auto parts = treekey::split(key);
    if (!parts) {
        return {};
    }
    const QString& name = parts->value;
    switch (treekey::typeOf(key)) {
    case treekey::Type::ArtistLetter: {
        // Each goes in directly below the letter, so the last one read ends on top.
        std::vector<TreeRow> rows = artistsOfLetter(database, name);
        return {rows.rbegin(), rows.rend()};
    }
    case treekey::Type::Genre:
        return artistsOf(database,
                         " from tree_genre_interpret where genre="_L1 + sql::text(name) +
                             " order by id"_L1,
                         [&](const QString& artist) { return treekey::genreArtist(name, artist); });
    case treekey::Type::FavouriteGenre:
        return artistsOf(
            database,
            " from tree_genre_interpret where favorit=true and genre="_L1 + sql::text(name) +
                " order by id"_L1,
            [&](const QString& artist) { return treekey::favouriteGenreArtist(name, artist); });
    case treekey::Type::InFavouritesGenre: {
        std::vector<TreeRow> rows =
            artistsOf(database,
                      " from tree_genre_interpret where favorit=true and genre ="_L1 +
                          sql::text(name) + " order by id desc"_L1,
                      treekey::inFavouritesGenreArtist);
        for (TreeRow& shown : rows) {
            shown.tick = RowTick::None;
        }
        return {rows.rbegin(), rows.rend()};
    }
    default:
        return {};
    }
}

std::vector<std::vector<TreeRow>> childrenOfEach(Database& database, const QStringList& keys)
{
    std::vector<std::vector<TreeRow>> result(std::size_t(keys.size()));
    std::vector<ArtistLetter> letters;
    for (std::size_t i = 0; i < result.size(); ++i) {
        if (auto letter = artistLetterOf(keys[qsizetype(i)])) {
            letter->place = i;
            letters.push_back(std::move(*letter));
        } else {
            result[i] = children(database, keys[qsizetype(i)]);
        }
    }
    if (letters.empty()) {
        return result;
    }
    // Artists stand in the order of their names: mostly the letter of the one before.
    std::size_t last = 0;
    const auto place = [&](const NamedRow& named) {
        const QString folded = textcompare::fold(named.name());
        for (std::size_t tries = 0; tries < letters.size(); ++tries) {
            const std::size_t letter = (last + tries) % letters.size();
            if (letters[letter].holds(folded)) {
                last = letter;
                result[letters[letter].place].push_back(
                    countedRow(named, 2, tickOf(named.favorit())));
                return;
            }
        }
    };
    walkNamed(database, u" from tree_interpret order by id asc"_s, treekey::artist, place);
    return result;
}

} // namespace melovane::treerows
