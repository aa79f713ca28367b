// Backups and the check in the whole console, from its menus.
#include "care/backups.h"
#include "platform/linux/zstd_archive.h"
#include "platform/sqlite/engine/database_care.h"
#include "shell/application_fixture.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QTableView>
#include <QTreeWidget>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct Nothing : FileLock
{};

struct ApplicationSafety : test::ApplicationTest
{
    ApplicationSafety()
    {
        for (int i = 0; i < 30; ++i) {
            suite.library.add({.Titel = u"Titel %1"_s.arg(i)});
        }
        suite.write(u"melovane.ini"_s, "[Global]\nLiveSuche=1\n");
        // The fixture's own timer is asleep while what it has called goes on.
        QObject::connect(&answering, &QTimer::timeout, qApp, [this] { answered(); });
        answering.start(std::chrono::milliseconds(10));
    }

    /// A backup, made as the console makes it.
    void makeBackup()
    {
        ZstdArchives archives;
        const auto care = sqlite::makeDatabaseCare(suite.clock);
        Backups backups(
            {*care, archives, suite.files, suite.clock, [] { return std::make_unique<Nothing>(); }},
            {suite.dbName(), suite.dataFolder(), 34150});
        ASSERT_EQ(backups.make(BackupOccasion::ByHand, [](int) { return true; }),
                  BackupOutcome::Done);
    }

    /// Opens the window of an entry; `user` acts in it until it says that he is done.
    void
    inDialog(QMainWindow& window, const QString& entry, const std::function<void(QDialog&)>& user)
    {
        auto* action = window.findChild<QAction*>(entry);
        ASSERT_NE(action, nullptr);
        ASSERT_TRUE(action->isEnabled());
        QTimer hand;
        bool seen = false;
        QObject::connect(&hand, &QTimer::timeout, qApp, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!seen && dialog != nullptr && dialog->isVisible() &&
                dialog->objectName() == u"frmBackups") {
                seen = true;
                user(*dialog);
                dialog->close();
            }
        });
        hand.start(std::chrono::milliseconds(5));
        action->trigger();
        EXPECT_TRUE(seen);
    }

    [[nodiscard]] qint64 titles() const
    {
        return suite.value(u"select count(*) from db_all"_s).toInt64();
    }

    [[nodiscard]] QStringList backupFiles() const
    {
        return QDir(suite.dataFolder()).entryList({u"Melovane.Backup.(*"_s});
    }

    QTimer answering;

    static QTreeWidget& list(QDialog& dialog)
    {
        return *dialog.findChild<QTreeWidget*>(u"lstBackups"_s);
    }

    static QPushButton& button(QDialog& dialog, const QString& name)
    {
        return *dialog.findChild<QPushButton*>(name);
    }
};

} // namespace

TEST_F(ApplicationSafety, JetztSichernMakesABackupThatTheListShows)
{
    run([this](QMainWindow& window) {
        inDialog(window, u"mnuBackups"_s, [](QDialog& dialog) {
            EXPECT_EQ(list(dialog).topLevelItemCount(), 0);
            EXPECT_FALSE(button(dialog, u"cmdRestore"_s).isEnabled());
            button(dialog, u"cmdNow"_s).setFocus();
            QTest::keyClick(&button(dialog, u"cmdNow"_s), Qt::Key_Return);
            ASSERT_EQ(list(dialog).topLevelItemCount(), 1);
            EXPECT_EQ(list(dialog).topLevelItem(0)->text(2), u"30"_s);
            EXPECT_EQ(list(dialog).topLevelItem(0)->text(4), u"von Hand"_s);
            EXPECT_EQ(list(dialog).topLevelItem(0)->text(5), u"in Ordnung"_s);
            EXPECT_TRUE(button(dialog, u"cmdRestore"_s).isEnabled());
        });
    });
    EXPECT_EQ(warnings, QStringList());
    EXPECT_EQ(backupFiles().size(), 1);
}

TEST_F(ApplicationSafety, RestoringShowsTheRowsOfTheBackupInAllViews)
{
    makeBackup();
    for (int i = 0; i < 7; ++i) {
        suite.library.add();
    }
    saysYes = true;
    run([this](QMainWindow& window) {
        QTest::keyClicks(window.findChild<QComboBox*>(u"Text1"_s), u"Titel"_s);
        EXPECT_EQ(window.findChild<QTableView*>(u"TDBGrid1"_s)->model()->rowCount(), 37);
        inDialog(window, u"mnuBackups"_s,
                 [](QDialog& dialog) { button(dialog, u"cmdRestore"_s).click(); });
        const auto* grid = window.findChild<QTableView*>(u"TDBGrid1"_s);
        ASSERT_NE(grid, nullptr);
        EXPECT_EQ(grid->model()->rowCount(), 30);
    });
    ASSERT_EQ(warnings.size(), 1) << warnings.join(u'\n').toStdString();
    EXPECT_TRUE(warnings.front().contains(suite.dbName()));
    EXPECT_EQ(titles(), 30);
    EXPECT_EQ(backupFiles().size(), 2) << "what it held before was backed up";
}

