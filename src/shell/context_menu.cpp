#include "shell/context_menu.h"

#include "bus/message_names.h"
#include "bus/view_number.h"
#include "config/config_objects.h"
#include "config/tool_tip_text.h"
#include "monitor/monitor_control.h"
#include "platform/system/files.h"
#include "shell/edit_commands.h"
#include "shell/mlvdb_parts.h"
#include "shell/more_result.h"
#include "shell/player_commands.h"
#include "shell/sibling_commands.h"
#include "shell/window_data.h"
#include "shell/window_menus.h"
#include "views/command_gate.h"

#include <algorithm>
#include <optional>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// `DriveTyp` of a track on a disc.
constexpr int kOptical = static_cast<int>(VolumeKind::Optical);

constexpr int kBestRating = 5;

/// Tags of the entries that give a track a value, in front of the value.
const QString kRating = u"note."_s;
const QString kPlayAction = u"aktion."_s;

/// What is done to the whole list, by the message that asks for it, and the key of its text.
constexpr std::pair<QStringView, QStringView> kListCommands[] = {
    {bus::kToAktivPlaylist, u"player.mnuToAktivPlaylist"},
    {bus::kMixstyleAllCopy, u"player.mnuMixstyleCopyToAll"},
    {bus::kMixstyleAllDel, u"player.mnuMixStyleAllDel"},
    {bus::kPlaylistReset, u"row.reset"},
};

std::optional<int> numberBehind(const QString& head, const QString& tag)
{
    bool isNumber = false;
    const int number = tag.startsWith(head) ? tag.mid(head.size()).toInt(&isNumber) : 0;
    return isNumber ? std::optional(number) : std::nullopt;
}

/// The digit of the keys that gives a rating. Digits are school marks, 1 the best; 0 takes the
/// rating away.
int digitOf(int rating)
{
    return rating == 0 ? 0 : kBestRating + 1 - rating;
}

} // namespace

std::span<const ContextRow> contextRows()
{
    // Indexes and tags are known to plug-ins and style sheets: keep.
    static constexpr ContextRow kRows[] = {
        {0, u"ToolTipPlayerPlay", u"play", u"play"},
        {1, u"ToolTipPlayerPlayCenter", u"play.center", u"playcenter"},
        {2, u"ToolTipPlayerStop", u"stop", u"stop"},
        {3, {}, {}},
        {4, u"mnuPOPDBGRID_4", u"play.sofort"},
        {5, u"mnuPOPDBGRID_5", u"play.next"},
        {6, {}, {}},
        {7, u"mnuPOPDBGRID_7", u"show.dir"},
        {8, u"mnuPOPDBGRID_8", u"show.tree"},
        {9, u"mnuPOPDBGRID_9", {}, u"search"},
        {10, {}, {}},
        {11, u"mnuPOPDBGRID_11", u"mark.for.edit"},
        {12, u"mnuPOPDBGRID_12", bus::kShowTagEditor},
        {13, u"mnuPOPDBGRID_13", bus::kShowMelovaneKiv, u"sampler"},
        {14, {}, {}},
        {15, u"mnuPOPDBGRID_15", u"autosize.grid"},
        {16, u"mnuPOPDBGRID_16", u"BeatGauge.Menu.Click"},
        {17, u"mnuPOPDBGRID_17", u"BeatGauge.Menu.Manuell.Click"},
    };
    return kRows;
}

ContextMenu::ContextMenu(ContextMenuParts parts, MLVMessageBus& bus, const QString& windowName)
    : m_parts(parts)
    , m_bus(bus, windowName)
{}

void ContextMenu::prepare(const QString& fid, bool fromLibrary)
{
    m_track = m_parts.data.GetAllDataByFid(fid);
    m_fromLibrary = fromLibrary;
    showEntries();
}

void ContextMenu::open(const QString& fid, bool fromLibrary)
{
    prepare(fid, fromLibrary);
    m_parts.menus.showContextMenu(
        moreResultEntries(m_track.Interpret, m_track.Titel,
                          {m_parts.texts.text(u"mnuMoreResult.index"_s),
                           m_parts.texts.text(u"mnuMoreResult.fulltext"_s)}));
}

