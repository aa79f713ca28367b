#include "platform/sqlite/parser.h"

#include "platform/db/db_error.h"

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Words that end a source or a column, so that they are no alias unless bracketed.
bool isReserved(Word word)
{
    switch (word) {
    case Word::And:
    case Word::As:
    case Word::Between:
    case Word::Eqv:
    case Word::From:
    case Word::Group:
    case Word::Having:
    case Word::Imp:
    case Word::In:
    case Word::Inner:
    case Word::Into:
    case Word::Is:
    case Word::Join:
    case Word::Left:
    case Word::Like:
    case Word::Mod:
    case Word::Not:
    case Word::On:
    case Word::Or:
    case Word::Order:
    case Word::Right:
    case Word::Select:
    case Word::Set:
    case Word::Union:
    case Word::Values:
    case Word::Where:
    case Word::Xor:
        return true;
    case Word::None:
    case Word::Add:
    case Word::All:
    case Word::Alter:
    case Word::Asc:
    case Word::By:
    case Word::Column:
    case Word::Constraint:
    case Word::Create:
    case Word::Delete:
    case Word::Desc:
    case Word::Distinct:
    case Word::DistinctRow:
    case Word::Drop:
    case Word::Exists:
    case Word::False:
    case Word::Index:
    case Word::Insert:
    case Word::Key:
    case Word::Null:
    case Word::Outer:
    case Word::Parameters:
    case Word::Percent:
    case Word::Primary:
    case Word::Table:
    case Word::Top:
    case Word::True:
    case Word::Unique:
    case Word::Update:
    case Word::With:
        return false;
    }
    return false;
}

} // namespace

Parser::Nesting::Nesting(Parser& parser)
    : m_parser(parser)
{
    if (++m_parser.m_depth > kDeepestNesting) {
        m_parser.fail(u"zu tief geschachtelt"_s);
    }
}

Parser::Nesting::~Nesting()
{
    --m_parser.m_depth;
}

Parser::Parser(const QString& statement, const Tokens& tokens)
    : m_statement(statement)
    , m_tokens(tokens)
    , m_last(tokens.list.size() - 1)
{}

const Token& Parser::take()
{
    const Token& token = peek();
    if (token.kind != Token::Kind::End) {
        ++m_at;
    }
    return token;
}

bool Parser::atName(QStringView wanted, size_t ahead) const
{
    return peek(ahead).kind == Token::Kind::Name && sameName(peek(ahead).text, wanted);
}

bool Parser::acceptWord(Word word)
{
    if (!atWord(word)) {
        return false;
    }
    ++m_at;
    return true;
}

bool Parser::acceptSign(char16_t sign)
{
    if (!atSign(sign)) {
        return false;
    }
    ++m_at;
    return true;
}

bool Parser::acceptName(QStringView wanted)
{
    if (!atName(wanted)) {
        return false;
    }
    ++m_at;
    return true;
}

void Parser::expectWord(Word word, const QString& text)
{
    if (!acceptWord(word)) {
        fail(u"%1 erwartet"_s.arg(text));
    }
}

void Parser::expectSign(char16_t sign)
{
    if (!acceptSign(sign)) {
        fail(u"\"%1\" erwartet"_s.arg(QChar(sign)));
    }
}

void Parser::fail(const QString& what) const
{
    syntaxError(m_statement, peek().position, what);
}

QStringView Parser::name(const QString& what)
{
    const Token& token = peek();
    const bool bare = token.kind == Token::Kind::Name && !isReserved(token.word);
    if (!bare && (token.kind != Token::Kind::BracketName || token.text.isEmpty())) {
        fail(u"%1 erwartet"_s.arg(what));
    }
    return take().text;
}

QStringView Parser::optionalAlias()
{
    if (acceptWord(Word::As)) {
        // Behind `as` only a few words cannot be meant as a name.
        if (peek().kind == Token::Kind::Name && isReserved(peek().word) && !atWord(Word::Select) &&
            !atWord(Word::From) && !atWord(Word::Where)) {
            return take().text;
        }
        return name(u"Name"_s);
    }
    const Token& token = peek();
    const bool bare = token.kind == Token::Kind::Name && !isReserved(token.word);
    if (bare || (token.kind == Token::Kind::BracketName && !token.text.isEmpty())) {
        return take().text;
    }
    return {};
}

Statement Parser::parse()
{
    std::vector<DeclaredParameter> declared = parameters();
    Statement result = statement();
    result.parameters = std::move(declared);
    acceptSign(u';');
    if (peek().kind != Token::Kind::End) {
        fail(u"Zeichen hinter dem Ende der Anweisung"_s);
    }
    return result;
}

