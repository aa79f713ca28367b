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

    /// The place that the window has, or had before it was maximised or minimised.
    [[nodiscard]] virtual QRect place() const = 0;
    virtual void setPlace(const QRect& place) = 0;
    [[nodiscard]] virtual bool isMaximised() const = 0;
    [[nodiscard]] virtual bool isMinimised() const = 0;
    virtual void maximise() = 0;

    /// The part of the screen that windows may cover.
    [[nodiscard]] virtual QRect screen() const = 0;
    virtual void setLeastSize(const QSize& size) = 0;

    /// Asks the window to close, as its close box does.
    virtual void close() = 0;
};

} // namespace melovane
