// The settings program, a process of its own, beside the running console.
#include "bus/message_numbers.h"
#include "platform/linux/ini_profile.h"
#include "platform/qt/value_bar.h"
#include "settings/setting_pages.h"
#include "shell/console_process.h"
#include "shell/console_words.h"
#include "support/wait_for.h"

#include <QAction>
#include <QComboBox>
#include <QProcess>

#include <gtest/gtest.h>

#include <csignal>
#include <tuple>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class SettingsBeside : public ConsoleWords
{
protected:
    SettingsBeside()
    {
        EXPECT_TRUE(QFile::copy(QString::fromUtf8(MLV_CONFIG_HAND), suite.file(u"mlvhand"_s)));
        QFile english(resourceFolder() + u"/languages/lang_English.ini"_s);
        EXPECT_TRUE(english.open(QIODevice::ReadOnly));
        suite.write(u"lang_English.ini"_s, english.readAll());
        suite.write(u"melovane.ini"_s,
                    "; von Hand\n[Fremd]\nWert=42\n" + suite.read(u"melovane.ini"_s));
    }

    /// Another program of the suite, in the same installation.
    void startBeside(QProcess& process, const QString& program, const QStringList& arguments)
    {
        const EnvironmentPlaces& places = suite.folders.places();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_RUNTIME_DIR"_s, places.runtimeBase);
        environment.insert(u"XDG_DATA_HOME"_s, places.userData);
        environment.insert(u"HOME"_s, suite.dataFolder());
        environment.insert(u"XDG_CONFIG_HOME"_s, places.userFile.section(u'/', 0, -3));
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(program, arguments);
    }

    /// Waits for its end, doing something else now and then. \return what it has said
    static QString outputOf(
        QProcess& process,
        const std::function<void()>& meanwhile = [] {})
    {
        EXPECT_TRUE(waitFor([&] {
            meanwhile();
            return process.state() == QProcess::NotRunning;
        }));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process.exitCode(), 0);
        return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    }

    void runBeside(const QString& program, const QStringList& arguments)
    {
        QProcess process;
        startBeside(process, program, arguments);
        outputOf(process);
    }

    QString configure(
        const QStringList& steps,
        const std::function<void()>& meanwhile = [] {})
    {
        QProcess process;
        startBeside(process, suite.file(u"mlvhand"_s), QStringList{console()} + steps);
        return outputOf(process, meanwhile);
    }

    [[nodiscard]] QByteArray settingsFile() const { return suite.read(u"melovane.ini"_s); }

    /// What stands in the fields of a view.
    [[nodiscard]] QStringList textsIn(const QString& place) const
    {
        QStringList result;
        for (const auto* field : view(place).findChildren<QLineEdit*>()) {
            result.append(field->text());
        }
        return result;
    }

    int found(const QString& text)
    {
        search(text);
        return library().model()->rowCount();
    }

    [[nodiscard]] QString console()
    {
        return QString::number(suite.folders.makeSettings()->MessageHandleDB());
    }

    [[nodiscard]] QString captionOfExit() const
    {
        return window->findChild<QAction*>(u"mnuExit"_s)->text().remove(u'&');
    }

    [[nodiscard]] std::array<QImage, 2> volumePictures() const
    {
        std::array<QImage, 2> result;
        for (size_t i = 0; i < result.size(); ++i) {
            result[i] = tool(i == 0 ? u"ctl_MP3DB1"_s : u"ctl_Playlist1"_s, u"all.volume"_s)
                            .icon()
                            .pixmap(32)
                            .toImage();
        }
        return result;
    }
};

