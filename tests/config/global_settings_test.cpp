#include "config/global_settings.h"
#include "platform/system/path_text.h"
#include "support/suite_folders.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class Settings : public testing::Test
{
protected:
    void write(const QByteArray& bytes) { suite.folder().write(file, bytes); }

    [[nodiscard]] QByteArray read() { return suite.folder().read(file); }

    test::SuiteFolders suite;
    QString file = suite.configFile(u"melovane.ini"_s);
};

// ---- the table

TEST_F(Settings, EveryKeyOfTheTableHasItsDefaultWhenTheFileIsMissing)
{
    const auto settings = suite.makeSettings();
    for (const SettingRow& row : settingTable()) {
        const QString section = row.section.toString();
        const QString key = row.key.toString();
        const auto value = settings->defaultOf(section, key);
        ASSERT_TRUE(value) << key.toStdString();
        EXPECT_EQ(settings->GetKeyValue(section, key, *value), *value) << key.toStdString();
    }
    EXPECT_FALSE(suite.files().fileExists(file)) << "reading must not make the file";
}

/// Keys of section "Global" with their defaults, as the siblings have them, too.
const std::vector<std::pair<QString, QString>> kDefaults = {
    {u"LangFile"_s, u"lang_de.ini"_s},
    {u"SCardNameMonitor"_s, {}},
    {u"SCardNamePlayer1"_s, {}},
    {u"SCardNamePlayer2"_s, {}},
    {u"DBGrid.Load.All.Rows"_s, u"0"_s},
    {u"DefaultVolume"_s, u"7000"_s},
    {u"MinMaxPitch"_s, u"2000"_s},
    {u"RePitchTime"_s, u"5000"_s},
    {u"MaxBlendTime"_s, u"30000"_s},
    {u"TalkoverBlendIn"_s, u"1000"_s},
    {u"TalkoverBlendOut"_s, u"500"_s},
    {u"TalkoverVolume"_s, u"4000"_s},
    {u"LastConigCard"_s, u"0"_s},
    {u"LiveSuche"_s, u"0"_s},
    {u"LastAbsolutePosition"_s, u"-1"_s},
    {u"WriteStatistik"_s, u"0"_s},
    {u"WriteStatistikAuto"_s, u"0"_s},
    {u"ShiftPressHoldTime"_s, u"1000"_s},
    {u"Normalize"_s, u"1"_s},
    {u"NormalizeTuning"_s, u"0"_s},
    {u"GridSwapEditPlay"_s, u"0"_s},
    {u"FadeIn"_s, u"500"_s},
    {u"FadeOut"_s, u"500"_s},
    {u"StartMixMode"_s, u"1"_s},
    {u"CDCacheDir"_s, {}},
    {u"LastImportDir"_s, {}},
    {u"ID3v2Tags"_s, u"1"_s},
    {u"AutoCue"_s, u"0"_s},
    {u"AutoCueLevel"_s, u"23197"_s},
    {u"AutoCueMaxScan"_s, u"25"_s},
    {u"AutoNormalize"_s, u"0"_s},
    {u"DefaultMixStyleIN"_s, u"5000,2000,3000,0,10000"_s},
    {u"DefaultMixStyleOUT"_s, u"0,3000,2000,5000,10000"_s},
    {u"PlaylistNameFormat"_s, u"New Playlist #DD.MM.YY HH.NN#"_s},
    {u"PlaylistGroupNameFormat"_s, u"New Group #DD.MM.YY HH.NN#"_s},
    {u"JinglelistNameFormat"_s, u"Neue Jingleliste #DD.MM.YY#"_s},
    {u"AutosizeGrid"_s, u"0"_s},
    {u"SuchAlbum"_s, u"1"_s},
    {u"SuchDatei"_s, u"1"_s},
    {u"SuchKommentar"_s, u"1"_s},
    {u"SuchPath"_s, u"0"_s},
    {u"DefaultMixTime"_s, u"5000"_s},
    {u"HandleDB"_s, u"0"_s},
    {u"HandleDJ"_s, u"0"_s},
    {u"View.Current.Playlist.Pos"_s, u"1"_s},
    {u"Volume.Monitor"_s, u"7500"_s},
    {u"Jingle.Players"_s, u"5"_s},
    {u"BPMShowRange"_s, u"3"_s},
    {u"Message.Handle.Volume.Monitor"_s, u"0"_s},
    {u"MessageHandleJobs"_s, u"0"_s},
    {u"EditTag.Height"_s, {}},
    {u"LoadPlaylistPath"_s, {}},
    {u"SavePlaylistPath"_s, {}},
    {u"SavePlaylistFilesPath"_s, {}},
    {u"opExpDir"_s, u"0"_s},
    {u"opExpFile"_s, u"0"_s},
    {u"NewImage.Such.DIR"_s, {}},
    {u"Import.Image.Max.Size"_s, u"500"_s},
    {u"Import.Image.Quality"_s, u"75"_s},
};

