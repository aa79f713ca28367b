#include "platform/sqlite/dialect/parser.h"

#include <utility>

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

namespace {

/// "select * from (inner)": what is in brackets keeps its order, its limit and its own arms.
SelectPtr wrapped(SelectPtr inner)
{
    SelectPtr outer = std::make_unique<Select>();
    outer->position = inner->position;
    outer->items.emplace_back().position = inner->position;
    FromPtr& source = outer->from.emplace_back(std::make_unique<FromNode>());
    source->kind = FromNode::Kind::Select;
    source->position = inner->position;
    source->select = std::move(inner);
    return outer;
}

} // namespace

SelectPtr Parser::unionArm(bool& bracketed)
{
    bracketed = acceptSign(u'(');
    if (!bracketed) {
        return selectArm();
    }
    m_intoOf = nullptr;
    SelectPtr inner = select();
    expectSign(u')');
    const bool plain = inner->unions.empty() && inner->order.empty();
    return plain ? std::move(inner) : wrapped(std::move(inner));
}

SelectPtr Parser::select()
{
    const Nesting nesting(*this);
    bool bracketed = false;
    SelectPtr result = unionArm(bracketed);
    while (atWord(Word::Union)) {
        if (!result->order.empty() || !result->unionOrder.empty()) {
            fail(u"order by gehört hinter die letzte Auswahl"_s);
        }
        if (m_intoOf != nullptr && m_intoOf->kind == StatementKind::MakeTable) {
            fail(u"eine neue Tabelle kann nicht aus union entstehen"_s);
        }
        m_intoOf = nullptr;
        skip();
        const bool all = acceptWord(Word::All);
        SelectPtr arm = unionArm(bracketed);
        arm->unionAll = all;
        result->unionOrder = std::move(arm->order);
        arm->order.clear();
        result->unions.push_back(std::move(arm));
    }
    if (bracketed && acceptWord(Word::Order)) {
        expectWord(Word::By, u"by"_s);
        (result->unions.empty() ? result->order : result->unionOrder) = orderList();
    }
    return result;
}

/// transform VALUE select ... group by ... pivot BY in (LIST)
SelectPtr Parser::crosstab()
{
    skip();
    auto columns = std::make_unique<Crosstab>();
    columns->value = expression();
    SelectPtr result = selectArm();
    if (!acceptName(u"pivot")) {
        fail(u"pivot erwartet"_s);
    }
    columns->by = binary(kValueLevel);
    if (!acceptWord(Word::In)) {
        fail(u"hinter pivot fehlt die Liste der Spalten: in (Wert, Wert ...)"_s);
    }
    expectSign(u'(');
    do {
        columns->list.push_back(primary());
    } while (acceptSign(u','));
    expectSign(u')');
    result->crosstab = std::move(columns);
    return result;
}

void Parser::topClause(Select& select)
{
    if (!atWord(Word::Top) || peek(1).kind != Token::Kind::Number) {
        return;
    }
    skip();
    bool whole = false;
    select.top = peek().text.toLongLong(&whole);
    if (!whole || select.top < 0) {
        fail(u"ganze Zahl hinter top erwartet"_s);
    }
    skip();
    select.percent = acceptWord(Word::Percent);
}

void Parser::refuseOtherFile() const
{
    if (atWord(Word::In)) {
        fail(u"Tabellen einer anderen Datei werden über eine Verknüpfung genannt, nicht mit in"_s);
    }
}

void Parser::intoClause()
{
    if (m_intoOf == nullptr) {
        fail(u"into ist hier nicht erlaubt"_s);
    }
    skip();
    m_intoOf->kind = StatementKind::MakeTable;
    m_intoOf->position = peek().position;
    m_intoOf->target = name(u"Tabellenname"_s);
    refuseOtherFile();
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
        skip();
    }
    topClause(*result);
    // Selects inside this one make no table.
    Statement* const intoOf = std::exchange(m_intoOf, nullptr);
    do {
        result->items.push_back(selectItem());
    } while (acceptSign(u','));
    m_intoOf = intoOf;
    if (atWord(Word::Into)) {
        intoClause();
    }
    m_intoOf = nullptr;
    if (acceptWord(Word::From)) {
        result->from = fromList();
        refuseOtherFile();
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
    m_intoOf = intoOf;
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
        skip(2);
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
    if (atSign(u'(') && !atSelect(1)) {
        skip();
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
        if (atSign(u'.') || atSign(u'!')) {
            fail(u"eine Tabelle wird ohne Punkt genannt"_s);
        }
    }
    node->alias = optionalAlias();
    return node;
}

} // namespace melovane::sqlite::dialect
