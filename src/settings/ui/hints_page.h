#pragma once

#include "settings/ui/settings_desk.h"

#include <QWidget>

class QLabel;
class QListWidget;
class QPushButton;

namespace melovane {

/// The messages that are not shown any more; each can be shown again.
class HintsPage : public QWidget
{
    Q_OBJECT

public:
    /// The desk outlives the page.
    explicit HintsPage(const SettingsDesk& desk, QWidget* parent = nullptr);

    void refresh();

    /// Gives the focus to the list.
    void enter();

signals:
    void edited();

private:
    const SettingsDesk& m_desk;
    QListWidget* m_list;
    QLabel* m_none;
    QPushButton* m_show;
    QPushButton* m_showAll;
};

} // namespace melovane
