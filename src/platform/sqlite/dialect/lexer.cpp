#include "platform/sqlite/dialect/lexer.h"

#include "platform/db/db_error.h"

#include <algorithm>
#include <array>

namespace melovane::sqlite::dialect {

using namespace Qt::Literals::StringLiterals;

namespace {

struct Keyword
{
    QLatin1StringView text;
    Word word;
};

/// In alphabetical order: searched by halves.
constexpr std::array kKeywords{
    Keyword{"add"_L1, Word::Add},
    Keyword{"all"_L1, Word::All},
    Keyword{"alter"_L1, Word::Alter},
    Keyword{"and"_L1, Word::And},
    Keyword{"as"_L1, Word::As},
    Keyword{"asc"_L1, Word::Asc},
    Keyword{"between"_L1, Word::Between},
    Keyword{"by"_L1, Word::By},
    Keyword{"column"_L1, Word::Column},
    Keyword{"constraint"_L1, Word::Constraint},
    Keyword{"create"_L1, Word::Create},
    Keyword{"delete"_L1, Word::Delete},
    Keyword{"desc"_L1, Word::Desc},
    Keyword{"distinct"_L1, Word::Distinct},
    Keyword{"distinctrow"_L1, Word::DistinctRow},
    Keyword{"drop"_L1, Word::Drop},
    Keyword{"eqv"_L1, Word::Eqv},
    Keyword{"exists"_L1, Word::Exists},
    Keyword{"false"_L1, Word::False},
    Keyword{"from"_L1, Word::From},
    Keyword{"group"_L1, Word::Group},
    Keyword{"having"_L1, Word::Having},
    Keyword{"imp"_L1, Word::Imp},
    Keyword{"in"_L1, Word::In},
    Keyword{"index"_L1, Word::Index},
    Keyword{"inner"_L1, Word::Inner},
    Keyword{"insert"_L1, Word::Insert},
    Keyword{"into"_L1, Word::Into},
    Keyword{"is"_L1, Word::Is},
    Keyword{"join"_L1, Word::Join},
    Keyword{"key"_L1, Word::Key},
    Keyword{"left"_L1, Word::Left},
    Keyword{"like"_L1, Word::Like},
    Keyword{"mod"_L1, Word::Mod},
    Keyword{"not"_L1, Word::Not},
    Keyword{"null"_L1, Word::Null},
    Keyword{"on"_L1, Word::On},
    Keyword{"or"_L1, Word::Or},
    Keyword{"order"_L1, Word::Order},
    Keyword{"outer"_L1, Word::Outer},
    Keyword{"parameters"_L1, Word::Parameters},
    Keyword{"percent"_L1, Word::Percent},
    Keyword{"primary"_L1, Word::Primary},
    Keyword{"right"_L1, Word::Right},
    Keyword{"select"_L1, Word::Select},
    Keyword{"set"_L1, Word::Set},
    Keyword{"table"_L1, Word::Table},
    Keyword{"top"_L1, Word::Top},
    Keyword{"true"_L1, Word::True},
    Keyword{"union"_L1, Word::Union},
    Keyword{"unique"_L1, Word::Unique},
    Keyword{"update"_L1, Word::Update},
    Keyword{"values"_L1, Word::Values},
    Keyword{"where"_L1, Word::Where},
    Keyword{"with"_L1, Word::With},
    Keyword{"xor"_L1, Word::Xor},
};

constexpr qsizetype kLongestKeyword = 11;

Word wordOf(QStringView text)
{
    if (text.size() > kLongestKeyword) {
        return Word::None;
    }
    const auto* found = std::lower_bound(
        kKeywords.begin(), kKeywords.end(), text, [](const Keyword& keyword, QStringView wanted) {
            return wanted.compare(keyword.text, Qt::CaseInsensitive) > 0;
        });
    const bool hit =
        found != kKeywords.end() && text.compare(found->text, Qt::CaseInsensitive) == 0;
    return hit ? found->word : Word::None;
}

bool isBlank(QChar sign)
{
    return sign == u' ' || sign == u'\t' || sign == u'\n' || sign == u'\r' || sign == u'\f' ||
           sign == u'\v' || sign == QChar(0xA0);
}

bool isDigit(QChar sign)
{
    return sign >= u'0' && sign <= u'9';
}

bool startsName(QChar sign)
{
    return sign == u'_' || (sign >= u'a' && sign <= u'z') || (sign >= u'A' && sign <= u'Z') ||
           (sign.unicode() >= 0x80 && (sign.isLetter() || sign.isSurrogate()));
}

bool continuesName(QChar sign)
{
    return startsName(sign) || isDigit(sign) || sign == u'$' ||
           (sign.unicode() >= 0x80 && (sign.isMark() || sign.isNumber()));
}

class Lexer
{
public:
    explicit Lexer(const QString& statement)
        : m_statement(statement)
        , m_text(statement)
    {}