TEST_F(Settings, EachKeyIsSpeltAndPresetAsTheSiblingsKnowIt)
{
    const auto settings = suite.makeSettings();
    for (const auto& [key, value] : kDefaults) {
        const SettingRow* const row = findRow(u"Global", key);
        ASSERT_NE(row, nullptr) << key.toStdString();
        EXPECT_EQ(row->key, key);
        EXPECT_EQ(settings->defaultOf(u"Global", key), value) << key.toStdString();
    }
    // Paths have their own test; besides them the section holds nothing else.
    const auto rows = settingTable();
    const auto inGlobal = [](const SettingRow& row) {
        return row.section == u"Global" && row.base == DefaultBase::Nothing;
    };
    EXPECT_EQ(size_t(std::count_if(rows.begin(), rows.end(), inGlobal)), kDefaults.size());
}

/// A property by its row, for walking the whole table.
struct TextProperty
{
    Setting property;
    QString (GlobalSettings::*get)() const;
    void (GlobalSettings::*set)(const QString&);
};

struct NumberProperty
{
    Setting property;
    int (GlobalSettings::*get)() const;
    void (GlobalSettings::*set)(int);
};

#define MLV_PROPERTY(Name)                                                                         \
    {                                                                                              \
        Setting::Name, &GlobalSettings::Name, &GlobalSettings::Set##Name                           \
    }

const std::vector<TextProperty> kTexts = {
    MLV_PROPERTY(DbName),
    MLV_PROPERTY(LangFile),
    MLV_PROPERTY(SCardNameMonitor),
    MLV_PROPERTY(SCardNamePlayer1),
    MLV_PROPERTY(SCardNamePlayer2),
    MLV_PROPERTY(SkinFileName),
    MLV_PROPERTY(CDCacheDir),
    MLV_PROPERTY(LastImportDir),
    MLV_PROPERTY(DefaultMixStyleIN),
    MLV_PROPERTY(DefaultMixStyleOUT),
    MLV_PROPERTY(PlaylistNameFormat),
    MLV_PROPERTY(PlaylistGroupNameFormat),
    MLV_PROPERTY(PlaylistVerzeichnis),
};

const std::vector<NumberProperty> kNumbers = {
    MLV_PROPERTY(DBGridLoadAllRows),
    MLV_PROPERTY(DefaultVolume),
    MLV_PROPERTY(MinMaxPitch),
    MLV_PROPERTY(RePitchTime),
    MLV_PROPERTY(MaxBlendTime),
    MLV_PROPERTY(TalkoverBlendIn),
    MLV_PROPERTY(TalkoverBlendOut),
    MLV_PROPERTY(TalkoverVolume),
    MLV_PROPERTY(LastConigCard),
    MLV_PROPERTY(LiveSuche),
    MLV_PROPERTY(LastAbsolutePosition),
    MLV_PROPERTY(WriteStatistik),
    MLV_PROPERTY(WriteStatistikAuto),
    MLV_PROPERTY(ShiftPressHoldTime),
    MLV_PROPERTY(NormalizeOn),
    MLV_PROPERTY(NormalizeTuning),
    MLV_PROPERTY(GridSwapEditPlay),
    MLV_PROPERTY(FadeIn),
    MLV_PROPERTY(FadeOut),
    MLV_PROPERTY(StartMixMode),
    MLV_PROPERTY(ID3v2Tags),
    MLV_PROPERTY(AutoCue),
    MLV_PROPERTY(AutoCueLevel),
    MLV_PROPERTY(AutoCueMaxScan),
    MLV_PROPERTY(AutoNormalize),
    MLV_PROPERTY(AutosizeGrid),
    MLV_PROPERTY(SuchAlbum),
    MLV_PROPERTY(SuchDatei),
    MLV_PROPERTY(SuchKommentar),
    MLV_PROPERTY(SuchPath),
    MLV_PROPERTY(DefaultMixTime),
    MLV_PROPERTY(HandleDB),
    MLV_PROPERTY(HandleDj),
    MLV_PROPERTY(MessageHandleDB),
    MLV_PROPERTY(MessageHandleDJ),
};

