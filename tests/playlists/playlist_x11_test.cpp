#include "playlists/playlist_window.h"

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
    return QTest::qWaitFor([&process] { return process.state() == QProcess::NotRunning; },
                           20'000) &&
           process.exitCode() == 0;
}

class DragByMouse : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QTest::qWaitFor([] { return pointer({u"get_num_desktops"_s}); }, 20'000));
        window.open();
        window.window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window.window, 10'000));
    }

    static bool moveTo(const QPoint& place)
    {
        return pointer({u"mousemove"_s, QString::number(place.x()), QString::number(place.y())});
    }

    /// Presses on one place, goes to another in small steps, and lets go there.
    static bool drag(const QPoint& from, const QPoint& to)
    {
        bool all = moveTo(from) && pointer({u"mousedown"_s, u"1"_s});
        constexpr int kSteps = 6;
        for (int step = 1; step <= kSteps && all; ++step) {
            all = moveTo(from + (to - from) * step / kSteps);
        }
        // A last small move: the first one that arrives over the target only enters it.
        return all && moveTo(to + QPoint(3, 0)) && pointer({u"mouseup"_s, u"1"_s});
    }

    test::PlaylistWindow window{8, 5};
};

TEST_F(DragByMouse, ARowIsDraggedInFrontOfAnotherOne)
{
    DataGrid& grid = window.grid();
    ASSERT_TRUE(
        drag(test::PlaylistWindow::placeOf(grid, 3), test::PlaylistWindow::placeOf(grid, 1)));
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.rows() == u"1 4 2 3 5"_s; }, 5000))
        << window.rows().toStdString();
}

TEST_F(DragByMouse, ATrackOfTheLibraryIsDraggedIntoTheList)
{
    ASSERT_TRUE(drag(test::PlaylistWindow::placeOf(window.source, 6),
                     test::PlaylistWindow::placeOf(window.grid(), 2)));
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.rows() == u"1 2 7 3 4 5"_s; }, 5000))
        << window.rows().toStdString();
}

TEST_F(DragByMouse, WithTheCopyKeyHeldARowIsCopied)
{
    DataGrid& grid = window.grid();
    ASSERT_TRUE(moveTo(test::PlaylistWindow::placeOf(grid, 4)));
    ASSERT_TRUE(pointer({u"mousedown"_s, u"1"_s}));
    const QPoint to = test::PlaylistWindow::placeOf(grid, 0);
    for (int offset = 40; offset >= 0; offset -= 10) {
        ASSERT_TRUE(moveTo(to + QPoint(0, offset)));
    }
    ASSERT_TRUE(pointer({u"keydown"_s, u"ctrl"_s}));
    ASSERT_TRUE(moveTo(to + QPoint(3, 0)));
    ASSERT_TRUE(pointer({u"mouseup"_s, u"1"_s, u"keyup"_s, u"ctrl"_s}));
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.rows() == u"5 1 2 3 4 5"_s; }, 5000))
        << window.rows().toStdString();
}

} // namespace
} // namespace melovane
