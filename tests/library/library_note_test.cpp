#include "library/library_note.h"
#include "library/test_library.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(LibraryNote, TheFirstReasonThatHoldsIsTold)
{
    const auto why = [](qint64 rows, qint64 size, LibraryView view, const QString& text) {
        return emptinessOf({rows, size, view, text});
    };
    EXPECT_EQ(why(1, 0, LibraryView::DBGrid, {}), Emptiness::None);
    EXPECT_EQ(why(0, 0, LibraryView::DBGridDel, u"x"_s), Emptiness::NoLibrary);
    EXPECT_EQ(why(0, 5, LibraryView::PLGrid, u"x"_s), Emptiness::NothingHere);
    EXPECT_EQ(why(0, 5, LibraryView::DBGrid, {}), Emptiness::NoSearch);
    EXPECT_EQ(why(0, 5, LibraryView::DBGrid, u"x"_s), Emptiness::NoHits);
}

TEST(LibraryNote, ALongSearchTextIsCutAndOneInsideATextNeedsNoButton)
{
    const test::TestLibrary library;
    const auto noteOf = [&](const QString& text) {
        return libraryNote({0, 5, LibraryView::DBGrid, text}, library.texts);
    };
    EXPECT_TRUE(noteOf(QString(60, u'x')).title.contains(QString(60, u'x')));
    EXPECT_FALSE(noteOf(QString(61, u'x')).title.contains(QString(61, u'x')));
    EXPECT_FALSE(noteOf(u"x"_s).button.isEmpty());
    EXPECT_TRUE(noteOf(u"*x"_s).button.isEmpty());
    EXPECT_EQ(libraryNote({1, 5, LibraryView::DBGrid, {}}, library.texts), EmptyNote());
}

} // namespace
} // namespace melovane