TEST_F(SettingsBeside, TheConsoleFollowsAChangeAndWhatOthersWroteStays)
{
    inConsole([this] {
        EXPECT_EQ(captionOfExit(), u"Beenden"_s);
        configure({u"set"_s, u"FontSize"_s, u"17"_s, u"set"_s, u"Sprach.Datei"_s,
                   u"lang_English.ini"_s, u"apply"_s});
        EXPECT_TRUE(waitFor([this] { return library().font().pointSize() == 17; }));
        EXPECT_EQ(list().font().pointSize(), 17);
        EXPECT_TRUE(waitFor([this] { return captionOfExit() == u"Quit"_s; }));
        configure({u"set"_s, u"Sprach.Datei"_s, u"lang_Deutsch.ini"_s, u"apply"_s});
        EXPECT_TRUE(waitFor([this] { return captionOfExit() == u"Beenden"_s; }));
    });
    const QByteArray kept = suite.read(u"melovane.ini"_s);
    EXPECT_TRUE(kept.contains("; von Hand"));
    EXPECT_TRUE(kept.contains("[Fremd]"));
    EXPECT_TRUE(kept.contains("Wert=42"));
}

TEST_F(SettingsBeside, AKeyThatWasBoundThereIsUsedHere)
{
    inConsole([this] {
        reset();
        configure({u"key"_s, u"DBSelall"_s, u"apply"_s});
        library().setFocus();
        EXPECT_TRUE(waitFor([this] {
            QTest::keyClick(&library(), Qt::Key_F8, Qt::ControlModifier | Qt::ShiftModifier);
            return library().selectionModel()->selectedRows().size() == 3;
        }));
    });
}

TEST_F(SettingsBeside, ASearchColumnThatIsChosenThereIsSearchedHere)
{
    inConsole([this] {
        reset();
        EXPECT_EQ(found(u"*tief"_s), 0);
        configure({u"set"_s, u"SuchPath"_s, u"1"_s, u"apply"_s});
        EXPECT_TRUE(waitFor([this] { return found(u"*tief"_s) == 1; }));
    });
}

TEST_F(SettingsBeside, ANewListHasTheNameThatIsTypedThere)
{
    inConsole([this] {
        reset();
        configure({u"set"_s, u"PlaylistNameFormat"_s, u"Abendliste"_s, u"apply"_s});
        EXPECT_TRUE(waitFor([this] {
            tool(u"PlaylistFavorit1"_s, u"all.newdoc"_s).click();
            return texts(lists()).contains(u"Abendliste"_s);
        }));
    });
}

TEST_F(SettingsBeside, TheVolumeOfTheMonitorThatIsChosenThereIsHeardHere)
{
    inConsole([this] {
        configure({u"set"_s, u"Volume.Monitor"_s, u"2100"_s, u"apply"_s});
        EXPECT_TRUE(waitFor(
            [this] { return window->findChild<ValueBar*>(u"MonitorVolume"_s)->value() == 2100; }));
    });
}

TEST_F(SettingsBeside, AHintThatIsBroughtBackThereIsShownHere)
{
    suite.folders.profile().write(suite.file(u"melovane.ini"_s), u"WarnMeldung"_s,
                                  u"MelovaneDB.nochangeplaylist"_s, u"1"_s);
    inConsole([this] {
        const auto shown = [this] {
            static_cast<void>(dialogs.take());
            window->findChild<QAction*>(u"mnuExpPlaylistBas"_s)->trigger();
            return !dialogs.take().isEmpty();
        };
        reset();
        EXPECT_FALSE(shown());
        configure({u"reset"_s, QString::number(int(SettingPage::Hints)), u"apply"_s});
        EXPECT_TRUE(waitFor(shown));
    });
}

TEST_F(SettingsBeside, WhatThePlayerReadsIsToldToThePlayer)
{
    inConsole([this] {
        reset();
        configure({u"set"_s,
                   u"FadeIn"_s,
                   u"710"_s,
                   u"set"_s,
                   u"DefaultMixStyleIN"_s,
                   u"1,2,3,0,9"_s,
                   u"set"_s,
                   u"GridSwapEditPlay.1"_s,
                   {},
                   u"apply"_s});
        EXPECT_TRUE(playerGot(message::kConfigChanged));
        EXPECT_EQ(suite.makeSettings()->FadeIn(), 710);
        EXPECT_EQ(suite.makeSettings()->DefaultMixStyleIN(), u"1,2,3,0,9"_s);
        EXPECT_EQ(suite.makeSettings()->GridSwapEditPlay(), 1);
    });
}

