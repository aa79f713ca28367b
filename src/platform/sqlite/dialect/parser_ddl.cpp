#include "platform/sqlite/dialect/parser.h"

#include <array>

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

namespace {

struct TypeName
{
    QLatin1StringView text;
    FieldType type;
    int size;
    int attributes = 0;
};

constexpr int kDefaultTextSize = 255;

constexpr std::array kTypeNames{
    TypeName{"text"_L1, FieldType::Text, kDefaultTextSize},
    TypeName{"varchar"_L1, FieldType::Text, kDefaultTextSize},
    TypeName{"nvarchar"_L1, FieldType::Text, kDefaultTextSize},
    TypeName{"char"_L1, FieldType::Text, kDefaultTextSize},
    TypeName{"character"_L1, FieldType::Text, kDefaultTextSize},
    TypeName{"string"_L1, FieldType::Text, kDefaultTextSize},
    TypeName{"memo"_L1, FieldType::Memo, 0},
    TypeName{"longtext"_L1, FieldType::Memo, 0},
    TypeName{"longchar"_L1, FieldType::Memo, 0},
    TypeName{"note"_L1, FieldType::Memo, 0},
    TypeName{"long"_L1, FieldType::Long, 4},
    TypeName{"integer"_L1, FieldType::Long, 4},
    TypeName{"int"_L1, FieldType::Long, 4},
    TypeName{"short"_L1, FieldType::Long, 4},
    TypeName{"smallint"_L1, FieldType::Long, 4},
    TypeName{"byte"_L1, FieldType::Long, 4},
    TypeName{"counter"_L1, FieldType::Long, 4, kFieldAutoNumber},
    TypeName{"autoincrement"_L1, FieldType::Long, 4, kFieldAutoNumber},
    TypeName{"identity"_L1, FieldType::Long, 4, kFieldAutoNumber},
    TypeName{"yesno"_L1, FieldType::Boolean, 1},
    TypeName{"bit"_L1, FieldType::Boolean, 1},
    TypeName{"boolean"_L1, FieldType::Boolean, 1},
    TypeName{"logical"_L1, FieldType::Boolean, 1},
    TypeName{"date"_L1, FieldType::Date, 8},
    TypeName{"datetime"_L1, FieldType::Date, 8},
    TypeName{"time"_L1, FieldType::Date, 8},
    TypeName{"timestamp"_L1, FieldType::Date, 8},
    TypeName{"double"_L1, FieldType::Double, 8},
    TypeName{"float"_L1, FieldType::Double, 8},
    TypeName{"single"_L1, FieldType::Double, 8},
    TypeName{"real"_L1, FieldType::Double, 8},
    TypeName{"number"_L1, FieldType::Double, 8},
    TypeName{"numeric"_L1, FieldType::Double, 8},
    TypeName{"decimal"_L1, FieldType::Double, 8},
    TypeName{"currency"_L1, FieldType::Double, 8},
};

} // namespace

Statement Parser::ddl(DdlAction action) const
{
    Statement result;
    result.kind = StatementKind::Ddl;
    result.ddl = std::move(action);
    return result;
}

QStringList Parser::columnNames()
{
    QStringList names;
    expectSign(u'(');
    do {
        names.append(name(u"Spaltenname"_s).toString());
        if (!acceptWord(Word::Asc)) {
            acceptWord(Word::Desc);
        }
    } while (acceptSign(u','));
    expectSign(u')');
    return names;
}

void Parser::columnType(FieldDef& field)
{
    const Token& token = peek();
    for (const TypeName& known : kTypeNames) {
        if (token.kind != Token::Kind::Name ||
            token.text.compare(known.text, Qt::CaseInsensitive) != 0) {
            continue;
        }
        ++m_at;
        field.Type = known.type;
        field.Size = known.size;
        field.Attributes = known.attributes;
        if (!acceptSign(u'(')) {
            return;
        }
        bool whole = false;
        const int size = peek().text.toInt(&whole);
        if (peek().kind != Token::Kind::Number || !whole || size < 1) {
            fail(u"Breite erwartet"_s);
        }
        ++m_at;
        if (field.Type == FieldType::Text) {
            field.Size = size;
        }
        if (acceptSign(u',') && take().kind != Token::Kind::Number) {
            fail(u"Breite erwartet"_s);
        }
        expectSign(u')');
        return;
    }
    fail(u"Spaltentyp erwartet"_s);
}

