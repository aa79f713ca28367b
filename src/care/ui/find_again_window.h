#pragma once

#include "care/find_again.h"
#include "care/found_look.h"

#include <QDialog>

#include <functional>
#include <memory>

class QCheckBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QVBoxLayout;

namespace melovane {

class DataGrid;
class IconSet;
class MessageLoop;
class Panel;
class Skin;
class Timer;

/// The window that finds missing files again: rules on the left, what each of them does on the
/// right. Nothing is written before "Übernehmen".
class FindAgainWindow : public QDialog
{
    Q_OBJECT

public:
    /// All of it outlives the window.
    FindAgainWindow(const Skin& skin,
                    const IconSet& icons,
                    FindAgain& find,
                    const ConfigObjects& texts,
                    MessageLoop& loop,
                    QWidget* parent = nullptr);
    ~FindAgainWindow() override;

    /// Asks for a folder; empty when nothing was chosen. The desktop's own dialog unless set.
    std::function<QString(QWidget*)> chooseFolder;
    /// The same for a file.
    std::function<QString(QWidget*)> chooseFile;

    /// Why the library must not be written now, in the user's words; empty when it may be.
    std::function<QString()> whyNotNow;
    /// Called behind each change of the library.
    std::function<void()> whenWritten;

    /// Looks up what is missing; says why when that fails.
    void load();

    /// Escape: ends what goes on, else closes.
    void reject() override;

private:
    void buildHead(QVBoxLayout& column, const IconSet& icons);
    void buildGrids(QVBoxLayout& column, const Skin& skin, const IconSet& icons);
    void buildFooter(QVBoxLayout& column);
    void connectGrids();
    void apply();
    /// Called by the writing between its steps.
    [[nodiscard]] bool goOn(int done, int size);
    void showRules();
    void showState();
    void showProgress();
    void showPreview(qint64 rule);
    void toggleRule(qint64 row);
    void toggleTrack(qint64 row);
    void addRuleByHand();
    void showFile();

    FindAgain& m_find;
    const ConfigObjects& m_texts;
    MessageLoop& m_loop;
    RuleRows m_ruleRows;
    FoundRows m_trackRows;
    QLabel* m_sentence;
    QPushButton* m_search;
    QPushButton* m_byHand;
    QPushButton* m_show;
    QLabel* m_found;
    QLabel* m_previewFolder;
    QLabel* m_previewCount;
    DataGrid* m_rules;
    DataGrid* m_tracks;
    QCheckBox* m_remember;
    QLabel* m_told;
    QProgressBar* m_progress;
    QPushButton* m_cancel;
    QPushButton* m_apply;
    std::unique_ptr<Timer> m_timer;
    FindAgain::State m_shown = FindAgain::State::Ready;
    bool m_isWriting = false;
    bool m_isCancelled = false;
};

} // namespace melovane
