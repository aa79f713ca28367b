#pragma once

#include <QRect>
#include <QString>

namespace melovane {

/// A top-level window, as logic sees it. Places are in units of the screen, scale taken out.
class WindowFrame
{
public:
    virtual ~WindowFrame() = default;

    virtual void setCaption(const QString& caption) = 0;
    virtual void setLeastSize(const QSize& size) = 0;

    /// The place that the window has, or had before it was maximised or minimised.
    [[nodiscard]] virtual QRect place() const = 0;
    virtual void setPlace(const QRect& place) = 0;
    /// The same for the window with its title bar and borders.
    virtual void setOuterPlace(const QRect& place) = 0;
    [[nodiscard]] virtual bool isMaximisedNow() const = 0;
    virtual void maximise() = 0;
    /// Neither maximised nor minimised any longer.
    virtual void setNormal() = 0;

    /// The number of the window in the window system, 0 without one; other programs find it by it.
    [[nodiscard]] virtual int windowHandle32() const = 0;

    /// The part of the screen that windows may cover.
    [[nodiscard]] virtual QRect screenArea() const = 0;
    /// The whole screen that has most of a place.
    [[nodiscard]] virtual QRect screenOf(const QRect& place) const = 0;

    /// Puts the window in front of all others and gives it the keyboard, also out of the task bar;
    /// it keeps its place and stays maximised.
    virtual void bringToFront() = 0;

    /// Closes the window, as its close box does.
    virtual void closeWindow() = 0;
};

/// A split between two areas.
class SplitControl
{
public:
    virtual ~SplitControl() = default;

    /// The size of the first area in thousandths of both; 0 when it is folded away.
    [[nodiscard]] virtual int position() const = 0;

    /// Numbers outside 0 to 1000 change nothing.
    virtual void setPosition(int thousandths) = 0;
};

/// The look of the whole program, `Skin1`.
class SkinControl
{
public:
    virtual ~SkinControl() = default;

    /// Takes the text of a theme file. A text without one valid colour changes nothing and gives
    /// false.
    virtual bool load(const QString& themeText) = 0;

    /// Follows the desktop again.
    virtual void clear() = 0;

    /// The name that a theme file gives itself; empty for none.
    [[nodiscard]] virtual QString titleOf(const QString& themeText) const = 0;
};

} // namespace melovane
