#include "platform/sqlite/dialect/parser.h"

#include "platform/db/db_error.h"

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

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

Statement Parser::parse()
{
    std::vector<DeclaredParameter> declared = parameters();
    Statement result = statement();
    result.parameters = std::move(declared);
    acceptSign(u';');
    expectEnd();
    return result;
}

ExprPtr Parser::parseExpression()
{
    ExprPtr result;
    if (acceptSign(u'*')) {
        result = make(Expr::Kind::Star);
    } else {
        result = expression();
    }
    expectEnd();
    return result;
}

QStringView Parser::parseName()
{
    const QStringView result = name(u"Tabellenname"_s);
    expectEnd();
    return result;
}

std::vector<DeclaredParameter> Parser::parameters()
{
    std::vector<DeclaredParameter> declared;
    if (!atWord(Word::Parameters)) {
        return declared;
    }
    skip();
    do {
        DeclaredParameter parameter;
        parameter.name = name(u"Parametername"_s);
        FieldDef field;
        ddl().columnType(field);
        parameter.type = field.Type;
        declared.push_back(parameter);
    } while (acceptSign(u','));
    expectSign(u';');
    return declared;
}

DdlParser Parser::ddl()
{
    return {*this, [this] { const ExprPtr value = primary(); }};
}

Statement Parser::statement()
{
    if (atWord(Word::Select) || atSign(u'(') || atName(u"transform")) {
        return selectStatement();
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
        return ddl().create();
    }
    if (acceptWord(Word::Drop)) {
        return ddl().drop();
    }
    if (acceptWord(Word::Alter)) {
        return ddl().alter();
    }
    if (atName(u"execute") || atName(u"exec")) {
        return executeStatement();
    }
    fail(u"select, insert, update, delete, create, drop oder alter erwartet"_s);
}

} // namespace melovane::sqlite::dialect
