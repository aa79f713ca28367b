#pragma once

#include <QString>

#include <functional>

namespace melovane {

/// What the start-up window shows and whom it tells.
struct SplashView
{
    QString product;
    QString state; ///< what the program is doing
    QString logoTip;
    QString closeTip;
    std::function<void()> closeClicked;
    std::function<void()> logoClicked;
    /// The user works in another window of the program.
    std::function<void()> workedElsewhere;
    /// Another window came up that this one would cover: a dialog, or that of another program.
    std::function<void()> otherInFront;
};

/// The start-up window, `frmStartUpDB`.
class SplashForm
{
public:
    virtual ~SplashForm() = default;

    /// Makes the window, in the middle of the screen, and shows it above all others.
    virtual void load(const SplashView& view) = 0;
    virtual void bringToFront() = 0;
    /// Shows it as a normal window, no longer above the others.
    virtual void showAsNormal() = 0;
    virtual void unload() = 0;
};

} // namespace melovane
