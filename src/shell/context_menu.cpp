#include "shell/context_menu.h"

#include "bus/message_names.h"
#include "bus/view_number.h"
#include "config/config_objects.h"
#include "monitor/monitor_control.h"
#include "platform/system/files.h"
#include "shell/more_result.h"
#include "shell/player_commands.h"
#include "shell/sibling_commands.h"
#include "shell/window_data.h"
#include "shell/window_menus.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// `DriveTyp` of a track on a disc.
constexpr int kOptical = static_cast<int>(VolumeKind::Optical);

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
    : m_parts(std::move(parts))
    , m_bus(bus, windowName)
{}

void ContextMenu::open(const QString& fid, bool fromLibrary)
{
    m_track = m_parts.data.GetAllDataByFid(fid);
    m_fromLibrary = fromLibrary;
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
    };
    for (const auto& [name, action] : kActions) {
        if (name == tag) {
            (this->*action)();
            return;
        }
    }
}

void ContextMenu::moreResultClicked(const QString& tag, const QString& caption)
{
    m_parts.findAll(moreResultSearch(tag, caption));
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
    m_bus.SendMessage(bus::kContextShowDir, m_track.Path);
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

void ContextMenu::findTempoByHand()
{
    m_bus.SendMessage(m_fromLibrary ? bus::kDbBeatGaugeManuell : bus::kPlaylistBeatGaugeManuell);
}

} // namespace melovane