TEST_F(Settings, TheWalkBelowHoldsEveryPropertyWithASetter)
{
    // MessageHandleKiv is read only: the sample tool alone writes it.
    EXPECT_EQ(kTexts.size() + kNumbers.size() + 1, kPropertyCount);
}

TEST_F(Settings, EveryPropertyHasItsDefaultWhenTheKeyIsMissing)
{
    const auto settings = suite.makeSettings();
    for (const TextProperty& property : kTexts) {
        const SettingRow& row = rowOf(property.property);
        EXPECT_EQ(((*settings).*property.get)(), *settings->defaultOf(row.section, row.key));
    }
    for (const NumberProperty& property : kNumbers) {
        EXPECT_EQ(((*settings).*property.get)(), rowOf(property.property).number);
    }
    EXPECT_EQ(settings->MessageHandleKiv(), 0);
}

TEST_F(Settings, EveryTextIsWrittenAtOnceAndComesBackWithRefresh)
{
    const QString database = suite.install(u"other.mdb"_s, "x");
    const auto settings = suite.makeSettings();
    const auto second = suite.makeSettings();
    for (const TextProperty& property : kTexts) {
        const SettingRow& row = rowOf(property.property);
        const QString value =
            property.property == Setting::DbName ? database : u"=;ä \"x\" ["_s + row.key.toString();
        ((*settings).*property.set)(value);
        EXPECT_EQ(((*settings).*property.get)(), value);
        EXPECT_EQ(suite.profile().value(file, row.section.toString(), row.key.toString()), value);
        second->Refresh();
        EXPECT_EQ(((*second).*property.get)(), value) << value.toStdString();
    }
}

TEST_F(Settings, EveryNumberIsWrittenAtOnceAndComesBackWithRefresh)
{
    const auto settings = suite.makeSettings();
    const auto second = suite.makeSettings();
    int value = 1000;
    for (const NumberProperty& property : kNumbers) {
        const SettingRow& row = rowOf(property.property);
        ((*settings).*property.set)(++value);
        EXPECT_EQ(((*settings).*property.get)(), value);
        EXPECT_EQ(suite.profile().value(file, row.section.toString(), row.key.toString()),
                  QString::number(value));
        second->Refresh();
        EXPECT_EQ(((*second).*property.get)(), value);
    }
}

// ---- reading

TEST_F(Settings, APathOf260LettersOrMoreIsCutTo259)
{
    write("[Global]\nPlaylistVerzeichnis=/" + QByteArray(300, 'x') + "\n");
    EXPECT_EQ(suite.makeSettings()->PlaylistVerzeichnis(), u'/' + QString(258, u'x'));
}

TEST_F(Settings, AnEmptyDefaultAndAnEmptyStoredValueGiveAnEmptyText)
{
    write("[Global]\nLangFile=\nSCardNameMonitor=\n");
    const auto settings = suite.makeSettings();
    EXPECT_EQ(settings->GetKeyValue(u"Global"_s, u"SCardNameMonitor"_s, QString()), QString());
    EXPECT_EQ(settings->LangFile(), u"lang_de.ini"_s);
}

TEST_F(Settings, ANumberThatIsNoneReadsAsZeroAndOneWithATailIsRead)
{
    write("[Global]\nFadeIn=abc\nFadeOut=12abc\nDefaultVolume=99999999999\nAutoCueLevel=2.5\n"
          "GridSwapEditPlay=40000\n");
    const auto settings = suite.makeSettings();
    EXPECT_EQ(settings->FadeIn(), 0);
    EXPECT_EQ(settings->FadeOut(), 12);
    EXPECT_EQ(settings->DefaultVolume(), 2147483647);
    EXPECT_EQ(settings->AutoCueLevel(), 2);
    EXPECT_EQ(settings->GridSwapEditPlay(), 32767);
}

