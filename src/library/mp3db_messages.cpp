#include "library/mp3db_messages.h"

#include "bus/message_lookup.h"
#include "bus/view_number.h"
#include "library/mp3db.h"
#include "platform/system/letter_case.h"
#include "views/drag_data.h"
#include "views/volume_picture.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

Mp3dbMessages::Mp3dbMessages(MLVMessageBus& messages,
                             const EventGuard& guard,
                             ctl_MP3DB& view,
                             BusSender& bus)
    : m_view(view)
    , m_bus(bus)
    , m_messBus(subscribe(messages, guard, *this, busTable()))
{}

std::span<const BusRow<Mp3dbMessages>> Mp3dbMessages::busTable()
{
    using Self = Mp3dbMessages;
    static constexpr BusRow<Self> kRows[] = {
        {bus::kCreateToolBars, &Self::createToolBars},
        {bus::kUpdateToolTipText, &Self::renewToolTips},
        {bus::kDbDisconnect, &Self::disconnectDatabase},
        {bus::kDbReconnect, &Self::reconnectDatabase},
        {bus::kDbChange, &Self::changeDatabase},
        {bus::kChangeConfig, &Self::changeConfig},
        {bus::kUpdateColor, &Self::updateColor},
        {bus::kDbRefreshByFid, &Self::refreshByFid},
        {bus::kInfoFromFid, &Self::showTrackOf},
        {bus::kTreeClickRow, &Self::clickRow},
        {bus::kContextClickRow, &Self::clickRow},
        {bus::kContextShowDir, &Self::showDir},
        {bus::kSleeveViewerClickImage, &Self::clickImage},
        {bus::kBpmFindFid, &Self::findTrackOfBpm},
        {bus::kDbBeatGauge, &Self::findTempo},
        {bus::kDbBeatGaugeManuell, &Self::findTempoByHand},
        {bus::kDbSetFavorit, &Self::setFavorit},
        {bus::kFillTempEditTable, &Self::fillTagTable},
        {bus::kShowMelovaneKiv, &Self::showSampleTool},
        {bus::kAllDbAppend, &Self::passAllRows},
        {bus::kAllDbAppendAktuell, &Self::passAllRows},
        {bus::kAllDbInsert, &Self::passAllRows},
        {bus::kAllDbInsertAktuell, &Self::passAllRows},
        {bus::kSaveLayoutMp3db, &Self::saveLayout},
        {bus::kLoadLayoutMp3db, &Self::loadLayout},
        {bus::kLoadLayoutChangeMp3db, &Self::loadLayout},
        {bus::kAutosizeMp3db, &Self::autosize},
        {bus::kVolumeMonitorChangeIcon, &Self::changeVolumeIcon},
    };
    return kRows;
}

// ---- the database

void Mp3dbMessages::disconnectDatabase(const MLVMessage&)
{
    m_view.disconnectDatabase();
}

void Mp3dbMessages::reconnectDatabase(const MLVMessage&)
{
    m_view.reconnectDatabase();
}

void Mp3dbMessages::changeDatabase(const MLVMessage&)
{
    m_view.changeDatabase();
}

void Mp3dbMessages::changeConfig(const MLVMessage&)
{
    m_view.dress();
    m_view.changeDatabase();
}

// ---- what is to be shown

void Mp3dbMessages::clickRow(const MLVMessage& message)
{
    TreeRequest request{message.Value2.toText(), message.Value2.toText(), message.Value1.toText()};
    const QString kind = lowerCase(request.kind);
    if (kind == "cddir"_L1) {
        request.field = message.Value3.toText();
    } else if (kind == "statistik"_L1) {
        request.field = u"tday:long"_s;
    }
    m_view.FindTreeValue(request, true);
    m_view.focusRows();
}

void Mp3dbMessages::showDir(const MLVMessage& message)
{
    m_view.FindTreeValue({u"DIR"_s, u"path"_s, message.Value1.toText()}, true);
}

void Mp3dbMessages::clickImage(const MLVMessage& message)
{
    m_view.FindTreeValue({u"Image"_s, u"image"_s, message.Value1.toText()}, true);
}

void Mp3dbMessages::findTrackOfBpm(const MLVMessage& message)
{
    m_view.FindTreeValue({u"FID"_s, u"FID"_s, message.Value2.toText()}, true);
}

void Mp3dbMessages::refreshByFid(const MLVMessage&)
{
    m_view.refreshCells();
}

void Mp3dbMessages::showTrackOf(const MLVMessage& message)
{
    m_view.marks().setShown(message.Value1.toText());
}

// ---- what is to be done with the rows

void Mp3dbMessages::findTempo(const MLVMessage&)
{
    m_view.findTempo(u"auto"_s);
}

void Mp3dbMessages::findTempoByHand(const MLVMessage&)
{
    m_view.findTempo(u"manuell"_s);
}

void Mp3dbMessages::setFavorit(const MLVMessage&)
{
    m_view.toggleFavorit();
}

void Mp3dbMessages::fillTagTable(const MLVMessage& message)
{
    if (message.Value1.toLong() != kViewIsPlaylist) {
        m_view.FillTempMp3EditTable();
    }
}

void Mp3dbMessages::showSampleTool(const MLVMessage& message)
{
    // Without a number the playlist acts, and the tool edits one thing at a time.
    if (message.Value1.toLong() == kViewIsLibrary) {
        m_view.MelovaneKIVShow();
    }
}

void Mp3dbMessages::passAllRows(const MLVMessage& message)
{
    const QStringView answer = bus::playlistMessage(message.Command);
    const QString ids = m_view.SetAllBookmarks();
    if (!ids.isEmpty()) {
        m_bus.SendMessage(answer, dragText(DragKind::FidMp3db, {ids}));
    }
}

// ---- looks

void Mp3dbMessages::createToolBars(const MLVMessage&)
{
    emit m_view.toolBarWanted();
    m_view.tellHistory();
}

void Mp3dbMessages::renewToolTips(const MLVMessage&)
{
    emit m_view.toolTipsWanted();
}

void Mp3dbMessages::updateColor(const MLVMessage&)
{
    m_view.dress();
}

void Mp3dbMessages::changeVolumeIcon(const MLVMessage& message)
{
    emit m_view.volumeIconChanged(volumePicture(message.Value1.toLong()));
}

void Mp3dbMessages::saveLayout(const MLVMessage&)
{
    m_view.saveLayout();
}

void Mp3dbMessages::loadLayout(const MLVMessage& message)
{
    m_view.loadLayout(message.Value1.toText());
}

void Mp3dbMessages::autosize(const MLVMessage&)
{
    m_view.fitColumns();
}

} // namespace melovane
