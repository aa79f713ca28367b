#include "settings/setting_pages.h"

#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

using enum SettingKind;
using section::kGlobal;

constexpr int kLoudest = 10000;
/// A minute: no fade of a player is longer.
constexpr int kLongestMs = 60000;

/// A setting of section "Global".
constexpr SettingEntry
global(SettingPage page, QStringView group, QStringView key, SettingKind kind, QStringView text)
{
    return {page, group, kGlobal, key, kind, text};
}

constexpr SettingEntry
number(SettingPage page, QStringView group, QStringView key, QStringView text, int least, int most)
{
    return {page, group, kGlobal, key, Number, text, least, most};
}

constexpr SettingEntry
look(QStringView group, QStringView key, SettingKind kind, QStringView text, int most = 0)
{
    return {SettingPage::Look, group, kColourSection, key, kind, text, 0, most};
}

/// A setting of the catalogue; its name is that of its text, too.
constexpr SettingEntry
value(SettingPage page, QStringView group, QStringView name, SettingKind kind, QStringView text)
{
    return {page, group, kValueSection, name, kind, text};
}

// clang-format off
constexpr std::array kEntries = {
    global(SettingPage::Library, u"confDBFrame", u"DBName", Library, u"settings.dbname"),
    global(SettingPage::Library, u"confDBFrame", u"DBGrid.Load.All.Rows", Check, u"settings.loadall"),
    global(SettingPage::Library, u"confDBFrame", u"AutosizeGrid", Check, u"mnuAutosizeGrid"),
    value(SettingPage::Library, u"settings.group.trees", u"Tree.Item.No.Data", Check, u"Tree.Item.No.Data"),
    number(SettingPage::Library, u"settings.group.trees", u"BPMShowRange", u"settings.bpmrange", 0, 50),

    global(SettingPage::Search, u"confFrame7", u"LiveSuche", Check, u"confCheckLiveSuche"),
    global(SettingPage::Search, u"settings.group.columns", u"SuchAlbum", Check, u"confSuchOptionCheck_0"),
    global(SettingPage::Search, u"settings.group.columns", u"SuchKommentar", Check, u"confSuchOptionCheck_1"),
    global(SettingPage::Search, u"settings.group.columns", u"SuchDatei", Check, u"confSuchOptionCheck_2"),
    global(SettingPage::Search, u"settings.group.columns", u"SuchPath", Check, u"confSuchOptionCheck_3"),

    global(SettingPage::Lists, u"settings.group.names", u"PlaylistNameFormat", NameFormat, u"confPLNameFrame"),
    global(SettingPage::Lists, u"settings.group.names", u"PlaylistGroupNameFormat", NameFormat, u"confPLGroupNameFrame"),
    global(SettingPage::Lists, u"settings.group.names", u"JinglelistNameFormat", NameFormat, u"settings.jinglename"),
    global(SettingPage::Lists, u"settings.group.folders", u"PlaylistVerzeichnis", Folder, u"confPLDirFrame"),
    SettingEntry{SettingPage::Lists, u"settings.group.folders", section::kSavePlaylist, u"Template", Text, u"settings.template"},
    global(SettingPage::Lists, u"mnuPlaylist", u"View.Current.Playlist.Pos", Check, u"settings.followplaying"),

    global(SettingPage::Monitor, u"settings.group.output", u"SCardNameMonitor", Card, u"settings.card"),
    SettingEntry{SettingPage::Monitor, u"settings.group.output", kGlobal, u"Volume.Monitor", Volume, u"settings.volume", 0, kLoudest},
    global(SettingPage::Monitor, u"settings.group.doubleclick", u"GridSwapEditPlay", Choice, u"settings.doubleclick"),
    value(SettingPage::Monitor, u"settings.group.listen", u"conf.monitor.playtype", Choice, u"conf.monitor.playtype"),
    value(SettingPage::Monitor, u"settings.group.listen", u"db.monitor.play.by.pos", Switch, u"settings.bypos"),

    global(SettingPage::Files, u"settings.group.tags", u"ID3v2Tags", Check, u"settings.id3v2"),
    SettingEntry{SettingPage::Files, u"settings.group.tags", section::kGrlobal, u"EditTag.Load.Genre", Choice, u"settings.genres"},
    number(SettingPage::Files, u"settings.group.covers", u"Import.Image.Max.Size", u"settings.coversize", 16, 4000),
    number(SettingPage::Files, u"settings.group.covers", u"Import.Image.Quality", u"settings.coverquality", 1, 100),
    global(SettingPage::Files, u"settings.group.folders", u"LastImportDir", Folder, u"settings.importdir"),
    global(SettingPage::Files, u"settings.group.folders", u"NewImage.Such.DIR", Folder, u"settings.coverdir"),

    value(SettingPage::Look, u"settings.group.window", u"Sprach.Datei", Language, u"settings.language"),
    global(SettingPage::Look, u"settings.group.window", u"SkinFileName", Theme, u"settings.theme"),
    look(u"settings.group.font", u"FontName", Font, u"settings.fontname"),
    SettingEntry{SettingPage::Look, u"settings.group.font", kColourSection, u"FontSize", Number, u"settings.fontsize", 5, 48},
    look(u"settings.group.font", u"FontBold", Flag, u"settings.fontbold"),
    look(u"settings.group.font", u"RowSpacing", Number, u"settings.rowspacing", 40),
    look(u"settings.group.note", u"Note1Color", Colour, u"settings.note1"),
    look(u"settings.group.note", u"Note2Color", Colour, u"settings.note2"),
    look(u"settings.group.note", u"Note3Color", Colour, u"settings.note3"),
    look(u"settings.group.note", u"Note4Color", Colour, u"settings.note4"),
    look(u"settings.group.note", u"Note5Color", Colour, u"settings.note5"),
    look(u"settings.group.note", u"NoteTextColor", Colour, u"settings.notetext"),
    look(u"settings.group.note", u"NoteTextBold", Flag, u"settings.notebold"),
    look(u"settings.group.rows", u"PlayNowColor", Colour, u"settings.playnow"),
    look(u"settings.group.rows", u"RowShowDEL", Colour, u"settings.rowdel"),
    look(u"settings.group.rows", u"RowShowFID", Colour, u"settings.rowfid"),

    global(SettingPage::Suite, u"confSoundkartFrame", u"SCardNamePlayer1", Card, u"settings.card.player1"),
    global(SettingPage::Suite, u"confSoundkartFrame", u"SCardNamePlayer2", Card, u"settings.card.player2"),
    SettingEntry{SettingPage::Suite, u"confFrame1", kGlobal, u"DefaultVolume", Volume, u"confLabelTexte_7", 0, kLoudest},
    number(SettingPage::Suite, u"confFrame2", u"MinMaxPitch", u"confLabelTexte_6", 0, 10000),
    number(SettingPage::Suite, u"confFrame2", u"RePitchTime", u"confLabelTexte_5", 0, kLongestMs),
    value(SettingPage::Suite, u"confFrame2", u"Player.PitchDirection", Check, u"Player.PitchDirection"),
    value(SettingPage::Suite, u"confFrame2", u"Player.BPM.Anzeige", Check, u"Player.BPM.Anzeige"),
    number(SettingPage::Suite, u"confFrame3", u"MaxBlendTime", u"confLabelTexte_4", 0, kLongestMs),
    number(SettingPage::Suite, u"confFrame3", u"DefaultMixTime", u"confLabelTexte_0", 0, kLongestMs),
    number(SettingPage::Suite, u"confFrame3", u"FadeIn", u"settings.fadein", 0, kLongestMs),
    number(SettingPage::Suite, u"confFrame3", u"FadeOut", u"settings.fadeout", 0, kLongestMs),
    SettingEntry{SettingPage::Suite, u"confFrame3", kValueSection, u"player.WaitForMixTime", Number, u"player.WaitForMixTime", 0, kLongestMs},
    global(SettingPage::Suite, u"confFrame3", u"DefaultMixStyleIN", Text, u"settings.mixstylein"),
    global(SettingPage::Suite, u"confFrame3", u"DefaultMixStyleOUT", Text, u"settings.mixstyleout"),
    SettingEntry{SettingPage::Suite, u"confFrame4", kGlobal, u"TalkoverVolume", Volume, u"confLabelTexte_3", 0, kLoudest},
    number(SettingPage::Suite, u"confFrame4", u"TalkoverBlendIn", u"confLabelTexte_2", 0, kLongestMs),
    number(SettingPage::Suite, u"confFrame4", u"TalkoverBlendOut", u"confLabelTexte_1", 0, kLongestMs),
    global(SettingPage::Suite, u"settings.group.level", u"Normalize", Check, u"settings.normalize"),
    number(SettingPage::Suite, u"settings.group.level", u"NormalizeTuning", u"settings.normalizetuning", -10000, 10000),
    global(SettingPage::Suite, u"settings.group.level", u"AutoNormalize", Check, u"settings.autonormalize"),
    global(SettingPage::Suite, u"settings.group.cue", u"AutoCue", Check, u"settings.autocue"),
    number(SettingPage::Suite, u"settings.group.cue", u"AutoCueLevel", u"settings.autocuelevel", 0, 32767),
    number(SettingPage::Suite, u"settings.group.cue", u"AutoCueMaxScan", u"settings.autocuescan", 0, 600),
    global(SettingPage::Suite, u"settings.group.start", u"StartMixMode", Check, u"confChPlayerStartMixMode"),
    value(SettingPage::Suite, u"settings.group.start", u"StartUp.Autoplay", Check, u"StartUp.Autoplay"),
    value(SettingPage::Suite, u"settings.group.start", u"StartUp.Set.Old.Track", Check, u"StartUp.Set.Old.Track"),
    value(SettingPage::Suite, u"settings.group.start", u"StartUp.Set.To.Old.Position", Check, u"StartUp.Set.To.Old.Position"),
    global(SettingPage::Suite, u"player.mnuStatistikMenu", u"WriteStatistik", Check, u"player.mnuStatistik"),
    global(SettingPage::Suite, u"player.mnuStatistikMenu", u"WriteStatistikAuto", Check, u"player.mnuStatAutoMix"),
    value(SettingPage::Suite, u"confSSTab_1", u"Playlist.Time", Check, u"Playlist.Time"),
    value(SettingPage::Suite, u"confSSTab_1", u"Playlist.View.Aktive.Rows", Check, u"Playlist.View.Aktive.Rows"),
    value(SettingPage::Suite, u"confSSTab_1", u"Player.One.Click.Action", Check, u"Player.One.Click.Action"),
    value(SettingPage::Suite, u"confSSTab_1", u"player.monitor.pause.change", Check, u"player.monitor.pause.change"),
    number(SettingPage::Suite, u"confSSTab_1", u"Jingle.Players", u"settings.jingleplayers", 0, 7),
    number(SettingPage::Suite, u"confSSTab_1", u"ShiftPressHoldTime", u"settings.shifthold", 0, kLongestMs),
    global(SettingPage::Suite, u"settings.group.folders", u"CDCacheDir", Folder, u"settings.cddir"),
};

// clang-format on

struct PageName
{
    QStringView text;
    QStringView icon;
};

constexpr std::array<PageName, kSettingPages> kPages = {{
    {u"settings.page.library", u"tree.album"},
    {u"settings.page.search", u"search"},
    {u"settings.page.lists", u"playlist"},
    {u"settings.page.monitor", u"volume"},
    {u"settings.page.files", u"all.book"},
    {u"settings.page.keys", u"keyboard"},
    {u"settings.page.look", u"theme"},
    {u"settings.page.hints", u"info"},
    {u"settings.page.suite", u"settings"},
}};

} // namespace

std::span<const SettingEntry> settingEntries()
{
    return kEntries;
}

const SettingEntry* findEntry(QStringView section, QStringView key)
{
    for (const SettingEntry& entry : kEntries) {
        if (entry.section.compare(section, Qt::CaseInsensitive) == 0 &&
            entry.key.compare(key, Qt::CaseInsensitive) == 0) {
            return &entry;
        }
    }
    return nullptr;
}

QString pageText(SettingPage page)
{
    return kPages[size_t(page)].text.toString();
}

QString pageIcon(SettingPage page)
{
    return kPages[size_t(page)].icon.toString();
}

} // namespace melovane
