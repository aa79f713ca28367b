#include "bus/message_numbers.h"
#include "platform/controls/status_line.h"
#include "platform/linux/linux_file_lock.h"
#include "platform/linux/linux_messages.h"
#include "platform/qt/outline_tree.h"
#include "shell/application_fixture.h"
#include "shell/ui/mlvdb_window.h"
#include "support/wait_for.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QRegularExpression>
#include <QTableView>
#include <QTimer>
#include <QToolButton>
#include <QTranslator>

#include <gtest/gtest.h>

#include <csignal>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

using test::ApplicationTest;

TEST_F(ApplicationTest, StartsSearchesAndEnds)
{
    suite.library.add({.Titel = u"Lichter über dem Hafen"_s, .Interpret = u"Mara Vossberg"_s});
    suite.library.add({.Titel = u"Brandung"_s, .Interpret = u"Ostwind"_s});
    int rows = -1;
    const int code = run([&](QMainWindow& window) {
        auto* line = window.findChild<QComboBox*>(u"Text1"_s)->lineEdit();
        line->selectAll();
        QTest::keyClicks(line, u"licht"_s);
        rows = window.findChild<QTableView*>(u"TDBGrid1"_s)->model()->rowCount();
    });
    EXPECT_EQ(code, 0);
    EXPECT_EQ(rows, 1);
    // Every search came from memory, at least those of the five letters.
    EXPECT_EQ(searches.left, 0);
    EXPECT_GE(searches.answers, 5);
    EXPECT_EQ(searches.loads, 1);
    EXPECT_TRUE(warnings.isEmpty()) << warnings.join(u"\n"_s).toStdString();
}

TEST_F(ApplicationTest, AListIsImportedFromTheMenuOpenedAndSavedAgain)
{
    suite.library.add({.FID = u"800000000001"_s, .Titel = u"Brandung"_s, .DName = u"b.mp3"_s});
    const test::TempFolder folder;
    const QString file =
        folder.write(u"Größte Hits.m3u"_s, "#MLV:FID=800000000001\n/music/b.mp3\nmissing.mp3\n");
    int rows = -1;
    QTimer user; // the watcher waits for the entries of the menu
    QObject::connect(&user, &QTimer::timeout, qApp, [&] { answered(); });
    user.start(10ms);
    EXPECT_EQ(run([&](QMainWindow& window) {
                  chosenFile = file;
                  window.findChild<QAction*>(u"mnuImpPlaylistBas"_s)->trigger();
                  rows = window.findChild<QTableView*>(u"PlaylistGrid1"_s)->model()->rowCount();
                  chosenFile = folder.file(u"out"_s);
                  window.findChild<QAction*>(u"mnuAktivePlaylist"_s)->trigger();
              }),
              0);
    EXPECT_EQ(rows, 1);
    EXPECT_EQ(suite.column(u"select name from pl_name"_s), QStringList{u"Größte Hits"_s});
    EXPECT_EQ(warnings.size(), 1); // the log of what is missing is offered
    EXPECT_TRUE(folder.read(u"out.m3u"_s).contains("#MLV:FID=800000000001\r\n"));
}

/// A desktop that has no program for any file, as long as it lives.
class WithoutOpener
{
public:
    WithoutOpener() { qputenv("PATH", "/proc"); }

    ~WithoutOpener() { qputenv("PATH", m_former); }

    WithoutOpener(const WithoutOpener&) = delete;
    WithoutOpener& operator=(const WithoutOpener&) = delete;

private:
    QByteArray m_former = qgetenv("PATH");
};