void ContextMenu::clicked(const QString& tag)
{
    static constexpr std::pair<QStringView, void (ContextMenu::*)()> kActions[] = {
        {u"play", &ContextMenu::play},
        {u"play.center", &ContextMenu::playCenter},
        {u"stop", &ContextMenu::stop},
        {u"play.sofort", &ContextMenu::playNow},
        {u"play.next", &ContextMenu::playNext},
        {u"show.dir", &ContextMenu::showFolder},
        {u"show.tree", &ContextMenu::showInTree},
        {u"mark.for.edit", &ContextMenu::markForEdit},
        {bus::kShowTagEditor, &ContextMenu::editTags},
        {bus::kShowMelovaneKiv, &ContextMenu::showSample},
        {u"autosize.grid", &ContextMenu::autosizeGrid},
        {u"BeatGauge.Menu.Click", &ContextMenu::findTempo},
        {u"BeatGauge.Menu.Manuell.Click", &ContextMenu::findTempoByHand},
        {kRehearsalCommand, &ContextMenu::rehearse},
    };
    for (const auto& [name, action] : kActions) {
        if (name == tag) {
            (this->*action)();
            return;
        }
    }
    if (changeList(tag)) {
        return;
    }
    if (const EditRow* const row = editRow(tag)) {
        m_parts.edit.run(*row, m_fromLibrary ? EditPlace::Library : EditPlace::Playlist);
        return;
    }
    if (const auto rating = numberBehind(kRating, tag)) {
        (m_fromLibrary ? m_parts.library.rate : m_parts.playlist.rate)(digitOf(*rating));
    } else if (const auto action = numberBehind(kPlayAction, tag)) {
        m_parts.playlist.setPlayAction(*action);
    }
}

QString ContextMenu::whyNot(QStringView command) const
{
    return m_fromLibrary ? m_parts.library.whyNot(command, true)
                         : m_parts.playlist.whyNot(command, true);
}

/// Entries that fit the view, grey where they cannot work now.
void ContextMenu::showEntries()
{
    for (const ContextRow& row : contextRows()) {
        if (!row.isSeparator()) {
            const QString reason = whyNot(row.tag);
            m_parts.menus.setEnabled(u"mnuPOPDBGRID_%1"_s.arg(row.index), reason.isEmpty(),
                                     toolTipText(m_parts.texts, row.key, reason));
        }
    }
    for (const EditRow& row : editRows()) {
        showEditRow(row);
    }
    showRehearsal();
    showRatings();
    showPlayActions();
    showListCommands();
}

void ContextMenu::showEditRow(const EditRow& row)
{
    const QStringView command = m_fromLibrary ? row.library : row.playlist;
    const QString name = rowEntryName(row.name);
    m_parts.menus.setVisible(name, !command.isEmpty());
    if (command.isEmpty()) {
        return;
    }
    const QString reason = whyNot(command);
    const QStringView text = m_fromLibrary ? row.libraryText : row.playlistText;
    m_parts.menus.setText(name, m_parts.texts.text(text.toString()), {});
    m_parts.menus.setKey(name, commandKey(m_parts.settings, command));
    m_parts.menus.setEnabled(name, reason.isEmpty(), toolTipText(m_parts.texts, text, reason));
}

void ContextMenu::showRehearsal()
{
    const QString name = rowEntryName(kRehearsalCommand);
    const QString text = u"row.rehearse"_s;
    const QString reason = m_fromLibrary ? QString() : whyNot(kRehearsalCommand);
    m_parts.menus.setVisible(name, !m_fromLibrary);
    m_parts.menus.setText(name, m_parts.texts.text(text), {});
    m_parts.menus.setEnabled(name, reason.isEmpty(), toolTipText(m_parts.texts, text, reason));
}

void ContextMenu::showRatings()
{
    std::vector<MenuChoice> choices;
    for (int rating = kBestRating; rating >= 0; --rating) {
        const QString stars =
            rating == 0 ? m_parts.texts.text(u"row.note.none"_s) : QString(rating, QChar(0x2605));
        choices.push_back({.caption = stars,
                           .tag = kRating + QString::number(rating),
                           .key = u"Ctrl+"_s + QString::number(digitOf(rating))});
    }
    const QString reason = whyNot(u"note");
    m_parts.menus.setText(kRatingMenu.toString(), m_parts.texts.text(u"row.note"_s), {});
    m_parts.menus.setChoices(kRatingMenu.toString(), choices);
    m_parts.menus.setEnabled(kRatingMenu.toString(), reason.isEmpty(), reason);
}

