#pragma once

#include "tagbench/bench_session.h"
#include "views/track_look.h"

#include <QDialog>

#include <functional>

class QLabel;
class QProgressBar;
class QPushButton;
class QVBoxLayout;

namespace melovane {

class BenchGridPanel;
class BenchPages;
class CommonForm;
class DbError;
class IconSet;
class MessageLoop;
class Skin;
class SplitPanel;

/// The window of the tag tool: tracks, common values, the ways to change many, and what is to be
/// applied.
class BenchWindow : public QDialog
{
    Q_OBJECT

public:
    /// All of it outlives the window.
    BenchWindow(const Skin& skin,
                const IconSet& icons,
                BenchSession& session,
                MessageLoop& loop,
                const NoteColours& colours);

    /// Asks for a folder; empty when nothing was chosen. The desktop's own dialog unless set.
    std::function<QString(QWidget*)> chooseFolder;
    /// The same for files.
    std::function<QStringList(QWidget*)> chooseFiles;
    /// The same for a picture, beginning in a folder; empty when none was chosen.
    std::function<QString(QWidget*, const QString& folder)> choosePicture;
    /// Asks a question whose answer is yes or no.
    std::function<bool(QWidget*, const QString&)> ask;
    /// Tells what came of the work where it takes more than a line.
    std::function<void(QWidget*, const QStringList&)> tell;

    /// Puts the marked tracks on the bench; says why when that fails.
    void load();

    void apply();

    /// Escape: ends what is going on, else closes, with a question when that would lose changes.
    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    /// Enter belongs to the field that it is pressed in, and applies nothing.
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void buildDialogs();
    void buildFooter(QVBoxLayout& column, const IconSet& icons);
    void addPlaces(const QStringList& places);
    void showState();
    [[nodiscard]] QString unreadText(const DbError& error) const;
    /// Called by a long work between its steps.
    [[nodiscard]] bool goOn(const QString& text, int done, int size);
    void setWorking(bool on);

    BenchSession& m_session;
    MessageLoop& m_loop;
    BenchGridPanel* m_grid;
    CommonForm* m_form;
    BenchPages* m_pages;
    QWidget* m_content;
    SplitPanel* m_above;
    QLabel* m_changes;
    QLabel* m_progressText;
    QProgressBar* m_progress;
    QPushButton* m_undo;
    QPushButton* m_cancel;
    QPushButton* m_apply;
    bool m_isWorking = false;
    bool m_isCancelled = false;
};

} // namespace melovane
