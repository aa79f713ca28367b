#include "trees/directory_rows.h"

#include "platform/db/database.h"
#include "trees/named_rows.h"
#include "trees/tree_key.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Value of `Drive` for an optical disc.
constexpr int kDisc = 4;

/// The columns that directoryRow() reads, in their order.
const QString kFolderColumns =
    u"rLevel, Name, Path, vName, Drive, anzahl, BAnzahl, imgkey, favorit"_s;

/// Pictures by the `imgkey` of a row. There are few, and each text is made once.
class PictureNames
{
public:
    const QString& of(const WalkedRow& row, int column)
    {
        const std::string_view word = row.bytes(column);
        auto known = std::find_if(m_names.begin(), m_names.end(),
                                  [&](const auto& each) { return each.first == word; });
        if (known == m_names.end()) {
            m_names.emplace_back(word, treerows::pictureOf(row.text(column)));
            known = std::prev(m_names.end());
        }
        return known->second;
    }

private:
    std::vector<std::pair<std::string, QString>> m_names;
};

/// A folder of `tree_dir` with its tick and its key.
TreeRow directoryRow(const WalkedRow& cells, PictureNames& pictures)
{
    const FolderText folder{int(cells.number(0)),     cells.text(1),        cells.text(3),
                            cells.number(4) == kDisc, int(cells.number(5)), int(cells.number(6))};
    const QString path = cells.text(2);
    const bool isDiscFolder = folder.isDisc && folder.own > 0;
    TreeRow row = treerows::row(folder.level, {},
                                isDiscFolder ? treekey::discDirectory(folder.volume, path)
                                             : treekey::directory(path),
                                pictures.of(cells, 7));
    row.heading = folder.level == 0;
    const QString count = folder.count();
    row.text = folder.title() + count;
    row.countLetters = int(count.size());
    if (folder.own > 0 && !folder.isDisc) {
        row.tick = treerows::tickOf(cells.number(8) != 0);
    }
    return row;
}

/// Room for the rows of `tree_dir`; an estimate, for its numbers may have gaps.
std::size_t roomForFolders(Database& database)
{
    constexpr qint64 kMost = 1'000'000;
    // Not by a recordset: a rebuild may take the row away between finding and reading it.
    const auto end = [&](QLatin1StringView which) {
        qint64 number = 0;
        database.walkRows("select "_L1 + which + "(id) from tree_dir"_L1,
                          [&](const WalkedRow& row) { number = row.number(0); });
        return number;
    };
    return std::size_t(std::clamp<qint64>(end("max"_L1) - end("min"_L1) + 1, 1, kMost));
}

} // namespace

QString FolderText::count() const
{
    // Written in place: a large library has some 100,000 folders.
    std::array<char, 32> text{'['};
    char* at = text.data() + 1;
    const auto write = [&](int number) {
        at = std::to_chars(at, text.data() + text.size(), number).ptr;
    };
    write(own > 0 ? own : total);
    if (own > 0 && total > 0 && total != own) {
        at = std::copy_n(" - ", 3, at);
        write(total);
    }
    *at++ = ']';
    return QString::fromLatin1(text.data(), at - text.data());
}

QString FolderText::title() const
{
    if (level == 0 && !isDisc) {
        return name + u' ' + (volume.isEmpty() ? QString() : volume + u' ');
    }
    // A disc's name carries its volume at the end, which its root alone shows.
    const bool isTold = level > 0 && isDisc && !volume.isEmpty() && name.endsWith(u' ' + volume);
    return (isTold ? name.chopped(volume.size() + 1) : name) + u' ';
}

void treerows::addFolders(Database& database, std::vector<TreeRow>& rows)
{
    rows.reserve(rows.size() + roomForFolders(database));
    PictureNames pictures;
    database.walkRows(
        "select "_L1 + kFolderColumns + " from tree_dir order by id asc"_L1,
        [&](const WalkedRow& cells) { rows.push_back(directoryRow(cells, pictures)); });
}

} // namespace melovane
