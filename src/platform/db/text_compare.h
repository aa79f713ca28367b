#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <string_view>
#include <utility>
#include <vector>

/// How texts of the library compare. The one definition behind the collation of text columns,
/// behind `like`, and behind every index in memory.
namespace melovane::textcompare {

/// Composed and case-folded form: two texts are equal exactly when their folded forms are. Simple
/// folding, one letter to one letter: "Ä" and "ä" are equal, "a" and "ä" are not, "ß" stays "ß".
[[nodiscard]] QString fold(QStringView text);

/// Equal means equal after folding.
[[nodiscard]] bool equal(QStringView left, QStringView right);

/// Order: base letters first ("ä" beside "a", "ß" as "ss"), then the folded text. Below 0, 0, above
/// 0; 0 exactly when equal() holds.
[[nodiscard]] int compare(QStringView left, QStringView right);

/// compare() of texts in UTF-8, without copying them while their letters lie below
/// U+0300. Damaged bytes compare as
/// the replacement letter.
[[nodiscard]] int
compareUtf8(const char* left, qsizetype leftSize, const char* right, qsizetype rightSize);

/// A text whose plain code unit comparison is the order of compare(); computed once per text when
/// many are sorted.
[[nodiscard]] QString sortKey(QStringView text);

/// A pattern of `like`, made ready for many texts.
///
/// "*" any run, "?" one letter, "#" one digit, "[abc]" "[a-z]" a class, "[!a-z]" its opposite. In a
/// class a letter stands for every letter with that base ("Ä" is in "[A-Z]"), outside it "ä" is not
/// "a". A "[" without its "]" matches nothing.
class LikePattern
{
public:
    explicit LikePattern(QStringView pattern);

    /// \param folded a text in the form of fold()
    [[nodiscard]] bool matchesFolded(QStringView folded) const;

    /// \param folded likewise, as UTF-8 without damaged bytes. Half a pair of surrogates in the
    /// pattern is met by nothing.
    [[nodiscard]] bool matchesFoldedUtf8(std::string_view folded) const;

    [[nodiscard]] bool matches(QStringView text) const { return matchesFolded(fold(text)); }

    /// matches() of a text in UTF-8, without copying it while its letters lie below U+0300.
    [[nodiscard]] bool matchesUtf8(const char* text, qsizetype size) const;

    /// What can be said of the matches without trying: for finding them among many texts.
    struct Outline
    {
        enum class Kind
        {
            Nothing, ///< no text matches
            Equal,   ///< exactly the text `begin`
            Begin,   ///< exactly the texts that begin with `begin`
            Inside,  ///< exactly the texts that hold `inside`
            Behind,  ///< exactly the texts that have `inside` behind their first `skipped` letters
            Other    ///< each match begins with `begin` and holds `inside`, but has to be tried
        } kind = Kind::Other;
        QString begin;   ///< in the form of fold(); may be empty
        QString inside;  ///< likewise
        int skipped = 0; ///< only for Behind
    };

    [[nodiscard]] Outline outline() const;

private:
    struct Step
    {
        enum class Kind
        {
            Run,
            AnyLetter,
            Digit,
            AnyRun,
            Class
        } kind = Kind::Run;
        QString letters;                                   ///< Run: what must stand there
        QByteArray utf8;                                   ///< the same
        std::vector<std::pair<char32_t, char32_t>> ranges; ///< Class: first and last base letter
        bool negated = false;
    };

    void addClass(QStringView inner);
    void addLetter(char32_t letter);
    template <typename View> [[nodiscard]] bool matchesView(View folded) const;
    template <typename View>
    [[nodiscard]] static bool matchesStep(const Step& step, View text, qsizetype& at);
    template <typename View>
    [[nodiscard]] qsizetype nextStart(size_t step, View text, qsizetype at) const;

    std::vector<Step> m_steps;
    bool m_broken = false;
};

} // namespace melovane::textcompare
