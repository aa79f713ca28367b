#pragma once

#include "help/help_pages.h"

#include <QDialog>

class QLineEdit;
class QListWidget;
class QToolButton;

namespace melovane {

class HelpBrowser;
class IconSet;

/// The window of the help: contents and search at the left, the page at the right. It stays open
/// beside the window that is worked in, and speaks its language.
///
/// Ctrl+F goes to the search, Alt and the arrows back and forward, Escape closes.
class HelpWindow : public QDialog
{
    Q_OBJECT

public:
    /// Both outlive the window.
    HelpWindow(const HelpPages& pages, const IconSet& icons, QWidget* parent = nullptr);

    /// \param place "page" or "page#section"; an unknown one leaves what is shown
    void showPlace(const QString& place);

protected:
    void changeEvent(QEvent* event) override;

private:
    QToolButton* addTool(const QString& name, const QString& icon, const QKeySequence& keys);
    void layOut();
    void translate();
    void follow(const QUrl& source);
    void search();

    const HelpPages& m_pages;
    const IconSet& m_icons;
    QListWidget* m_contents;
    QLineEdit* m_search;
    HelpBrowser* m_browser;
    QToolButton* m_back;
    QToolButton* m_forward;
    bool m_isFollowing = false; ///< the contents show what is read, they do not choose
};

} // namespace melovane
