#include "platform/sqlite/dialect/parser.h"
#include "platform/sqlite/functions/functions_date.h"

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

namespace {

// Levels of binding of the operators with two sides. Between `and` and the arithmetic stand `not`
// and the comparisons, which have readers of their own.
constexpr int kImp = 0;
constexpr int kEqv = 1;
constexpr int kXor = 2;
constexpr int kOr = 3;
constexpr int kAnd = 4;
constexpr int kConcat = kValueLevel;
constexpr int kAdd = 6;
constexpr int kModulo = 7;
constexpr int kIntDivide = 8;
constexpr int kMultiply = 9;
constexpr int kStrongest = kMultiply;

ExprPtr chainOf(ExprPtr first)
{
    ExprPtr chain = std::make_unique<Expr>();
    chain->kind = Expr::Kind::Chain;
    chain->position = first->position;
    chain->args.push_back(std::move(first));
    return chain;
}

void appendTo(ExprPtr& chain, bool& isChain, Op op, ExprPtr operand)
{
    if (!isChain) {
        chain = chainOf(std::move(chain));
        isChain = true;
    }
    chain->ops.push_back(op);
    chain->args.push_back(std::move(operand));
}

} // namespace

ExprPtr Parser::make(Expr::Kind kind) const
{
    ExprPtr expr = std::make_unique<Expr>();
    expr->kind = kind;
    expr->position = peek().position;
    return expr;
}

ExprPtr Parser::expression()
{
    const Nesting nesting(*this);
    return binary(kImp);
}

bool Parser::acceptOperator(int level, Op& op)
{
    const auto sign = [&](char16_t text, Op meaning) {
        op = meaning;
        return acceptSign(text);
    };
    const auto word = [&](Word text, Op meaning) {
        op = meaning;
        return acceptWord(text);
    };
    // Most operands end at a comma or bracket, which no level wants.
    if (peek().sign == 0 && peek().word == Word::None) {
        return false;
    }
    switch (level) {
    case kImp:
        return word(Word::Imp, Op::Imp);
    case kEqv:
        return word(Word::Eqv, Op::Eqv);
    case kXor:
        return word(Word::Xor, Op::Xor);
    case kOr:
        return word(Word::Or, Op::Or);
    case kAnd:
        return word(Word::And, Op::And);
    case kConcat:
        return sign(u'&', Op::Concat);
    case kAdd:
        return sign(u'+', Op::Add) || sign(u'-', Op::Subtract);
    case kModulo:
        return word(Word::Mod, Op::Modulo);
    case kIntDivide:
        return sign(u'\\', Op::IntDivide);
    case kMultiply:
        return sign(u'*', Op::Multiply) || sign(u'/', Op::Divide);
    }
    return false;
}

ExprPtr Parser::binary(int level)
{
    const auto operand = [&] {
        if (level == kAnd) {
            return negation();
        }
        return level == kStrongest ? minus() : binary(level + 1);
    };
    ExprPtr left = operand();
    bool isChain = false;
    Op op = Op::Or;
    while (acceptOperator(level, op)) {
        appendTo(left, isChain, op, operand());
    }
    return left;
}

ExprPtr Parser::negation()
{
    if (!atWord(Word::Not)) {
        return comparison();
    }
    const Nesting nesting(*this);
    ExprPtr expr = make(Expr::Kind::Not);
    skip();
    expr->args.push_back(negation());
    return expr;
}

ExprPtr Parser::comparison()
{
    // Each test behind a test makes the tree one level higher without a deeper call.
    constexpr int kMostTests = 50;
    ExprPtr left = binary(kConcat);
    bool isChain = false;
    for (int tests = 0;;) {
        Op op = Op::Equal;
        bool more = true;
        if (!acceptComparison(op)) {
            left = testBehind(std::move(left), more);
        } else if ((atWord(Word::All) || atName(u"any") || atName(u"some")) && atSign(u'(', 1) &&
                   atSelect(2)) {
            left = quantifiedTest(op, std::move(left));
        } else {
            appendTo(left, isChain, op, binary(kConcat));
            continue;
        }
        if (!more) {
            return left;
        }
        if (++tests > kMostTests) {
            fail(u"zu tief geschachtelt"_s);
        }
        isChain = false;
    }
}

bool Parser::acceptComparison(Op& op)
{
    constexpr std::pair<char16_t, Op> kSigns[] = {
        {u'=', Op::Equal},   {kNotEqualSign, Op::NotEqual},
        {u'<', Op::Less},    {kLessEqualSign, Op::LessEqual},
        {u'>', Op::Greater}, {kGreaterEqualSign, Op::GreaterEqual},
    };
    for (const auto& [sign, meaning] : kSigns) {
        if (acceptSign(sign)) {
            op = meaning;
            return true;
        }
    }
    if (acceptWord(Word::Like)) {
        op = Op::Like;
        return true;
    }
    if (atWord(Word::Not) && atWord(Word::Like, 1)) {
        skip(2);
        op = Op::NotLike;
        return true;
    }
    return false;
}

/// value OP any (select ..), value OP all (select ..)
ExprPtr Parser::quantifiedTest(Op op, ExprPtr value)
{
    ExprPtr expr = make(Expr::Kind::Quantified);
    expr->negated = atWord(Word::All);
    expr->ops.push_back(op);
    expr->args.push_back(std::move(value));
    skip();
    expectSign(u'(');
    expr->select = select();
    expectSign(u')');
    return expr;
}