std::vector<DeclaredParameter> Parser::parameters()
{
    std::vector<DeclaredParameter> declared;
    if (!atWord(Word::Parameters)) {
        return declared;
    }
    ++m_at;
    do {
        DeclaredParameter parameter;
        parameter.name = name(u"Parametername"_s);
        FieldDef field;
        columnType(field);
        parameter.type = field.Type;
        declared.push_back(parameter);
    } while (acceptSign(u','));
    expectSign(u';');
    return declared;
}

Statement Parser::statement()
{
    if (atWord(Word::Select)) {
        Statement result;
        result.select = select();
        return result;
    }
    if (atWord(Word::Insert)) {
        return insertStatement();
    }
    if (atWord(Word::Update)) {
        return updateStatement();
    }
    if (atWord(Word::Delete)) {
        return deleteStatement();
    }
    if (acceptWord(Word::Create)) {
        return createStatement();
    }
    if (acceptWord(Word::Drop)) {
        return dropStatement();
    }
    if (acceptWord(Word::Alter)) {
        return alterStatement();
    }
    fail(u"select, insert, update, delete, create, drop oder alter erwartet"_s);
}

std::vector<QStringView> Parser::nameList()
{
    std::vector<QStringView> names;
    expectSign(u'(');
    do {
        QStringView column = name(u"Spaltenname"_s);
        if (acceptSign(u'.')) {
            column = name(u"Spaltenname"_s);
        }
        names.push_back(column);
    } while (acceptSign(u','));
    expectSign(u')');
    return names;
}

Statement Parser::insertStatement()
{
    Statement result;
    result.kind = StatementKind::Insert;
    expectWord(Word::Insert, u"insert"_s);
    expectWord(Word::Into, u"into"_s);
    result.position = peek().position;
    result.target = name(u"Tabellenname"_s);
    if (atSign(u'(') && !atWord(Word::Select, 1)) {
        result.columns = nameList();
    }
    if (acceptWord(Word::Values)) {
        expectSign(u'(');
        do {
            result.values.push_back(expression());
        } while (acceptSign(u','));
        expectSign(u')');
        return result;
    }
    const bool bracket = atSign(u'(') && acceptSign(u'(');
    if (!atWord(Word::Select)) {
        fail(u"values oder select erwartet"_s);
    }
    result.select = select();
    if (bracket) {
        expectSign(u')');
    }
    return result;
}

Assignment Parser::assignment()
{
    Assignment result;
    result.position = peek().position;
    result.column = name(u"Spaltenname"_s);
    if (acceptSign(u'.') || acceptSign(u'!')) {
        result.qualifier = result.column;
        result.column = name(u"Spaltenname"_s);
    }
    expectSign(u'=');
    result.value = expression();
    return result;
}

Statement Parser::updateStatement()
{
    Statement result;
    result.kind = StatementKind::Update;
    expectWord(Word::Update, u"update"_s);
    acceptWord(Word::DistinctRow);
    result.position = peek().position;
    result.from = fromList();
    expectWord(Word::Set, u"set"_s);
    do {
        result.assignments.push_back(assignment());
    } while (acceptSign(u','));
    if (acceptWord(Word::Where)) {
        result.where = expression();
    }
    return result;
}

Statement Parser::deleteStatement()
{
    Statement result;
    result.kind = StatementKind::Delete;
    expectWord(Word::Delete, u"delete"_s);
    acceptWord(Word::DistinctRow);
    if (!acceptSign(u'*') && !atWord(Word::From)) {
        result.deleteFrom = name(u"Tabellenname"_s);
        expectSign(u'.');
        expectSign(u'*');
    }
    expectWord(Word::From, u"from"_s);
    result.position = peek().position;
    result.from = fromList();
    if (acceptWord(Word::Where)) {
        result.where = expression();
    }
    return result;
}

SelectPtr Parser::select()
{
    const Nesting nesting(*this);
    SelectPtr result = selectArm();
    while (atWord(Word::Union)) {
        if (!result->order.empty() || !result->unionOrder.empty()) {
            fail(u"order by gehört hinter die letzte Auswahl"_s);
        }
        ++m_at;
        const bool all = acceptWord(Word::All);
        SelectPtr arm = selectArm();
        arm->unionAll = all;
        result->unionOrder = std::move(arm->order);
        arm->order.clear();
        result->unions.push_back(std::move(arm));
    }
    return result;
}

