#include "config/built_in_texts.h"
#include "config/melovane_configuration.h"
#include "config/suite_text_names.h"
#include "support/text_catalogue.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct MelovaneConfigurationTest : testing::Test
{
    test::TextCatalogue catalogue;
    ConfigObjects& texts = catalogue.texts;
};

TEST_F(MelovaneConfigurationTest, AllNamesOfTheSuiteComeFirstInTheirOrder)
{
    catalogue.fill();
    const QStringList expected = test::suiteTextNames();
    const ConfigObjects::Items items = texts.AllObjects();
    ASSERT_GE(items.size(), static_cast<size_t>(expected.size()));
    for (qsizetype i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(items[static_cast<size_t>(i)]->Name, expected[i]);
    }
}

TEST_F(MelovaneConfigurationTest, EveryItemHasATextAndNoNameIsGivenTwice)
{
    catalogue.fill();
    size_t own = 0;
    for (const auto& table :
         {owntexts::windows(), owntexts::columns(), owntexts::views(), owntexts::importer(),
          owntexts::exporting(), owntexts::lists(), owntexts::tagWriting(), owntexts::viewer(),
          owntexts::bench(), owntexts::care(), owntexts::safety(), owntexts::found(),
          owntexts::settingsPages(), owntexts::player(), owntexts::help()}) {
        own += table.size();
    }
    EXPECT_EQ(texts.AllObjects().size(), static_cast<size_t>(test::suiteTextNames().size()) + own);
    for (const ConfigObject* item : texts.AllObjects()) {
        EXPECT_TRUE(!item->Description.isEmpty() || item->Name == "Sprach.Datei"_L1)
            << item->Name.toStdString();
        EXPECT_TRUE(item->ToolTip.isEmpty());
    }
}

struct ToldText
{
    QString name;
    QString text;
    QString second = {};
};

