// What the menu entries that care for the library do in the running console.
#include "care/merge_journal.h"
#include "care/recycle_folder.h"
#include "shell/application_fixture.h"
#include "store/file_locator.h"
#include "support/recycled_files.h"

#include <QAction>
#include <QCheckBox>
#include <QDialog>
#include <QFile>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct ApplicationCare : test::ApplicationTest
{
    /// Runs the console, does something in its window once and closes it.
    void inConsole(const std::function<void(QMainWindow&)>& work)
    {
        closesWindow = false;
        bool isDone = false;
        EXPECT_EQ(run([&](QMainWindow& window) {
                      if (!std::exchange(isDone, true)) {
                          work(window);
                          window.close();
                      }
                  }),
                  0);
    }

    static void choose(const QMainWindow& window, const QString& entry)
    {
        auto* action = window.findChild<QAction*>(entry);
        ASSERT_NE(action, nullptr) << entry.toStdString();
        ASSERT_TRUE(action->isEnabled()) << action->toolTip().toStdString();
        action->trigger();
    }

    /// Chooses an entry and acts in the dialog that it opens until that is closed.
    static void chooseAndAct(const QMainWindow& window,
                             const QString& entry,
                             const std::function<void(QDialog&)>& act)
    {
        QTimer user;
        bool isSeen = false;
        QObject::connect(&user, &QTimer::timeout, qApp, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog != nullptr && dialog->isVisible() &&
                dialog->objectName() != "frmProgress"_L1) {
                isSeen = true;
                act(*dialog);
            }
        });
        user.start(std::chrono::milliseconds(5));
        choose(window, entry);
        EXPECT_TRUE(isSeen);
    }
};

TEST_F(ApplicationCare, TheMenuLooksForMissingFiles)
{
    const QString gone = suite.library.add({.Path = u"/nowhere/"_s});
    inConsole([this](QMainWindow& window) {
        chooseAndAct(window, u"mnuNoExistSuchen"_s, [this](QDialog&) { answered(); });
    });
    EXPECT_EQ(suite.value(u"select del from db_all"_s).toLong(), 2);
    ASSERT_EQ(warnings.size(), 1);
    EXPECT_TRUE(
        warnings[0].startsWith(u"Melovane: Einige Dateien konnten nicht gefunden werden"_s));
    EXPECT_EQ(suite.read(u"FileNotExist.txt"_s), "/nowhere/" + gone.toUtf8() + ".mp3\n");
}

TEST_F(ApplicationCare, AFileThatAKilledMergeHasLeftGoesToTheRecycleFolderBehindTheStart)
{
    test::TempFolder music;
    for (const QString& name : {u"doppelt.mp3"_s, u"wieder da.mp3"_s}) {
        music.write(name, "x");
    }
    suite.library.add({.Path = music.path() + u'/', .DName = u"wieder da.mp3"_s});
    const auto merged = [&](const QString& name) {
        return RemovedTrack{
            u"300000009999"_s, u"Titel"_s, music.path() + u'/', name, false, u"{}"_s};
    };
    FileLocator locator(suite.files, suite.dataFolder());
    MergeJournal(suite.files, suite.dbName())
        .begin({merged(u"doppelt.mp3"_s), merged(u"wieder da.mp3"_s)}, locator);
    ASSERT_EQ(MergeJournal::left(suite.files, suite.dbName()).size(), 1);
    inConsole([this](QMainWindow&) {
        EXPECT_TRUE(QTest::qWaitFor(
            [this] { return MergeJournal::left(suite.files, suite.dbName()).isEmpty(); }));
    });
    EXPECT_EQ(suite.files.names(music.path()), QStringList{u"wieder da.mp3"_s});
    RecycleFolder recycler(
        {suite.files, suite.clock, suite.dataFolder(), {}, [](const QString& file) {
             return QFile::encodeName(file);
         }});
    const auto recycled = test::recycledOf(recycler, music.path());
    ASSERT_EQ(recycled.size(), 1U);
    EXPECT_EQ(recycled[0].from, music.file(u"doppelt.mp3"_s));
    test::throwAway(suite.files, recycler, recycled);
}

TEST_F(ApplicationCare, TheMenuCleansTheLibraryAndTheViewFollows)
{
    suite.library.add({.Titel = u"bleibt"_s});
    suite.library.add({.Titel = u"geht"_s, .DEL = -1});
    inConsole([this](QMainWindow& window) {
        bool isRun = false;
        chooseAndAct(window, u"mnuDatenbereinigung"_s, [&](QDialog& dialog) {
            auto* box = dialog.findChild<QCheckBox*>(u"checkBer_0"_s);
            const auto* note = dialog.findChild<QLabel*>(u"note_0"_s);
            if (note == nullptr) {
                answered();
            } else if (isRun && dialog.findChild<QPushButton*>(u"cmdOk"_s)->isEnabled()) {
                ADD_FAILURE() << "it has not run";
                dialog.reject();
            } else if (isRun && box->isChecked()) {
                return; // the backup goes on in front of it
            } else if (isRun) {
                EXPECT_EQ(note->text(), u"1 Titel entfernt"_s);
                dialog.reject();
            } else if (note->text() == u"1 Titel"_s) { // it is counted beside the window
                isRun = true;
                box->click();
                dialog.findChild<QPushButton*>(u"cmdOk"_s)->click();
            }
        });
    });
    EXPECT_EQ(suite.column(u"select titel from db_all"_s), QStringList{u"bleibt"_s});
}

TEST_F(ApplicationCare, TheMenuShowsWhatTheRecycleFoldersHold)
{
    inConsole([](QMainWindow& window) {
        chooseAndAct(window, u"mnuRecycler"_s, [](QDialog& dialog) {
            EXPECT_EQ(dialog.findChild<QTreeWidget*>()->topLevelItemCount(), 0);
            EXPECT_EQ(dialog.findChild<QLabel*>(u"lblStep"_s)->text(),
                      u"Der Papierkorb MelovaneRecycler ist leer."_s);
            dialog.reject();
        });
    });
}

} // namespace
} // namespace melovane
