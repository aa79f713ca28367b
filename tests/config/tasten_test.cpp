#include "config/global_settings.h"
#include "config/key_names.h"
#include "platform/system/keyboard.h"
#include "support/suite_folders.h"

#include <set>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class HeldKeys : public Keyboard
{
public:
    [[nodiscard]] bool isDown(int code) const override { return codes.count(code) != 0; }

    std::set<int> codes;
};

class TastenTest : public testing::Test
{
protected:
    TastenTest() { settings->SetKeyboard(&keyboard); }

    test::SuiteFolders suite;
    QString file = suite.configFile(u"melovane.ini"_s);
    HeldKeys keyboard;
    std::unique_ptr<GlobalSettings> settings = suite.makeSettings();
};

// ---- names

TEST_F(TastenTest, EveryKnownKeyHasItsName)
{
    const std::vector<std::pair<int, QString>> names = {{12, u"ENTF-TASTE"_s},
                                                        {13, u"EINGABETASTE"_s},
                                                        {16, u"UMSCHALTTASTE"_s},
                                                        {17, u"STRG-TASTE"_s},
                                                        {18, u"ALT-TASTE"_s},
                                                        {19, u"PAUSE-TASTE"_s},
                                                        {20, u"FESTSTELLTASTE"_s},
                                                        {27, u"ESC-TASTE"_s},
                                                        {32, u"LEERTASTE"_s},
                                                        {33, u"BILD-AUF-TASTE"_s},
                                                        {34, u"BILD-AB-TASTE"_s},
                                                        {35, u"ENDE-TASTE"_s},
                                                        {36, u"POS1-TASTE"_s},
                                                        {37, u"NACH-LINKS-TASTE"_s},
                                                        {38, u"NACH-OBEN-TASTE"_s},
                                                        {39, u"NACH-RECHTS-TASTE"_s},
                                                        {40, u"NACH-UNTEN-TASTE"_s},
                                                        {41, u"AUSWAHLTASTE"_s},
                                                        {42, u"DRUCK"_s},
                                                        {43, u"AUSFÜHREN-TASTE"_s},
                                                        {44, u"SNAPSHOT-TASTE"_s},
                                                        {45, u"EINFG-TASTE"_s},
                                                        {46, u"LÖSCHEN-TASTE"_s},
                                                        {47, u"HILFETASTE"_s},
                                                        {48, u"0-TASTE"_s},
                                                        {57, u"9-TASTE"_s},
                                                        {65, u"A-TASTE"_s},
                                                        {90, u"Z-TASTE"_s},
                                                        {96, u"NUM-0-TASTE"_s},
                                                        {105, u"NUM-9-TASTE"_s},
                                                        {112, u"F1-TASTE"_s},
                                                        {127, u"F16-TASTE"_s},
                                                        {1, u"1-TASTE"_s}};
    for (const auto& [code, name] : names) {
        EXPECT_EQ(GlobalSettings::GetTastName(qint16(code)), name) << code;
    }
}

TEST_F(TastenTest, ACodeOutsideTheTableAndThoseOfOneSideHaveNoName)
{
    for (const int code : {-1, 0, 91, 160, 162, 164, 255, 256, 32767}) {
        EXPECT_EQ(GlobalSettings::GetTastName(qint16(code)), QString()) << code;
    }
}

TEST_F(TastenTest, ShiftNamesAreThoseOfTheMaskZeroToSix)
{
    const QStringList names = {QString(), u"UMSCHALT"_s,     u"STRG"_s,    u"STRG+UMSCHALT"_s,
                               u"ALT"_s,  u"UMSCHALT+ALT"_s, u"STRG+ALT"_s};
    for (int mask = 0; mask < names.size(); ++mask) {
        EXPECT_EQ(GlobalSettings::GetShiftName(qint16(mask)), names[mask]);
    }
    EXPECT_EQ(GlobalSettings::GetShiftName(-1), QString());
    EXPECT_EQ(GlobalSettings::GetShiftName(7), QString());
}

// ---- what is held down

TEST_F(TastenTest, AnUnpressedKeyboardGivesAnEmptyText)
{
    EXPECT_EQ(settings->GetKeyStatusString(), QString());
}

TEST_F(TastenTest, ACombinationIsSpelledInTheOrderOfTheKeyCodes)
{
    keyboard.codes = {67, 18, 16, 17};
    EXPECT_EQ(settings->GetKeyStatusString(),
              u"UMSCHALTTASTE + STRG-TASTE + ALT-TASTE + C-TASTE"_s);
    keyboard.codes = {17, 1};
    EXPECT_EQ(settings->GetKeyStatusString(), u"1-TASTE + STRG-TASTE"_s);
}

TEST_F(TastenTest, AKeyCodeOf255IsNoPartOfAnyText)
{
    keyboard.codes = {255, 160, 67};
    EXPECT_EQ(settings->GetKeyStatusString(), u"C-TASTE"_s);
}

