#include "platform/sqlite/parser.h"

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

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