TEST_F(Settings, SubSelectionMakesGetKeyValueLookInThePrefixedSection)
{
    write("[Global]\na=1\n[Dj.Global]\na=2\n");
    const auto settings = suite.makeSettings();
    settings->toolBox().SetSubSelection(u"Dj."_s);
    EXPECT_EQ(settings->GetKeyValue(u"Global"_s, u"a"_s, QString()), u"2"_s);
    EXPECT_EQ(settings->GetKeyValueLong(u"Global"_s, u"a"_s, 0), 2);
    settings->SetFadeIn(77);
    EXPECT_EQ(read(), "[Global]\na=1\n[Dj.Global]\na=2\nFadeIn=77\n");
}

TEST_F(Settings, TheDefaultSkinIsAFullPath)
{
    EXPECT_EQ(suite.makeSettings()->SkinFileName(), suite.configFile(u"Skin/melovane.skn"_s));
}

TEST_F(Settings, DefaultsOfPathsLieInTheFoldersOfTheLayout)
{
    test::SuiteFolders user(test::SuiteFolders::Layout::UserNormal);
    const auto settings = user.makeSettings();
    EXPECT_EQ(settings->DbName(), path::join(user.places().userData, u"Melovane/melovane.mdb"));
    EXPECT_EQ(settings->PlaylistVerzeichnis(),
              path::join(user.places().userDocuments, u"Melovane/Playlisten/"));
}

TEST_F(Settings, KeysWithoutAPropertyHaveTheirDefaultsToo)
{
    const auto settings = suite.makeSettings();
    EXPECT_EQ(settings->defaultOf(u"Global", u"Volume.Monitor"), u"7500"_s);
    EXPECT_EQ(settings->defaultOf(u"global", u"JINGLELISTNAMEFORMAT"),
              u"Neue Jingleliste #DD.MM.YY#"_s);
    EXPECT_EQ(settings->defaultOf(u"Grlobal", u"EditTag.Load.Genre"), u"all"_s);
    EXPECT_EQ(settings->defaultOf(u"SavePlaylist", u"Template"), u"%O"_s);
    EXPECT_FALSE(settings->defaultOf(u"Global", u"EditTag.Load.Genre"));
}

// ---- database file

TEST_F(Settings, ADatabaseThatDoesNotExistBecomesTheDefaultInMemoryAlone)
{
    const QByteArray ini = "[Global]\nDBName=/no/such/place/melovane.mdb\n";
    write(ini);
    EXPECT_EQ(suite.makeSettings()->DbName(), suite.configFile(u"melovane.mdb"_s));
    EXPECT_EQ(read(), ini);
}

TEST_F(Settings, ABareDatabaseNameBecomesTheDefault)
{
    const QString here = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(suite.folder().path()));
    suite.folder().write(u"bare.mdb"_s, "x");
    write("[Global]\nDBName=bare.mdb\n");
    EXPECT_EQ(suite.makeSettings()->DbName(), suite.configFile(u"melovane.mdb"_s));
    ASSERT_TRUE(QDir::setCurrent(here));
}

TEST_F(Settings, ADatabaseElsewhereIsUsed)
{
    const QString elsewhere = suite.folder().write(u"else where/b.mdb"_s, "x");
    write("[Global]\nDBName=" + elsewhere.toUtf8() + "\n");
    EXPECT_EQ(suite.makeSettings()->DbName(), elsewhere);
}

TEST_F(Settings, AnOpenLibraryStaysWhatEverTheFileNamesMeanwhile)
{
    using Named = GlobalSettings::NamedLibrary;
    const QString open = suite.folder().write(u"a.mdb"_s, "x");
    const QString other = suite.folder().write(u"b.mdb"_s, "x");
    write("[Global]\nDBName=" + open.toUtf8() + "\n");
    const auto settings = suite.makeSettings();
    settings->holdLibrary(settings->DbName());
    settings->Refresh();
    EXPECT_EQ(settings->namedLibrary(), Named::Held);

    ASSERT_TRUE(QFile::remove(open));
    settings->Refresh();
    EXPECT_EQ(settings->DbName(), open);
    EXPECT_EQ(settings->namedLibrary(), Named::Missing);

    write("[Global]\nDBName=" + other.toUtf8() + "\n");
    settings->Refresh();
    EXPECT_EQ(settings->DbName(), open);
    EXPECT_EQ(settings->namedLibrary(), Named::Other);
    settings->holdLibrary(settings->namedDbName());
    EXPECT_EQ(settings->DbName(), other);
    EXPECT_EQ(settings->namedLibrary(), Named::Held);
}