TEST_F(MelovaneConfigurationTest, TextsThatOthersKnowAreWordedAsTheyKnowThem)
{
    catalogue.fill();
    const std::vector<ToldText> told{
        {u"ok"_s, u"OK"_s},
        {u"achtung"_s, u"Achtung !"_s},
        {u"glob_warn"_s, u"Achtung !"_s},
        {u"noWarn"_s, u"Diese Meldung nicht mehr anzeigen"_s},
        {u"msg-001"_s, u"$1 Änderungen übernommen"_s},
        {u"msg-002"_s, u"Keine Änderungen vorhanden"_s},
        {u"noChangePlaylist"_s, u"Keine relevanten Änderungen an Playlisten vorhanden."_s},
        {u"nodb"_s, u"Melovane Datenbank nicht gefunden $1"_s},
        {u"dbOpenError"_s,
         u"Melovane kann nicht gestartet werden, da folgender Fehler aufgetreten ist.\\n\\n$1"_s},
        {u"Db.Open.No.Data"_s, u"Keine Daten in der Datenbank\\nZuerst MP3s importieren und eine "
                               "Playliste erstellen"_s},
        {u"warnDelPlaylistLock"_s,
         u"Eine schreibgeschützte Playliste kann nicht gelöscht werden !"_s},
        {u"warnDelPlaylistAktiv"_s, u"Die aktive Playliste kann nicht gelöscht werden !"_s},
        {u"warnDelPlaylist"_s, u"Soll die Playliste ''$1'' wirklich gelöscht werden ?"_s},
        {u"warnDelGroup"_s, u"Die Gruppe ''$1'' kann nicht gelöscht werden, da sich noch "
                            "Playlisten in ihr befinden !"_s},
        {u"warnM3Uerrors"_s, u"Beim importieren der M3U Playliste(n) sind Fehler "
                             "aufgetreten.\\n\\nSoll das Protokoll angezeigt werden ?"_s},
        {u"Compact.DB.Wait"_s, u"Bitte warten Datenbank wird komprimiert ..."_s},
        {u"Compact.DB.end"_s, u"Datenbank wurde koprimiert."_s},
        {u"errPlayer"_s, u"Fehler beim laden der Datei"_s},
        {u"errPlayerNoFile"_s, u"Datei nicht gefunden"_s},
        {u"errPlayerNoMP3"_s, u"Keine gültige MP3 Datei"_s},
        {u"errPlayerNext"_s, u"Lade nächsten Titel in 5 Sekunden"_s},
        {u"meldExpEnd"_s, u"Export beendet"_s},
        {u"meldExpAbbruch"_s, u"Vorgang abgebrochen"_s},
        {u"mnuDatei"_s, u"Datei"_s},
        {u"mnuConfig"_s, u"Einstellungen"_s},
        {u"mnuExtra"_s, u"Extras"_s},
        {u"mnuAnsicht"_s, u"Ansicht"_s},
        {u"mnuPlaylist"_s, u"Playlisten"_s},
        {u"mnuDatenbank"_s, u"Datenbank"_s},
        {u"mnuHelp"_s, u"?"_s},
        {u"mnuUeber"_s, u"Über"_s},
        {u"mnuExit"_s, u"Beenden"_s},
        {u"mnuRepairGridLayout"_s, u"Tabellenansichten reparieren"_s,
         u"Diese Änderung wird erst nach einem Neustart von $1 aktiv."_s},
        {u"conf.monitor.playtype"_s, u"Monitor Play ab"_s,
         u"1#;Play ab Start|2#;Play Von -> Bis"_s},
        {u"Importer.msg.findfile.end"_s,
         u"$1 Dateien, in $2  Verzeichnissen gefunden\\n$3  Dateien neu\\n\\n"_s},
        {u"chBerDB-0"_s, u"Gelöscht markierte MP3s entfernen."_s},
        {u"chBerDB-1"_s, u"Fehlerhafte MP3s entfernen (MP3ERROR)"_s},
        {u"chBerDB-2"_s, u"Nicht mehr vorhandenen MP3s entfernen"_s},
        {u"chBerDB-3"_s, u"Nicht mehr vorhandenen Abhängigkeiten entfernen"_s},
        {u"chBerDB-4"_s, u"Betroffene Dateien nach MelovaneRecycler verschieben"_s},
        {u"mnuDelSuchlist"_s, u"Suchliste löschen"_s},
        {u"frmBerDB"_s, u"Datenbereinigung"_s},
        {u"Player.BPM.Anzeige"_s, u"BPM Anzeige ändert sich beim Pitchen "_s},
    };
    for (const ToldText& row : told) {
        const ConfigObject* item = texts.FindObject(row.name);
        ASSERT_NE(item, nullptr) << row.name.toStdString();
        EXPECT_EQ(item->Description, row.text);
        EXPECT_EQ(item->DescriptionEx, row.second);
    }
    EXPECT_TRUE(texts.text(u"dbverserr", u"/x.mdb"_s, u"2.9"_s, u"3.4"_s)
                    .startsWith(u"Falsche Melovane Datenbankversion\n/x.mdb\nIhre Datenbank hat "
                                "die Versionsnummer: 2.9 benötigt wird aber die Version: 3.4"_s));
}

struct ToldSetting
{
    QString name;
    QString value;
    QString group;
    QString typ;
};

TEST_F(MelovaneConfigurationTest, SettingsHaveTheirDefaultsGroupsAndKinds)
{
    catalogue.fill();
    const QString player = u"Player"_s;
    const QString box = u"Checkbox"_s;
    const std::vector<ToldSetting> told{
        {u"StartUp.Set.Old.Track"_s, u"1"_s, player, box},
        {u"StartUp.Set.To.Old.Position"_s, u"0"_s, player, box},
        {u"StartUp.Autoplay"_s, u"0"_s, player, box},
        {u"Playlist.Time"_s, u"1"_s, player, box},
        {u"Playlist.View.Aktive.Rows"_s, u"0"_s, player, box},
        {u"Player.PitchDirection"_s, u"0"_s, player, box},
        {u"Player.One.Click.Action"_s, u"0"_s, player, box},
        {u"player.monitor.pause.change"_s, u"0"_s, player, box},
        {u"Player.BPM.Anzeige"_s, u"0"_s, player, box},
        {u"Explorer.Kontext.Menu.Import"_s, u"0"_s, u"other.settings"_s, box},
        {u"player.WaitForMixTime"_s, u"0"_s, player, u"Edit.Number"_s},
        {u"Tree.Item.No.Data"_s, u"1"_s, u"other.db.settings"_s, box},
        {u"conf.monitor.playtype"_s, u"2"_s, {}, {}},
        {u"Sprach.Datei"_s, u"lang_Deutsch.ini"_s, {}, {}},
    };
    for (const ToldSetting& row : told) {
        const ConfigObject* item = texts.FindObject(row.name);
        ASSERT_NE(item, nullptr) << row.name.toStdString();
        EXPECT_TRUE(item->HasValue) << row.name.toStdString();
        EXPECT_EQ(item->Value.toText(), row.value) << row.name.toStdString();
        EXPECT_EQ(item->DefaultValue.toText(), row.value) << row.name.toStdString();
        EXPECT_EQ(item->Group, row.group) << row.name.toStdString();
        EXPECT_EQ(item->Typ, row.typ) << row.name.toStdString();
    }
}

