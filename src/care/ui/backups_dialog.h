#pragma once

#include "care/backup_record.h"
#include "platform/qt/dialog_frame.h"

class QCheckBox;
class QLabel;
class QPushButton;
class QTreeWidget;

namespace melovane {

class BackupDesk;
class IconSet;
class Skin;

/// The window "Sicherungen": the backups in a list, what is known about the chosen one, and what
/// can be done with it.
class BackupsDialog : public DialogFrame
{
    Q_OBJECT

public:
    BackupsDialog(BackupDesk& desk, const Skin& skin, const IconSet& icons);

    /// Shows it until the user closes it.
    void run();

private:
    void makeList();
    [[nodiscard]] QLayout* makeFacts();
    void makeCommands();
    void fill(const QString& chosen);
    void addRow(const Backup& backup);
    void showChosen();
    /// Null when there is none.
    [[nodiscard]] const Backup* chosen() const;
    void makeNow();
    void check();
    void restore();

    BackupDesk& m_desk;
    const Skin& m_skin;
    const IconSet& m_icons;
    std::vector<Backup> m_backups; ///< in the order of the rows
    QTreeWidget* m_list;
    QLabel* m_picture;
    QLabel* m_state;
    QLabel* m_file;
    QLabel* m_free;
    QLabel* m_sum;
    QCheckBox* m_settings;
    QPushButton* m_check = nullptr;
    QPushButton* m_restore = nullptr;
};

} // namespace melovane