void ContextMenu::showPlayActions()
{
    std::vector<MenuChoice> choices;
    if (!m_fromLibrary) {
        for (const PlayAction& action : m_parts.playlist.playActions()) {
            choices.push_back({.caption = m_parts.texts.text(action.textKey),
                               .tag = kPlayAction + QString::number(action.number),
                               .checked = action.isPresent});
        }
    }
    const QString reason = whyNot(u"aktion");
    const QString menu = kPlayActionMenu.toString();
    m_parts.menus.setText(menu, m_parts.texts.text(u"row.aktion"_s), {});
    m_parts.menus.setVisible(menu, !choices.empty());
    m_parts.menus.setChoices(menu, choices);
    m_parts.menus.setEnabled(menu, reason.isEmpty(), reason);
}

void ContextMenu::showListCommands()
{
    std::vector<MenuChoice> choices;
    for (const auto& [command, text] : kListCommands) {
        choices.push_back({.caption = m_parts.texts.text(text),
                           .tag = command.toString(),
                           .whyNot = m_fromLibrary ? QString() : whyNot(command)});
    }
    const QString menu = kListMenu.toString();
    m_parts.menus.setText(menu, m_parts.texts.text(u"row.list"_s), {});
    m_parts.menus.setVisible(menu, !m_fromLibrary);
    m_parts.menus.setChoices(menu, choices);
}

/// False for what is no command of a whole list.
bool ContextMenu::changeList(const QString& command)
{
    const auto isIt = [&](const auto& row) { return row.first == command; };
    if (!std::ranges::any_of(kListCommands, isIt)) {
        return false;
    }
    // The others mean the list on the screen.
    const bool isReset = bus::kPlaylistReset == command;
    m_bus.SendMessage(command, isReset ? Value(m_parts.playlist.pnid()) : Value());
    return true;
}

void ContextMenu::moreResultClicked(const QString& tag, const QString& caption)
{
    m_parts.library.findAll(moreResultSearch(tag, caption));
}

void ContextMenu::monitor(const QString& action)
{
    m_parts.monitor.MonitorPlayer(action, m_track.FID, 0);
}

void ContextMenu::play()
{
    monitor(u"PLAY"_s);
}

void ContextMenu::playCenter()
{
    monitor(u"PLAYCENTER"_s);
}

void ContextMenu::stop()
{
    monitor(u"STOP"_s);
}

void ContextMenu::playNow()
{
    m_parts.player.playNow(m_track.FID);
}

void ContextMenu::playNext()
{
    m_parts.player.playNext(m_track.FID);
}

void ContextMenu::showFolder()
{
    if (m_track.DriveTyp == kOptical) {
        // A folder of a disc is known by the disc, too.
        m_bus.SendMessage(bus::kContextClickRow, m_track.Path, u"CDDIR"_s, m_track.DriveName);
    } else {
        m_bus.SendMessage(bus::kContextClickRow, m_track.Path, u"Path"_s);
    }
}

void ContextMenu::showInTree()
{
    // A folder of a disc is known by the disc, too.
    m_bus.SendMessage(bus::kContextShowDir, m_track.Path,
                      m_track.DriveTyp == kOptical ? m_track.DriveName : QString());
}

void ContextMenu::sendFromView(QStringView command)
{
    // Both views hear it; the one whose menu it was acts.
    m_bus.SendMessage(command, m_fromLibrary ? kViewIsLibrary : kViewIsPlaylist);
}

void ContextMenu::markForEdit()
{
    sendFromView(bus::kFillTempEditTable);
}

void ContextMenu::editTags()
{
    markForEdit();
    m_parts.siblings.editTags();
}

void ContextMenu::showSample()
{
    sendFromView(bus::kShowMelovaneKiv);
}

void ContextMenu::autosizeGrid()
{
    m_bus.SendMessage(m_fromLibrary ? bus::kAutosizeMp3db : bus::kAutosizePlaylist);
}

void ContextMenu::findTempo()
{
    m_bus.SendMessage(m_fromLibrary ? bus::kDbBeatGauge : bus::kPlaylistBeatGauge);
}

void ContextMenu::rehearse()
{
    if (!m_fromLibrary) {
        m_parts.playlist.press(kRehearsalCommand.toString());
    }
}

void ContextMenu::findTempoByHand()
{
    m_bus.SendMessage(m_fromLibrary ? bus::kDbBeatGaugeManuell : bus::kPlaylistBeatGaugeManuell);
}

} // namespace melovane
