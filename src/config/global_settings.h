#pragma once

#include "config/plugins.h"
#include "config/setting_table.h"
#include "config/tasten.h"
#include "config/tool_box.h"
#include "config/window_position.h"

#include <QString>

#include <array>
#include <optional>
#include <stdexcept>
#include <vector>

namespace melovane {

class DBEngine;
class Files;
class Keyboard;
class Mod_API;
class PrivateProfile;

/// A name that a keyed collection of the settings does not hold.
class UnknownName : public std::out_of_range
{
public:
    explicit UnknownName(const QString& name)
        : std::out_of_range(name.toStdString())
    {}
};

/// The settings of the suite, as the whole program asks for them.
///
/// They stand in `melovane.ini`, which the siblings read and write, too. Each property is a copy
/// made by Refresh; each setter changes the copy and the file at once. Where a setting stands, its
/// type and its default is one row of setting_table.h. Ask when you act and keep no copy: a Refresh
/// after a sibling's message is then enough.
///
/// Nothing is reported. A missing or unreadable file gives all defaults, a number that is none is
/// 0, a write that fails leaves the file as it was.
class GlobalSettings
{
public:
    /// Reads `melovane.ini` in the configuration path. The references outlive the object.
    GlobalSettings(Mod_API& paths, PrivateProfile& profile, Files& files, DBEngine& engine);

    /// Copies the settings file to `~melovane.ini`, from now on reading and writing that. An
    /// earlier copy is replaced, also when there are no settings to copy.
    void CreateTempIniFile();

    /// Puts `~melovane.ini` in the place of `melovane.ini` and works on that again.
    void ActivateTempIniFile();

    /// Any key, in whatever section. See ToolBox for the cuts and what a default is taken for.
    [[nodiscard]] int
    GetKeyValueLong(const QString& section, const QString& key, int defaultValue) const;
    [[nodiscard]] QString
    GetKeyValue(const QString& section, const QString& key, const QString& defaultValue) const;
    /// Nothing as value removes the key.
    void
    WriteKeyValue(const QString& section, const QString& key, const std::optional<QString>& value);

    /// The default of a key of the suite as it is written in the file, paths put together; nothing
    /// for a key that is not in the table.
    [[nodiscard]] std::optional<QString> defaultOf(QStringView section, QStringView key) const;

    /// Gives its number to each of the three outputs whose card has that name.
    void SetSoundCardID(const QString& name, int id);

    /// "DBPosition", "DJPosition", "IMPPosition", "CONFPosition" or "TAGPosition", without regard
    /// to case. \throws UnknownName
    [[nodiscard]] WindowPosition& Position(const QString& name);

    /// \throws UnknownName for a name that GetPlugIns has not read
    [[nodiscard]] const PluginProperty& Plugin(const QString& name) const;

    /// \param reload reads them from the file first
    const std::vector<PluginProperty>& GetPlugIns(bool reload);

    // Key bindings. Without InitTasten there are none.

    /// Makes all bindings with their keys of delivery; the next Refresh takes those of the user.
    void InitTasten();

    /// In the order of InitTasten.
    [[nodiscard]] const std::vector<melovane::Tasten>& TastenAll() const { return m_tasten; }

    /// The bindings of a group.
    [[nodiscard]] std::vector<melovane::Tasten> TastenAllbyTypName(const QString& group) const;

    /// A binding by its identifier. \throws UnknownName
    [[nodiscard]] melovane::Tasten& Tasten(const QString& id);

    /// Writes all bindings to the file.
    void TastenSave();

    /// The name of a key, and of a set of modifiers: see keyName() and shiftName().
    [[nodiscard]] static QString GetTastName(qint16 code);
    [[nodiscard]] static QString GetShiftName(qint16 mask);

    /// What GetKeyStatusString asks; it outlives this object. Null, as at first, is a keyboard
    /// without a key down.
    void SetKeyboard(const Keyboard* keyboard) { m_keyboard = keyboard; }

    /// The combination that is held down now, as bindings spell it; see keyStatus().
    [[nodiscard]] QString GetKeyStatusString() const;

    /// Reads the message and window handles anew: before each message to a sibling.
    void RefreshMessageHandle();

    /// Clears the day count of tracks that were played last more than twelve hours ago. Quiet: a
    /// database that fails keeps its counts.
    void UpdateLastPlayDayCount();
    /// Clears all day counts. Quiet.
    void DELPlayDayCount();

    /// 0 when the database has the version of this release, else -1. What was found stays in
    /// DBVersion, after a failure the text " (Fehler bei Versionskontrolle !!!) ".
    [[nodiscard]] int CheckDBVersion();