    Tokens run()
    {
        m_tokens.list.reserve(size_t(m_text.size() / 4 + 4));
        skipBlanks();
        while (m_at < m_text.size()) {
            next();
            skipBlanks();
        }
        add(Token::Kind::End, m_at, {});
        return std::move(m_tokens);
    }

private:
    void skipBlanks()
    {
        while (m_at < m_text.size() && isBlank(m_text[m_at])) {
            ++m_at;
        }
    }

    [[nodiscard]] bool digitAt(qsizetype at) const
    {
        return at < m_text.size() && isDigit(m_text[at]);
    }

    void add(Token::Kind kind, qsizetype start, QStringView text, Word word = Word::None)
    {
        m_tokens.list.push_back({kind, word, text, start, 0});
    }

    void next()
    {
        const QChar sign = m_text[m_at];
        if (startsName(sign)) {
            name();
        } else if (isDigit(sign) || (sign == u'.' && digitAt(m_at + 1))) {
            number();
        } else if (sign == u'\'' || sign == u'"') {
            quoted(sign);
        } else if (sign == u'[' || sign == u'`') {
            enclosed(sign == u'[' ? u']' : u'`', Token::Kind::BracketName);
        } else if (sign == u'#') {
            enclosed(u'#', Token::Kind::Date);
        } else if (const qsizetype end = basedNumberEnd(); end > m_at) {
            basedNumber(end);
        } else {
            operatorSign(sign);
        }
    }

    void name()
    {
        const qsizetype start = m_at;
        while (m_at < m_text.size() && continuesName(m_text[m_at])) {
            ++m_at;
        }
        const QStringView text = m_text.sliced(start, m_at - start);
        add(Token::Kind::Name, start, text, wordOf(text));
    }

    void number()
    {
        const qsizetype start = m_at;
        while (digitAt(m_at)) {
            ++m_at;
        }
        if (m_at < m_text.size() && m_text[m_at] == u'.') {
            ++m_at;
            while (digitAt(m_at)) {
                ++m_at;
            }
        }
        exponent();
        if (m_at < m_text.size() && startsName(m_text[m_at])) {
            syntaxError(m_statement, start, u"Zahl nicht lesbar"_s);
        }
        add(Token::Kind::Number, start, m_text.sliced(start, m_at - start));
    }

    void exponent()
    {
        if (m_at >= m_text.size() || (m_text[m_at] != u'e' && m_text[m_at] != u'E')) {
            return;
        }
        qsizetype at = m_at + 1;
        if (at < m_text.size() && (m_text[at] == u'+' || m_text[at] == u'-')) {
            ++at;
        }
        if (!digitAt(at)) {
            return;
        }
        while (digitAt(at)) {
            ++at;
        }
        m_at = at;
    }

    /// True behind an operator or at the beginning, where "&" cannot join two texts.
    [[nodiscard]] bool operandMayFollow() const
    {
        if (m_tokens.list.empty()) {
            return true;
        }
        const Token& before = m_tokens.list.back();
        return (before.kind == Token::Kind::Sign && before.sign != u')') ||
               (before.kind == Token::Kind::Name && before.word != Word::None &&
                before.word != Word::Null && before.word != Word::True &&
                before.word != Word::False);
    }

    /// The end of "&HFF" or "&O17" when one stands here, else the present place.
    [[nodiscard]] qsizetype basedNumberEnd() const
    {
        if (m_text[m_at] != u'&' || m_at + 2 >= m_text.size() || !operandMayFollow()) {
            return m_at;
        }
        const QChar base = m_text[m_at + 1].toLower();
        const QStringView digits = base == u'h'   ? QStringView(u"0123456789abcdefABCDEF")
                                   : base == u'o' ? QStringView(u"01234567")
                                                  : QStringView();
        qsizetype end = m_at + 2;
        while (end < m_text.size() && digits.contains(m_text[end])) {
            ++end;
        }
        const bool whole = end == m_text.size() || !continuesName(m_text[end]);
        return whole && end > m_at + 2 ? end : m_at;
    }

