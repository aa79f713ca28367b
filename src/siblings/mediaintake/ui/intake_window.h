#pragma once

#include <QDialog>
#include <QTimer>

#include <functional>

class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;
class QTreeWidget;

namespace melovane {

class ConfigObjects;
class IntakeSession;

/// The importer's window: folders, start, progress, report.
class IntakeWindow : public QDialog
{
    Q_OBJECT

public:
    explicit IntakeWindow(IntakeSession& session, QWidget* parent = nullptr);

    /// Asks the user for a folder, from the given one on; empty when nothing was chosen. The
    /// desktop's own dialog unless set.
    std::function<QString(QWidget*, const QString&)> chooseFolder;

    /// Puts a panel above everything else; the window owns it from then on.
    void greet(QWidget* panel);

    /// Begins at once, as if Start was pressed.
    void start();

    /// Escape: cancels a running import, closes otherwise.
    void reject() override;

private:
    void buildFolders();
    void buildProgress();
    void buildReport();
    void buildButtons();
    void arrange();
    void addFolder();
    void removeFolder();
    void look();
    void work();
    void cancel();
    void showFolders();
    void showState();
    /// What Enter does next.
    [[nodiscard]] QPushButton* nextButton() const;
    void showProgress();
    void showReport();

    IntakeSession& m_session;
    const ConfigObjects& m_texts;
    QTimer m_worker; ///< fires whenever the message loop is idle, while an import runs
    QTimer m_looker; ///< the same while the folders are looked through
    QWidget* m_folderPanel;
    QListWidget* m_folders;
    QLabel* m_noFolder; ///< in the empty list of folders
    QLabel* m_found;    ///< what the folders hold
    QPushButton* m_add;
    QPushButton* m_remove;
    QProgressBar* m_progress;
    QLabel* m_progressText;
    QLabel* m_file;
    QLabel* m_summary;
    QTreeWidget* m_report;
    QPushButton* m_start;
    QPushButton* m_cancel;
    QPushButton* m_close;
};

} // namespace melovane
