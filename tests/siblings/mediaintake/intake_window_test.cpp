#include "intake/intake_fixture.h"
#include "intake/intake_session.h"
#include "siblings/mediaintake/ui/intake_window.h"
#include "siblings/mediaintake/ui/welcome_panel.h"
#include "support/accessible_walk.h"
#include "support/text_catalogue.h"
#include "support/wait_for.h"

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QStandardPaths>
#include <QTest>
#include <QTreeWidget>

#include <unistd.h>

namespace {

using namespace melovane;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

class IntakeWindowTest : public IntakeFixture
{
protected:
    void open(IntakeMode mode = IntakeMode::NewFiles)
    {
        settings = suite.makeSettings();
        session = std::make_unique<IntakeSession>(parts(), *settings, mode);
        window = std::make_unique<IntakeWindow>(*session);
        window->chooseFolder = [this](QWidget*, const QString& from) {
            offered = from;
            return chosen;
        };
        window->show();
    }

    template <typename T> T* find(const QString& name)
    {
        T* widget = window->findChild<T*>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return widget;
    }

    void click(const QString& name) { QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton); }

    bool waitForEnd()
    {
        return test::waitFor([this] { return !session->isRunning(); });
    }

    QString offered; ///< where the choice began
    QString chosen;
    std::unique_ptr<GlobalSettings> settings;
    std::unique_ptr<IntakeSession> session;
    std::unique_ptr<IntakeWindow> window;
};

TEST_F(IntakeWindowTest, AChosenFolderIsImportedAndReported)
{
    music.write(u"good.mp3"_s, simpleMp3(u"T"_s, u"A"_s));
    music.write(u"bad.mp3"_s, "not music");
    chosen = music.path();
    open();
    EXPECT_FALSE(find<QPushButton>(u"cmdStart"_s)->isEnabled());
    click(u"cmdAddFolder"_s);
    EXPECT_EQ(find<QListWidget>(u"lstFolders"_s)->count(), 1);
    EXPECT_TRUE(find<QPushButton>(u"cmdStart"_s)->isEnabled());
    click(u"cmdStart"_s);
    ASSERT_TRUE(waitForEnd());
    auto* report = find<QTreeWidget>(u"lstReport"_s);
    ASSERT_EQ(report->topLevelItemCount(), 1);
    EXPECT_EQ(report->topLevelItem(0)->text(0), music.file(u"bad.mp3"_s));
    EXPECT_TRUE(report->topLevelItem(0)->text(1).startsWith(u"Fehlerhafte MP3"_s));
    EXPECT_EQ(find<QLabel>(u"lblSummary"_s)->text(), u"2 Dateien geprüft: 1 neu, 1 abgelehnt."_s);
    EXPECT_EQ(find<QProgressBar>(u"ProgressBar1"_s)->value(), 100);
    EXPECT_TRUE(find<QPushButton>(u"cmdClose"_s)->isDefault());
    EXPECT_EQ(rows(), 1);
}

TEST_F(IntakeWindowTest, WhatTheFoldersHoldIsToldByKindBeforeAnythingIsImported)
{
    music.write(u"a.mp3"_s, simpleMp3(u"T"_s, u"A"_s));
    music.write(u"deep/b.mp3"_s, simpleMp3(u"T"_s, u"B"_s));
    music.write(u"c.flac"_s, "f");
    music.write(u"deep/d.flac"_s, "f");
    music.write(u"readme.txt"_s, "t");
    chosen = music.path();
    open();
    EXPECT_EQ(find<QLabel>(u"lblFound"_s)->text(), QString());
    click(u"cmdAddFolder"_s);
    const QString told = u"Gefunden: 2 MP3-Dateien. Nicht gelesen werden: 2 FLAC."_s;
    ASSERT_TRUE(test::waitFor([&] { return find<QLabel>(u"lblFound"_s)->text() == told; }));
    EXPECT_EQ(rows(), 0);
    click(u"cmdRemoveFolder"_s);
    EXPECT_EQ(find<QLabel>(u"lblFound"_s)->text(), QString());
}

