#pragma once

#include "settings/ui/settings_desk.h"

#include <QWidget>

#include <set>

class QComboBox;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace melovane {

/// The table of key bindings: a command, its keys, and what is to be known about them.
///
/// Enter or a double click on a row takes the next keys for it; Escape keeps the old ones, Delete
/// takes the keys away. Keys that two commands share are allowed and told in both rows.
class KeysPage : public QWidget
{
    Q_OBJECT

public:
    /// The desk outlives the page.
    explicit KeysPage(const SettingsDesk& desk, QWidget* parent = nullptr);

    /// Shows the bindings of now.
    void refresh();

    /// Commands that are not at their keys of delivery, and those that share their keys.
    [[nodiscard]] int changed() const { return m_changed; }

    [[nodiscard]] int doubled() const { return m_doubled; }

    /// Gives the focus to the table.
    void enter();

signals:
    void edited();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildTable();
    void buildConflictLine();
    void filter();
    void begin();
    void giveUp();
    bool take(const QKeyEvent& event);
    void bind(const QString& keys);
    void showRow(QTreeWidgetItem& item, const KeyRow& row);
    void showConflict();
    void goToOther();
    [[nodiscard]] QTreeWidgetItem* itemOf(const QString& id) const;
    [[nodiscard]] QString currentId() const;

    const SettingsDesk& m_desk;
    QLineEdit* m_find;
    QComboBox* m_groups;
    QTreeWidget* m_table;
    QWidget* m_conflict;
    QLabel* m_conflictText;
    std::vector<KeyRow> m_rows;
    QString m_taking; ///< identifier of the row that waits for keys; empty for none
    int m_changed = 0;
    int m_doubled = 0;
};

/// The keys of an event as the suite spells them, those that are held with it in front or behind
/// by their codes: "STRG-TASTE + N-TASTE". Empty for a key without a name, and while only keys are
/// held that go with others.
[[nodiscard]] QString combinationOf(const QKeyEvent& event);

} // namespace melovane
