#pragma once

#include "settings/ui/settings_desk.h"

#include <QDialog>

#include <functional>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QStackedWidget;
class QVBoxLayout;

namespace melovane {

class HintsPage;
class KeysPage;
class SettingPageForm;

/// The settings of the suite: categories at the left, a page of settings beside them.
///
/// What is chosen stands in the draft until it is applied; closing the window in another way than
/// by OK drops it.
class SettingsWindow : public QDialog
{
    Q_OBJECT

public:
    /// \param apply writes the draft and tells who must know; false when it could not be written
    SettingsWindow(const SettingsDesk& desk, std::function<bool()> apply);

    /// Makes all controls anew, in the language of the texts as they are now. The page stays.
    void rebuild();

    /// Shows the values of now, those too that another program has written.
    void refresh();

    void showPage(SettingPage page);

    /// Shows the page of a setting, with the keyboard in its row.
    void showSetting(const SettingEntry& entry);

    [[nodiscard]] SettingPage page() const;

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void buildSide(QWidget& side);
    void buildPages();
    void buildFooter(QWidget& footer);
    void filter();
    void showState();
    void resetPage();
    bool apply();
    void narrowSide();
    [[nodiscard]] int changed(SettingPage page) const;

    const SettingsDesk& m_desk;
    std::function<bool()> m_apply;
    QVBoxLayout* m_column;
    QWidget* m_content = nullptr;
    QWidget* m_side = nullptr;
    QLineEdit* m_find = nullptr;
    QListWidget* m_categories = nullptr;
    QStackedWidget* m_stack = nullptr;
    QLabel* m_state = nullptr;
    QPushButton* m_reset = nullptr;
    QPushButton* m_applyButton = nullptr;
    std::vector<SettingPageForm*> m_forms; ///< by page, null for the two of their own kind
    KeysPage* m_keys = nullptr;
    HintsPage* m_hints = nullptr;
    bool m_isUnwritten = false;
};

} // namespace melovane
