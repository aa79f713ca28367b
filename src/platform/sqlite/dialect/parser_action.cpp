#include "platform/sqlite/dialect/parser.h"

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

Statement Parser::selectStatement()
{
    Statement result;
    if (atName(u"transform")) {
        result.select = crosstab();
        return result;
    }
    m_intoOf = &result;
    result.select = select();
    m_intoOf = nullptr;
    if (acceptWord(Word::With)) {
        // Whose rights a query has means nothing where every user has all of them.
        if (!acceptName(u"owneraccess") || !acceptName(u"option")) {
            fail(u"owneraccess option erwartet"_s);
        }
    }
    return result;
}

Statement Parser::executeStatement()
{
    Statement result;
    skip();
    result.position = peek().position;
    result.query = name(u"Name einer Abfrage"_s);
    if (peek().kind == Token::Kind::End || atSign(u';')) {
        return result;
    }
    do {
        result.values.push_back(expression());
    } while (acceptSign(u','));
    return result;
}

std::vector<PlacedName> Parser::nameList()
{
    std::vector<PlacedName> names;
    expectSign(u'(');
    do {
        PlacedName column{{}, peek().position};
        column.text = name(u"Spaltenname"_s);
        if (acceptSign(u'.')) {
            column.text = name(u"Spaltenname"_s);
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
    refuseOtherFile();
    const bool rowsInBrackets = atWord(Word::Select, 1) || atSelect();
    if (atSign(u'(') && !rowsInBrackets) {
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
    const bool bracket = !atSelect() && acceptSign(u'(');
    if (!atSelect()) {
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

} // namespace melovane::sqlite::dialect
