#include "store/schema_source.h"

#include "platform/system/leading_number.h"
#include "platform/system/text_file.h"

#include <QRegularExpression>

#include <algorithm>
#include <optional>

namespace melovane::schema {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Key of the table that a "key" column gets.
constexpr QLatin1StringView kPrimaryKey{"PrimaryKey"};

struct NamedType
{
    QLatin1StringView name;
    FieldType type;
    int size; ///< 0 for types that take no width or are given one
};

constexpr NamedType kTypes[] = {
    {QLatin1StringView("text"), FieldType::Text, 0},
    {QLatin1StringView("memo"), FieldType::Memo, 0},
    {QLatin1StringView("long"), FieldType::Long, 4},
    {QLatin1StringView("double"), FieldType::Double, 8},
    {QLatin1StringView("yesno"), FieldType::Boolean, 1},
    {QLatin1StringView("date"), FieldType::Date, 8},
};

QString withoutComment(const QString& line)
{
    return line.left(line.indexOf(u'#')).trimmed();
}

QString lineFault(qsizetype index, const QString& what)
{
    return u"line %1: %2"_s.arg(index + 1).arg(what);
}

QStringList words(const QString& text)
{
    static const QRegularExpression blanks(u"\\s+"_s);
    return text.split(blanks, Qt::SkipEmptyParts);
}

/// Reads the lines of tables.txt one after the other.
class TableReader
{
public:
    void read(const QString& text)
    {
        const QStringList lines = textfile::lines(text);
        for (m_line = 0; m_line < lines.size(); ++m_line) {
            const QString line = withoutComment(lines[m_line]);
            if (!line.isEmpty()) {
                readLine(line);
            }
        }
    }

    Tables result;

private:
    void fault(const QString& what) { result.faults.append(lineFault(m_line, what)); }

    void readLine(const QString& line)
    {
        const QStringList parts = words(line);
        if (parts[0] == "table"_L1) {
            beginTable(parts);
        } else if (result.tables.empty()) {
            fault(u"a column before the first table"_s);
        } else if (parts[0] == "index"_L1 || parts[0] == "unique"_L1) {
            readIndex(line);
        } else {
            readColumn(line, parts);
        }
    }

    void beginTable(const QStringList& parts)
    {
        TableDef table;
        if (parts.size() == 4 && parts[2] == "like"_L1) {
            const auto original =
                std::find_if(result.tables.begin(), result.tables.end(),
                             [&](const TableDef& other) { return other.Name == parts[3]; });
            if (original == result.tables.end()) {
                fault(u"unknown table '%1'"_s.arg(parts[3]));
                return;
            }
            table = *original;
        } else if (parts.size() != 2) {
            fault(u"a table needs a name"_s);
            return;
        }
        table.Name = parts[1];
        result.tables.push_back(std::move(table));
    }

    void readIndex(const QString& line)
    {
        static const QRegularExpression form(u"^(index|unique)\\s+(\\w+)\\s*\\(([^)]*)\\)$"_s);
        const auto match = form.match(line);
        if (!match.hasMatch()) {
            fault(u"an index needs a name and columns in brackets"_s);
            return;
        }
        IndexDef index;
        index.Name = match.captured(2);
        index.Unique = match.captured(1) == "unique"_L1;
        for (const QString& column : match.captured(3).split(u',')) {
            index.Fields.append(column.trimmed());
        }
        result.tables.back().Indexes.push_back(std::move(index));
    }

    void readColumn(const QString& line, const QStringList& parts)
    {
        const NamedType* named =
            std::find_if(std::begin(kTypes), std::end(kTypes), [&](const NamedType& type) {
                return parts.size() > 1 && parts[1] == type.name;
            });
        if (named == std::end(kTypes)) {
            fault(u"unknown type of '%1'"_s.arg(parts[0]));
            return;
        }
        FieldDef field;
        field.Name = parts[0];
        field.Type = named->type;
        field.Size = named->size;
        qsizetype next = 2;
        if (field.Type == FieldType::Text) {
            field.Size = parts.size() > 2 ? parts[2].toInt() : 0;
            next = 3;
        }
        if (field.Type == FieldType::Text && field.Size <= 0) {
            fault(u"'%1' needs a width"_s.arg(field.Name));
            return;
        }
        readOptions(line, parts.mid(next), field);
        result.tables.back().Fields.push_back(std::move(field));
    }

