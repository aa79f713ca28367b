#pragma once

#include <QRegularExpression>
#include <QString>

#include <vector>

namespace melovane {

/// What is searched for, and what is put in its place.
struct ReplaceOrder
{
    QString find = {};
    QString replacement = {}; ///< of a pattern: "\1" to "\9" stand for its groups
    bool matchCase = true;
    bool wholeWords = false;
    bool isPattern = false;
};

/// Replaces every occurrence of a text, or of a regular expression.
class TextReplacement
{
public:
    explicit TextReplacement(const ReplaceOrder& order);

    /// False for nothing to search for, and for a pattern that cannot be read.
    [[nodiscard]] bool isUsable() const { return m_isUsable; }

    /// Why a pattern cannot be read, in the words of the toolkit; empty for one that can.
    [[nodiscard]] QString fault() const;

    /// The text after it; the text itself when nothing was found. A pattern that takes too long
    /// finds nothing.
    [[nodiscard]] QString applied(const QString& text) const;

private:
    QRegularExpression m_pattern;
    QString m_replacement;
    bool m_isPattern;
    bool m_isUsable;
};

/// How a text is spelt anew.
enum class LetterCase
{
    EachWord, ///< every word begins with a capital
    Sentence, ///< the first word alone
    Upper,
    Lower,
};

/// One letter becomes one letter: "ß" stays.
[[nodiscard]] QString spelt(const QString& text, LetterCase letters);

/// Numbers for tracks in a row: "7", "07", or "07/24".
struct NumberOrder
{
    int first = 1;
    int digits = 1;
    bool withTotal = false; ///< the last number behind a "/"
};

/// \param count of the tracks; one text for each of them
[[nodiscard]] std::vector<QString> trackNumbers(const NumberOrder& order, int count);

} // namespace melovane
