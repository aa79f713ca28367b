#include "platform/sqlite/dialect/parser_ddl.h"

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

/// The statement that is one change of the catalogue.
Statement statementOf(DdlAction action)
{
    Statement result;
    result.kind = StatementKind::Ddl;
    result.ddl = std::move(action);
    return result;
}

} // namespace

QStringList DdlParser::columnNames()
{
    QStringList names;
    m_reader.expectSign(u'(');
    do {
        names.append(m_reader.name(u"Spaltenname"_s).toString());
        if (!m_reader.acceptWord(Word::Asc)) {
            m_reader.acceptWord(Word::Desc);
        }
    } while (m_reader.acceptSign(u','));
    m_reader.expectSign(u')');
    return names;
}

void DdlParser::columnType(FieldDef& field)
{
    const Token& token = m_reader.peek();
    for (const TypeName& known : kTypeNames) {
        if (token.kind != Token::Kind::Name ||
            token.text.compare(known.text, Qt::CaseInsensitive) != 0) {
            continue;
        }
        m_reader.skip();
        field.Type = known.type;
        field.Size = known.size;
        field.Attributes = known.attributes;
        if (!m_reader.acceptSign(u'(')) {
            return;
        }
        bool whole = false;
        const int size = m_reader.peek().text.toInt(&whole);
        if (m_reader.peek().kind != Token::Kind::Number || !whole || size < 1) {
            m_reader.fail(u"Breite erwartet"_s);
        }
        m_reader.skip();
        if (field.Type == FieldType::Text) {
            field.Size = size;
        }
        if (m_reader.acceptSign(u',') && m_reader.take().kind != Token::Kind::Number) {
            m_reader.fail(u"Breite erwartet"_s);
        }
        m_reader.expectSign(u')');
        return;
    }
    m_reader.fail(u"Spaltentyp erwartet"_s);
}

void DdlParser::columnConstraints(FieldDef& field, TableDef* table)
{
    const auto index = [&](bool primary, const QString& given) {
        IndexDef def;
        def.Name = !given.isEmpty() ? given : (primary ? u"PrimaryKey"_s : field.Name);
        def.Fields = {field.Name};
        def.Primary = primary;
        def.Unique = true;
        if (table == nullptr) {
            m_reader.fail(u"Schlüssel sind hier nicht erlaubt"_s);
        }
        table->Indexes.push_back(def);
        field.Required = field.Required || primary;
    };
    for (;;) {
        QString given;
        if (m_reader.acceptWord(Word::Constraint)) {
            given = m_reader.name(u"Name"_s).toString();
        }
        if (m_reader.atWord(Word::Not) && m_reader.atWord(Word::Null, 1)) {
            m_reader.skip(2);
            field.Required = true;
        } else if (m_reader.acceptWord(Word::Null)) {
            field.Required = false;
        } else if (m_reader.acceptWord(Word::Primary)) {
            m_reader.expectWord(Word::Key, u"key"_s);
            index(true, given);
        } else if (m_reader.acceptWord(Word::Unique)) {
            index(false, given);
        } else if (m_reader.acceptName(u"default")) {
            const qsizetype start = m_reader.peek().position;
            m_skipValue();
            field.DefaultValue = m_reader.textSince(start).trimmed();
        } else if (!given.isEmpty()) {
            m_reader.fail(u"primary key, unique oder not null erwartet"_s);
        } else {
            return;
        }
    }
}

FieldDef DdlParser::columnDefinition(TableDef* table)
{
    FieldDef field;
    field.Name = m_reader.name(u"Spaltenname"_s).toString();
    columnType(field);
    columnConstraints(field, table);
    return field;
}

void DdlParser::tableConstraint(TableDef& table)
{
    IndexDef index;
    if (m_reader.acceptWord(Word::Constraint)) {
        index.Name = m_reader.name(u"Name"_s).toString();
    }
    if (m_reader.acceptWord(Word::Primary)) {
        m_reader.expectWord(Word::Key, u"key"_s);
        index.Primary = true;
    } else {
        m_reader.expectWord(Word::Unique, u"primary key oder unique"_s);
    }
    index.Unique = true;
    index.Fields = columnNames();
    if (index.Name.isEmpty()) {
        index.Name = index.Primary ? u"PrimaryKey"_s : index.Fields.join(u'_');
    }
    table.Indexes.push_back(index);
}