// ---- writing

TEST_F(Settings, ForeignKeysAndCommentsSurviveEverySetter)
{
    write("; by the player\r\n[Player]\r\nx=1\r\n[Global]\r\nOther.Key=2\r\n");
    const auto settings = suite.makeSettings();
    settings->SetLiveSuche(1);
    settings->SetMessageHandleDB(0);
    EXPECT_EQ(read(), "; by the player\r\n[Player]\r\nx=1\r\n[Global]\r\nOther.Key=2\r\n"
                      "LiveSuche=1\r\n");
}

TEST_F(Settings, AWriteToAReadOnlyFileFailsWithoutAWordAndTheRunGoesOn)
{
    write("[Global]\nLiveSuche=0\n");
    ASSERT_TRUE(QFile::setPermissions(file, QFile::ReadOwner));
    const auto settings = suite.makeSettings();
    settings->SetLiveSuche(1);
    EXPECT_EQ(settings->LiveSuche(), 1);
    EXPECT_EQ(read(), "[Global]\nLiveSuche=0\n");
}

TEST_F(Settings, HostileTextsComeBackOrAreCutAndHarmNoOtherKey)
{
    const auto settings = suite.makeSettings();
    settings->SetLiveSuche(1);
    for (const QString& text : {u"'; drop table x --"_s, u"a\n[Global]\nLiveSuche=0"_s, u"\"x\""_s,
                                QString(10000, u'x')}) {
        settings->SetLastImportDir(text);
        settings->Refresh();
        EXPECT_EQ(settings->LastImportDir(), text.left(259));
        EXPECT_EQ(settings->LiveSuche(), 1);
    }
    settings->SetLastImportDir(QString(QChar(0xD800)) + u"x"_s);
    settings->Refresh();
    EXPECT_EQ(settings->LiveSuche(), 1);
}

TEST_F(Settings, ASiblingsChangeComesInWithRefreshAndNotBefore)
{
    const auto settings = suite.makeSettings();
    const auto sibling = suite.makeSettings();
    sibling->SetSuchAlbum(0);
    EXPECT_EQ(settings->SuchAlbum(), 1);
    settings->Refresh();
    EXPECT_EQ(settings->SuchAlbum(), 0);
}

TEST_F(Settings, AnyKeyIsWrittenReadAndRemoved)
{
    const auto settings = suite.makeSettings();
    settings->WriteKeyValue(u"WarnMeldung"_s, u"MelovaneDB.x"_s, u"1"_s);
    EXPECT_EQ(settings->GetKeyValueLong(u"WarnMeldung"_s, u"MelovaneDB.x"_s, 0), 1);
    settings->WriteKeyValue(u"WarnMeldung"_s, u"MelovaneDB.x"_s, std::nullopt);
    EXPECT_EQ(settings->GetKeyValue(u"WarnMeldung"_s, u"MelovaneDB.x"_s, u"none"_s), u"none"_s);
}

// ---- handles

TEST_F(Settings, AMessageHandleStandsInSectionMessageAndZeroRemovesIt)
{
    const auto settings = suite.makeSettings();
    settings->SetMessageHandleDB(70000);
    settings->SetMessageHandleDJ(70001);
    settings->SetHandleDB(5);
    EXPECT_EQ(read(), "[Message]\nHandle.DB=70000\nHandle.DJ=70001\n\n[Global]\nHandleDB=5\n");
    settings->SetMessageHandleDB(0);
    EXPECT_EQ(settings->MessageHandleDB(), 0);
    EXPECT_EQ(read(), "[Message]\nHandle.DJ=70001\n\n[Global]\nHandleDB=5\n");
}

