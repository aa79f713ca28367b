#pragma once

#include "shell/quick_open.h"

#include <QDialog>

#include <optional>

class QLabel;
class QLineEdit;
class QTreeWidget;

namespace melovane {

class ConfigObjects;

/// One line that finds what the window can do, and does it: the arrow keys choose while the
/// keyboard stays in the line, Enter does it, Escape closes.
class QuickOpenDialog : public QDialog
{
    Q_OBJECT

public:
    using Entries = std::vector<QuickEntry>;

    /// Finds more than the entries of the dialog, beside the window: the answer comes with a later
    /// turn of the message loop, or never when another text was asked for meanwhile.
    using FindMore =
        std::function<void(const QString& typed, std::function<void(Entries found)> answer)>;

    QuickOpenDialog(const ConfigObjects& texts,
                    Entries entries,
                    FindMore findMore,
                    QWidget* parent = nullptr);

    /// What was chosen; nothing when the user has closed it.
    [[nodiscard]] const std::optional<QuickEntry>& chosen() const { return m_chosen; }

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildList();
    void find();
    void takeMore(const QString& typed, Entries found);
    void list(const QString& typed);
    [[nodiscard]] const QuickEntry* current() const;
    void showNote();
    void choose();

    Entries m_entries;
    Entries m_more; ///< of the text that stands in the line
    std::vector<const QuickEntry*> m_shown;
    FindMore m_findMore;
    QString m_nothing;
    QLineEdit* m_line;
    QTreeWidget* m_list;
    QLabel* m_note;
    std::optional<QuickEntry> m_chosen;
};

} // namespace melovane
