#include "platform/sqlite/engine/pasted_insert.h"

namespace melovane::sqlite {

namespace {

using namespace Qt::Literals::StringLiterals;

constexpr auto kInsert = "insert"_L1;
constexpr auto kValues = "values"_L1;

/// Statements with more values are no rows of the suite.
constexpr std::size_t kMostValues = 200;
/// Digits that a double keeps.
constexpr qsizetype kMostDigits = 15;

bool isNamePart(QChar sign)
{
    return sign.isLetterOrNumber() || sign == u'_';
}

class Scanner
{
public:
    explicit Scanner(QStringView text)
        : m_text(text)
    {}

    [[nodiscard]] qsizetype place() const { return m_at; }

    [[nodiscard]] bool atEnd() const { return m_at >= m_text.size(); }

    void skipBlanks()
    {
        while (!atEnd() && m_text[m_at].isSpace()) {
            ++m_at;
        }
    }

    bool take(QChar sign)
    {
        skipBlanks();
        const bool stands = !atEnd() && m_text[m_at] == sign;
        m_at += stands ? 1 : 0;
        return stands;
    }

    bool takeWord(QLatin1StringView word)
    {
        skipBlanks();
        const qsizetype end = m_at + word.size();
        const bool stands = m_text.sliced(m_at).startsWith(word, Qt::CaseInsensitive) &&
                            (end == m_text.size() || !isNamePart(m_text[end]));
        m_at = stands ? end : m_at;
        return stands;
    }

    /// Skips names, brackets and blanks up to the word; false at any other sign.
    bool skipNamesTo(QLatin1StringView word)
    {
        while (!takeWord(word)) {
            if (atEnd()) {
                return false;
            }
            if (m_text[m_at] == u'[') {
                const qsizetype close = m_text.indexOf(u']', m_at);
                if (close < 0) {
                    return false;
                }
                m_at = close + 1;
            } else if (isNamePart(m_text[m_at])) {
                skipName();
            } else if (m_text[m_at] == u'(' || m_text[m_at] == u')' || m_text[m_at] == u',') {
                ++m_at;
            } else {
                return false;
            }
        }
        return true;
    }

    std::optional<Value> takeValue()
    {
        skipBlanks();
        if (atEnd()) {
            return std::nullopt;
        }
        if (m_text[m_at] == u'\'' || m_text[m_at] == u'"') {
            return takeText(m_text[m_at]);
        }
        return takeWord("null"_L1) ? std::optional(Value()) : takeNumber();
    }

private:
    void skipName()
    {
        while (!atEnd() && isNamePart(m_text[m_at])) {
            ++m_at;
        }
    }

    std::optional<Value> takeText(QChar quote)
    {
        const qsizetype begin = ++m_at;
        bool doubled = false;
        for (; !atEnd(); ++m_at) {
            if (m_text[m_at] != quote) {
                continue;
            }
            if (m_at + 1 < m_text.size() && m_text[m_at + 1] == quote) {
                doubled = true;
                ++m_at;
                continue;
            }
            QString text = m_text.sliced(begin, m_at - begin).toString();
            ++m_at;
            if (doubled) {
                text.replace(QString(2, quote), QString(quote));
            }
            return Value(std::move(text));
        }
        return std::nullopt;
    }

    std::optional<Value> takeNumber()
    {
        const qsizetype begin = m_at;
        m_at += m_text[m_at] == u'-' ? 1 : 0;
        const qsizetype digits = m_at;
        bool decimal = false;
        while (!atEnd() && (isDigit(m_text[m_at]) || (m_text[m_at] == u'.' && !decimal))) {
            decimal = decimal || m_text[m_at] == u'.';
            ++m_at;
        }
        const QStringView number = m_text.sliced(begin, m_at - begin);
        const bool plain = m_at > digits && m_at - digits <= kMostDigits &&
                           isDigit(m_text[digits]) && isDigit(m_text[m_at - 1]) &&
                           (atEnd() || !isNamePart(m_text[m_at]));
        if (!plain) {
            return std::nullopt;
        }
        return decimal ? Value(number.toDouble()) : Value(number.toLongLong());
    }

    static bool isDigit(QChar sign) { return sign >= u'0' && sign <= u'9'; }

    QStringView m_text;
    qsizetype m_at = 0;
};

} // namespace

std::optional<PastedInsert> takeApart(const QString& statement)
{
    Scanner scanner(statement);
    if (!scanner.takeWord(kInsert) || !scanner.skipNamesTo(kValues) || !scanner.take(u'(')) {
        return std::nullopt;
    }
    PastedInsert apart;
    apart.statement = statement.left(scanner.place());
    do {
        std::optional<Value> value = scanner.takeValue();
        if (!value || apart.values.size() >= kMostValues) {
            return std::nullopt;
        }
        apart.values.push_back(*std::move(value));
        apart.statement += apart.values.size() == 1 ? u"[mlv_"_s : u",[mlv_"_s;
        apart.statement += QString::number(apart.values.size()) + u']';
    } while (scanner.take(u','));
    const bool closed = scanner.take(u')');
    scanner.take(u';');
    scanner.skipBlanks();
    if (!closed || !scanner.atEnd()) {
        return std::nullopt;
    }
    apart.statement += u')';
    return apart;
}

} // namespace melovane::sqlite