    void readOptions(const QString& line, const QStringList& options, FieldDef& field)
    {
        for (const QString& option : options) {
            if (option == "key"_L1) {
                field.Required = true;
                result.tables.back().Indexes.push_back(
                    {QString(kPrimaryKey), {field.Name}, true, true});
            } else if (option == "auto"_L1) {
                field.Attributes |= kFieldAutoNumber;
            } else if (option == "required"_L1) {
                field.Required = true;
            } else if (option == "default"_L1) {
                field.DefaultValue = line.section(u" default "_s, 1).trimmed();
                return;
            } else {
                fault(u"unknown option '%1'"_s.arg(option));
            }
        }
    }

    qsizetype m_line = 0;
};

/// Lines of rows, with continuations joined to the line they go on with.
struct LogicalLine
{
    qsizetype index = 0;
    QString text;
};

std::vector<LogicalLine> logicalLines(const QString& text)
{
    std::vector<LogicalLine> result;
    const QStringList lines = textfile::lines(text);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString& line = lines[i];
        if (line.trimmed().isEmpty() || line.startsWith(u'#')) {
            continue;
        }
        if (line.startsWith(u' ') && !result.empty()) {
            result.back().text += u'\n' + line.trimmed();
        } else {
            result.push_back({i, line});
        }
    }
    return result;
}

Value cellValue(const QString& cell, FieldType type)
{
    if (cell.isEmpty()) {
        return {};
    }
    if (cell == "\"\""_L1) {
        return QString(u""_s);
    }
    switch (type) {
    case FieldType::Boolean:
        return cell == "true"_L1;
    case FieldType::Long:
        return leadingLong(cell);
    case FieldType::Double:
        return leadingNumber(cell);
    case FieldType::Date:
    case FieldType::Text:
    case FieldType::Memo:
        return cell;
    }
    return {};
}

std::optional<FieldType> typeOf(const TableDef& table, const QString& column)
{
    for (const FieldDef& field : table.Fields) {
        if (field.Name.compare(column, Qt::CaseInsensitive) == 0) {
            return field.Type;
        }
    }
    return std::nullopt;
}

QStringList cells(const QString& line)
{
    QStringList result = line.split(u'|');
    for (QString& cell : result) {
        cell = cell.trimmed();
    }
    return result;
}

} // namespace

Tables parseTables(const QString& text)
{
    TableReader reader;
    reader.read(text);
    return std::move(reader.result);
}

Rows parseRows(const QString& text, const TableDef& table)
{
    Rows result;
    std::vector<FieldType> types;
    for (const LogicalLine& line : logicalLines(text)) {
        const QStringList parts = cells(line.text);
        if (types.empty()) {
            result.columns = parts;
            for (const QString& column : parts) {
                const auto type = typeOf(table, column);
                if (!type) {
                    result.faults.append(lineFault(line.index, u"no column '%1'"_s.arg(column)));
                    return result;
                }
                types.push_back(*type);
            }
            continue;
        }
        if (parts.size() != result.columns.size()) {
            result.faults.append(lineFault(line.index, u"wrong number of cells"_s));
            continue;
        }
        std::vector<Value> row;
        row.reserve(size_t(parts.size()));
        for (qsizetype i = 0; i < parts.size(); ++i) {
            row.push_back(cellValue(parts[i], types[size_t(i)]));
        }
        result.rows.push_back(std::move(row));
    }
    return result;
}

QString queryStatement(const QString& text)
{
    QStringList kept;
    for (const QString& line : textfile::lines(text)) {
        if (!line.startsWith("--"_L1)) {
            kept.append(line);
        }
    }
    while (!kept.isEmpty() && kept.last().isEmpty()) {
        kept.removeLast();
    }
    return kept.join(u'\n');
}

} // namespace melovane::schema
