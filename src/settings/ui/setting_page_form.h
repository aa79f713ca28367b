#pragma once

#include "settings/ui/settings_desk.h"

#include <QScrollArea>

#include <vector>

class QGridLayout;
class QLabel;
class QToolButton;
class QVBoxLayout;

namespace melovane {

/// One page of the settings window: its title, a sentence, and the rows of its settings below
/// their headings. Scrolls where the window is too small for it.
class SettingPageForm : public QScrollArea
{
    Q_OBJECT

public:
    /// The desk outlives the page.
    SettingPageForm(const SettingsDesk& desk, SettingPage page, QWidget* parent = nullptr);

    /// Shows the values of now.
    void refresh();

    /// Shows those rows alone that a search finds. The number of them.
    int filter(const QString& text);

    /// Gives the focus to the first row that is shown.
    void enter();

signals:
    /// The user has chosen a value.
    void edited();

private:
    struct Row
    {
        const SettingEntry* entry;
        QWidget* box;
        QLabel* heading;
        QWidget* editor;
        std::function<void()> show;
        QToolButton* reset;
    };

    void addRow(QVBoxLayout& column, const SettingEntry& entry, QLabel* heading);

    const SettingsDesk& m_desk;
    std::vector<Row> m_rows;
};

/// Title and sentence of a page, as all pages begin.
void addPageHead(QVBoxLayout& column,
                 const ConfigObjects& texts,
                 SettingPage page,
                 QWidget* parent);

} // namespace melovane
