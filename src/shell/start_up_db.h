#pragma once

#include <functional>
#include <memory>

namespace melovane {

class ConfigObjects;
class MessageLoop;
class SplashForm;
class Timer;

/// The window that stands in front while the console starts: `frmStartUpDB`.
class frmStartUpDB
{
public:
    /// \param openPage what a click on the logo does
    frmStartUpDB(const ConfigObjects& texts,
                 MessageLoop& loop,
                 SplashForm& form,
                 std::function<void()> openPage);
    ~frmStartUpDB();

    /// Milliseconds from the user's first key or click in another window to the end of the splash;
    /// 0 leaves it there, as a plain information window.
    int StartupCloseDelay = 0;

    /// Loads the window and shows it above all others. Sets StartupCloseDelay to 0.
    void Show();

    void BringToFront();

    /// The window goes five seconds from now.
    void StartTimerCloseWindow();

    /// Goes at once, for a window that it would cover. A plain information window stays.
    void StandAside();

    [[nodiscard]] bool isLoaded() const { return m_loaded; }

private:
    void timer1Fired();
    void userWorks();
    void unload();

    const ConfigObjects& m_texts;
    SplashForm& m_form;
    std::function<void()> m_openPage;
    std::unique_ptr<Timer> m_timer1; ///< `Timer1`: the end of a start
    std::unique_ptr<Timer> m_timer3; ///< `Timer3`: the user has begun to work
    bool m_loaded = false;
};

/// StartupCloseDelay of a start.
inline constexpr int kStartupCloseDelay = 500;

} // namespace melovane
