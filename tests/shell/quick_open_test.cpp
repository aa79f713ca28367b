#include "shell/quick_open.h"
#include "shell/ui/quick_open_dialog.h"
#include "support/text_catalogue.h"

#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

std::vector<QuickEntry> someEntries()
{
    return {{.title = u"Ansicht: Schrift"_s, .kind = u"Befehl"_s},
            {.title = u"Titel schreiben"_s, .kind = u"Befehl"_s, .key = u"Strg+T"_s},
            {.title = u"Schrift der Tabellen"_s, .kind = u"Einstellung"_s},
            {.title = u"Nur Beschriftung"_s, .kind = u"Playliste"_s},
            {.title = u"Beenden"_s, .kind = u"Befehl"_s, .whyNot = u"Es läuft noch etwas"_s}};
}

QStringList found(const QString& text)
{
    const std::vector<QuickEntry> entries = someEntries();
    QStringList titles;
    for (const QuickMatch& match : quickMatches(entries, text)) {
        titles.append(entries[match.place].title);
    }
    return titles;
}

TEST(QuickMatches, TitlesThatBeginWithTheTextComeFirstThenThoseWithAWordOfIt)
{
    EXPECT_EQ(found(u"schrift"_s), (QStringList{u"Schrift der Tabellen"_s, u"Ansicht: Schrift"_s,
                                                u"Nur Beschriftung"_s}));
}

TEST(QuickMatches, EveryWordMustStandInTitleOrKind)
{
    EXPECT_EQ(found(u" SCHRIFT  befehl "_s), QStringList{u"Ansicht: Schrift"_s});
    EXPECT_EQ(found(u"schrift walzer"_s), QStringList());
    EXPECT_EQ(found({}).size(), 5);
}

struct QuickOpenDialogTest : testing::Test
{
    QuickOpenDialogTest()
    {
        catalogue.fill();
        dialog = std::make_unique<QuickOpenDialog>(
            catalogue.texts, someEntries(),
            [this](const QString& typed,
                   const std::function<void(QuickOpenDialog::Entries)>& answer) {
                asked.append(typed);
                answers.push_back(answer);
            });
        dialog->show();
        line = dialog->findChild<QLineEdit*>(u"txtQuick"_s);
        list = dialog->findChild<QTreeWidget*>(u"lstQuick"_s);
    }

    [[nodiscard]] QStringList titles() const
    {
        QStringList result;
        for (int row = 0; row < list->topLevelItemCount(); ++row) {
            result.append(list->topLevelItem(row)->text(0));
        }
        return result;
    }

    TextCatalogue catalogue;
    std::unique_ptr<QuickOpenDialog> dialog;
    QLineEdit* line = nullptr;
    QTreeWidget* list = nullptr;
    QStringList asked; ///< texts that more was looked for
    std::vector<std::function<void(QuickOpenDialog::Entries)>> answers; ///< to each of them
};

TEST_F(QuickOpenDialogTest, WhatIsTypedIsFoundAndEnterTakesTheFirst)
{
    QTest::keyClicks(line, u"schreib"_s);
    ASSERT_EQ(titles(), QStringList{u"Titel schreiben"_s});
    EXPECT_EQ(list->topLevelItem(0)->text(1), u"Befehl"_s);
    EXPECT_EQ(list->topLevelItem(0)->text(2), u"Strg+T"_s);
    QTest::keyClick(line, Qt::Key_Return);
    ASSERT_TRUE(dialog->chosen().has_value());
    EXPECT_EQ(dialog->chosen()->title, u"Titel schreiben"_s);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(QuickOpenDialogTest, DownChoosesWhileTheKeyboardStaysInTheLine)
{
    QTest::keyClicks(line, u"schrift"_s);
    QTest::keyClick(line, Qt::Key_Down);
    QTest::keyClick(line, Qt::Key_Return);
    ASSERT_TRUE(dialog->chosen().has_value());
    EXPECT_EQ(dialog->chosen()->title, u"Ansicht: Schrift"_s);
}

TEST_F(QuickOpenDialogTest, WhatCannotBeDoneNowSaysWhyAndStays)
{
    QTest::keyClicks(line, u"beenden"_s);
    EXPECT_EQ(dialog->findChild<QLabel*>(u"lblQuick"_s)->text(), u"Es läuft noch etwas"_s);
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_FALSE(dialog->chosen().has_value());
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(QuickOpenDialogTest, OfThoseThatFitAlikeWhatCanBeDoneStandsFirst)
{
    QTest::keyClicks(line, u"mehr"_s);
    QuickOpenDialog::Entries more(2);
    more[0].title = u"Mehr davon"_s;
    more[0].whyNot = u"Nichts da"_s;
    more[1].title = u"Mehr Licht"_s;
    answers.back()(more);
    EXPECT_EQ(titles(), QStringList({u"Mehr Licht"_s, u"Mehr davon"_s}));
}

TEST_F(QuickOpenDialogTest, NothingFoundIsTold)
{
    QTest::keyClicks(line, u"xyz"_s);
    EXPECT_TRUE(titles().isEmpty());
    EXPECT_EQ(dialog->findChild<QLabel*>(u"lblQuick"_s)->text(), u"Nichts heißt so."_s);
    QTest::keyClick(line, Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
}

TEST_F(QuickOpenDialogTest, WhatIsFoundLaterStandsWhereItFitsAndLeavesWhatTheUserHasGoneTo)
{
    QTest::keyClicks(line, u"schrift"_s);
    ASSERT_EQ(asked.last(), u"schrift"_s);
    QTest::keyClick(line, Qt::Key_Down);
    answers.back()({{.title = u"Schrifttanz"_s, .kind = u"Interpret"_s}});
    EXPECT_EQ(titles(), (QStringList{u"Schrift der Tabellen"_s, u"Schrifttanz"_s,
                                     u"Ansicht: Schrift"_s, u"Nur Beschriftung"_s}));
    EXPECT_EQ(list->currentItem()->text(0), u"Ansicht: Schrift"_s);
}

TEST_F(QuickOpenDialogTest, AnAnswerToAnEarlierTextIsDropped)
{
    QTest::keyClicks(line, u"tit"_s);
    const auto late = answers.back();
    QTest::keyClicks(line, u"el"_s);
    late({{.title = u"Tite alt"_s, .kind = u"Album"_s}});
    EXPECT_EQ(titles(), QStringList{u"Titel schreiben"_s});
}

TEST_F(QuickOpenDialogTest, AnAnswerBehindTheEndOfTheLineIsNoFailure)
{
    QTest::keyClicks(line, u"t"_s);
    dialog.reset();
    answers.back()({{.title = u"Tanz"_s, .kind = u"Album"_s}});
}

} // namespace
} // namespace melovane::test