ExprPtr Parser::testBehind(ExprPtr value, bool& more)
{
    more = true;
    if (acceptWord(Word::Is)) {
        ExprPtr expr = make(Expr::Kind::IsNull);
        expr->negated = acceptWord(Word::Not);
        expectWord(Word::Null, u"null"_s);
        expr->args.push_back(std::move(value));
        return expr;
    }
    const bool negated = atWord(Word::Not);
    const size_t ahead = negated ? 1 : 0;
    if (atWord(Word::In, ahead)) {
        skip(ahead + 1);
        return inTest(std::move(value), negated);
    }
    if (atWord(Word::Between, ahead)) {
        skip(ahead + 1);
        return betweenTest(std::move(value), negated);
    }
    more = false;
    return value;
}

ExprPtr Parser::inTest(ExprPtr value, bool negated)
{
    ExprPtr expr = make(Expr::Kind::InList);
    expr->negated = negated;
    expr->args.push_back(std::move(value));
    expectSign(u'(');
    if (atSelect()) {
        expr->kind = Expr::Kind::InSelect;
        expr->select = select();
    } else {
        do {
            expr->args.push_back(expression());
        } while (acceptSign(u','));
    }
    expectSign(u')');
    return expr;
}

ExprPtr Parser::betweenTest(ExprPtr value, bool negated)
{
    ExprPtr expr = make(Expr::Kind::Between);
    expr->negated = negated;
    expr->args.push_back(std::move(value));
    expr->args.push_back(binary(kConcat));
    expectWord(Word::And, u"and"_s);
    expr->args.push_back(binary(kConcat));
    return expr;
}

ExprPtr Parser::minus()
{
    const bool negative = atSign(u'-');
    if (negative || atSign(u'+')) {
        const Nesting nesting(*this);
        ExprPtr expr = make(Expr::Kind::Minus);
        skip();
        ExprPtr operand = minus();
        if (!negative) {
            return operand;
        }
        expr->args.push_back(std::move(operand));
        return expr;
    }
    ExprPtr base = primary();
    bool isChain = false;
    while (acceptSign(u'^')) {
        // The exponent may carry a sign of its own: 2^-1.
        const Nesting nesting(*this);
        const bool sign = atSign(u'-') || atSign(u'+');
        appendTo(base, isChain, Op::Power, sign ? minus() : primary());
    }
    return base;
}

ExprPtr Parser::bracketed()
{
    ExprPtr expr;
    if (atSelect(1)) {
        expr = make(Expr::Kind::Scalar);
        skip();
        expr->select = select();
    } else {
        skip();
        expr = expression();
    }
    expectSign(u')');
    return expr;
}

ExprPtr Parser::dateLiteral()
{
    const auto day = dateFromLiteral(peek().text);
    if (!day) {
        fail(u"Datum nicht lesbar"_s);
    }
    ExprPtr expr = make(Expr::Kind::Date);
    expr->number = *day;
    skip();
    return expr;
}

ExprPtr Parser::primary()
{
    const Token& token = peek();
    const auto leaf = [&](Expr::Kind kind) {
        ExprPtr expr = make(kind);
        expr->text = take().text;
        return expr;
    };
    switch (token.kind) {
    case Token::Kind::Number:
        return leaf(Expr::Kind::Number);
    case Token::Kind::Text:
        return leaf(Expr::Kind::Text);
    case Token::Kind::Date:
        return dateLiteral();
    case Token::Kind::Sign:
        if (token.sign == u'(') {
            return bracketed();
        }
        break;
    case Token::Kind::BracketName:
    case Token::Kind::Name:
        return nameOrCall();
    case Token::Kind::End:
        break;
    }
    fail(u"Ausdruck erwartet"_s);
}

ExprPtr Parser::nameOrCall()
{
    const Token& token = peek();
    const bool qualified = atSign(u'.', 1) || atSign(u'!', 1);
    if (!qualified) {
        if (token.word == Word::Null) {
            skip();
            return make(Expr::Kind::Null);
        }
        if (token.word == Word::True || token.word == Word::False) {
            ExprPtr expr = make(Expr::Kind::Truth);
            expr->negated = token.word == Word::False;
            skip();
            return expr;
        }
        if (token.word == Word::Exists && atSign(u'(', 1) && atSelect(2)) {
            ExprPtr expr = make(Expr::Kind::Exists);
            skip(2);
            expr->select = select();
            expectSign(u')');
            return expr;
        }
        if (token.kind == Token::Kind::Name && atSign(u'(', 1)) {
            return call(token);
        }
    }
    ExprPtr expr = make(Expr::Kind::Name);
    expr->text = name(u"Ausdruck"_s);
    if (qualified) {
        skip();
        const Token& column = peek();
        const bool named = column.kind == Token::Kind::Name ||
                           (column.kind == Token::Kind::BracketName && !column.text.isEmpty());
        if (!named) {
            fail(u"Spaltenname erwartet"_s);
        }
        expr->qualifier = expr->text;
        expr->text = take().text;
    }
    return expr;
}

ExprPtr Parser::call(const Token& function)
{
    const bool callable = function.word == Word::None || function.word == Word::Asc ||
                          function.word == Word::Left || function.word == Word::Right;
    if (!callable) {
        fail(u"Ausdruck erwartet"_s);
    }
    ExprPtr expr = make(Expr::Kind::Call);
    expr->text = function.text;
    skip(2);
    if (acceptSign(u')')) {
        return expr;
    }
    if (atSign(u'*') && atSign(u')', 1)) {
        expr->args.push_back(make(Expr::Kind::Star));
        skip(2);
        return expr;
    }
    expr->negated = acceptWord(Word::Distinct);
    do {
        expr->args.push_back(expression());
    } while (acceptSign(u','));
    expectSign(u')');
    return expr;
}

} // namespace melovane::sqlite::dialect