    void basedNumber(qsizetype end)
    {
        const int base = m_text[m_at + 1].toLower() == u'h' ? 16 : 8;
        bool fits = false;
        const quint32 bits = m_text.sliced(m_at + 2, end - m_at - 2).toUInt(&fits, base);
        if (!fits) {
            syntaxError(m_statement, m_at, u"Zahl nicht lesbar"_s);
        }
        // 32 bits with a sign, as a Long holds them.
        const QString& digits = m_tokens.unquoted.emplace_back(QString::number(qint32(bits)));
        add(Token::Kind::Number, m_at, digits);
        m_at = end;
    }

    void quoted(QChar quote)
    {
        const qsizetype start = m_at++;
        bool doubled = false;
        for (;; ++m_at) {
            if (m_at >= m_text.size()) {
                syntaxError(m_statement, start, u"Text ohne schließendes Anführungszeichen"_s);
            }
            if (m_text[m_at] != quote) {
                continue;
            }
            if (m_at + 1 < m_text.size() && m_text[m_at + 1] == quote) {
                doubled = true;
                ++m_at;
                continue;
            }
            break;
        }
        const QStringView inner = m_text.sliced(start + 1, m_at - start - 1);
        ++m_at;
        add(Token::Kind::Text, start, doubled ? undouble(inner, quote) : inner);
    }

    QStringView undouble(QStringView inner, QChar quote)
    {
        QString& text = m_tokens.unquoted.emplace_back();
        text.reserve(inner.size());
        for (qsizetype i = 0; i < inner.size(); ++i) {
            text.append(inner[i]);
            if (inner[i] == quote) {
                ++i;
            }
        }
        return text;
    }

    void enclosed(QChar close, Token::Kind kind)
    {
        const qsizetype start = m_at;
        const qsizetype end = m_text.indexOf(close, start + 1);
        if (end < 0) {
            syntaxError(m_statement, start, u"schließendes \"%1\" fehlt"_s.arg(close));
        }
        m_at = end + 1;
        add(kind, start, m_text.sliced(start + 1, end - start - 1));
    }

    void operatorSign(QChar sign)
    {
        const qsizetype start = m_at;
        const QChar after = m_at + 1 < m_text.size() ? m_text[m_at + 1] : QChar();
        const bool two =
            (sign == u'<' && (after == u'>' || after == u'=')) || (sign == u'>' && after == u'=');
        if (!two && !QStringView(u"+-*/\\^&=<>(),.;!").contains(sign)) {
            syntaxError(m_statement, start, u"unbekanntes Zeichen"_s);
        }
        m_at += two ? 2 : 1;
        add(Token::Kind::Sign, start, m_text.sliced(start, m_at - start));
        char16_t code = sign.unicode();
        if (two) {
            code =
                sign == u'>' ? kGreaterEqualSign : (after == u'>' ? kNotEqualSign : kLessEqualSign);
        }
        m_tokens.list.back().sign = code;
    }

    const QString& m_statement;
    QStringView m_text;
    qsizetype m_at = 0;
    Tokens m_tokens;
};

} // namespace

Tokens tokenize(const QString& statement)
{
    return Lexer(statement).run();
}

void syntaxError(const QString& statement, qsizetype position, const QString& what)
{
    constexpr qsizetype kShown = 24;
    const QString near = statement.mid(position, kShown);
    const QString place =
        near.isEmpty() ? u"am Ende"_s : u"bei Zeichen %1, vor \"%2\""_s.arg(position + 1).arg(near);
    throw DbError(dberror::kSyntax, u"Syntaxfehler: %1 %2."_s.arg(what, place), statement);
}

bool sameName(QStringView left, QStringView right)
{
    if (left.size() != right.size() || left.isEmpty()) {
        return left.size() == right.size();
    }
    // Most names differ in their last letter already; that is cheaper than a call.
    const char16_t a = left.back().unicode();
    const char16_t b = right.back().unicode();
    if (a < 0x80 && b < 0x80 && (a | 0x20) != (b | 0x20)) {
        return false;
    }
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

} // namespace melovane::sqlite::dialect
