#include "trees/row_names.h"

#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "trees/favorit_rows.h"
#include "trees/tree_key.h"
#include "views/name_match.h"

#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

using Kind = NamedRowPlace::Kind;

/// Names between two questions whether the work is over: well below a millisecond.
constexpr size_t kStep = 4096;

/// Value of `Drive` for an optical disc.
constexpr int kDisc = 4;

/// Ends a walk through a table.
struct Over
{};

struct NameTable
{
    Kind kind;
    QStringView statement;
};

constexpr std::array kNameTables{
    NameTable{Kind::Artist, u"select Name from tree_interpret order by id"},
    NameTable{Kind::Album, u"select Name from tree_album order by id"},
    NameTable{Kind::Genre, u"select Name from tree_genre order by id"},
};

const QString kFolders = u"select Path, vName, Drive, anzahl from tree_dir order by id"_s;

Kind kindOf(const TreeRow& row)
{
    if (row.heading) {
        return Kind::Group;
    }
    return treekey::isJingleRow(row.key) ? Kind::JingleList : Kind::List;
}

} // namespace

QString NamedRowPlace::rowKey() const
{
    switch (kind) {
    case Kind::Artist:
        return treekey::artist(name);
    case Kind::Album:
        return treekey::album(name);
    case Kind::Genre:
        return treekey::genre(name);
    case Kind::Folder:
        return key.isEmpty() ? treekey::directory(name) : key;
    case Kind::List:
    case Kind::JingleList:
    case Kind::Group:
        break;
    }
    return key;
}

void RowNames::read(Database& library, const IsOver& isOver)
{
    m_rows.clear();
    for (const TreeRow& row : readFavoritRows(library, {}, true)) {
        if (!row.text.isEmpty()) {
            m_rows.push_back({kindOf(row), row.text, row.key});
        }
    }
    const auto add = [&](NamedRowPlace&& row) {
        if (m_rows.size() % kStep == 0 && isOver()) {
            throw Over();
        }
        if (!row.name.isEmpty()) {
            m_rows.push_back(std::move(row));
        }
    };
    const auto walk = [&](const QString& statement, const RowVisit& visit) {
        try {
            library.walkRows(statement, visit);
        } catch (const DbError&) {
            // The tree says so where it is looked at.
        }
    };
    try {
        for (const NameTable& table : kNameTables) {
            walk(table.statement.toString(), [&](const WalkedRow& row) {
                add({table.kind, row.text(0)});
            });
        }
        walk(kFolders, [&](const WalkedRow& row) {
            const bool isDisc = row.number(2) == kDisc && row.number(3) > 0;
            add({Kind::Folder, row.text(0),
                 isDisc ? treekey::discDirectory(row.text(1), row.text(0)) : QString()});
        });
    } catch (const Over&) {
        m_rows.clear();
    }
}

std::vector<NamedRowPlace>
RowNames::find(const QString& typed, size_t max, const IsOver& isOver) const
{
    const NameMatch match(typed);
    std::array<std::vector<size_t>, NameMatch::kHolds + 1> found;
    if (typed.trimmed().isEmpty()) {
        return {};
    }
    for (size_t place = 0; place < m_rows.size(); ++place) {
        if (place % kStep == 0 && isOver()) {
            return {};
        }
        const NameMatch::Rank rank = match.rank(m_rows[place].name);
        if (rank != NameMatch::kNone && found[size_t(rank)].size() < max) {
            found[size_t(rank)].push_back(place);
        }
    }
    std::vector<NamedRowPlace> result;
    for (const std::vector<size_t>& places : found) {
        for (const size_t place : places) {
            if (result.size() < max) {
                result.push_back(m_rows[place]);
            }
        }
    }
    return result;
}

} // namespace melovane
