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
    QWidget* m_folderPanel;
    QListWidget* m_folders;
    QLabel* m_noFolder; ///< in the empty list of folders
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
