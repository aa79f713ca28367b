#pragma once

#include <QDialog>
#include <QTimer>

#include <functional>

class QLabel;
class QProgressBar;
class QPushButton;
class QTreeWidget;

namespace melovane {

class ConfigObjects;
class WriteTags;

/// How far the writing of tags is, and what failed. Closes by itself when nothing did.
class WriteTagsWindow : public QDialog
{
    Q_OBJECT

public:
    /// \param database named in the report when it fails
    WriteTagsWindow(WriteTags& work,
                    const ConfigObjects& texts,
                    QString database,
                    QWidget* parent = nullptr);

    /// Called once when nothing is left to do, or after a cancel.
    std::function<void()> whenOver;

    void start();

    /// Escape, and the frame's button: cancels, then closes.
    void reject() override;

private:
    void build();
    void arrange();
    void work();
    void cancel();
    void showProgress();
    void showReport();

    WriteTags& m_work;
    const ConfigObjects& m_texts;
    QString m_database;
    QTimer m_worker; ///< fires whenever the message loop is idle, while files are written
    QProgressBar* m_progress;
    QLabel* m_progressText;
    QLabel* m_file;
    QLabel* m_summary;
    QTreeWidget* m_report;
    QPushButton* m_cancel;
    QPushButton* m_close;
    bool m_over = false;
};

} // namespace melovane
