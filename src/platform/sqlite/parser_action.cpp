#include "platform/sqlite/parser.h"

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

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

} // namespace melovane::sqlite::dialect
