#pragma once

#include "care/double_look.h"
#include "care/doubles.h"

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
class Skin;
class Timer;

/// The window for tracks that are there twice: what is compared, the groups with which of them
/// stays, and merging. Nothing is written before "Zusammenlegen".
class DoublesWindow : public QDialog
{
    Q_OBJECT

public:
    /// All of it outlives the window.
    DoublesWindow(const Skin& skin,
                  const IconSet& icons,
                  Doubles& doubles,
                  const ConfigObjects& texts,
                  MessageLoop& loop,
                  QWidget* parent = nullptr);
    ~DoublesWindow() override;

    /// Why the library must not be written now, in the user's words; empty when it may be.
    std::function<QString()> whyNotNow;
    /// Called behind each change of the library.
    std::function<void()> whenWritten;

    /// Searches what is ticked.
    void search();

    /// Escape: ends what goes on, else closes.
    void reject() override;

private:
    void buildHead(QVBoxLayout& column, const IconSet& icons);
    void buildFooter(QVBoxLayout& column);
    void merge();
    /// Called by the writing between its steps.
    [[nodiscard]] bool goOn(int done, int size);
    void showGroups();
    void showState();
    void showProgress();
    void choose(qint64 row);
    [[nodiscard]] QString sentence() const;

    Doubles& m_doubles;
    const ConfigObjects& m_texts;
    MessageLoop& m_loop;
    DoubleRows m_rows;
    QLabel* m_sentence;
    QCheckBox* m_sound;
    QCheckBox* m_names;
    QPushButton* m_search;
    DataGrid* m_grid;
    QCheckBox* m_recycle;
    QLabel* m_told;
    QProgressBar* m_progress;
    QPushButton* m_cancel;
    QPushButton* m_merge;
    std::unique_ptr<Timer> m_timer;
    QString m_outcome; ///< of the last merge
    bool m_hasSearched = false;
    bool m_isWriting = false;
    bool m_isCancelled = false;
};

} // namespace melovane
