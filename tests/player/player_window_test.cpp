#include "config/config_objects.h"
#include "config/melovane_configuration.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/skin.h"
#include "player/sequence_stage.h"
#include "player/ui/deck_view.h"
#include "player/ui/mix_view.h"
#include "player/ui/player_window.h"
#include "support/accessible_walk.h"
#include "support/text_catalogue.h"

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <QToolButton>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::Lists;
using test::SequenceStage;

class PlayerWindowTest : public testing::Test
{
protected:
    PlayerWindowTest()
    {
        stage.addPlaying(4);
        window.resize(1200, 500);
        window.show();
        window.refreshLists();
    }

    void click(const QString& tool)
    {
        auto* button = window.findChild<QToolButton*>(u"tool."_s + tool);
        ASSERT_NE(button, nullptr);
        QTest::mouseClick(button, Qt::LeftButton);
    }

    [[nodiscard]] const DeckFace& face(const QString& deck) const
    {
        return window.findChild<DeckView*>(deck)->face();
    }

    void run(int ms)
    {
        stage.run(ms);
        window.refresh();
    }

    SequenceStage stage;
    struct FilledCatalogue : test::TextCatalogue
    {
        FilledCatalogue() { fill(); }
    };

    FilledCatalogue catalogue;
    Skin skin{*qobject_cast<QApplication*>(QApplication::instance())};
    IconSet icons{skin};
    JinglePads jingles{stage.parts, stage.jingleDecks};
    PlayerDesk desk{stage.sequence, stage.engineOfStage, stage.playing,
                    jingles,        *stage.settings,     catalogue.texts};
    PlayerWindow window{desk, catalogue.texts, skin, icons};
};