TEST_F(MelovaneConfigurationTest, TheTenMixerKeysAreTheKeyItems)
{
    catalogue.fill();
    const ConfigObjects::Items& keys = texts.GetKeys();
    ASSERT_EQ(keys.size(), 10U);
    for (size_t i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(keys[i]->Name, u"mixer.button.%1"_s.arg(i));
        EXPECT_EQ(keys[i]->Value.toText(), u"NUM-%1-TASTE"_s.arg(i));
    }
}

TEST_F(MelovaneConfigurationTest, TheUsersValuesAreReadFromTheSettingsFile)
{
    catalogue.folders.install(u"melovane.ini"_s, "[Value]\nstartup.autoplay=1\nok=kein Wert\n");
    catalogue.fill();
    EXPECT_EQ(texts.value(u"StartUp.Autoplay"), u"1"_s);
    EXPECT_EQ(texts.value(u"ok"), QString());
}

TEST_F(MelovaneConfigurationTest, FillingWritesNothing)
{
    catalogue.fill();
    EXPECT_TRUE(
        QDir(catalogue.folders.programFolder()).entryList({u"*.ini"_s}, QDir::Files).isEmpty());
}

TEST_F(MelovaneConfigurationTest, TheChosenLanguageIsLoadedAndAMissingOneLeavesTheBuiltInTexts)
{
    catalogue.folders.install(u"melovane.ini"_s, "[Value]\nSprach.Datei=lang_X.ini\n");
    catalogue.folders.install(u"lang_X.ini"_s, "[Description]\nok=Gut\n");
    catalogue.fill();
    EXPECT_EQ(texts.text(u"ok"), u"Gut"_s);
    EXPECT_EQ(texts.text(u"mnuExit"), u"Beenden"_s);

    test::TextCatalogue other;
    other.folders.install(u"melovane.ini"_s, "[Value]\nSprach.Datei=lang_Y.ini\n");
    other.fill();
    EXPECT_EQ(other.texts.text(u"ok"), u"OK"_s);
}

TEST_F(MelovaneConfigurationTest, AnotherLanguageReplacesAllTextsAndNoValue)
{
    catalogue.folders.install(u"melovane.ini"_s, "[Value]\nStartUp.Autoplay=1\n");
    catalogue.folders.install(u"lang_X.ini"_s, "[Description]\nok=Gut\n[ToolTip]\nok=Ja doch\n");
    catalogue.fill();
    const test::CurrentFolder here(catalogue.folders.programFolder());
    MelovaneConfiguration::speak(texts, u"lang_X.ini"_s);
    EXPECT_EQ(texts.text(u"ok"), u"Gut"_s);
    EXPECT_EQ(texts.FindObject(u"ok")->ToolTip, u"Ja doch"_s);
    MelovaneConfiguration::speak(texts, u"lang_Deutsch.ini"_s);
    EXPECT_EQ(texts.text(u"ok"), u"OK"_s);
    EXPECT_EQ(texts.FindObject(u"ok")->ToolTip, QString());
    EXPECT_EQ(texts.value(u"StartUp.Autoplay"), u"1"_s);
    // Of a name that is there twice the first text stays, as at the filling.
    EXPECT_EQ(texts.text(u"player.mnuDockDB"), u"Datenbank andocken"_s);
}

} // namespace
} // namespace melovane