TEST_F(TastenTest, AnUnknownKeyCodeAppearsAsItsNumberAndCanBeStoredAndMatched)
{
    keyboard.codes = {17, 186};
    settings->InitTasten();
    settings->Tasten(u"DBSelall"_s).KeyName = settings->GetKeyStatusString();
    settings->TastenSave();

    const auto again = suite.makeSettings();
    again->InitTasten();
    again->Refresh();
    EXPECT_EQ(again->Tasten(u"DBSelall"_s).KeyName, u"STRG-TASTE + 186-TASTE"_s);
    EXPECT_TRUE(again->Tasten(u"DBSelall"_s).matches(settings->GetKeyStatusString()));
}

TEST_F(TastenTest, WithoutAKeyboardNothingIsDown)
{
    settings->SetKeyboard(nullptr);
    EXPECT_EQ(settings->GetKeyStatusString(), QString());
}

// ---- bindings

TEST_F(TastenTest, TheBindingsStandInTheirOrderWithTheirDefaults)
{
    settings->InitTasten();
    const auto& all = settings->TastenAll();
    ASSERT_EQ(all.size(), 42U);
    EXPECT_EQ(all.front().Id, u"DBSelall"_s);
    EXPECT_EQ(all.back().Id, u"DBTOP"_s);
    EXPECT_EQ(settings->Tasten(u"DBKopie"_s).KeyName, u"STRG-TASTE + C-TASTE"_s);
    EXPECT_EQ(settings->Tasten(u"mixer.jingle.6"_s).KeyName, u"STRG-TASTE + 6-TASTE"_s);
    EXPECT_EQ(settings->Tasten(u"mixer.jingle.stop"_s).KeyName, u"STRG-TASTE + 0-TASTE"_s);
    EXPECT_EQ(settings->Tasten(u"PLTOP"_s).TextKey, u"confTopDj"_s);
    for (const Tasten& binding : all) {
        EXPECT_TRUE(binding.Enabled);
        EXPECT_FALSE(binding.TextKey.isEmpty() || binding.Group.isEmpty());
    }
}

TEST_F(TastenTest, TheDefaultOfTheJingleVolumeMatchesNothing)
{
    settings->InitTasten();
    for (int code = 1; code <= kLastKeyCode; ++code) {
        keyboard.codes = {code};
        EXPECT_FALSE(
            settings->Tasten(u"mixer.jingle.volume"_s).matches(settings->GetKeyStatusString()));
    }
}

TEST_F(TastenTest, AnUnboundBindingNeverMatches)
{
    settings->InitTasten();
    EXPECT_FALSE(settings->Tasten(u"DBSelall"_s).matches(QString()));
}

TEST_F(TastenTest, ACombinationStoredInAnotherOrderNeverMatches)
{
    suite.folder().write(file, "[Tastatur]\ntooltip.all.copy=C-TASTE + STRG-TASTE\n");
    settings->InitTasten();
    settings->Refresh();
    keyboard.codes = {17, 67};
    EXPECT_FALSE(settings->Tasten(u"DBKopie"_s).matches(settings->GetKeyStatusString()));
}

TEST_F(TastenTest, AGroupHoldsItsBindingsAndAnUnknownNameIsAnError)
{
    settings->InitTasten();
    const auto monitor = settings->TastenAllbyTypName(u"Monitor in Tabellen"_s);
    ASSERT_EQ(monitor.size(), 3U);
    EXPECT_EQ(monitor[1].Id, u"PLPLMonitorPlayCenter"_s);
    EXPECT_TRUE(settings->TastenAllbyTypName(u"nichts"_s).empty());
    EXPECT_THROW((void)settings->Tasten(u"nichts"_s), UnknownName);
}

TEST_F(TastenTest, RefreshTakesTheUsersKeysAndKeepsTheOthers)
{
    suite.folder().write(file, "[Tastatur]\nTOOLTIP.ALL.COPY=F5-TASTE\n");
    settings->InitTasten();
    settings->Refresh();
    EXPECT_EQ(settings->Tasten(u"DBKopie"_s).KeyName, u"F5-TASTE"_s);
    EXPECT_EQ(settings->Tasten(u"DBInsert"_s).KeyName, u"STRG-TASTE + V-TASTE"_s);
    settings->InitTasten();
    EXPECT_EQ(settings->Tasten(u"DBKopie"_s).KeyName, u"STRG-TASTE + C-TASTE"_s);
}

TEST(PortableKeys, AreWhatMenusShowForACombination)
{
    const std::pair<QString, QString> rows[] = {
        {u"STRG-TASTE + C-TASTE"_s, u"Ctrl+C"_s},
        {u"UMSCHALTTASTE + STRG-TASTE + S-TASTE"_s, u"Ctrl+Shift+S"_s},
        {u"EINGABETASTE + STRG-TASTE"_s, u"Ctrl+Return"_s},
        {u"STRG-TASTE + LÖSCHEN-TASTE"_s, u"Ctrl+Del"_s},
        {u"F11-TASTE"_s, u"F11"_s},
        {u"F-TASTE"_s, u"F"_s},
        {u"NUM-5-TASTE"_s, u"Num+5"_s},
        {u"186-TASTE"_s, QString()},
        {u"STRG-TASTE"_s, QString()},
        {u"A-TASTE + B-TASTE"_s, QString()},
        {u"n/a"_s, QString()},
        {QString(), QString()},
    };
    for (const auto& [combination, keys] : rows) {
        EXPECT_EQ(portableKeys(combination), keys) << combination.toStdString();
    }
}

} // namespace
} // namespace melovane
