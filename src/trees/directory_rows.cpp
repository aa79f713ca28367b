#include "trees/directory_rows.h"

#include "platform/db/database.h"
#include "trees/named_rows.h"
#include "trees/tree_key.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Value of `Drive` for an optical disc.
constexpr int kDisc = 4;

/// The columns that are read, in the order of Column.
const QString kFolderColumns =
    u"rLevel, Name, Path, vName, Drive, anzahl, BAnzahl, imgkey, favorit"_s;

enum Column
{
    Level,
    Name,
    Path,
    Volume,
    Drive,
    Own,
    Total,
    Picture,
    Favourite
};

/// The rows of `tree_dir` with their ticks and keys.
class DirectoryRows
{
public:
    [[nodiscard]] TreeRow row(const WalkedRow& cells)
    {
        const auto level = int(cells.number(Level));
        const bool isDisc = cells.number(Drive) == kDisc;
        const auto own = int(cells.number(Own));
        TreeRow row;
        row.level = level;
        row.heading = level == 0;
        row.picture = m_pictures.of(cells, Picture);
        row.key = isDisc && own > 0 ? treekey::discDirectory(cells.text(Volume), cells.text(Path))
                                    : treekey::directoryOfKept(cells.bytes(Path));
        if (isDisc || level == 0) {
            const FolderText folder{level, cells.text(Name),        cells.text(Volume), isDisc,
                                    own,   int(cells.number(Total))};
            const QString count = folder.count();
            row.text = folder.title() + count;
            row.countLetters = int(count.size());
        } else {
            treerows::setText(row, cells.bytes(Name), own, int(cells.number(Total)));
        }
        if (own > 0 && !isDisc) {
            row.tick = treerows::tickOf(cells.number(Favourite) != 0);
        }
        return row;
    }

private:
    treerows::PictureNames m_pictures;
};

} // namespace

QString FolderText::count() const
{
    return treerows::countText(own, total);
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
    rows.reserve(rows.size() + roomFor(database, u"tree_dir"_s));
    DirectoryRows made;
    database.walkRows("select "_L1 + kFolderColumns + " from tree_dir order by id asc"_L1,
                      [&](const WalkedRow& cells) { rows.push_back(made.row(cells)); });
}

} // namespace melovane