TEST_F(ApplicationTest, ALogOrAPageThatNothingOpensIsToldWithItsPlace)
{
    const WithoutOpener desktop;
    suite.library.add({.Titel = u"Brandung"_s});
    suite.write(u"melovane.ini"_s, "[Message]\nHandle.DJ=99\n");
    const QString page = suite.write(u"Melovane.html"_s, "<html></html>");
    chosenFile = suite.write(u"fort.m3u"_s, "missing.mp3\n");
    saysYes = true;
    QString ofPage;
    QString ofLog;
    QTimer user; // the watcher waits for the entries of the menu
    QObject::connect(&user, &QTimer::timeout, qApp, [&] { answered(); });
    user.start(10ms);
    run([&](QMainWindow& window) {
        const auto told = [&] {
            return static_cast<MlvdbWindow&>(window).status().panel(StatusPanel::Message);
        };
        ASSERT_NE(splash(), nullptr);
        splash()->findChild<QToolButton*>(u"cmdLogo"_s)->click();
        ofPage = told();
        window.findChild<QAction*>(u"mnuImpPlaylistBas"_s)->trigger();
        ofLog = told();
    });
    EXPECT_EQ(ofPage, u"Kein Programm öffnet die Hilfe. Sie liegt hier: "_s + page);
    EXPECT_TRUE(ofLog.startsWith(u"Kein Programm öffnet das Protokoll. Es liegt hier: "_s))
        << ofLog.toStdString();
}

TEST_F(ApplicationTest, ARunThatDiedIsToldAtTheNextStartAndARunThatEndedIsNot)
{
    suite.library.add({.Titel = u"Brandung"_s});
    const auto marks = [this] {
        return QDir(suite.dataFolder()).entryList({u"*.running"_s}, QDir::Files);
    };
    QStringList during;
    QString told;
    const auto look = [&](QMainWindow& window) {
        during = marks();
        told = static_cast<MlvdbWindow&>(window).status().panel(StatusPanel::Message);
    };
    EXPECT_EQ(run(look), 0);
    ASSERT_EQ(during.size(), 1);
    EXPECT_FALSE(told.contains(u"nicht ordentlich beendet"_s));
    EXPECT_EQ(marks(), QStringList());

    suite.write(during.first(), "21.11.2026 20:15\n");
    EXPECT_EQ(run(look), 0);
    EXPECT_EQ(told,
              u"Das Programm wurde beim letzten Mal (Start 21.11.2026 20:15) nicht ordentlich "
              "beendet."_s);
    EXPECT_EQ(marks(), QStringList());
}

TEST_F(ApplicationTest, TheReportOfACrashIsOfferedOnce)
{
    suite.library.add({.Titel = u"Brandung"_s});
    const WithoutOpener desktop;
    const QString wanted = u"Kein Programm öffnet den Bericht. Er liegt hier: "_s;
    saysYes = true;
    closesWindow = false; // the watcher also looks while the dialog goes away
    suite.write(u"MelovaneDB.running"_s, "21.11.2026 20:15\n");
    suite.write(u"MelovaneDB.crash"_s, "MelovaneDB 1\n");
    suite.write(u"MelovaneDB.crash.txt"_s, "an older one\n");
    QString told;
    run([&](QMainWindow& window) {
        told = static_cast<MlvdbWindow&>(window).status().panel(StatusPanel::Message);
        if (told.startsWith(wanted)) {
            window.close();
        }
    });
    ASSERT_EQ(warnings.size(), 1);
    EXPECT_TRUE(warnings[0].contains(u"Das Programm ist beim letzten Mal abgestürzt."_s));
    EXPECT_TRUE(warnings[0].contains(u"MelovaneDB.crash.txt"_s));
    EXPECT_EQ(suite.read(u"MelovaneDB.crash.txt"_s), QByteArray("MelovaneDB 1\n"));

    closesWindow = true;
    suite.write(u"MelovaneDB.running"_s, "22.11.2026 20:15\n");
    run();
    EXPECT_EQ(warnings.size(), 1);
}

TEST_F(ApplicationTest, TheEndOfTheSessionKeepsWhatAClosedWindowKeeps)
{
    suite.library.add({.Titel = u"Brandung"_s});
    closesWindow = false;
    bool isAsked = false;
    const auto end = [&](QMainWindow& window) {
        if (!std::exchange(isAsked, true)) {
            window.setGeometry(10, 20, 740, 650);
            ::raise(SIGTERM);
        }
    };
    EXPECT_EQ(run(end), 0);
    EXPECT_TRUE(QDir(suite.dataFolder()).entryList({u"*.running"_s}, QDir::Files).isEmpty());
    closesWindow = true;
    QRect place;
    EXPECT_EQ(run([&](QMainWindow& window) { place = window.geometry(); }), 0);
    EXPECT_EQ(place, QRect(10, 20, 740, 650));
}