void Parser::columnConstraints(FieldDef& field, TableDef* table)
{
    const auto index = [&](bool primary, const QString& given) {
        IndexDef def;
        def.Name = !given.isEmpty() ? given : (primary ? u"PrimaryKey"_s : field.Name);
        def.Fields = {field.Name};
        def.Primary = primary;
        def.Unique = true;
        if (table == nullptr) {
            fail(u"Schlüssel sind hier nicht erlaubt"_s);
        }
        table->Indexes.push_back(def);
        field.Required = field.Required || primary;
    };
    for (;;) {
        QString given;
        if (acceptWord(Word::Constraint)) {
            given = name(u"Name"_s).toString();
        }
        if (atWord(Word::Not) && atWord(Word::Null, 1)) {
            m_at += 2;
            field.Required = true;
        } else if (acceptWord(Word::Null)) {
            field.Required = false;
        } else if (acceptWord(Word::Primary)) {
            expectWord(Word::Key, u"key"_s);
            index(true, given);
        } else if (acceptWord(Word::Unique)) {
            index(false, given);
        } else if (acceptName(u"default")) {
            const qsizetype start = peek().position;
            const ExprPtr value = primary();
            field.DefaultValue = m_statement.mid(start, peek().position - start).trimmed();
        } else if (!given.isEmpty()) {
            fail(u"primary key, unique oder not null erwartet"_s);
        } else {
            return;
        }
    }
}

FieldDef Parser::columnDefinition(TableDef* table)
{
    FieldDef field;
    field.Name = name(u"Spaltenname"_s).toString();
    columnType(field);
    columnConstraints(field, table);
    return field;
}

void Parser::tableConstraint(TableDef& table)
{
    IndexDef index;
    if (acceptWord(Word::Constraint)) {
        index.Name = name(u"Name"_s).toString();
    }
    if (acceptWord(Word::Primary)) {
        expectWord(Word::Key, u"key"_s);
        index.Primary = true;
    } else {
        expectWord(Word::Unique, u"primary key oder unique"_s);
    }
    index.Unique = true;
    index.Fields = columnNames();
    if (index.Name.isEmpty()) {
        index.Name = index.Primary ? u"PrimaryKey"_s : index.Fields.join(u'_');
    }
    table.Indexes.push_back(index);
}

Statement Parser::createTable()
{
    DdlAction action;
    action.kind = DdlAction::Kind::CreateTable;
    action.table.Name = name(u"Tabellenname"_s).toString();
    expectSign(u'(');
    do {
        const bool unique = atWord(Word::Unique) && atSign(u'(', 1);
        const bool primary = atWord(Word::Primary) && atWord(Word::Key, 1);
        if (atWord(Word::Constraint) || unique || primary) {
            tableConstraint(action.table);
        } else {
            action.table.Fields.push_back(columnDefinition(&action.table));
        }
    } while (acceptSign(u','));
    expectSign(u')');
    if (action.table.Fields.empty()) {
        fail(u"Spalte erwartet"_s);
    }
    return ddl(std::move(action));
}

Statement Parser::createIndex(bool unique)
{
    DdlAction action;
    action.kind = DdlAction::Kind::CreateIndex;
    action.index.Unique = unique;
    action.index.Name = name(u"Indexname"_s).toString();
    expectWord(Word::On, u"on"_s);
    action.table.Name = name(u"Tabellenname"_s).toString();
    action.index.Fields = columnNames();
    if (acceptWord(Word::With)) {
        if (acceptWord(Word::Primary)) {
            action.index.Primary = true;
            action.index.Unique = true;
        } else if (!acceptName(u"disallow") && !acceptName(u"ignore")) {
            fail(u"primary erwartet"_s);
        } else {
            expectWord(Word::Null, u"null"_s);
        }
    }
    return ddl(std::move(action));
}

Statement Parser::createStatement()
{
    if (acceptWord(Word::Table)) {
        return createTable();
    }
    const bool unique = acceptWord(Word::Unique);
    expectWord(Word::Index, u"table oder index"_s);
    return createIndex(unique);
}

Statement Parser::dropStatement()
{
    DdlAction action;
    if (acceptWord(Word::Table)) {
        action.kind = DdlAction::Kind::DropTable;
        action.table.Name = name(u"Tabellenname"_s).toString();
        return ddl(std::move(action));
    }
    expectWord(Word::Index, u"table oder index"_s);
    action.kind = DdlAction::Kind::DropIndex;
    action.index.Name = name(u"Indexname"_s).toString();
    expectWord(Word::On, u"on"_s);
    action.table.Name = name(u"Tabellenname"_s).toString();
    return ddl(std::move(action));
}

Statement Parser::alterStatement()
{
    expectWord(Word::Table, u"table"_s);
    DdlAction action;
    action.table.Name = name(u"Tabellenname"_s).toString();
    if (acceptWord(Word::Drop)) {
        acceptWord(Word::Column);
        action.kind = DdlAction::Kind::DropColumn;
        action.field.Name = name(u"Spaltenname"_s).toString();
        return ddl(std::move(action));
    }
    if (acceptWord(Word::Add)) {
        action.kind = DdlAction::Kind::AddColumn;
    } else {
        expectWord(Word::Alter, u"add, alter oder drop"_s);
        action.kind = DdlAction::Kind::AlterColumn;
    }
    acceptWord(Word::Column);
    action.field = columnDefinition(nullptr);
    return ddl(std::move(action));
}

} // namespace melovane::sqlite::dialect
