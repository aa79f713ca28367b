#pragma once

#include <QString>
#include <QStringList>

namespace melovane {

/// How the text of the search line is compared.
enum class SearchForm
{
    Text,          ///< begins with the text as typed, in the chosen columns
    Equal,         ///< one column, equal
    TextGreater,   ///< one column, greater or equal as text
    NumberGreater, ///< one column, greater or equal as number
};

/// What a text of the search line asks for.
struct SearchRequest
{
    SearchForm form = SearchForm::Text;
    QString column; ///< empty for SearchForm::Text
    QString value;  ///< the text as typed for SearchForm::Text

    bool operator==(const SearchRequest&) const = default;
};

/// Tells the short forms of rating, play count and tempo from plain text.
///
/// The letters "OTE", "OUNT" and "PM" are taken out of the upper-cased text wherever they occur;
/// what then begins with N=, N<, C>, C=, B> or B= is a short form: "Note=1", "N=1", "Count>3",
/// "BPM=130". Ratings are stored in the opposite order, 5 for the mark 1; a digit that is no mark
/// leaves the value empty. "C=" compares as "C>" does: greater or equal.
[[nodiscard]] SearchRequest readSearchText(const QString& text);

/// Whether a comparison has nothing to compare with yet: "B>", "C>" and the like. It asks for
/// nothing, so the rows stay.
[[nodiscard]] bool isHalfShortForm(const SearchRequest& request);

/// The examples of short forms that the list of the search line begins with.
[[nodiscard]] QStringList searchExamples();

/// Whether a text is put into the list of the search line: not empty, not there already, no short
/// form in its usual spelling. Letter case counts, so "BPM=120" does get in.
[[nodiscard]] bool belongsIntoSearchList(const QString& text, const QStringList& list);

} // namespace melovane
