#include "config/global_settings.h"
#include "platform/system/path_text.h"
#include "support/suite_folders.h"

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

} // namespace
} // namespace melovane
