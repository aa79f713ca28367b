#pragma once

#include <QDialog>

#include <functional>
#include <memory>

class QCheckBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QVBoxLayout;

namespace melovane {

class ConfigObjects;
class MessageLoop;
class Timer;

/// What the windows have in common that look for something beside the window, show it in grids and
/// write what was chosen as one step: the footer, the progress, the way to an end.
class CareWindow : public QDialog
{
    Q_OBJECT

public:
    /// Why the library must not be written now, in the user's words; empty when it may be.
    std::function<QString()> whyNotNow;
    /// Keeps the library as it is before it is written; false when the user does not want to begin.
    std::function<bool()> backUp;
    /// Called behind each change of the library.
    std::function<void()> whenWritten;

    /// Escape: ends what goes on, else closes.
    void reject() override;

protected:
    /// \param name  as an object and in the style
    /// \param lines that the window is high at first, where the screen has room
    CareWindow(const QString& name,
               const QString& title,
               int lines,
               const ConfigObjects& texts,
               MessageLoop& loop,
               QWidget* parent);
    ~CareWindow() override;

    /// A box that is ticked or not, what is told, the progress and both buttons.
    /// \param act what the button does that writes
    void buildFooter(QVBoxLayout& column,
                     QCheckBox* box,
                     QPushButton* button,
                     const std::function<void()>& act);

    /// False when the library must not be written now, or the user does not want it. Otherwise
    /// isWriting() until endWriting().
    [[nodiscard]] bool beginWriting();
    void endWriting();

    [[nodiscard]] bool isWriting() const { return m_isWriting; }

    /// Shows how far the writing is and gives the user his turn; false when he wants an end.
    [[nodiscard]] bool goOn(int done, int size);

    /// \param isReady nothing goes on, and nothing is written
    void showReady(bool isReady);

    /// Asks showProgress() again and again while the other thread works.
    void followWork(bool on);

    void tell(const QString& text);
    void setProgress(int done, int size);

    [[nodiscard]] const ConfigObjects& texts() const { return m_texts; }

    /// All controls follow what goes on.
    virtual void showState() = 0;
    virtual void showProgress() = 0;
    /// Ends what goes on beside the window; false when there was nothing.
    [[nodiscard]] virtual bool endWork() = 0;

private:
    const ConfigObjects& m_texts;
    MessageLoop& m_loop;
    std::unique_ptr<Timer> m_timer;
    QLabel* m_told;
    QProgressBar* m_progress;
    QPushButton* m_cancel;
    bool m_isWriting = false;
    bool m_isCancelled = false;
};

} // namespace melovane
