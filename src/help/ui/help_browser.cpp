#include "help/ui/help_browser.h"

#include "help/help_pages.h"
#include "platform/system/path_text.h"

#include <QPixmap>
#include <QScrollBar>
#include <QUrlQuery>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kEnding = u".html"_s;

/// The page that is made of hits; it carries the words behind its name.
const QString kHits = u"hits"_s;

QString nameOf(const QUrl& url)
{
    const QString file = url.path().section(u'/', -1);
    return file.endsWith(kEnding) ? file.chopped(kEnding.size()) : file;
}

QUrl urlOf(const QString& page, const QString& section = {})
{
    QUrl url(u"help:/"_s + page + kEnding);
    if (!section.isEmpty()) {
        url.setFragment(section);
    }
    return url;
}

} // namespace

HelpBrowser::HelpBrowser(const HelpPages& pages, QWidget* parent)
    : QTextBrowser(parent)
    , m_pages(pages)
{
    setObjectName(u"HelpBrowser"_s);
    setColours();
}

void HelpBrowser::showPlace(const QString& place)
{
    const QString page = place.section(u'#', 0, 0);
    if (m_pages.title(page).isEmpty()) {
        return;
    }
    setSource(urlOf(page, place.section(u'#', 1)), QTextDocument::HtmlResource);
}

void HelpBrowser::showHits(const QString& words)
{
    QUrl url = urlOf(kHits);
    QUrlQuery query;
    query.addQueryItem(u"w"_s, QString::fromLatin1(QUrl::toPercentEncoding(words)));
    url.setQuery(query);
    setSource(url, QTextDocument::HtmlResource);
}

QString HelpBrowser::pageOf(const QUrl& source)
{
    const QString name = nameOf(source);
    return name == kHits ? QString() : name;
}

void HelpBrowser::showAgain()
{
    setColours();
    const int height = verticalScrollBar()->value();
    reload();
    verticalScrollBar()->setValue(height);
}

QVariant HelpBrowser::loadResource(int type, const QUrl& name)
{
    if (type == QTextDocument::ImageResource) {
        // Only names: a page shows what lies beside it.
        return QPixmap(path::join(m_pages.folder(), name.path().section(u'/', -1)));
    }
    if (nameOf(name) == kHits) {
        return m_pages.hitsPage(QUrlQuery(name).queryItemValue(u"w"_s, QUrl::FullyDecoded));
    }
    return m_pages.html(nameOf(name));
}

void HelpBrowser::changeEvent(QEvent* event)
{
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        showAgain();
    }
}

void HelpBrowser::setColours()
{
    const QPalette colours = palette();
    const int size = fontInfo().pixelSize();
    document()->setDefaultStyleSheet(
        u"h1 { font-size: %3px; } h2 { font-size: %4px; } h3 { font-size: %5px; }"
        "a { color: %1; } code { color: %2; font-weight: 600; }"
        "td { padding: 2px 18px 2px 0; } p, li { line-height: 135%; }"_s
            .arg(colours.color(QPalette::Link).name(), colours.color(QPalette::Text).name())
            .arg(size * 8 / 5)
            .arg(size * 5 / 4)
            .arg(size * 11 / 10));
    document()->setDocumentMargin(size);
}

} // namespace melovane