TEST_F(ApplicationTest, InANarrowWindowTheSearchLineHasTheKeyboardAtTheStart)
{
    suite.library.add({.Titel = u"Brandung"_s});
    suite.write(u"melovane.ini"_s, "[DBPosition]\nLeft=0\nTop=0\nWhidth=640\nHeight=400\n");
    const QWidget* first = nullptr;
    const QWidget* line = nullptr;
    run([&](QMainWindow& window) {
        first = window.focusWidget();
        line = window.findChild<QComboBox*>(u"Text1"_s);
    });
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(first, line);
}

TEST_F(ApplicationTest, WhatCouldNotBeKeptAtTheEndIsToldButNotToAnEndFromOutside)
{
    suite.library.add({.Titel = u"Brandung"_s});
    // Settings are read but their lock is a folder, as on a disk that takes no more files.
    QString blocked;
    const auto block = [&] {
        blocked = suite.file(u"melovane.ini"_s);
        QFile::remove(blocked + u".lock"_s);
        ASSERT_TRUE(QDir().mkpath(blocked + u".lock"_s));
    };
    EXPECT_EQ(run([&](QMainWindow& window) {
                  block();
                  window.setGeometry(10, 20, 740, 650);
              }),
              0);
    ASSERT_EQ(warnings.size(), 1);
    EXPECT_TRUE(warnings.first().contains(u"ließen sich nicht schreiben"_s));
    EXPECT_TRUE(warnings.first().contains(blocked)) << warnings.first().toStdString();

    ASSERT_TRUE(QDir().rmdir(blocked + u".lock"_s));
    warnings.clear();
    closesWindow = false;
    bool isAsked = false;
    EXPECT_EQ(run([&](QMainWindow&) {
                  if (!std::exchange(isAsked, true)) {
                      block();
                      ::raise(SIGTERM);
                  }
              }),
              0);
    EXPECT_EQ(warnings, QStringList());
}

TEST_F(ApplicationTest, WithoutAFolderForMessagesThatIsToldAndOnlyOneCopyRunsAllTheSame)
{
    suite.library.add({.Titel = u"Brandung"_s});
    withoutRuntimeFolder = true;
    bool isFree = true;
    EXPECT_EQ(run([&](QMainWindow&) {
                  isFree = lockFile(suite.file(u"MelovaneDB.lock"_s), 0ms) != nullptr;
              }),
              0);
    EXPECT_FALSE(isFree);
    ASSERT_EQ(warnings.size(), 1);
    EXPECT_TRUE(warnings.first().contains(u"Es gibt keinen Ordner für die Verständigung"_s));
}

TEST_F(ApplicationTest, ACommandOfTheListsThatFailsSaysWhy)
{
    suite.library.add({.Titel = u"Brandung"_s});
    QString told;
    run([&](QMainWindow& window) {
        suite.execute(u"drop table pl_group"_s);
        window.findChild<QWidget*>(u"PlaylistFavorit1"_s)
            ->findChild<QToolButton*>(u"all.newdir"_s)
            ->click();
        told = static_cast<MlvdbWindow&>(window).status().panel(StatusPanel::Message);
    });
    EXPECT_TRUE(told.startsWith(u"Nicht ausgeführt: "_s)) << qPrintable(told);
}

TEST_F(ApplicationTest, AndSaysItInTheLanguageOfTheWindow)
{
    suite.library.add({.Titel = u"Brandung"_s});
    chooseEnglish();
    QString told;
    run([&](QMainWindow& window) {
        suite.execute(u"drop table pl_group"_s);
        window.findChild<QWidget*>(u"PlaylistFavorit1"_s)
            ->findChild<QToolButton*>(u"all.newdir"_s)
            ->click();
        told = static_cast<MlvdbWindow&>(window).status().panel(StatusPanel::Message);
    });
    EXPECT_TRUE(
        QRegularExpression(u"^Not done: Error 3\\d+ of the database"_s).match(told).hasMatch())
        << qPrintable(told);
}