TEST_F(ApplicationSafety, WhoSaysNoKeepsHisRows)
{
    makeBackup();
    suite.library.add();
    run([this](QMainWindow& window) {
        inDialog(window, u"mnuBackups"_s,
                 [](QDialog& dialog) { button(dialog, u"cmdRestore"_s).click(); });
    });
    EXPECT_EQ(warnings.size(), 1);
    EXPECT_EQ(titles(), 31);
}

TEST_F(ApplicationSafety, ADamagedBackupIsToldAndCannotBeRestored)
{
    makeBackup();
    QFile file(suite.file(backupFiles().front()));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.seek(file.size() / 2);
    file.write("xxxx");
    file.close();
    run([this](QMainWindow& window) {
        inDialog(window, u"mnuBackups"_s, [](QDialog& dialog) {
            EXPECT_EQ(list(dialog).topLevelItem(0)->text(5), u"in Ordnung"_s)
                << "so it was when it was made";
            button(dialog, u"cmdCheck"_s).click();
            EXPECT_EQ(list(dialog).topLevelItem(0)->text(5), u"beschädigt"_s);
            EXPECT_FALSE(button(dialog, u"cmdRestore"_s).isEnabled());
        });
    });
    ASSERT_EQ(warnings.size(), 1);
    EXPECT_TRUE(warnings.front().contains(u"beschädigt"_s));
}

TEST_F(ApplicationSafety, TheCheckSaysThatAllIsWell)
{
    run([](QMainWindow& window) { window.findChild<QAction*>(u"mnuCheckLibrary"_s)->trigger(); });
    ASSERT_EQ(warnings.size(), 1);
    EXPECT_TRUE(warnings.front().contains(u"in Ordnung"_s)) << warnings.front().toStdString();
}

TEST_F(ApplicationSafety, TheCheckMendsWhatTheUserWantsMended)
{
    suite.library.addPlaylist({.Name = u"Abend"_s});
    suite.execute(u"update pl_name set anzahl=9"_s);
    saysYes = true;
    run([](QMainWindow& window) { window.findChild<QAction*>(u"mnuCheckLibrary"_s)->trigger(); });
    ASSERT_EQ(warnings.size(), 1) << warnings.join(u'\n').toStdString();
    EXPECT_TRUE(warnings.front().contains(u"Abend"_s));
    EXPECT_EQ(suite.value(u"select anzahl from pl_name"_s).toLong(), 0);
}

TEST_F(ApplicationSafety, ALibraryThatCannotBeOpenedOffersItsLastBackup)
{
    makeBackup();
    suite.engine->Release(suite.dbName());
    suite.write(u"melovane.mdb"_s, QByteArray(40000, 'x'));
    saysYes = true;
    bool shown = false;
    EXPECT_EQ(run([&](QMainWindow&) { shown = true; }), 0);
    EXPECT_TRUE(shown);
    ASSERT_EQ(warnings.size(), 1) << warnings.join(u'\n').toStdString();
    EXPECT_EQ(titles(), 30);
    EXPECT_EQ(suite.read(u"melovane.mdb.damaged"_s).size(), 40000);
}

TEST_F(ApplicationSafety, WhoDoesNotWantTheBackupHearsWhyTheLibraryCannotBeOpened)
{
    makeBackup();
    suite.engine->Release(suite.dbName());
    const QByteArray foreign(40000, 'x');
    suite.write(u"melovane.mdb"_s, foreign);
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(warnings.size(), 2);
    EXPECT_EQ(suite.read(u"melovane.mdb"_s), foreign) << "nothing was touched";
}

TEST_F(ApplicationSafety, SettingsOfARestoringAreThereAtTheNextStart)
{
    suite.write(u"melovane.ini"_s, "[Global]\nLiveSuche=1\n");
    makeBackup();
    suite.write(u"melovane.ini"_s, "[Global]\nLiveSuche=0\n");
    saysYes = true;
    run([this](QMainWindow& window) {
        inDialog(window, u"mnuBackups"_s, [](QDialog& dialog) {
            dialog.findChild<QCheckBox*>(u"chkSettings"_s)->setChecked(true);
            button(dialog, u"cmdRestore"_s).click();
        });
    });
    EXPECT_EQ(suite.makeSettings()->LiveSuche(), 0);
    run();
    EXPECT_EQ(suite.makeSettings()->LiveSuche(), 1);
}

TEST_F(ApplicationSafety, AfterARunThatDiedTheLibraryIsChecked)
{
    suite.library.addPlaylist({.Name = u"Abend"_s});
    suite.execute(u"update pl_name set anzahl=9"_s);
    suite.write(u"MelovaneDB.running"_s, "13.03.2026 10:00\n");
    closesWindow = false;
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, qApp, [this] {
        if (!warnings.isEmpty() && QApplication::activeModalWidget() == nullptr) {
            QApplication::closeAllWindows();
        }
    });
    user.start(std::chrono::milliseconds(10));
    run();
    ASSERT_EQ(warnings.size(), 1);
    EXPECT_TRUE(warnings.front().contains(u"Abend"_s)) << warnings.front().toStdString();
}

} // namespace melovane
