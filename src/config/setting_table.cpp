#include "config/setting_table.h"

#include <array>

namespace melovane {

namespace {

using section::kGlobal;
using section::kGrlobal;
using section::kMessage;
using section::kSavePlaylist;

constexpr SettingRow text(Setting property, QStringView key, QStringView value)
{
    return {property, kGlobal, key, SettingType::Text, value};
}

constexpr SettingRow number(Setting property, QStringView key, int value)
{
    return {property, kGlobal, key, SettingType::Long, {}, value};
}

constexpr SettingRow path(Setting property, QStringView key, DefaultBase base, QStringView name)
{
    return {property, kGlobal, key, SettingType::Text, name, 0, base};
}

constexpr SettingRow handle(Setting property, QStringView key)
{
    return {property, kMessage, key, SettingType::Long, {}, 0};
}

// clang-format off
constexpr std::array kRows = {
    path(Setting::DbName, u"DBName", DefaultBase::ConfigPath, u"melovane.mdb"),
    text(Setting::LangFile, u"LangFile", u"lang_de.ini"),
    text(Setting::SCardNameMonitor, u"SCardNameMonitor", u""),
    text(Setting::SCardNamePlayer1, u"SCardNamePlayer1", u""),
    text(Setting::SCardNamePlayer2, u"SCardNamePlayer2", u""),
    handle(Setting::MessageHandleKiv, u"Handle.Kiv"),
    handle(Setting::MessageHandleDB, u"Handle.DB"),
    handle(Setting::MessageHandleDJ, u"Handle.DJ"),
    number(Setting::HandleDB, u"HandleDB", 0),
    number(Setting::HandleDj, u"HandleDJ", 0),
    number(Setting::DBGridLoadAllRows, u"DBGrid.Load.All.Rows", 0),
    number(Setting::DefaultVolume, u"DefaultVolume", 7000),
    number(Setting::MinMaxPitch, u"MinMaxPitch", 2000),
    number(Setting::RePitchTime, u"RePitchTime", 5000),
    number(Setting::MaxBlendTime, u"MaxBlendTime", 30000),
    number(Setting::TalkoverBlendIn, u"TalkoverBlendIn", 1000),
    number(Setting::TalkoverBlendOut, u"TalkoverBlendOut", 500),
    number(Setting::TalkoverVolume, u"TalkoverVolume", 4000),
    number(Setting::LastConigCard, u"LastConigCard", 0),
    number(Setting::LiveSuche, u"LiveSuche", 0),
    number(Setting::LastAbsolutePosition, u"LastAbsolutePosition", -1),
    number(Setting::WriteStatistik, u"WriteStatistik", 0),
    number(Setting::WriteStatistikAuto, u"WriteStatistikAuto", 0),
    // A full path, while the skin is looked for by its bare name: until a name is stored there is
    // no skin. That is wanted.
    path(Setting::SkinFileName, u"SkinFileName", DefaultBase::ConfigPath, u"Skin/melovane.skn"),
    number(Setting::ShiftPressHoldTime, u"ShiftPressHoldTime", 1000),
    number(Setting::NormalizeOn, u"Normalize", 1),
    number(Setting::NormalizeTuning, u"NormalizeTuning", 0),
    SettingRow{Setting::GridSwapEditPlay, kGlobal, u"GridSwapEditPlay", SettingType::Word, {}, 0},
    number(Setting::FadeIn, u"FadeIn", 500),
    number(Setting::FadeOut, u"FadeOut", 500),
    number(Setting::StartMixMode, u"StartMixMode", 1),
    text(Setting::CDCacheDir, u"CDCacheDir", u""),
    text(Setting::LastImportDir, u"LastImportDir", u""),
    number(Setting::ID3v2Tags, u"ID3v2Tags", 1),
    number(Setting::AutoCue, u"AutoCue", 0),
    number(Setting::AutoCueLevel, u"AutoCueLevel", 23197),
    number(Setting::AutoCueMaxScan, u"AutoCueMaxScan", 25),
    number(Setting::AutoNormalize, u"AutoNormalize", 0),
    text(Setting::DefaultMixStyleIN, u"DefaultMixStyleIN", u"5000,2000,3000,0,10000"),
    text(Setting::DefaultMixStyleOUT, u"DefaultMixStyleOUT", u"0,3000,2000,5000,10000"),
    text(Setting::PlaylistNameFormat, u"PlaylistNameFormat", u"New Playlist #DD.MM.YY HH.NN#"),
    text(Setting::PlaylistGroupNameFormat, u"PlaylistGroupNameFormat", u"New Group #DD.MM.YY HH.NN#"),
    text(Setting::None, u"JinglelistNameFormat", u"Neue Jingleliste #DD.MM.YY#"),
    path(Setting::PlaylistVerzeichnis, u"PlaylistVerzeichnis", DefaultBase::PlaylistRoot, u"Playlisten"),
    number(Setting::AutosizeGrid, u"AutosizeGrid", 0),
    number(Setting::SuchAlbum, u"SuchAlbum", 1),
    number(Setting::SuchDatei, u"SuchDatei", 1),
    number(Setting::SuchKommentar, u"SuchKommentar", 1),
    number(Setting::SuchPath, u"SuchPath", 0),
    number(Setting::DefaultMixTime, u"DefaultMixTime", 5000),
    number(Setting::None, u"View.Current.Playlist.Pos", 1),
    number(Setting::None, u"Volume.Monitor", 7500),
    number(Setting::None, u"Jingle.Players", 5),
    number(Setting::None, u"BPMShowRange", 3),
    number(Setting::None, u"Message.Handle.Volume.Monitor", 0),
    number(Setting::None, u"MessageHandleJobs", 0),
    text(Setting::None, u"EditTag.Height", u""),
    text(Setting::None, u"LoadPlaylistPath", u""),
    text(Setting::None, u"SavePlaylistPath", u""),
    text(Setting::None, u"SavePlaylistFilesPath", u""),
    number(Setting::None, u"opExpDir", 0),
    number(Setting::None, u"opExpFile", 0),
    text(Setting::None, u"NewImage.Such.DIR", u""),
    number(Setting::None, u"Import.Image.Max.Size", 500),
    number(Setting::None, u"Import.Image.Quality", 75),
    SettingRow{Setting::None, kGrlobal, u"EditTag.Load.Genre", SettingType::Text, u"all"},
    SettingRow{Setting::None, kSavePlaylist, u"Template", SettingType::Text, u"%O"},
};

// clang-format on

constexpr size_t rowsOf(Setting property)
{
    size_t count = 0;
    for (const SettingRow& row : kRows) {
        count += row.property == property ? 1 : 0;
    }
    return count;
}

constexpr bool everyPropertyHasOneRow()
{
    for (size_t i = 0; i < kPropertyCount; ++i) {
        if (rowsOf(Setting(i)) != 1) {
            return false;
        }
    }
    return true;
}

static_assert(everyPropertyHasOneRow());

} // namespace

std::span<const SettingRow> settingTable()
{
    return kRows;
}

const SettingRow& rowOf(Setting property)
{
    static const auto rows = [] {
        std::array<const SettingRow*, kPropertyCount> byProperty = {};
        for (const SettingRow& row : kRows) {
            if (row.property != Setting::None) {
                byProperty[size_t(row.property)] = &row;
            }
        }
        return byProperty;
    }();
    Q_ASSERT(property != Setting::None);
    return *rows[size_t(property)];
}

const SettingRow* findRow(QStringView section, QStringView key)
{
    for (const SettingRow& row : kRows) {
        if (row.section.compare(section, Qt::CaseInsensitive) == 0 &&
            row.key.compare(key, Qt::CaseInsensitive) == 0) {
            return &row;
        }
    }
    return nullptr;
}

} // namespace melovane
