#include "shell/docking.h"
#include "shell/fakes.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

struct DockingTest : public testing::Test
{
    test::PlainWindow window;
    Docking docking{window};
};

TEST_F(DockingTest, ADockedWindowHasTheLowerHalfOfTheWorkArea)
{
    window.area = {20, 40, 1601, 1001};
    window.maximised = true;
    docking.dock();
    EXPECT_EQ(window.rect, QRect(20, 540, 1601, 501));
    EXPECT_FALSE(window.maximised);
    EXPECT_TRUE(docking.isDocked());
}

TEST_F(DockingTest, UndockingGoesBackToThePlaceBeforeTheFirstOfSeveralDockings)
{
    const QRect before = window.rect;
    docking.dock();
    docking.dock();
    docking.undock();
    EXPECT_EQ(window.rect, before);
    EXPECT_FALSE(docking.isDocked());
}

TEST_F(DockingTest, AMaximisedWindowKeepsItsNormalPlaceAndIsMaximisedAgain)
{
    const QRect normal = window.rect;
    window.maximised = true;
    // While the window system takes the state away, the window still covers the screen.
    window.whenNormal = [this] { window.rect = window.area; };
    docking.dock();
    docking.undock();
    EXPECT_EQ(window.rect, normal);
    EXPECT_TRUE(window.maximised);
}

TEST_F(DockingTest, UndockingAWindowThatIsNotDockedChangesNothing)
{
    const QRect before = window.rect;
    docking.undock();
    EXPECT_EQ(window.rect, before);
}

} // namespace
} // namespace melovane
