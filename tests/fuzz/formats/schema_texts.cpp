#include "fuzz/formats/formats.h"
#include "platform/system/text_file.h"
#include "store/schema_source.h"

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A table for rows of any text.
const char kTable[] = "table t\n"
                      "  A long default 0\n"
                      "  B text 20 key\n"
                      "  C yesno\n"
                      "  index i (A, B)\n";

QString check(const QByteArray& bytes)
{
    const QString text = textfile::decode(bytes);
    const qsizetype lines = textfile::lines(text).size();
    const schema::Tables tables = schema::parseTables(text);
    qsizetype rowsAndFields = 0;
    for (const TableDef& table : tables.tables) {
        if (table.Name.isEmpty()) {
            return u"a table without a name"_s;
        }
        rowsAndFields += 1 + qsizetype(table.Fields.size());
    }
    if (rowsAndFields > lines) {
        return u"more fields than lines"_s;
    }
    std::vector<TableDef> known = schema::parseTables(QString::fromLatin1(kTable)).tables;
    known.insert(known.end(), tables.tables.begin(), tables.tables.end());
    for (const TableDef& table : known) {
        const schema::Rows rows = schema::parseRows(text, table);
        for (const std::vector<Value>& row : rows.rows) {
            if (qsizetype(row.size()) != rows.columns.size()) {
                return u"a row that is not as wide as its columns"_s;
            }
        }
    }
    const QString statement = schema::queryStatement(text);
    return statement.endsWith(u'\n') ? u"a statement with a line end"_s : QString();
}

std::vector<QByteArray> seeds()
{
    return {kTable, "A | B | C\n1 | \"\" | true\n  | x | false\n# none\n",
            "-- all\nselect *\n from t\n\n"};
}

} // namespace

Format schemaTexts()
{
    return {"schema_texts", check, seeds};
}

} // namespace melovane::fuzz
