// The settings program, a process of its own, beside the running console.
#include "bus/message_numbers.h"
#include "platform/qt/value_bar.h"
#include "shell/console_words.h"
#include "support/wait_for.h"

#include <QAction>
#include <QProcess>

#include <gtest/gtest.h>

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

    /// Another program of the suite, in the same installation; its end is waited for.
    void runBeside(const QString& program, const QStringList& arguments)
    {
        const EnvironmentPlaces& places = suite.folders.places();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_RUNTIME_DIR"_s, places.runtimeBase);
        environment.insert(u"XDG_DATA_HOME"_s, places.userData);
        environment.insert(u"HOME"_s, suite.dataFolder());
        environment.insert(u"XDG_CONFIG_HOME"_s, places.userFile.section(u'/', 0, -3));
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(program, arguments);
        ASSERT_TRUE(waitFor([&] { return process.state() == QProcess::NotRunning; }));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(process.exitCode(), 0);
    }

    void configure(const QStringList& steps)
    {
        runBeside(suite.file(u"mlvhand"_s), QStringList{console()} + steps);
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