TEST_F(ApplicationTest, ADamagedUndoHistoryBeginsAnewAndTheUserIsToldWhereTheOldOneLies)
{
    const QString track = suite.library.add({.Titel = u"Brandung"_s});
    const int group = suite.library.addGroup(u"Freitag"_s);
    suite.library.addPlaylist(
        {.Name = u"Hauptset"_s, .GRID = group, .tracks = {track, track}, .IsPlay = true});
    suite.write(u"melovane.undo.mdb"_s, "this is no database");
    QString told;
    run([&](QMainWindow& window) {
        auto* list = window.findChild<QTableView*>(u"PlaylistGrid1"_s);
        list->selectRow(0);
        QTest::keyClick(list, Qt::Key_Delete);
        told = static_cast<MlvdbWindow&>(window).status().panel(StatusPanel::Message);
    });
    EXPECT_TRUE(told.endsWith(u"/melovane.undo.mdb.damaged"_s)) << qPrintable(told);
    EXPECT_EQ(suite.read(u"melovane.undo.mdb.damaged"_s), "this is no database");
}

TEST_F(ApplicationTest, ADamagedSideFileIsMadeAnewAndTheUserIsToldWhereTheOldOneLies)
{
    suite.library.add({.Titel = u"Brandung"_s});
    suite.write(u"melovane.temp.mdb"_s, "this is no database");
    QString told;
    run([&](QMainWindow& window) {
        told = static_cast<MlvdbWindow&>(window).status().panel(StatusPanel::Message);
    });
    EXPECT_TRUE(told.endsWith(u"/melovane.temp.mdb.damaged"_s)) << qPrintable(told);
    EXPECT_EQ(suite.read(u"melovane.temp.mdb.damaged"_s), "this is no database");
}

TEST_F(ApplicationTest, ADamagedSearchHistoryIsKeptAsideAndTheUserIsToldOnceWhere)
{
    suite.library.add({.Titel = u"Brandung"_s});
    const QByteArray damaged = "\"TextSuche\",\"0\",\"\",\"Licht\"\n\x8f\x03\xff\"no line\n";
    suite.write(u"suche.his"_s, damaged);
    QStringList told;
    for (int start = 0; start < 2; ++start) {
        run([&](QMainWindow& window) {
            told.append(static_cast<MlvdbWindow&>(window).status().panel(StatusPanel::Message));
        });
    }
    EXPECT_TRUE(told.value(0).endsWith(u"/suche.his.damaged"_s)) << qPrintable(told.value(0));
    EXPECT_FALSE(told.value(1).contains(u"suche.his"_s)) << qPrintable(told.value(1));
    EXPECT_EQ(suite.read(u"suche.his.damaged"_s), damaged);
    EXPECT_TRUE(suite.read(u"suche.his"_s).contains("Licht"));
    EXPECT_FALSE(QFile::exists(suite.file(u"suche.his.damaged.2"_s)));
}

TEST_F(ApplicationTest, TheDefaultLibraryIsNeverOpenedInPlaceOfAMissingOneWithoutAWord)
{
    suite.library.add({.Titel = u"Brandung"_s});
    suite.write(u"melovane.ini"_s, "[Global]\nDBName=/away/club.mdb\n");
    EXPECT_EQ(run(), 0);
    ASSERT_EQ(warnings.size(), 1);
    EXPECT_TRUE(warnings.first().contains(u"/away/club.mdb"_s)) << qPrintable(warnings.first());
    EXPECT_TRUE(warnings.first().endsWith(suite.dbName())) << qPrintable(warnings.first());
}