TEST_F(IntakeWindowTest, AnEmptyLibraryGreetsWithTheChoiceOfLanguageAndTheme)
{
    open();
    QStringList done;
    window->greet(new WelcomePanel(
        texts,
        {.entries = {{u"lang_Deutsch.ini"_s, u"Deutsch"_s}, {u"lang_English.ini"_s, u"English"_s}},
         .present = u"lang_Deutsch.ini"_s,
         .choose = [&done](const QString& file) { done.append(file); }},
        {.entries = {{QString(), u"Desktop"_s}, {u"dark.skn"_s, u"Dunkel"_s}},
         .present = u"dark.skn"_s,
         .choose = [&done](const QString& file) { done.append(file); }}));
    auto* language = find<QComboBox>(u"cmbLanguage"_s);
    auto* theme = find<QComboBox>(u"cmbTheme"_s);
    EXPECT_EQ(language->currentText(), u"Deutsch"_s);
    EXPECT_EQ(theme->currentText(), u"Dunkel"_s);
    EXPECT_LT(language->mapTo(window.get(), QPoint()).y(),
              find<QListWidget>(u"lstFolders"_s)->mapTo(window.get(), QPoint()).y());
    QTest::keyClick(language, Qt::Key_Down);
    QTest::keyClick(theme, Qt::Key_Up);
    EXPECT_EQ(done, (QStringList{u"lang_English.ini"_s, QString()}));
}

TEST_F(IntakeWindowTest, TheReasonStandsInsideTheWindowHoweverLongItIs)
{
    const QString deep = QString(200, u'x') + u'/';
    const QString first = music.write(deep + u"a.mp3"_s, simpleMp3(u"T"_s, u"A"_s));
    const QString second = music.file(deep + u"b.mp3"_s);
    ASSERT_EQ(::link(QFile::encodeName(first).constData(), QFile::encodeName(second).constData()),
              0);
    chosen = music.path();
    open();
    click(u"cmdAddFolder"_s);
    click(u"cmdStart"_s);
    ASSERT_TRUE(waitForEnd());
    auto* report = find<QTreeWidget>(u"lstReport"_s);
    ASSERT_EQ(report->topLevelItemCount(), 1);
    QTest::qWait(0);
    const QRect reason = report->visualItemRect(report->topLevelItem(0)) &
                         QRect(report->columnViewportPosition(1), 0, report->columnWidth(1),
                               report->viewport()->height());
    EXPECT_GT(reason.width(), report->viewport()->width() / 3);
    EXPECT_LE(report->columnViewportPosition(1) + report->columnWidth(1),
              report->viewport()->width());
    EXPECT_EQ(report->horizontalScrollBar()->maximum(), 0);
}

TEST_F(IntakeWindowTest, TheEmptyListOfFoldersSaysHowOneGetsIn)
{
    chosen = music.path();
    open();
    auto* hint = find<QLabel>(u"lblNoFolder"_s);
    EXPECT_TRUE(hint->isVisible());
    EXPECT_TRUE(hint->text().contains(u"Ordner hinzufügen"_s));
    click(u"cmdAddFolder"_s);
    EXPECT_FALSE(hint->isVisible());
    click(u"cmdRemoveFolder"_s);
    EXPECT_TRUE(hint->isVisible());
}

TEST_F(IntakeWindowTest, APathOfAMillionLettersIsShortenedInTheWindowAndInThePrintedReport)
{
    open();
    session->setFolders({u"/music/"_s + QString(1'000'000, u'x') + u"/end"_s});
    window->start();
    ASSERT_TRUE(waitForEnd());
    auto* report = find<QTreeWidget>(u"lstReport"_s);
    ASSERT_EQ(report->topLevelItemCount(), 1);
    const QString shown = report->topLevelItem(0)->text(0);
    EXPECT_LT(shown.size(), 500);
    EXPECT_TRUE(shown.startsWith(u"/music/"_s) && shown.endsWith(u"/end"_s));
    EXPECT_LT(report->topLevelItem(0)->toolTip(0).size(), 500);
    EXPECT_LT(reportLines(texts, session->report()).join(u'\n').size(), 5000);
}

TEST_F(IntakeWindowTest, SoundOfOtherKindsIsShownByKind)
{
    for (const char* name : {"a.flac", "b.flac", "c.ogg", "d.m4a", "e.wma"}) {
        music.write(QString::fromLatin1(name), "x");
    }
    chosen = music.path();
    open();
    click(u"cmdAddFolder"_s);
    click(u"cmdStart"_s);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(find<QLabel>(u"lblSummary"_s)->text(),
              u"0 Dateien geprüft. Nicht gelesen, weil keine MP3-Dateien: 2 FLAC, 1 M4A, 1 Ogg, "
              u"1 WMA."_s);
}