TEST_F(Settings, RefreshMessageHandleReadsHandlesAloneAndWritesNothing)
{
    const auto settings = suite.makeSettings();
    const QByteArray ini = "[Message]\nHandle.DB=1\nHandle.DJ=0\nHandle.Kiv=3\n"
                           "[Global]\nHandleDB=4\nHandleDJ=5\nLiveSuche=1\n";
    write(ini);
    settings->RefreshMessageHandle();
    EXPECT_EQ(settings->MessageHandleDB(), 1);
    EXPECT_EQ(settings->MessageHandleDJ(), 0);
    EXPECT_EQ(settings->MessageHandleKiv(), 3);
    EXPECT_EQ(settings->HandleDB(), 4);
    EXPECT_EQ(settings->HandleDj(), 5);
    EXPECT_EQ(settings->LiveSuche(), 0);
    EXPECT_EQ(read(), ini);
}

// ---- sound cards

TEST_F(Settings, ACardUsedForTwoOutputsGetsTheNumberTwice)
{
    write("[Global]\nSCardNameMonitor=A\nSCardNamePlayer1=B\nSCardNamePlayer2=A\n");
    const auto settings = suite.makeSettings();
    settings->SetSoundCardID(u"A"_s, 3);
    settings->SetSoundCardID(u"b"_s, 9);
    EXPECT_EQ(settings->SCardNameMonitorID(), 3);
    EXPECT_EQ(settings->SCardNamePlayer1ID(), 0);
    EXPECT_EQ(settings->SCardNamePlayer2ID(), 3);
    settings->Refresh();
    EXPECT_EQ(settings->SCardNameMonitorID(), 0);
}

// ---- windows

TEST_F(Settings, AMissingPositionIsMinusOneInEveryField)
{
    const auto settings = suite.makeSettings();
    for (const QString& name : {u"DBPosition"_s, u"DJPosition"_s, u"IMPPosition"_s,
                                u"CONFPosition"_s, u"TAGPosition"_s}) {
        const WindowPosition& position = settings->Position(name);
        EXPECT_EQ(position.Height, -1);
        EXPECT_EQ(position.Left, -1);
        EXPECT_EQ(position.Top, -1);
        EXPECT_EQ(position.Whidth, -1);
        EXPECT_EQ(position.WindowState, -1);
    }
}

TEST_F(Settings, TheWidthOfAWindowIsSpelledWhidthAndWidthIsIgnored)
{
    write("[DBPosition]\nWidth=1\nWhidth=800\n[DJPosition]\nWidth=2\n");
    const auto settings = suite.makeSettings();
    EXPECT_EQ(settings->Position(u"dbposition"_s).Whidth, 800);
    EXPECT_EQ(settings->Position(u"DJPosition"_s).Whidth, -1);
}

TEST_F(Settings, APositionIsSavedInItsOrderAndDockingIsNot)
{
    const auto settings = suite.makeSettings();
    WindowPosition& position = settings->Position(u"DBPosition"_s);
    position.Height = 1;
    position.Top = 2;
    position.Left = -3;
    position.Whidth = 4;
    position.WindowState = 2;
    position.Docked = 1;
    position.StateBeforeDocking = 7;
    settings->PositionSave(u"DBPosition"_s);
    EXPECT_EQ(read(), "[DBPosition]\nHeight=1\nTop=2\nLeft=-3\nWhidth=4\nWindowState=2\n");
}

TEST_F(Settings, UnknownNamesOfCollectionsAreTheCallersError)
{
    const auto settings = suite.makeSettings();
    EXPECT_THROW(static_cast<void>(settings->Position(u"Nowhere"_s)), UnknownName);
    EXPECT_THROW(settings->PositionSave(u"Nowhere"_s), UnknownName);
    EXPECT_THROW(static_cast<void>(settings->Plugin(u"Nothing"_s)), UnknownName);
}

// ---- plug-ins