TEST_F(ApplicationTest, WhatAKilledProgramHasLeftOfAFileIsGoneBehindTheStart)
{
    suite.library.add({.Titel = u"Brandung"_s});
    suite.write(u".mlv-1a2b3c"_s, "half of a file");
    run();
    EXPECT_FALSE(QFile::exists(suite.file(u".mlv-1a2b3c"_s)));
}

TEST_F(ApplicationTest, AnEmptyDatabaseStartsTheImporterWithArgument1AndDoesNotReadDBPosition)
{
    suite.write(u"melovane.ini"_s, "[DBPosition]\nLeft=7\nTop=9\nWhidth=640\nHeight=400\n");
    // The sibling of this test leaves its argument beside itself.
    const QString importer =
        suite.write(u"mediaintake"_s, "#!/bin/sh\necho \"$1\" > \"$0.started\"\n");
    QFile::setPermissions(importer, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QRect place;
    bool isCovered = true;
    EXPECT_EQ(run([&](QMainWindow& window) {
                  place = window.frameGeometry();
                  isCovered = splash() != nullptr;
              }),
              0);
    EXPECT_FALSE(isCovered) << "the importer's window";
    EXPECT_NE(place.topLeft(), QPoint(7, 9));
    EXPECT_EQ(place.size(), QSize(800, 600));
    const QString trace = importer + u".started"_s;
    ASSERT_TRUE(test::waitFor([&] { return QFileInfo(trace).size() > 0; }));
    EXPECT_EQ(suite.read(u"mediaintake.started"_s), "1\n");
}

TEST_F(ApplicationTest, SideFilesThatAreGoneAreMadeAnewAtTheFirstActivation)
{
    suite.library.add({.Titel = u"Brandung"_s});
    suite.engine->Release(suite.dbName());
    ASSERT_TRUE(QFile::remove(suite.file(u"melovane.temp.mdb"_s)));
    ASSERT_TRUE(QFile::remove(suite.file(u"melovane.tree.mdb"_s)));
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(suite.value(u"select count(*) as anz from TEMP_MP3Import"_s).toLong(), 0);
    EXPECT_EQ(suite.value(u"select count(*) as anz from tree_dir"_s).toLong(), 0);
}

TEST_F(ApplicationTest, TheListsStandInTheirPanelThePlayingOneChosenAndFoldedGroupsStayFolded)
{
    suite.library.add({.Titel = u"Brandung"_s});
    const int group = suite.library.addGroup(u"Freitag"_s);
    suite.library.addPlaylist({.Name = u"Warm-up"_s, .GRID = group});
    suite.library.addPlaylist({.Name = u"Hauptset"_s, .GRID = group, .IsPlay = true});
    const int other = suite.library.addGroup(u"Samstag"_s, 9);
    suite.library.addPlaylist({.Name = u"Tanz"_s, .GRID = other});
    const auto lists = [](QMainWindow& window) {
        return window.findChild<OutlineTree*>(u"PlaylistTree"_s);
    };
    const auto rowOf = [](const OutlineTree& tree, const QString& text) {
        int row = 0;
        while (row < tree.rowCount() && tree.row(row).text != text) {
            ++row;
        }
        return row;
    };
    QString chosen;
    run([&](QMainWindow& window) {
        OutlineTree& tree = *lists(window);
        chosen = tree.currentIndex().data().toString();
        ASSERT_LT(rowOf(tree, u"Samstag"_s), tree.rowCount());
        tree.setOpen(rowOf(tree, u"Samstag"_s), false);
        EXPECT_NE(window.findChild<QToolButton*>(u"all.newdoc"_s), nullptr);
        EXPECT_FALSE(window.findChild<QToolButton*>(u"all.lock"_s)->toolTip().isEmpty());
    });
    EXPECT_EQ(chosen, u"Hauptset"_s);
    bool folded = false;
    run([&](QMainWindow& window) {
        const OutlineTree& tree = *lists(window);
        folded = !tree.isOpen(rowOf(tree, u"Samstag"_s)) && tree.isOpen(rowOf(tree, u"Freitag"_s));
    });
    EXPECT_TRUE(folded);
}

TEST_F(ApplicationTest, APlaylistIsExportedWithItsFilesFromTheMenu)
{
    const QString music = suite.write(u"Musik/Licht.mp3"_s, "sound").section(u'/', 0, -2);
    const QString fid =
        suite.library.add({.Titel = u"Licht"_s, .Path = music + u'/', .DName = u"Licht.mp3"_s});
    suite.library.addPlaylist({.Name = u"Hauptset"_s, .tracks = {fid}, .IsPlay = true});
    suite.write(u"Stick/keep"_s, {});
    const QString stick = suite.file(u"Stick"_s);
    suite.write(u"melovane.ini"_s, "[Global]\nSavePlaylistFilesPath=" + stick.toUtf8() +
                                       "\n[SavePlaylist]\nTemplate=%P/%TP_%N\n");
    QString outcome;
    run([&](QMainWindow& window) {
        QTimer::singleShot(0, &window, [&] {
            QWidget* dialog = QApplication::activeModalWidget();
            dialog->findChild<QPushButton*>(u"cmdStart"_s)->click();
            outcome = dialog->findChild<QLabel*>(u"sklErgebnis"_s)->text();
            dialog->close();
        });
        window.findChild<QAction*>(u"mnuAktivePlaystFiles"_s)->trigger();
    });
    EXPECT_EQ(outcome, u"1 von 1 Titel kopiert."_s);
    EXPECT_EQ(suite.read(u"Stick/Hauptset/01_Licht.mp3"_s), "sound");
    EXPECT_TRUE(suite.read(u"Stick/Hauptset.m3u"_s).endsWith("\r\nHauptset/01_Licht.mp3\r\n"));
}

TEST_F(ApplicationTest, TheSampleToolIsStartedWithTheEntryAndItsAnswerIsTaken)
{
    const QString fid = suite.library.add({.Titel = u"Licht"_s});
    suite.library.addPlaylist({.Name = u"Hauptset"_s, .tracks = {fid}, .IsPlay = true});
    // The sibling of this test leaves what it was given beside itself.
    const QString tool =
        suite.write(u"Melovanekiv"_s, "#!/bin/sh\ncp \"${0%/*}/global.kiv\" "
                                      "\"$0.part\" && mv \"$0.part\" \"$0.got\"\n");
    QFile::setPermissions(tool, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    run([&](QMainWindow& window) {
        window.findChild<QTableView*>(u"PlaylistGrid1"_s)->selectRow(0);
        auto* panel = window.findChild<QWidget*>(u"ctl_Playlist1"_s);
        panel->findChild<QToolButton*>(u"all.sample"_s)->click();
        ASSERT_TRUE(test::waitFor([&] { return QFileInfo(tool + u".got"_s).size() > 0; }));
        const QList<QByteArray> given = suite.read(u"Melovanekiv.got"_s).split('\n');
        ASSERT_EQ(given.size(), 13);
        EXPECT_EQ(given[0], fid.toUtf8());
        QList<QByteArray> answer = given;
        answer[6] = " 40 ";
        answer[7] = " 900 ";
        suite.write(u"global.kiv"_s, answer.join('\n'));
        LinuxMessages messages(MessagePlace(suite.folders.environment().runtimeFolder()));
        const auto control = messages.makeControl();
        control->setTarget(given[3].trimmed().toInt());
        control->Post(message::kSampleValue1, 0, 0);
        const auto start = [&] { return suite.value(u"select FrameStart from pl_all"_s).toLong(); };
        EXPECT_TRUE(test::waitFor([&] { return start() == 40; }));
        EXPECT_EQ(suite.value(u"select FrameStop from pl_all"_s).toLong(), 900);
    });
}

TEST_F(ApplicationTest, AMissingDatabaseIsToldAsAnOpenErrorAndEndsTheProcess)
{
    suite.engine->Release(suite.dbName());
    ASSERT_TRUE(QFile::remove(suite.dbName()));
    EXPECT_EQ(run(), 1);
    ASSERT_EQ(warnings.size(), 1);
    EXPECT_EQ(warnings[0], u"Achtung !: Melovane kann nicht gestartet werden, da folgender Fehler "
                           "aufgetreten ist.\n\nDie Datenbankdatei ist nicht vorhanden:\n"_s +
                               suite.dbName());
}

TEST_F(ApplicationTest, AChosenLanguageSpeaksFromTheFirstMessageOn)
{
    chooseEnglish();
    suite.engine->Release(suite.dbName());
    ASSERT_TRUE(QFile::remove(suite.dbName()));
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(warnings, QStringList{u"Attention!: Melovane cannot start because of the following "
                                    "error.\n\nThe database file is not there:\n"_s +
                                    suite.dbName()});
}

TEST_F(ApplicationTest, TextsOfTheToolkitFollowTheLanguage)
{
    const auto cancel = [] { return QCoreApplication::translate("QPlatformTheme", "Cancel"); };
    suite.library.add({.Titel = u"Brandung"_s});
    run();
    EXPECT_EQ(cancel(), u"Abbrechen"_s);
    chooseEnglish();
    run();
    EXPECT_EQ(cancel(), u"Cancel"_s);
}

TEST_F(ApplicationTest, WithoutAPlayerTheSplashStandsOverTheWindowAndGoesWithIt)
{
    suite.library.add({.Titel = u"Brandung"_s});
    suite.write(u"melovane.ini"_s, "[Message]\nHandle.DJ=99\n");
    bool shown = false;
    EXPECT_EQ(run([&](QMainWindow&) { shown = splash() != nullptr; }), 0);
    EXPECT_TRUE(shown);
    EXPECT_EQ(splash(), nullptr);
}

TEST_F(ApplicationTest, StartedWithARunningPlayerNoSplashIsShown)
{
    suite.library.add({.Titel = u"Brandung"_s});
    LinuxMessages messages(MessagePlace(suite.folders.environment().runtimeFolder()));
    const auto player = messages.makeControl();
    ASSERT_NE(player->handle(), 0);
    suite.write(u"melovane.ini"_s,
                "[Message]\nHandle.DJ=" + QByteArray::number(player->handle()) + "\n");
    bool shown = true;
    EXPECT_EQ(run([&](QMainWindow&) { shown = splash() != nullptr; }), 0);
    EXPECT_FALSE(shown);
}

TEST_F(ApplicationTest, AForeignFileAsDatabaseIsToldAndNeverChanged)
{
    const QByteArray foreign = QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(5000, 'x');
    suite.engine->Release(suite.dbName());
    QFile::remove(suite.dbName() + u"-wal"_s);
    suite.write(u"melovane.mdb"_s, foreign);
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(warnings.size(), 1);
    EXPECT_EQ(suite.read(u"melovane.mdb"_s), foreign);
}

TEST_F(ApplicationTest, ADatabaseOfAnotherVersionIsToldUnderItsOddTitle)
{
    suite.execute(u"update db_version set version='2.9' where id='DB.Version'"_s);
    EXPECT_EQ(run(), 1);
    ASSERT_EQ(warnings.size(), 1);
    EXPECT_TRUE(warnings[0].startsWith("ooop's: Falsche Melovane Datenbankversion"_L1));
    EXPECT_TRUE(warnings[0].contains("2.9"_L1));
}

TEST_F(ApplicationTest, ASecondCopyEndsWithoutTouchingTheHandleKeysOfTheSettings)
{
    suite.write(u"melovane.ini"_s, "[Message]\nHandle.DB=4711\n");
    const LinuxEnvironment environment(suite.folders.places());
    const auto first = lockFile(environment.runtimeFolder() + u"/MelovaneDB.lock"_s, 0ms);
    ASSERT_TRUE(first);
    bool opened = false;
    EXPECT_EQ(run([&](QMainWindow&) { opened = true; }), 0);
    EXPECT_FALSE(opened);
    EXPECT_EQ(suite.read(u"melovane.ini"_s), "[Message]\nHandle.DB=4711\n");
}

} // namespace
} // namespace melovane
