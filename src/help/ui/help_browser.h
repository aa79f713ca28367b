#pragma once

#include <QTextBrowser>

namespace melovane {

class HelpPages;

/// Shows the pages, from where they lie: nothing is ever read from a net or another folder.
class HelpBrowser : public QTextBrowser
{
    Q_OBJECT

public:
    /// `pages` outlives the browser.
    explicit HelpBrowser(const HelpPages& pages, QWidget* parent = nullptr);

    /// \param place "page" or "page#section"; one that is not there leaves what is shown
    void showPlace(const QString& place);

    void showHits(const QString& words);

    /// Name of the page that is shown; empty for the hits of a search.
    [[nodiscard]] QString page() const { return pageOf(source()); }

    /// The same of an address. The signal of a new one comes before source() knows it.
    [[nodiscard]] static QString pageOf(const QUrl& source);

    /// The same page again, at the same height: other texts or keys. Other colours and fonts show
    /// themselves.
    void showAgain();

    QVariant loadResource(int type, const QUrl& name) override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void setColours();

    const HelpPages& m_pages;
};

} // namespace melovane
