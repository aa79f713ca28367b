#pragma once

#include "help/help_pages.h"

#include <QObject>
#include <QPointer>

class QApplication;

namespace melovane {

class HelpWindow;
class IconSet;

/// The help of a program: F1 in any of its windows opens the page of the part that has the
/// keyboard, also in a dialog that nothing else works beside. Controls without a tool tip of their
/// own get one of the help when their window is shown.
class HelpDesk : public QObject
{
    Q_OBJECT

public:
    /// Watches the keys of the application until it is destroyed. `icons` outlives it.
    HelpDesk(QApplication& application, HelpPages::Parts parts, const IconSet& icons);
    ~HelpDesk() override;

    HelpDesk(const HelpDesk&) = delete;
    HelpDesk& operator=(const HelpDesk&) = delete;

    /// Shows the place in the one window of the help. False when the help is not installed.
    bool show(const QString& place);

    /// The same of the place for a control; null for no special one.
    bool showFor(const QWidget* control);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void giveTips(const QWidget& window) const;

    HelpPages m_pages;
    const IconSet& m_icons;
    QPointer<HelpWindow> m_window; ///< goes with the dialog above which it was opened
};

} // namespace melovane
