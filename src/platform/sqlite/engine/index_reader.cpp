#include "platform/sqlite/engine/index_reader.h"

#include "platform/sqlite/dialect/stored_text.h"
#include "platform/sqlite/index/index_loader.h"

#include <sqlite3.h>

#include <limits>

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

/// Whole numbers beyond it are none of their own as a double.
constexpr qint64 kLargestExact = 1LL << 53;

/// Rows read at once: four milliseconds for those of a music library, whose texts are folded with
/// it.
constexpr qint64 kRowsAtOnce = 1024;
static_assert(kRowsAtOnce <= IndexedFile::kMostRowsAtOnce);

std::string_view textOf(sqlite3_stmt* row, int column)
{
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
    return {bytes, std::size_t(sqlite3_column_bytes(row, column))};
}

/// The number in a column of numbers, or nothing for a cell that is none.
std::optional<double> numberOf(sqlite3_stmt* row, int column)
{
    switch (sqlite3_column_type(row, column)) {
    case SQLITE_INTEGER: {
        const qint64 number = sqlite3_column_int64(row, column);
        if (number <= kLargestExact && number >= -kLargestExact) {
            return double(number);
        }
        return {};
    }
    case SQLITE_FLOAT:
        return sqlite3_column_double(row, column);
    default:
        return {};
    }
}

void addCell(IndexColumnBuilder& builder, sqlite3_stmt* row, int column)
{
    const int type = sqlite3_column_type(row, column);
    if (type == SQLITE_NULL) {
        builder.addNull();
    } else if (builder.isText() && type == SQLITE_TEXT) {
        builder.addText(textOf(row, column));
    } else if (const auto number = numberOf(row, column); number && !builder.isText()) {
        builder.addNumber(*number);
    } else {
        builder.addForeign();
    }
}

IndexCell cellOf(const IndexField& field, sqlite3_stmt* row, int column)
{
    const int type = sqlite3_column_type(row, column);
    IndexCell cell;
    if (type == SQLITE_NULL) {
        return cell;
    }
    cell.kind = IndexCell::Kind::Foreign;
    if (field.isText && type == SQLITE_TEXT) {
        const std::string_view text = textOf(row, column);
        cell.folded = textcompare::fold(QString::fromUtf8(text.data(), qsizetype(text.size())));
        if (!cell.folded.startsWith(QChar(QChar::ByteOrderMark))) {
            cell.kind = IndexCell::Kind::Text;
        }
    } else if (const auto number = numberOf(row, column); number && !field.isText) {
        cell.number = *number + 0.0;
        cell.kind = IndexCell::Kind::Number;
    }
    return cell;
}

QString selectOf(const std::vector<IndexField>& fields)
{
    QString text = u"SELECT _rowid_"_s;
    for (const IndexField& field : fields) {
        text += u", "_s + quotedName(field.name);
    }
    return text + u" FROM main.db_all"_s;
}

} // namespace

bool readRows(Connection& connection,
              const std::vector<IndexField>& fields,
              std::vector<IndexColumnBuilder>& builders,
              std::vector<qint64>& keys)
{
    const auto rows = connection.statements().take(
        selectOf(fields) + u" WHERE _rowid_>?1 ORDER BY _rowid_ LIMIT ?2"_s);
    rows->bind(1, Value(keys.empty() ? std::numeric_limits<qint64>::min() : keys.back()));
    rows->bind(2, Value(kRowsAtOnce));
    qint64 count = 0;
    for (; rows->step(); ++count) {
        keys.push_back(rows->number(0));
        for (std::size_t i = 0; i < builders.size(); ++i) {
            addCell(builders[i], rows->handle(), int(i) + 1);
        }
    }
    return count == kRowsAtOnce;
}

void addColumns(Connection& connection, IndexTable& table, const std::vector<IndexField>& fields)
{
    std::vector<IndexColumnBuilder> builders = buildersOf(fields);
    Statement rows(connection.handle(), selectOf(fields) + u" ORDER BY _rowid_"_s);
    bool more = rows.step();
    for (const qint64 key : table.keys()) {
        while (more && rows.number(0) < key) {
            more = rows.step();
        }
        const bool isThere = more && rows.number(0) == key;
        for (std::size_t i = 0; i < builders.size(); ++i) {
            if (isThere) {
                addCell(builders[i], rows.handle(), int(i) + 1);
            } else {
                builders[i].addNull();
            }
        }
    }
    for (std::size_t i = 0; i < fields.size(); ++i) {
        table.addColumn(fields[i].name, builders[i].make());
    }
}

std::optional<std::vector<IndexCell>>
readRow(Connection& connection, const std::vector<IndexField>& fields, qint64 key)
{
    const auto row = connection.statements().take(selectOf(fields) + u" WHERE _rowid_=?1"_s);
    row->bind(1, Value(key));
    if (!row->step()) {
        return {};
    }
    std::vector<IndexCell> cells;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        cells.push_back(cellOf(fields[i], row->handle(), int(i) + 1));
    }
    return cells;
}

} // namespace melovane::sqlite
