#include "config/config_objects.h"
#include "config/global_settings.h"
#include "settings/key_bindings.h"
#include "settings/setting_draft.h"
#include "support/text_catalogue.h"

#include <gtest/gtest.h>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The key table over a real settings file, and the settings as the console has them open.
struct KeyBindingsTest : testing::Test
{
    KeyBindingsTest()
    {
        catalogue.folders.install(u"melovane.ini"_s, "[Global]\n");
        catalogue.fill();
        console = catalogue.folders.makeSettings();
        console->InitTasten();
        console->Refresh();
    }

    [[nodiscard]] KeyRow row(const QString& id) const
    {
        for (const KeyRow& row : keys.rows()) {
            if (row.id == id) {
                return row;
            }
        }
        ADD_FAILURE() << id.toStdString();
        return {};
    }

    TextCatalogue catalogue;
    std::unique_ptr<GlobalSettings> console;
    SettingDraft draft{catalogue.folders.profile(),
                       catalogue.folders.configFile(u"melovane.ini"_s)};
    KeyBindings keys{draft, catalogue.texts};
};

TEST_F(KeyBindingsTest, EachCommandHasItsWordsAndTheKeysOfDeliveryHaveNoConflict)
{
    ASSERT_EQ(keys.rows().size(), 42U);
    for (const KeyRow& row : keys.rows()) {
        EXPECT_FALSE(row.label.isEmpty());
        EXPECT_NE(row.label, row.id) << row.id.toStdString();
        EXPECT_FALSE(row.changed);
        EXPECT_TRUE(row.otherId.isEmpty()) << row.id.toStdString();
    }
    EXPECT_EQ(row(u"DBKopie"_s).keys, u"STRG-TASTE + C-TASTE"_s);
    EXPECT_EQ(row(u"mixer.jingle.volume"_s).keys, QString());
}

TEST_F(KeyBindingsTest, NewKeysReachTheRunningConsoleWithItsNextRefresh)
{
    keys.bind(u"PLPLMonitorPlay"_s, u"F5-TASTE"_s);
    EXPECT_TRUE(row(u"PLPLMonitorPlay"_s).changed);
    ASSERT_TRUE(draft.write());
    console->Refresh();
    EXPECT_TRUE(console->Tasten(u"PLPLMonitorPlay"_s).matches(u"F5-TASTE"_s));
}

TEST_F(KeyBindingsTest, ACommandWithoutKeysStaysWithoutThemInTheRunningConsoleAndTheNext)
{
    keys.bind(u"DBKopie"_s, {});
    EXPECT_EQ(row(u"DBKopie"_s).keys, QString());
    ASSERT_TRUE(draft.write());
    console->Refresh();
    EXPECT_FALSE(console->Tasten(u"DBKopie"_s).matches(u"STRG-TASTE + C-TASTE"_s));
    const auto next = catalogue.folders.makeSettings();
    next->InitTasten();
    next->Refresh();
    EXPECT_FALSE(next->Tasten(u"DBKopie"_s).matches(u"STRG-TASTE + C-TASTE"_s));
}

TEST_F(KeyBindingsTest, TheKeysOfDeliveryComeBackInTheRunningConsole)
{
    keys.bind(u"DBKopie"_s, u"F9-TASTE"_s);
    ASSERT_TRUE(draft.write());
    console->Refresh();
    keys.resetAll();
    EXPECT_FALSE(row(u"DBKopie"_s).changed);
    ASSERT_TRUE(draft.write());
    console->Refresh();
    EXPECT_TRUE(console->Tasten(u"DBKopie"_s).matches(u"STRG-TASTE + C-TASTE"_s));
}

TEST_F(KeyBindingsTest, KeysThatTwoCommandsShareAreToldInBothRowsAndTheOneThatIsAskedFirstActs)
{
    keys.bind(u"PLPLMonitorPlayCenter"_s, u"STRG-TASTE + N-TASTE"_s);
    EXPECT_EQ(row(u"PLPLMonitorPlayCenter"_s).otherId, u"DBALLNEXTPLAY"_s);
    EXPECT_TRUE(row(u"PLPLMonitorPlayCenter"_s).acts);
    EXPECT_EQ(row(u"DBALLNEXTPLAY"_s).otherId, u"PLPLMonitorPlayCenter"_s);
    EXPECT_FALSE(row(u"DBALLNEXTPLAY"_s).acts);
}

TEST_F(KeyBindingsTest, TheSameKeysInTwoProgramsAreNoConflictButThoseOfTheWholeSuiteAre)
{
    // Ctrl+T of the importer and of the player.
    EXPECT_EQ(row(u"IMPTAUSCH"_s).keys, row(u"tast.player.activate.table"_s).keys);
    keys.bind(u"PLMix"_s, u"F12-TASTE"_s);
    EXPECT_EQ(row(u"DBTOP"_s).otherId, u"PLMix"_s);
}

} // namespace
} // namespace melovane::test
