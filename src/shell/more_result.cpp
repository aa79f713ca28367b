#include "shell/more_result.h"

#include "platform/system/letter_case.h"

#include <QStringList>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

using Kind = MoreResultEntry::Kind;

/// Signs that stand between words.
constexpr QStringView kBetweenWords = u"\"&-_()[]'";

/// Signs that a search compares; any other stands for everything.
constexpr QStringView kSearchable = u"ABCDEFGHIJKLMNOPQRSTUVWXYZÄÖÜ1234567890";

/// Letters that a word needs at least, to be worth a search.
constexpr qsizetype kShortestWord = 3;

/// In front of a word, so that its first letter chooses it.
constexpr QChar kAccelerator = u'&';

const QString kAnywhere = u"*"_s;

QString plainWords(const QString& text)
{
    QString result = upperCase(text);
    for (QChar& sign : result) {
        if (kBetweenWords.contains(sign)) {
            sign = u' ';
        }
    }
    return result.split(u' ', Qt::SkipEmptyParts).join(u' ');
}

void addWords(std::vector<MoreResultEntry>& entries,
              const QStringList& words,
              const QString& header,
              const QString& tag)
{
    entries.push_back({Kind::Separator, {}, {}, true});
    entries.push_back({Kind::Header, header, {}, true});
    for (const QString& word : words) {
        entries.push_back({Kind::Search, kAccelerator + word, tag, true});
    }
}

QString normalised(const QString& text)
{
    QString result = upperCase(text);
    for (QChar& sign : result) {
        if (!kSearchable.contains(sign)) {
            sign = u'*';
        }
    }
    // Twice, as the siblings do: a longer row of stars keeps some, which find the same.
    for (int pass = 0; pass < 2; ++pass) {
        result.replace("**"_L1, "*"_L1);
    }
    return result;
}

} // namespace

std::vector<MoreResultEntry> moreResultEntries(const QString& artist,
                                               const QString& title,
                                               const std::array<QString, 2>& headers)
{
    const QString first = plainWords(artist);
    const QString second = plainWords(title);
    std::vector<MoreResultEntry> entries = {
        {Kind::Search, first.isEmpty() ? u"NULL"_s : first, {}, !first.isEmpty()}};
    if (!second.isEmpty()) {
        entries.push_back({Kind::Search, second, {}, true});
    }
    QStringList words = QString(second + u' ' + first).split(u' ', Qt::SkipEmptyParts);
    if (words.size() < 2) {
        return entries;
    }
    words.removeDuplicates();
    words.removeIf([](const QString& word) { return word.size() < kShortestWord; });
    addWords(entries, words, headers[0], {});
    addWords(entries, words, headers[1], kAnywhere);
    return entries;
}

QString moreResultSearch(const QString& tag, const QString& caption)
{
    if (!caption.startsWith(kAccelerator)) {
        return normalised(tag + caption);
    }
    return normalised(tag + caption.mid(1) + u'*');
}

} // namespace melovane
