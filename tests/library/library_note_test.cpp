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

TEST(LibraryNote, WhatWasReallySearchedIsNamed)
{
    const test::TestLibrary library;
    const auto noteOf = [&](const TreeRequest& request) {
        return libraryNote({0, 5, LibraryView::DBGrid, u"Licht"_s, false, shownRequest(request)},
                           library.texts);
    };
    const EmptyNote artist = noteOf({u"Interpret"_s, u"Interpret"_s, u"Ostwind"_s});
    EXPECT_EQ(artist, (EmptyNote{u"Keine Treffer für „Ostwind“"_s, {}, {}}));
    EXPECT_EQ(noteOf({u"allfind"_s, {}, u"*Fort*"_s}).title, u"Keine Treffer für „Fort“"_s);
    const EmptyNote folder = noteOf({u"nix"_s, u"PATH"_s, u"/Musik/Alt/"_s});
    EXPECT_EQ(folder, (EmptyNote{u"Hier stehen keine Titel"_s, u"Ordner /Musik/Alt/"_s, {}}));
    EXPECT_EQ(noteOf({u"FID"_s, u"FID"_s, u"836123456001"_s}).title, u"Hier stehen keine Titel"_s);
}

TEST(LibraryNote, EveryViewButTheSearchNamesItself)
{
    const test::TestLibrary library;
    const auto name = [&](const ShownRequest& request) { return nameOf(request, library.texts); };
    EXPECT_EQ(name(shownRequest(LibraryView::DBGridDel)), u"Als gelöscht markiert"_s);
    EXPECT_EQ(name(shownRequest(LibraryView::DBGridNoExist)), u"Ohne Datei"_s);
    EXPECT_EQ(name(shownRequest({u"DIR"_s, u"path"_s, u"/Musik/"_s})), u"Ordner /Musik/"_s);
    EXPECT_EQ(name(shownRequest({u"Genre"_s, u"Genre"_s, u"Pop"_s})), u"„Pop“"_s);
    EXPECT_EQ(name({ShownRequest::Kind::SearchLine, u"Pop"_s}), QString());
    EXPECT_EQ(name(shownRequest({u"playlist"_s, {}, u"17"_s})), QString());
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
