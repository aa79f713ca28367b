#include "playlistview/playlist_window.h"
#include "support/wait_for.h"

#include <QProcess>
#include <QTest>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Runs xdotool while the window goes on handling events.
bool pointer(const QStringList& arguments)
{
    QProcess process;
    process.start(u"xdotool"_s, arguments);
    return test::waitFor([&process] { return process.state() == QProcess::NotRunning; }) &&
           process.exitCode() == 0;
}

class DragByMouse : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(test::waitFor([] { return pointer({u"get_num_desktops"_s}); }));
        window.open();
        window.window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window.window, test::kLongWaitMs));
    }

    /// Presses on one place, goes to another in small steps, and lets go there.
    ///
    /// All by one run of the tool: a drag has an event loop of its own, in which nothing else of
    /// the test goes on. The pauses let the window see each step.
    /// \param copyKey held while the button is let go
    static bool drag(const QPoint& from, const QPoint& to, bool copyKey = false)
    {
        QStringList arguments;
        const auto moveTo = [&arguments](const QPoint& place) {
            arguments += {u"mousemove"_s, QString::number(place.x()), QString::number(place.y()),
                          u"sleep"_s, u"0.04"_s};
        };
        moveTo(from);
        arguments += {u"mousedown"_s, u"1"_s, u"sleep"_s, u"0.05"_s};
        constexpr int kSteps = 6;
        for (int step = 1; step <= kSteps; ++step) {
            moveTo(from + (to - from) * step / kSteps);
        }
        if (copyKey) {
            arguments += {u"keydown"_s, u"ctrl"_s, u"sleep"_s, u"0.05"_s};
        }
        // A last small move: the first one that arrives over the target only enters it.
        moveTo(to + QPoint(3, 0));
        arguments += {u"mouseup"_s, u"1"_s, u"sleep"_s, u"0.1"_s};
        if (copyKey) {
            arguments += {u"keyup"_s, u"ctrl"_s};
        }
        return pointer(arguments);
    }

    test::PlaylistWindow window{8, 5};
};

TEST_F(DragByMouse, ARowIsDraggedInFrontOfAnotherOne)
{
    DataGrid& grid = window.grid();
    ASSERT_TRUE(
        drag(test::PlaylistWindow::placeOf(grid, 3), test::PlaylistWindow::placeOf(grid, 1)));
    EXPECT_TRUE(test::waitFor([this] { return window.rows() == u"1 4 2 3 5"_s; }))
        << window.rows().toStdString();
}

TEST_F(DragByMouse, ATrackOfTheLibraryIsDraggedIntoTheList)
{
    ASSERT_TRUE(drag(test::PlaylistWindow::placeOf(window.source, 6),
                     test::PlaylistWindow::placeOf(window.grid(), 2)));
    EXPECT_TRUE(test::waitFor([this] { return window.rows() == u"1 2 7 3 4 5"_s; }))
        << window.rows().toStdString();
}

TEST_F(DragByMouse, WithTheCopyKeyHeldARowIsCopied)
{
    DataGrid& grid = window.grid();
    ASSERT_TRUE(
        drag(test::PlaylistWindow::placeOf(grid, 4), test::PlaylistWindow::placeOf(grid, 0), true));
    EXPECT_TRUE(test::waitFor([this] { return window.rows() == u"5 1 2 3 4 5"_s; }))
        << window.rows().toStdString();
}

} // namespace
} // namespace melovane