void Parser::topClause(Select& select)
{
    if (!atWord(Word::Top) || peek(1).kind != Token::Kind::Number) {
        return;
    }
    ++m_at;
    bool whole = false;
    select.top = peek().text.toLongLong(&whole);
    if (!whole) {
        fail(u"ganze Zahl hinter top erwartet"_s);
    }
    ++m_at;
    select.percent = acceptWord(Word::Percent);
}

SelectPtr Parser::selectArm()
{
    SelectPtr result = std::make_unique<Select>();
    result->position = peek().position;
    expectWord(Word::Select, u"select"_s);
    if (acceptWord(Word::Distinct)) {
        result->distinct = true;
    } else if (acceptWord(Word::DistinctRow)) {
        result->distinctRow = true;
    } else if (atWord(Word::All) && !atSign(u',', 1) && !atWord(Word::From, 1)) {
        ++m_at;
    }
    topClause(*result);
    do {
        result->items.push_back(selectItem());
    } while (acceptSign(u','));
    if (acceptWord(Word::From)) {
        result->from = fromList();
    }
    if (acceptWord(Word::Where)) {
        result->where = expression();
    }
    if (acceptWord(Word::Group)) {
        expectWord(Word::By, u"by"_s);
        do {
            result->group.push_back(expression());
        } while (acceptSign(u','));
    }
    if (acceptWord(Word::Having)) {
        result->having = expression();
    }
    if (acceptWord(Word::Order)) {
        expectWord(Word::By, u"by"_s);
        result->order = orderList();
    }
    return result;
}

SelectItem Parser::selectItem()
{
    SelectItem item;
    item.position = peek().position;
    if (acceptSign(u'*')) {
        return item;
    }
    const bool named = peek().kind == Token::Kind::Name || peek().kind == Token::Kind::BracketName;
    if (named && (atSign(u'.', 1) || atSign(u'!', 1)) && atSign(u'*', 2)) {
        item.starOf = take().text;
        m_at += 2;
        return item;
    }
    item.expr = expression();
    item.alias = optionalAlias();
    return item;
}

std::vector<OrderItem> Parser::orderList()
{
    std::vector<OrderItem> list;
    do {
        OrderItem item;
        item.expr = expression();
        if (acceptWord(Word::Desc)) {
            item.descending = true;
        } else {
            acceptWord(Word::Asc);
        }
        list.push_back(std::move(item));
    } while (acceptSign(u','));
    return list;
}

std::vector<FromPtr> Parser::fromList()
{
    std::vector<FromPtr> list;
    do {
        list.push_back(joinChain());
    } while (acceptSign(u','));
    return list;
}

bool Parser::acceptJoin(FromNode::Kind& kind)
{
    if (acceptWord(Word::Join)) {
        kind = FromNode::Kind::Inner;
        return true;
    }
    if (acceptWord(Word::Inner)) {
        kind = FromNode::Kind::Inner;
    } else if (acceptWord(Word::Left)) {
        kind = FromNode::Kind::Left;
    } else if (acceptWord(Word::Right)) {
        kind = FromNode::Kind::Right;
    } else {
        return false;
    }
    if (kind != FromNode::Kind::Inner) {
        acceptWord(Word::Outer);
    }
    expectWord(Word::Join, u"join"_s);
    return true;
}

FromPtr Parser::joinChain()
{
    const Nesting nesting(*this);
    FromPtr left = source();
    FromNode::Kind kind = FromNode::Kind::Inner;
    while (acceptJoin(kind)) {
        FromPtr join = std::make_unique<FromNode>();
        join->kind = kind;
        join->position = peek().position;
        join->left = std::move(left);
        join->right = source();
        expectWord(Word::On, u"on"_s);
        join->on = expression();
        left = std::move(join);
    }
    return left;
}

FromPtr Parser::source()
{
    if (++m_sources > 10 * kMostSources) {
        fail(u"zu viele Tabellen"_s);
    }
    FromPtr node;
    if (atSign(u'(') && !atWord(Word::Select, 1)) {
        ++m_at;
        node = joinChain();
        expectSign(u')');
        return node;
    }
    node = std::make_unique<FromNode>();
    node->position = peek().position;
    if (acceptSign(u'(')) {
        node->kind = FromNode::Kind::Select;
        node->select = select();
        acceptSign(u';');
        expectSign(u')');
    } else {
        node->name = name(u"Tabellenname"_s);
    }
    node->alias = optionalAlias();
    return node;
}

} // namespace melovane::sqlite::dialect
