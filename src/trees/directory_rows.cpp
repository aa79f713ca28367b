#include "trees/directory_rows.h"

#include "platform/db/database.h"
#include "platform/db/kept_text.h"
#include "trees/named_rows.h"
#include "trees/tree_key.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <string_view>

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

/// The longest text of a count: two numbers with what stands around them.
constexpr std::size_t kCountSize = 32;

/// "[12]", "[12 - 30]" with those of folders below it. \return its letters
std::size_t writeCount(int own, int total, std::array<char, kCountSize>& text)
{
    char* at = text.data();
    const auto write = [&](int number) {
        at = std::to_chars(at, text.data() + text.size(), number).ptr;
    };
    *at++ = '[';
    write(own > 0 ? own : total);
    if (own > 0 && total > 0 && total != own) {
        at = std::copy_n(" - ", 3, at);
        write(total);
    }
    *at++ = ']';
    return std::size_t(at - text.data());
}

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
                                    : treekey::directory(cells.text(Path));
        if (isDisc || level == 0) {
            const FolderText folder{level, cells.text(Name),        cells.text(Volume), isDisc,
                                    own,   int(cells.number(Total))};
            const QString count = folder.count();
            row.text = folder.title() + count;
            row.countLetters = int(count.size());
        } else {
            setText(row, cells.bytes(Name), own, int(cells.number(Total)));
        }
        if (own > 0 && !isDisc) {
            row.tick = treerows::tickOf(cells.number(Favourite) != 0);
        }
        return row;
    }

private:
    /// As FolderText words it. Nearly all rows of a large library are such: a text is put together
    /// as the file keeps it and made once.
    void setText(TreeRow& row, std::string_view name, int own, int total)
    {
        std::array<char, kCountSize> count{};
        const std::size_t letters = writeCount(own, total, count);
        m_bytes.assign(name);
        m_bytes += ' ';
        m_bytes.append(count.data(), letters);
        row.text = keptText(m_bytes);
        row.countLetters = int(letters);
    }

    PictureNames m_pictures;
    std::string m_bytes;
};

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
    std::array<char, kCountSize> text{};
    const std::size_t letters = writeCount(own, total, text);
    return QString::fromLatin1(text.data(), qsizetype(letters));
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
    DirectoryRows made;
    database.walkRows("select "_L1 + kFolderColumns + " from tree_dir order by id asc"_L1,
                      [&](const WalkedRow& cells) { rows.push_back(made.row(cells)); });
}

} // namespace melovane