Statement DdlParser::createTable()
{
    DdlAction action;
    action.kind = DdlAction::Kind::CreateTable;
    action.table.Name = m_reader.name(u"Tabellenname"_s).toString();
    m_reader.expectSign(u'(');
    do {
        const bool unique = m_reader.atWord(Word::Unique) && m_reader.atSign(u'(', 1);
        const bool primary = m_reader.atWord(Word::Primary) && m_reader.atWord(Word::Key, 1);
        if (m_reader.atWord(Word::Constraint) || unique || primary) {
            tableConstraint(action.table);
        } else {
            action.table.Fields.push_back(columnDefinition(&action.table));
        }
    } while (m_reader.acceptSign(u','));
    m_reader.expectSign(u')');
    if (action.table.Fields.empty()) {
        m_reader.fail(u"Spalte erwartet"_s);
    }
    return statementOf(std::move(action));
}

Statement DdlParser::createIndex(bool unique)
{
    DdlAction action;
    action.kind = DdlAction::Kind::CreateIndex;
    action.index.Unique = unique;
    action.index.Name = m_reader.name(u"Indexname"_s).toString();
    m_reader.expectWord(Word::On, u"on"_s);
    action.table.Name = m_reader.name(u"Tabellenname"_s).toString();
    action.index.Fields = columnNames();
    if (m_reader.acceptWord(Word::With)) {
        if (m_reader.acceptWord(Word::Primary)) {
            action.index.Primary = true;
            action.index.Unique = true;
        } else if (!m_reader.acceptName(u"disallow") && !m_reader.acceptName(u"ignore")) {
            m_reader.fail(u"primary erwartet"_s);
        } else {
            m_reader.expectWord(Word::Null, u"null"_s);
        }
    }
    return statementOf(std::move(action));
}

Statement DdlParser::create()
{
    if (m_reader.acceptWord(Word::Table)) {
        return createTable();
    }
    const bool unique = m_reader.acceptWord(Word::Unique);
    m_reader.expectWord(Word::Index, u"table oder index"_s);
    return createIndex(unique);
}

Statement DdlParser::drop()
{
    DdlAction action;
    if (m_reader.acceptWord(Word::Table)) {
        action.kind = DdlAction::Kind::DropTable;
        action.table.Name = m_reader.name(u"Tabellenname"_s).toString();
        return statementOf(std::move(action));
    }
    m_reader.expectWord(Word::Index, u"table oder index"_s);
    action.kind = DdlAction::Kind::DropIndex;
    action.index.Name = m_reader.name(u"Indexname"_s).toString();
    m_reader.expectWord(Word::On, u"on"_s);
    action.table.Name = m_reader.name(u"Tabellenname"_s).toString();
    return statementOf(std::move(action));
}

Statement DdlParser::alter()
{
    m_reader.expectWord(Word::Table, u"table"_s);
    DdlAction action;
    action.table.Name = m_reader.name(u"Tabellenname"_s).toString();
    if (m_reader.acceptWord(Word::Drop)) {
        m_reader.acceptWord(Word::Column);
        action.kind = DdlAction::Kind::DropColumn;
        action.field.Name = m_reader.name(u"Spaltenname"_s).toString();
        return statementOf(std::move(action));
    }
    if (m_reader.acceptWord(Word::Add)) {
        action.kind = DdlAction::Kind::AddColumn;
    } else {
        m_reader.expectWord(Word::Alter, u"add, alter oder drop"_s);
        action.kind = DdlAction::Kind::AlterColumn;
    }
    m_reader.acceptWord(Word::Column);
    action.field = columnDefinition(nullptr);
    return statementOf(std::move(action));
}

} // namespace melovane::sqlite::dialect
