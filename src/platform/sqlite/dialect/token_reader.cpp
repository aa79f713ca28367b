#include "platform/sqlite/dialect/token_reader.h"

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

const Token& TokenReader::take()
{
    const Token& token = peek();
    if (token.kind != Token::Kind::End) {
        ++m_at;
    }
    return token;
}

bool TokenReader::atName(QStringView wanted, size_t ahead) const
{
    return peek(ahead).kind == Token::Kind::Name && sameName(peek(ahead).text, wanted);
}

bool TokenReader::atSelect(size_t ahead) const
{
    if (atWord(Word::Select, ahead)) {
        return true;
    }
    size_t at = ahead;
    while (atSign(u'(', at)) {
        ++at;
    }
    if (at == ahead || !atWord(Word::Select, at)) {
        return false;
    }
    // "((select ..) + 1)" begins alike: what stands behind the first bracket tells.
    int depth = 0;
    for (at = ahead; peek(at).kind != Token::Kind::End; ++at) {
        depth += atSign(u'(', at) ? 1 : (atSign(u')', at) ? -1 : 0);
        if (depth == 0) {
            return atWord(Word::Union, at + 1);
        }
    }
    return false;
}

bool TokenReader::acceptWord(Word word)
{
    if (!atWord(word)) {
        return false;
    }
    ++m_at;
    return true;
}

bool TokenReader::acceptSign(char16_t sign)
{
    if (!atSign(sign)) {
        return false;
    }
    ++m_at;
    return true;
}

bool TokenReader::acceptName(QStringView wanted)
{
    if (!atName(wanted)) {
        return false;
    }
    ++m_at;
    return true;
}

void TokenReader::expectWord(Word word, const QString& text)
{
    if (!acceptWord(word)) {
        fail(u"%1 erwartet"_s.arg(text));
    }
}

void TokenReader::expectSign(char16_t sign)
{
    if (!acceptSign(sign)) {
        fail(u"\"%1\" erwartet"_s.arg(QChar(sign)));
    }
}

void TokenReader::fail(const QString& what) const
{
    syntaxError(m_statement, peek().position, what);
}

QStringView TokenReader::name(const QString& what)
{
    const Token& token = peek();
    const bool bare = token.kind == Token::Kind::Name && !isReserved(token.word);
    if (!bare && (token.kind != Token::Kind::BracketName || token.text.isEmpty())) {
        fail(u"%1 erwartet"_s.arg(what));
    }
    return take().text;
}

QStringView TokenReader::optionalAlias()
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
    if (atWord(Word::With) && atName(u"owneraccess", 1)) {
        return {};
    }
    if ((atName(u"full") || atName(u"cross") || atName(u"natural")) &&
        (atWord(Word::Join, 1) || atWord(Word::Outer, 1) || atWord(Word::Inner, 1))) {
        fail(u"inner join, left join oder right join erwartet"_s);
    }
    const bool bare = token.kind == Token::Kind::Name && !isReserved(token.word);
    if (bare || (token.kind == Token::Kind::BracketName && !token.text.isEmpty())) {
        return take().text;
    }
    return {};
}

void TokenReader::expectEnd() const
{
    if (peek().kind != Token::Kind::End) {
        fail(u"Zeichen hinter dem Ende der Anweisung"_s);
    }
}

} // namespace melovane::sqlite::dialect