TEST_F(SettingsBeside, AFileOfAHundredMegabytesStaysAsItIsAndTheUserIsTold)
{
    inConsole([this] {
        const QByteArray good = settingsFile();
        const QByteArray line(1023, 'x');
        QByteArray large = good;
        while (large.size() < 100 * 1024 * 1024) {
            large += ';' + line + '\n';
        }
        const QString handle = console();
        suite.write(u"melovane.ini"_s, large);
        QProcess process;
        startBeside(process, suite.file(u"mlvhand"_s),
                    {handle, u"set"_s, u"AutosizeGrid"_s, u"1"_s, u"apply"_s, u"say"_s});
        EXPECT_TRUE(outputOf(process).contains(suite.file(u"melovane.ini"_s)));
        EXPECT_TRUE(settingsFile() == large);
        // The console goes on with it, and with the next whole one.
        runBeside(QString::fromUtf8(MLV_SUITE_SENDER),
                  {suite.folders.environment().runtimeFolder(), handle, u"number"_s, u"1039"_s,
                   u"0"_s, u"0"_s});
        EXPECT_EQ(found(u"Kaja"_s), 3);
        suite.write(u"melovane.ini"_s, good);
        configure({u"set"_s, u"AutosizeGrid"_s, u"1"_s, u"apply"_s});
        EXPECT_TRUE(waitFor(
            [this] { return window->findChild<QAction*>(u"mnuAutosizeGrid"_s)->isChecked(); }));
    });
}

TEST_F(SettingsBeside, WhatAnotherProgramWritesAtTheSameMomentIsThereToo)
{
    inConsole([this] {
        QStringList steps;
        for (int size = 9; size < 29; ++size) {
            steps << u"set"_s << u"FontSize"_s << QString::number(size) << u"apply"_s;
        }
        IniProfile other(suite.files);
        constexpr int kLines = 60;
        int written = 0;
        configure(steps, [&] {
            // From its first change on.
            if (written == kLines || !settingsFile().contains("FontSize=")) {
                return;
            }
            ++written;
            EXPECT_TRUE(other.write(suite.file(u"melovane.ini"_s), u"Fremd"_s,
                                    u"Zeile%1"_s.arg(written), QString::number(written)));
        });
        EXPECT_GT(written, 1);
        const IniProfile kept(suite.files);
        for (int line = 1; line <= written; ++line) {
            EXPECT_EQ(kept.value(suite.file(u"melovane.ini"_s), u"Fremd"_s, u"Zeile%1"_s.arg(line)),
                      QString::number(line));
        }
        EXPECT_EQ(kept.value(suite.file(u"melovane.ini"_s), u"Color"_s, u"FontSize"_s), u"28"_s);
        EXPECT_TRUE(waitFor([this] { return library().font().pointSize() == 28; }));
    });
}

TEST_F(SettingsBeside, AConsoleThatDiesMeanwhileTakesNothingWithIt)
{
    const QString sign = suite.file(u"dead"_s);
    suite.engine->Release(suite.dbName());
    ConsoleProcess dying(suite, u"MelovaneDB"_s, suite.folders.places().runtimeBase);
    QProcess settings;
    startBeside(settings, suite.file(u"mlvhand"_s),
                {console(), u"set"_s, u"FontSize"_s, u"21"_s, u"wait"_s, sign, u"apply"_s});
    ASSERT_TRUE(waitFor([this] { return settingsFile().contains("mlvconfig.exe="); }));
    dying.end(SIGKILL);
    suite.write(u"dead"_s, {});
    outputOf(settings);
    EXPECT_TRUE(settingsFile().contains("FontSize=21"));
    EXPECT_TRUE(settingsFile().contains("; von Hand"));
    EXPECT_TRUE(settingsFile().contains("Wert=42"));
    // The next one begins with it.
    inConsole([this] { EXPECT_EQ(library().font().pointSize(), 21); });
}

