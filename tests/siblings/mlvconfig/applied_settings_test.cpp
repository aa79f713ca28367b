#include "config/config_objects.h"
#include "config/global_settings.h"
#include "platform/linux/linux_messages.h"
#include "settings/setting_draft.h"
#include "settings/setting_values.h"
#include "siblings/mlvconfig/applied_settings.h"
#include "support/text_catalogue.h"
#include "support/wait_for.h"

#include <gtest/gtest.h>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The settings program's end of the messages; this test is two consoles.
struct AppliedSettingsTest : testing::Test
{
    AppliedSettingsTest()
    {
        catalogue.folders.install(u"melovane.ini"_s, "[Global]\n");
        catalogue.fill();
        settings = catalogue.folders.makeSettings();
        values = std::make_unique<SettingValues>(draft, *settings, catalogue.texts);
        listen(*console, u"first"_s);
    }

    void listen(KSMessage& heardBy, const QString& name)
    {
        heardBy.setMessageNumber([this, name](qint32 id, qint32 wParam, qint32 lParam) {
            heard.append(u"%1 %2 %3 %4"_s.arg(name).arg(id).arg(wParam).arg(lParam));
            return 0;
        });
    }

    void choose(QStringView section, QStringView key, const QString& value)
    {
        values->set(*findEntry(section, key), value);
    }

    void apply(MessageHandle starter)
    {
        const AppliedSettings applied = appliedBy(draft, *values);
        ASSERT_TRUE(draft.write());
        tellConsole(*control, messages, *settings, starter, applied);
    }

    TextCatalogue catalogue;
    LinuxMessages messages{MessagePlace(catalogue.folders.environment().runtimeFolder())};
    std::unique_ptr<KSMessage> console = messages.makeControl();
    std::unique_ptr<KSMessage> control = messages.makeControl();
    std::unique_ptr<GlobalSettings> settings;
    SettingDraft draft{catalogue.folders.profile(),
                       catalogue.folders.configFile(u"melovane.ini"_s)};
    std::unique_ptr<SettingValues> values;
    QStringList heard;
};

TEST_F(AppliedSettingsTest, AChangeIsToldToTheConsoleThatHasOpenedTheSettings)
{
    choose(u"Global", u"SuchPath", u"1"_s);
    apply(console->handle());
    ASSERT_TRUE(waitFor([this] { return !heard.isEmpty(); }));
    EXPECT_EQ(heard, QStringList{u"first 1039 0 0"_s});
}

TEST_F(AppliedSettingsTest, CardAndVolumeOfTheMonitorAreToldByTheirOwnNumbers)
{
    choose(u"Global", u"SCardNameMonitor", u"Kopfhörer"_s);
    choose(u"Global", u"Volume.Monitor", u"6200"_s);
    apply(console->handle());
    ASSERT_TRUE(waitFor([this] { return heard.size() == 3; }));
    EXPECT_EQ(heard,
              (QStringList{u"first 1036 0 0"_s, u"first 1074 210 6200"_s, u"first 1039 0 0"_s}));
}

TEST_F(AppliedSettingsTest, WhenTheConsoleHasEndedTheOneThatRunsNowIsTold)
{
    const MessageHandle gone = console->handle();
    console.reset();
    const auto next = messages.makeControl();
    listen(*next, u"next"_s);
    settings->SetMessageHandleDB(next->handle());
    choose(u"Value", u"Sprach.Datei", u"lang_English.ini"_s);
    EXPECT_TRUE(appliedBy(draft, *values).language);
    apply(gone);
    ASSERT_TRUE(waitFor([this] { return !heard.isEmpty(); }));
    EXPECT_EQ(heard, QStringList{u"next 1039 0 0"_s});
}

TEST_F(AppliedSettingsTest, EveryOtherProgramThatHasPublishedItsControlIsToldOnce)
{
    const auto player = messages.makeControl();
    listen(*player, u"player"_s);
    const auto level = messages.makeControl();
    listen(*level, u"level"_s);
    settings->SetMessageHandleDB(console->handle());
    settings->SetMessageHandleDJ(player->handle());
    for (const auto& [program, handle] : {std::pair{u"MelovaneDB.exe"_s, console->handle()},
                                          {u"MelovaneDJ.exe"_s, player->handle()},
                                          {u"LevelPanel.exe"_s, level->handle()},
                                          {u"mlvconfig.exe"_s, control->handle()},
                                          {u"Gone.exe"_s, console->handle() + 1}}) {
        settings->WriteKeyValue(u"Message.Handle"_s, program, QString::number(handle));
    }
    control->setMessageNumber([this](qint32 id, qint32, qint32) {
        heard.append(u"itself %1"_s.arg(id));
        return 0;
    });
    choose(u"Global", u"SuchPath", u"1"_s);
    apply(console->handle());
    ASSERT_TRUE(waitFor([this] { return heard.size() == 3; }));
    heard.sort();
    EXPECT_EQ(heard, (QStringList{u"first 1039 0 0"_s, u"level 1039 0 0"_s, u"player 1039 0 0"_s}));
}

TEST_F(AppliedSettingsTest, WithoutAnyConsoleTheChangeIsWrittenAllTheSame)
{
    console.reset();
    choose(u"Global", u"SuchPath", u"1"_s);
    apply(0);
    EXPECT_EQ(catalogue.folders.makeSettings()->SuchPath(), 1);
}

} // namespace
} // namespace melovane::test
