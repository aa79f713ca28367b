#pragma once

#include <QStringView>

#include <span>

namespace melovane {

/// The settings that GlobalSettings keeps as properties, by the name of the property.
enum class Setting
{
    DbName,
    LangFile,
    SCardNameMonitor,
    SCardNamePlayer1,
    SCardNamePlayer2,
    DBGridLoadAllRows,
    DefaultVolume,
    MinMaxPitch,
    RePitchTime,
    MaxBlendTime,
    TalkoverBlendIn,
    TalkoverBlendOut,
    TalkoverVolume,
    LastConigCard,
    LiveSuche,
    LastAbsolutePosition,
    WriteStatistik,
    WriteStatistikAuto,
    SkinFileName,
    ShiftPressHoldTime,
    NormalizeOn,
    NormalizeTuning,
    GridSwapEditPlay,
    FadeIn,
    FadeOut,
    StartMixMode,
    CDCacheDir,
    LastImportDir,
    ID3v2Tags,
    AutoCue,
    AutoCueLevel,
    AutoCueMaxScan,
    AutoNormalize,
    DefaultMixStyleIN,
    DefaultMixStyleOUT,
    PlaylistNameFormat,
    PlaylistGroupNameFormat,
    PlaylistVerzeichnis,
    AutosizeGrid,
    SuchAlbum,
    SuchDatei,
    SuchKommentar,
    SuchPath,
    DefaultMixTime,
    HandleDB,
    HandleDj,
    MessageHandleKiv,
    MessageHandleDB,
    MessageHandleDJ,
    None ///< no property: its users read and write the key themselves
};

/// Number of properties.
inline constexpr size_t kPropertyCount = size_t(Setting::None);

enum class SettingType
{
    Text,
    Long, ///< whole number of 32 bits
    Word  ///< whole number of 16 bits
};

/// What stands in front of the default of a path setting.
enum class DefaultBase
{
    Nothing,
    ConfigPath,
    PlaylistRoot ///< a folder: the default ends with a separator
};

/// One setting: where it stands in the file, and what it is when it does not.
struct SettingRow
{
    Setting property;
    QStringView section;
    QStringView key; ///< misspellings are the file's own: keep
    SettingType type;
    QStringView text; ///< default of a text; behind its base for a path
    int number = 0;   ///< default of a number
    DefaultBase base = DefaultBase::Nothing;
};

/// Names of sections: keep.
namespace section {
inline constexpr QStringView kGlobal = u"Global";
/// Spelled so in the file.
inline constexpr QStringView kGrlobal = u"Grlobal";
inline constexpr QStringView kMessage = u"Message";
/// One key per running program: the name of its executable, and its message control.
inline constexpr QStringView kMessageHandle = u"Message.Handle";
inline constexpr QStringView kSavePlaylist = u"SavePlaylist";
inline constexpr QStringView kPlugin = u"PLUGIN";
inline constexpr QStringView kPluginMenu = u"PLUGIN_Menu";
inline constexpr QStringView kPluginOption = u"PLUGIN_Option";
} // namespace section

/// All rows, in the order in which they are read.
[[nodiscard]] std::span<const SettingRow> settingTable();

/// The row of a property.
[[nodiscard]] const SettingRow& rowOf(Setting property);

/// The row of a key, without regard to case, or null.
[[nodiscard]] const SettingRow* findRow(QStringView section, QStringView key);

} // namespace melovane
