#pragma once

#include "support/wait_for.h"

#include <QProcess>
#include <QStringList>

#include <gtest/gtest.h>

namespace melovane::test {

/// Runs a program while the window goes on handling events.
inline bool runBeside(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    return test::waitFor([&process] { return process.state() == QProcess::NotRunning; }) &&
           process.exitCode() == 0;
}

/// Tests on a display with a window manager, with the keys and the mouse of its user.
class RealDisplay : public testing::Test
{
protected:
    /// A window that comes up before the window manager never gets the focus.
    void SetUp() override
    {
        ASSERT_TRUE(test::waitFor([] {
            return runBeside(QStringLiteral("xdotool"), {QStringLiteral("get_num_desktops")});
        }));
    }

    static bool pressKeys(const QString& keys)
    {
        return runBeside(QStringLiteral("xdotool"), {QStringLiteral("key"), keys});
    }

    static bool typeText(const QString& text)
    {
        return runBeside(
            QStringLiteral("xdotool"),
            {QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("20"), text});
    }

    /// Presses the mouse at one place of the screen and lets it go at another.
    static bool dragMouse(const QPoint& from, const QPoint& to)
    {
        QStringList steps =
            moveTo(from) + QStringList{QStringLiteral("mousedown"), QStringLiteral("1")};
        constexpr int kSteps = 8;
        for (int step = 1; step <= kSteps; ++step) {
            steps += moveTo(from + (to - from) * step / kSteps) +
                     QStringList{QStringLiteral("sleep"), QStringLiteral("0.05")};
        }
        return runBeside(QStringLiteral("xdotool"),
                         steps + QStringList{QStringLiteral("mouseup"), QStringLiteral("1")});
    }

    static bool clickAt(const QPoint& place)
    {
        return runBeside(QStringLiteral("xdotool"),
                         moveTo(place) + QStringList{QStringLiteral("click"), QStringLiteral("1")});
    }

private:
    static QStringList moveTo(const QPoint& place)
    {
        return {QStringLiteral("mousemove"), QString::number(place.x()),
                QString::number(place.y())};
    }
};

} // namespace melovane::test