TEST_F(PlayerWindowTest, PlayBeginsTheListAndTheSameButtonStopsIt)
{
    click(u"air.play"_s);
    run(1000);
    EXPECT_EQ(stage.heard(), u"1"_s);
    EXPECT_TRUE(face(u"deckA"_s).isOnAir);
    EXPECT_FALSE(face(u"deckB"_s).isOnAir);
    EXPECT_EQ(face(u"deckA"_s).title, u"Titel"_s);
    EXPECT_NEAR(face(u"deckA"_s).elapsedMs + face(u"deckA"_s).remainingMs, 10'000, 60);
    click(u"air.play"_s);
    run(1000);
    EXPECT_FALSE(stage.sequence.isPlaying());
}

TEST_F(PlayerWindowTest, TheMixAheadIsDrawnToScale)
{
    click(u"air.play"_s);
    run(1000);
    auto* mix = window.findChild<MixView*>(u"mixAhead"_s);
    const double unit = mix->width() / double(MixView::kSpanMs);
    EXPECT_NEAR(mix->endX() - mix->beginX(), 2000 * unit, 1);
    EXPECT_NEAR(mix->endX(), face(u"deckA"_s).remainingMs * unit, 1);
    EXPECT_TRUE(mix->text().contains(u"00:0"_s)) << mix->text().toStdString();
}

TEST_F(PlayerWindowTest, NextAndMixNowDoWhatTheySay)
{
    click(u"air.play"_s);
    run(1000);
    click(u"air.next"_s);
    run(500);
    EXPECT_EQ(stage.heard(), u"1 2"_s);
    run(1500);
    click(u"air.mix"_s);
    run(500);
    EXPECT_EQ(stage.heard(), u"1 2 3"_s);
}

TEST_F(PlayerWindowTest, WhatFollowsIsListed)
{
    auto* list = window.findChild<QListWidget*>(u"lstUpcoming"_s);
    EXPECT_EQ(list->count(), 4);
    EXPECT_EQ(list->item(0)->text(), u"Interpret - Titel"_s);
}

TEST_F(PlayerWindowTest, AJinglePadPlaysOverTheMusic)
{
    const int jingleList =
        stage.library.addPlaylist({.Name = u"Jingles"_s, .GRID = -1, .tracks = {Lists::fid(4)}});
    ASSERT_GT(jingleList, 0);
    jingles.refresh();
    window.refreshLists();
    auto* pad = window.findChild<QPushButton*>(u"pad1"_s);
    EXPECT_EQ(pad->text(), u"Titel"_s);
    EXPECT_FALSE(window.findChild<QPushButton*>(u"pad2"_s)->isEnabled());
    QTest::mouseClick(pad, Qt::LeftButton);
    run(100);
    EXPECT_EQ(stage.heard(), u"j4"_s);
    EXPECT_TRUE(jingles.sounds(0));
    EXPECT_TRUE(pad->isChecked()) << "it is down as long as it sounds";
    QTest::mouseClick(window.findChild<QPushButton*>(u"padStop"_s), Qt::LeftButton);
    run(1000);
    EXPECT_FALSE(jingles.sounds(0));
}

TEST_F(PlayerWindowTest, AJingleWithALongTitleBeginsWithItsFirstWord)
{
    stage.execute(u"update db_all set titel='Eröffnung %1' where fid='%2'"_s.arg(
        QString(u"sehr "_s).repeated(40), Lists::fid(4)));
    stage.library.addPlaylist({.Name = u"Jingles"_s, .GRID = -1, .tracks = {Lists::fid(4)}});
    jingles.refresh();
    window.refreshLists();
    auto* pad = window.findChild<QPushButton*>(u"pad1"_s);
    EXPECT_TRUE(pad->text().startsWith(u"Eröffnung"_s));
    EXPECT_LT(pad->fontMetrics().horizontalAdvance(pad->text()), pad->width());
    const qsizetype before = pad->text().size();
    window.resize(window.width() * 2, window.height());
    EXPECT_GT(pad->text().size(), before) << "with more room more of it is shown";
    const int wide = pad->fontMetrics().horizontalAdvance(pad->text());
    pad->setStyleSheet(u"padding: 0 40px"_s);
    window.refreshLists();
    EXPECT_LE(pad->fontMetrics().horizontalAdvance(pad->text()), wide - 60)
        << "a theme may leave less room";
}

TEST_F(PlayerWindowTest, ThePitchStaysWithinTheUsersRange)
{
    auto* slider = window.findChild<QSlider*>(u"sldPitch"_s);
    EXPECT_EQ(slider->maximum(), 2000);
    click(u"air.play"_s);
    run(1000);
    slider->setValue(slider->maximum());
    EXPECT_EQ(desk.pitch(), 2000);
}

TEST_F(PlayerWindowTest, ThePitchGoesBackGently)
{
    click(u"air.play"_s);
    run(1000);
    window.findChild<QSlider*>(u"sldPitch"_s)->setValue(500);
    EXPECT_EQ(stage.engineOfStage.pitch(AirDeck::A), 500);
    stage.settings->SetRePitchTime(3000);
    click(u"air.pitch.zero"_s);
    EXPECT_EQ(desk.pitch(), 0);
    EXPECT_EQ(stage.engineOfStage.glidedMs, 3000);
}

TEST_F(PlayerWindowTest, PauseLeavesTheEntryOnItsDeckAndGoesOnThere)
{
    click(u"air.play"_s);
    run(3000);
    click(u"air.pause"_s);
    run(1000);
    EXPECT_TRUE(face(u"deckA"_s).isPaused);
    EXPECT_NEAR(face(u"deckA"_s).elapsedMs, 3000, 60);
    EXPECT_TRUE(window.findChild<QToolButton*>(u"tool.air.pause"_s)->isChecked());
    click(u"air.pause"_s);
    run(1000);
    EXPECT_TRUE(face(u"deckA"_s).isOnAir);
    EXPECT_NEAR(face(u"deckA"_s).elapsedMs, 4000, 100);
}

TEST_F(PlayerWindowTest, LoopAndAutomixSwitchWhatTheySay)
{
    click(u"air.play"_s);
    run(1000);
    click(u"air.loop"_s);
    EXPECT_TRUE(stage.sequence.isLoop());
    click(u"air.loop"_s);
    EXPECT_FALSE(stage.sequence.isLoop());
    click(u"air.mixmode"_s);
    EXPECT_FALSE(stage.sequence.isMixMode());
    run(10'000);
    EXPECT_EQ(stage.heard(), u"1"_s) << "the next one waits";
    EXPECT_FALSE(window.findChild<QToolButton*>(u"tool.air.mixmode"_s)->isChecked());
}

TEST_F(PlayerWindowTest, TheKeysOfPauseActOnTheirOwnDeckOnly)
{
    EXPECT_TRUE(desk.run(u"PLPlay"_s));
    run(1000);
    EXPECT_TRUE(desk.run(u"PLPause2"_s));
    EXPECT_TRUE(stage.sequence.isPlaying());
    EXPECT_TRUE(desk.run(u"PLPause1"_s));
    EXPECT_TRUE(stage.sequence.isPaused());
    EXPECT_TRUE(desk.run(u"PLPause2"_s));
    EXPECT_TRUE(stage.sequence.isPaused());
    EXPECT_TRUE(desk.run(u"PLPause1"_s));
    EXPECT_TRUE(stage.sequence.isPlaying());
    run(1000);
    EXPECT_TRUE(desk.run(u"PLLOOP"_s));
    EXPECT_TRUE(stage.sequence.isLoop());
}

TEST_F(PlayerWindowTest, TheBindingsOfThePlayerActAndOthersDoNot)
{
    EXPECT_TRUE(desk.run(u"PLPlay"_s));
    run(100);
    EXPECT_TRUE(stage.sequence.isPlaying());
    EXPECT_TRUE(desk.run(u"PLTaloverON"_s));
    EXPECT_TRUE(desk.isTalkover());
    EXPECT_TRUE(desk.run(u"PLStop"_s));
    EXPECT_FALSE(stage.sequence.isPlaying());
    EXPECT_FALSE(desk.run(u"DBKopie"_s));
}

TEST_F(PlayerWindowTest, WhatIsLeftOutIsTold)
{
    MlvPlaylistDetail entry;
    entry.Titel = u"Verloren"_s;
    desk.leftOut(entry, AirFault::Missing);
    window.refresh();
    EXPECT_TRUE(window.findChild<QLabel*>(u"lblNotice"_s)->text().contains(u"Verloren"_s));
}

TEST_F(PlayerWindowTest, DockedItHasTheUpperHalfAndThenItsPlaceAgain)
{
    const QRect before = window.geometry();
    window.setDocked(true);
    EXPECT_LE(window.geometry().bottom(), window.screen()->availableGeometry().center().y() + 1);
    window.setDocked(false);
    EXPECT_EQ(window.geometry(), before);
}

TEST_F(PlayerWindowTest, EveryControlHasANameAndARoleAndIsReachedWithoutAMouse)
{
    click(u"air.play"_s);
    run(1000);
    EXPECT_EQ(test::walkAccessibly(window).faults().join(u'\n').toStdString(), "");
}

} // namespace
} // namespace melovane
