#include "help/help_text.h"

#include <QRegularExpression>

#include <algorithm>

namespace melovane::helptext {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Letters of an excerpt before the word, and in all.
constexpr qsizetype kBefore = 60;
constexpr qsizetype kExcerpt = 180;

} // namespace

QString filled(const QString& page, const std::function<QString(const QString& name)>& valueOf)
{
    static const QRegularExpression place(u"\\{\\{([^{}]+)\\}\\}"_s);
    QString result;
    qsizetype done = 0;
    for (auto at = place.globalMatch(page); at.hasNext();) {
        const QRegularExpressionMatch match = at.next();
        result += QStringView(page).sliced(done, match.capturedStart() - done);
        result += valueOf(match.captured(1));
        done = match.capturedEnd();
    }
    result += QStringView(page).sliced(done);
    return result;
}

QString caption(QString text)
{
    static const QRegularExpression mark(u"&(.)"_s);
    text.replace(mark, u"\\1"_s);
    return text.endsWith("..."_L1) ? text.chopped(3).trimmed() : text;
}

QString plain(QString html)
{
    static const QRegularExpression head(u"<head>.*</head>"_s,
                                         QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression tag(u"<[^>]*>"_s);
    html.remove(head);
    html.replace(tag, u" "_s);
    html.replace("&lt;"_L1, "<"_L1).replace("&gt;"_L1, ">"_L1).replace("&quot;"_L1, "\""_L1);
    html.replace("&nbsp;"_L1, " "_L1).replace("&amp;"_L1, "&"_L1);
    return html.simplified();
}

QString inside(const QString& html, QStringView tag)
{
    const QString open = u'<' + tag.toString() + u'>';
    const qsizetype begin = html.indexOf(open);
    const qsizetype end =
        html.indexOf(u"</"_s + tag.toString() + u'>', std::max(begin, qsizetype{0}));
    return begin < 0 || end < 0 ? QString()
                                : html.sliced(begin + open.size(), end - begin - open.size());
}

QString excerpt(const QString& text, const QString& word)
{
    const qsizetype at = std::max(qsizetype{0}, text.indexOf(word, 0, Qt::CaseInsensitive));
    const qsizetype begin = at <= kBefore ? 0 : text.lastIndexOf(u' ', at - kBefore) + 1;
    const qsizetype end = text.indexOf(u' ', std::min(text.size(), begin + kExcerpt));
    return (begin > 0 ? u"… "_s : QString()) + text.mid(begin, end < 0 ? -1 : end - begin) +
           (end < 0 ? QString() : u" …"_s);
}

} // namespace melovane::helptext