    /// Reads everything anew. A DbName whose file is missing, or that has no folder, becomes the
    /// default, in memory alone. That of an open library stays: see holdLibrary.
    void Refresh();

    /// A library is open: DbName is its path, in memory alone, and no Refresh changes it. Who
    /// opens the library by its name then works in the one on the screen, whatever stands in the
    /// file meanwhile.
    void holdLibrary(const QString& name);

    /// What the file names as the library, measured by the one that is held.
    enum class NamedLibrary
    {
        Held,
        Other,  ///< one that is there
        Missing ///< a path without a file, or without a folder
    };

    /// As of the last Refresh; the file itself is looked for now.
    [[nodiscard]] NamedLibrary namedLibrary() const;

    /// The path that the last Refresh has found in the settings.
    [[nodiscard]] const QString& namedDbName() const { return m_namedDbName; }

    /// Writes a position record to its section. \throws UnknownName
    void PositionSave(const QString& name);

    // Properties. The setter of each writes its key at once.

    /// Full path of the database.
    [[nodiscard]] QString DbName() const;
    void SetDbName(const QString& value);
    [[nodiscard]] QString LangFile() const;
    void SetLangFile(const QString& value);

    /// Names of sound cards; empty for the system's own choice.
    [[nodiscard]] QString SCardNameMonitor() const;
    void SetSCardNameMonitor(const QString& value);
    [[nodiscard]] QString SCardNamePlayer1() const;
    void SetSCardNamePlayer1(const QString& value);
    [[nodiscard]] QString SCardNamePlayer2() const;
    void SetSCardNamePlayer2(const QString& value);

    /// 0 to 10000.
    [[nodiscard]] int DefaultVolume() const;
    void SetDefaultVolume(int value);
    [[nodiscard]] int MinMaxPitch() const;
    void SetMinMaxPitch(int value);
    /// Milliseconds, like all times below.
    [[nodiscard]] int RePitchTime() const;
    void SetRePitchTime(int value);

    /// Message controls of the console, the player and the sample tool, 0 for none. In section
    /// "Message"; setting 0 removes the key.
    [[nodiscard]] int MessageHandleDB() const;
    void SetMessageHandleDB(int value);
    [[nodiscard]] int MessageHandleDJ() const;
    void SetMessageHandleDJ(int value);
    [[nodiscard]] int MessageHandleKiv() const;

    [[nodiscard]] int MaxBlendTime() const;
    void SetMaxBlendTime(int value);
    [[nodiscard]] int TalkoverVolume() const;
    void SetTalkoverVolume(int value);
    [[nodiscard]] int TalkoverBlendIn() const;
    void SetTalkoverBlendIn(int value);
    [[nodiscard]] int TalkoverBlendOut() const;
    void SetTalkoverBlendOut(int value);
    [[nodiscard]] int DefaultMixTime() const;
    void SetDefaultMixTime(int value);

    /// Numbers of the three sound cards on this machine today. Not in the file; Refresh sets 0.
    [[nodiscard]] int SCardNameMonitorID() const { return m_cards[0]; }

    void SetSCardNameMonitorID(int value) { m_cards[0] = value; }

    [[nodiscard]] int SCardNamePlayer1ID() const { return m_cards[1]; }

    void SetSCardNamePlayer1ID(int value) { m_cards[1] = value; }

    [[nodiscard]] int SCardNamePlayer2ID() const { return m_cards[2]; }

    void SetSCardNamePlayer2ID(int value) { m_cards[2] = value; }

    [[nodiscard]] int LastConigCard() const;
    void SetLastConigCard(int value);
    [[nodiscard]] int LiveSuche() const;
    void SetLiveSuche(int value);

    /// Windows of the console and the player.
    [[nodiscard]] int HandleDB() const;
    void SetHandleDB(int value);
    [[nodiscard]] int HandleDj() const;
    void SetHandleDj(int value);

    [[nodiscard]] QString SkinFileName() const;
    void SetSkinFileName(const QString& value);
    [[nodiscard]] int LastAbsolutePosition() const;
    void SetLastAbsolutePosition(int value);
    [[nodiscard]] int WriteStatistik() const;
    void SetWriteStatistik(int value);
    [[nodiscard]] int WriteStatistikAuto() const;
    void SetWriteStatistikAuto(int value);
    [[nodiscard]] int ShiftPressHoldTime() const;
    void SetShiftPressHoldTime(int value);