TEST_F(IntakeWindowTest, SpeaksTheChosenLanguageReasonsIncluded)
{
    QFile shipped(resourceFolder() + u"/languages/lang_English.ini"_s);
    ASSERT_TRUE(shipped.open(QIODevice::ReadOnly));
    suite.write(u"lang_English.ini"_s, shipped.readAll());
    const CurrentFolder here(suite.dataFolder());
    texts.LoadAllLang(u"lang_English.ini"_s);
    music.write(u"bad.mp3"_s, "");
    chosen = music.path();
    open();
    EXPECT_EQ(window->windowTitle(), u"Import MP3 files"_s);
    click(u"cmdAddFolder"_s);
    click(u"cmdStart"_s);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(find<QLabel>(u"lblSummary"_s)->text(), u"1 file checked: 1 refused."_s);
    auto* report = find<QTreeWidget>(u"lstReport"_s);
    ASSERT_EQ(report->topLevelItemCount(), 1);
    EXPECT_EQ(report->topLevelItem(0)->text(1), u"Unreadable MP3 (the file is empty)"_s);
}

TEST_F(IntakeWindowTest, TheChoiceBeginsInTheMusicFolderAndThenWhereTheLastOneWas)
{
    chosen = music.path();
    open();
    click(u"cmdAddFolder"_s);
    EXPECT_EQ(offered, QStandardPaths::writableLocation(QStandardPaths::MusicLocation));
    EXPECT_FALSE(offered.isEmpty());
    click(u"cmdAddFolder"_s);
    EXPECT_EQ(offered, music.path());
}

TEST_F(IntakeWindowTest, EscapeCancelsARunningImportAndThenCloses)
{
    for (int i = 0; i < 600; ++i) {
        music.write(u"%1.mp3"_s.arg(i), simpleMp3(u"T"_s, u"A"_s));
    }
    chosen = music.path();
    open();
    click(u"cmdAddFolder"_s);
    window->start();
    ASSERT_TRUE(session->isRunning());
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(session->isRunning());
    EXPECT_TRUE(session->report().cancelled);
    EXPECT_TRUE(window->isVisible());
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(IntakeWindowTest, EnterStartsWhenAFolderIsThere)
{
    music.write(u"a.mp3"_s, simpleMp3(u"T"_s, u"A"_s));
    chosen = music.path();
    open();
    click(u"cmdAddFolder"_s);
    QTest::keyClick(window.get(), Qt::Key_Return);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(session->report().added, 1);
}

TEST_F(IntakeWindowTest, AFolderCanBeTakenOutAgain)
{
    chosen = music.path();
    open();
    click(u"cmdAddFolder"_s);
    click(u"cmdRemoveFolder"_s);
    EXPECT_EQ(find<QListWidget>(u"lstFolders"_s)->count(), 0);
    EXPECT_FALSE(find<QPushButton>(u"cmdStart"_s)->isEnabled());
    chosen.clear();
    click(u"cmdAddFolder"_s);
    EXPECT_EQ(find<QListWidget>(u"lstFolders"_s)->count(), 0);
}

TEST_F(IntakeWindowTest, RereadingNeedsNoFolder)
{
    open(IntakeMode::ChangedFiles);
    EXPECT_FALSE(find<QListWidget>(u"lstFolders"_s)->isVisible());
    click(u"cmdStart"_s);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(find<QLabel>(u"lblSummary"_s)->text(), u"0 Dateien geprüft."_s);
}

TEST_F(IntakeWindowTest, WithoutTheListsItsTextsStandTogetherAtTheTop)
{
    open(IntakeMode::ChangedFiles);
    click(u"cmdStart"_s);
    ASSERT_TRUE(waitForEnd());
    const int line = window->fontMetrics().height();
    EXPECT_LT(find<QLabel>(u"lblHint"_s)->geometry().bottom(), 5 * line);
    EXPECT_LT(find<QLabel>(u"lblSummary"_s)->geometry().bottom(), 10 * line);
    EXPECT_GT(find<QPushButton>(u"cmdClose"_s)->geometry().bottom(), window->height() - 3 * line);
}

TEST_F(IntakeWindowTest, ADatabaseThatIsNotThereIsSaid)
{
    open(IntakeMode::ChangedFiles);
    QFile::remove(suite.dbName());
    click(u"cmdStart"_s);
    ASSERT_TRUE(waitForEnd());
    EXPECT_TRUE(find<QLabel>(u"lblSummary"_s)->text().startsWith(u"Datenbank Fehler"_s));
}

TEST_F(IntakeWindowTest, EveryButtonHasAToolTip)
{
    open();
    for (const auto* button : window->findChildren<QPushButton*>()) {
        EXPECT_FALSE(button->toolTip().isEmpty()) << button->objectName().toStdString();
        EXPECT_FALSE(button->text().isEmpty());
    }
}

TEST_F(IntakeWindowTest, EveryControlHasANameAndARoleAndIsReachedWithoutAMouse)
{
    chosen = music.path();
    open();
    click(u"cmdAddFolder"_s);
    EXPECT_EQ(walkAccessibly(*window).faults().join(u'\n').toStdString(), "");
}

} // namespace