TEST_F(Settings, PlugInsAreReadWithMenuTextAndOption)
{
    write("[PLUGIN]\nlyrics=LyricShow\nwiki=WikiView\nLYRICS=Second\n"
          "[PLUGIN_Menu]\nlyrics=Show lyrics\n[PLUGIN_Option]\nlyrics=PLID\n");
    const auto settings = suite.makeSettings();
    EXPECT_TRUE(settings->GetPlugIns(false).empty());
    ASSERT_EQ(settings->GetPlugIns(true).size(), 2U);
    const PluginProperty& lyrics = settings->Plugin(u"Lyrics"_s);
    EXPECT_EQ(lyrics.Name, u"lyrics"_s);
    EXPECT_EQ(lyrics.Program, u"LyricShow"_s);
    EXPECT_EQ(lyrics.MenuText, u"Show lyrics"_s);
    EXPECT_EQ(lyrics.Option, u"PLID"_s);
    EXPECT_EQ(settings->Plugin(u"wiki"_s).MenuText, QString());
}

TEST_F(Settings, ReloadingPlugInsForgetsTheOldOnes)
{
    write("[PLUGIN]\na=A\n");
    const auto settings = suite.makeSettings();
    EXPECT_EQ(settings->GetPlugIns(true).size(), 1U);
    write("[Global]\n");
    EXPECT_EQ(settings->GetPlugIns(false).size(), 1U);
    EXPECT_TRUE(settings->GetPlugIns(true).empty());
}

// ---- temporary settings file

TEST_F(Settings, ATemporaryFileIsWorkedOnUntilItIsActivated)
{
    write("[Global]\nLiveSuche=0\nx=1\n");
    const auto settings = suite.makeSettings();
    settings->CreateTempIniFile();
    EXPECT_EQ(settings->SetIniFilename(), u"~melovane.ini"_s);
    settings->SetLiveSuche(1);
    EXPECT_EQ(read(), "[Global]\nLiveSuche=0\nx=1\n");
    settings->ActivateTempIniFile();
    EXPECT_EQ(settings->SetIniFilename(), u"melovane.ini"_s);
    EXPECT_EQ(read(), "[Global]\nLiveSuche=1\nx=1\n");
    settings->SetLiveSuche(2);
    EXPECT_EQ(read(), "[Global]\nLiveSuche=2\nx=1\n");
}

TEST_F(Settings, WithoutSettingsTheTemporaryFileStartsEmptyNotWithAnOldOne)
{
    suite.folder().write(suite.configFile(u"~melovane.ini"_s), "[Global]\nLiveSuche=9\n");
    const auto settings = suite.makeSettings();
    settings->CreateTempIniFile();
    settings->Refresh();
    EXPECT_EQ(settings->LiveSuche(), 0);
    settings->ActivateTempIniFile();
    EXPECT_FALSE(suite.files().fileExists(file));
}

TEST_F(Settings, RefreshReadsTheFileInUse)
{
    suite.folder().write(suite.configFile(u"other.ini"_s), "[Global]\nLiveSuche=5\n");
    const auto settings = suite.makeSettings();
    settings->SetIniFilename(u"other.ini"_s);
    EXPECT_EQ(settings->LiveSuche(), 0);
    settings->Refresh();
    EXPECT_EQ(settings->LiveSuche(), 5);
}

// ---- broken files

TEST_F(Settings, AFolderRandomBytesOr100MegabytesGiveAllDefaultsAndStay)
{
    const auto allDefaults = [this] {
        const auto settings = suite.makeSettings();
        EXPECT_EQ(settings->DefaultVolume(), 7000);
        EXPECT_EQ(settings->LangFile(), u"lang_de.ini"_s);
        EXPECT_TRUE(settings->GetPlugIns(true).empty());
    };
    const QByteArray bytes("\xFF\xFE\0[Gl\x80=\r\r\n[[[]]]==;\"\0", 20);
    write(bytes);
    allDefaults();
    EXPECT_EQ(read(), bytes);

    write("[Global]\nDefaultVolume=1\n");
    ASSERT_TRUE(QFile::resize(file, 100LL * 1024 * 1024));
    allDefaults();
    EXPECT_EQ(suite.files().facts(file)->size, 100LL * 1024 * 1024);

    ASSERT_TRUE(suite.files().remove(file));
    ASSERT_TRUE(suite.files().makeFolder(file));
    allDefaults();
    suite.makeSettings()->SetDefaultVolume(1);
    EXPECT_TRUE(suite.files().folderExists(file));
}

} // namespace
} // namespace melovane