    /// Version of the database that CheckDBVersion found. Not in the file.
    [[nodiscard]] const QString& DBVersion() const { return m_dbVersion; }

    void SetDBVersion(const QString& value) { m_dbVersion = value; }

    [[nodiscard]] int NormalizeOn() const;
    void SetNormalizeOn(int value);
    [[nodiscard]] int NormalizeTuning() const;
    void SetNormalizeTuning(int value);
    /// 16 bits; a number beyond is kept as the nearest.
    [[nodiscard]] int GridSwapEditPlay() const;
    void SetGridSwapEditPlay(int value);
    [[nodiscard]] int FadeIn() const;
    void SetFadeIn(int value);
    [[nodiscard]] int FadeOut() const;
    void SetFadeOut(int value);
    [[nodiscard]] int StartMixMode() const;
    void SetStartMixMode(int value);
    [[nodiscard]] int ID3v2Tags() const;
    void SetID3v2Tags(int value);
    [[nodiscard]] QString DefaultMixStyleIN() const;
    void SetDefaultMixStyleIN(const QString& value);
    [[nodiscard]] QString DefaultMixStyleOUT() const;
    void SetDefaultMixStyleOUT(const QString& value);
    [[nodiscard]] int AutoCue() const;
    void SetAutoCue(int value);
    [[nodiscard]] int AutoCueLevel() const;
    void SetAutoCueLevel(int value);
    [[nodiscard]] int AutoNormalize() const;
    void SetAutoNormalize(int value);
    /// A folder with a separator at its end.
    [[nodiscard]] QString PlaylistVerzeichnis() const;
    void SetPlaylistVerzeichnis(const QString& value);
    [[nodiscard]] QString PlaylistNameFormat() const;
    void SetPlaylistNameFormat(const QString& value);
    [[nodiscard]] int AutoCueMaxScan() const;
    void SetAutoCueMaxScan(int value);
    [[nodiscard]] int AutosizeGrid() const;
    void SetAutosizeGrid(int value);

    /// Name of the settings file in the configuration path: "melovane.ini" or "~melovane.ini".
    [[nodiscard]] const QString& SetIniFilename() const { return m_iniFilename; }

    /// Reads and writes that file from now on; the properties change with the next Refresh.
    void SetIniFilename(const QString& name);

    [[nodiscard]] QString PlaylistGroupNameFormat() const;
    void SetPlaylistGroupNameFormat(const QString& value);
    [[nodiscard]] int SuchAlbum() const;
    void SetSuchAlbum(int value);
    [[nodiscard]] int SuchDatei() const;
    void SetSuchDatei(int value);
    [[nodiscard]] int SuchPath() const;
    void SetSuchPath(int value);
    [[nodiscard]] int SuchKommentar() const;
    void SetSuchKommentar(int value);

    /// 1 reads all rows into the library grid at once. Key "DBGrid.Load.All.Rows".
    [[nodiscard]] int DBGridLoadAllRows() const;
    void SetDBGridLoadAllRows(int value);
    [[nodiscard]] QString CDCacheDir() const;
    void SetCDCacheDir(const QString& value);
    [[nodiscard]] QString LastImportDir() const;
    void SetLastImportDir(const QString& value);

    /// The reader behind all of it, for its SubSelection.
    [[nodiscard]] ToolBox& toolBox() { return m_toolBox; }

private:
    [[nodiscard]] const QString& text(Setting property) const;
    [[nodiscard]] int number(Setting property) const;
    void setText(Setting property, const QString& value);
    void setNumber(Setting property, int value);
    void setHandle(Setting property, int value);

    [[nodiscard]] QString defaultText(const SettingRow& row) const;
    void read(const SettingRow& row);
    [[nodiscard]] bool isLibrary(const QString& name) const;
    void chooseDbName();
    void executeQuietly(const QString& statement);

    Mod_API& m_paths;
    PrivateProfile& m_profile;
    Files& m_files;
    DBEngine& m_engine;
    ToolBox m_toolBox;
    QString m_iniFilename;
    std::array<QString, kPropertyCount> m_texts;
    std::array<int, kPropertyCount> m_numbers = {};
    std::array<int, 3> m_cards = {}; ///< monitor, player 1, player 2
    QString m_dbVersion;
    QString m_heldDbName;  ///< empty while no library is open
    QString m_namedDbName; ///< as it stands in the file
    std::vector<WindowPosition> m_positions;
    std::vector<PluginProperty> m_plugins;
    std::vector<melovane::Tasten> m_tasten;
    const Keyboard* m_keyboard = nullptr;
};

} // namespace melovane