TEST_F(SettingsBeside, TheLibraryThatIsChosenThereIsThatOfEveryViewHere)
{
    const QString other = suite.file(u"andere.mdb"_s);
    inConsole([this, &other] {
        reset();
        suite.engine->BackupDatabase(suite.dbName(), other);
        const auto database = suite.engine->OpenDatabase(other);
        database->Execute(u"update pl_name set name='Zweite' where nid=%1"_s.arg(main));
        database->Execute(u"update db_all set titel='Fremd'"_s);
        database->Execute(u"update tree_dir set Path='/fern/', Name='fern'"_s);
        send(u"show.tagedit.mp3db"_s, {tracks[0], true});
        EXPECT_NE(textsIn(u"EditTag1"_s).indexOf(u"Hafen"_s), -1);
        configure({u"set"_s, u"DBName"_s, other, u"apply"_s});
        EXPECT_TRUE(waitFor([this] { return texts(lists()).contains(u"Zweite"_s); }));
        EXPECT_EQ(titles(list()), u"Fremd Fremd"_s);
        EXPECT_TRUE(waitFor([this] { return texts(tree().outline()).contains(u"fern"_s); }))
            << texts(tree().outline()).toStdString();
        EXPECT_EQ(textsIn(u"EditTag1"_s).indexOf(u"Hafen"_s), -1);
        EXPECT_TRUE(status(StatusPanel::Message).endsWith(other))
            << status(StatusPanel::Message).toStdString();
        EXPECT_EQ(titles(library()), QString()) << "as at a start";
        EXPECT_EQ(found(u"Kaja"_s), 3);
        EXPECT_EQ(titles(library()), u"Fremd Fremd Fremd"_s);
    });
}

TEST_F(SettingsBeside, ValuesThatAreNoneAreReadAsTheDefaultsAndTheFileStays)
{
    for (const auto& [section, key, value] :
         {std::tuple{u"Color"_s, u"FontSize"_s, u"99999999999"_s},
          {u"Color"_s, u"GridColor"_s, u"blau"_s},
          {u"Global"_s, u"Volume.Monitor"_s, u"laut"_s},
          {u"Global"_s, u"SkinFileName"_s, u"../../x"_s}}) {
        suite.folders.profile().write(suite.file(u"melovane.ini"_s), section, key, value);
    }
    inConsole([this] {
        configure({u"set"_s, u"AutosizeGrid"_s, u"1"_s, u"apply"_s});
        EXPECT_TRUE(waitFor(
            [this] { return window->findChild<QAction*>(u"mnuAutosizeGrid"_s)->isChecked(); }));
    });
    const QByteArray kept = suite.read(u"melovane.ini"_s);
    EXPECT_TRUE(kept.contains("AutosizeGrid=1"));
    EXPECT_TRUE(kept.contains("GridColor=blau"));
}

TEST_F(SettingsBeside, TheLevelPanelsVolumeIsThatOfTheMonitorInBothViews)
{
    inConsole([this] {
        runBeside(QString::fromUtf8(MLV_SUITE_SENDER),
                  {suite.folders.environment().runtimeFolder(), console(), u"number"_s,
                   QString::number(message::kMonitorVolume), u"210"_s, u"10000"_s});
        const auto loud = volumePictures();
        auto* bar = window->findChild<ValueBar*>(u"MonitorVolume"_s);
        EXPECT_EQ(bar->value(), 10'000);
        runBeside(QString::fromUtf8(MLV_SUITE_SENDER),
                  {suite.folders.environment().runtimeFolder(), console(), u"number"_s,
                   QString::number(message::kMonitorVolume), u"210"_s, u"0"_s});
        EXPECT_NE(volumePictures()[0], loud[0]);
        EXPECT_NE(volumePictures()[1], loud[1]);
        EXPECT_EQ(bar->value(), 0);
    });
}

} // namespace
} // namespace melovane::test
