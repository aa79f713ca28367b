// What the library view does with the messages of others.
#include "bus/message_lookup.h"
#include "bus/view_number.h"
#include "config/global_settings.h"
#include "config/update_colors.h"
#include "library/mp3db.h"
#include "platform/db/db_error.h"
#include "platform/system/letter_case.h"
#include "views/drag_data.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

std::span<const BusRow<ctl_MP3DB>> ctl_MP3DB::busTable()
{
    static constexpr BusRow<ctl_MP3DB> kRows[] = {
        {bus::kCreateToolBars, &ctl_MP3DB::createToolBars},
        {bus::kUpdateToolTipText, &ctl_MP3DB::renewToolTips},
        {bus::kDbDisconnect, &ctl_MP3DB::disconnectDatabase},
        {bus::kDbReconnect, &ctl_MP3DB::reconnectDatabase},
        {bus::kDbChange, &ctl_MP3DB::changeDatabase},
        {bus::kChangeConfig, &ctl_MP3DB::changeConfig},
        {bus::kUpdateColor, &ctl_MP3DB::updateColor},
        {bus::kDbRefreshByFid, &ctl_MP3DB::refreshByFid},
        {bus::kInfoFromFid, &ctl_MP3DB::showTrackOf},
        {bus::kTreeClickRow, &ctl_MP3DB::clickRow},
        {bus::kContextClickRow, &ctl_MP3DB::clickRow},
        {bus::kContextShowDir, &ctl_MP3DB::showDir},
        {bus::kSleeveViewerClickImage, &ctl_MP3DB::clickImage},
        {bus::kBpmFindFid, &ctl_MP3DB::findTrackOfBpm},
        {bus::kDbBeatGauge, &ctl_MP3DB::findTempo},
        {bus::kDbBeatGaugeManuell, &ctl_MP3DB::findTempoByHand},
        {bus::kDbSetFavorit, &ctl_MP3DB::setFavorit},
        {bus::kFillTempEditTable, &ctl_MP3DB::fillTagTable},
        {bus::kShowMelovaneKiv, &ctl_MP3DB::showSampleTool},
        {bus::kAllDbAppend, &ctl_MP3DB::passAllRows},
        {bus::kAllDbAppendAktuell, &ctl_MP3DB::passAllRows},
        {bus::kAllDbInsert, &ctl_MP3DB::passAllRows},
        {bus::kAllDbInsertAktuell, &ctl_MP3DB::passAllRows},
        {bus::kSaveLayoutMp3db, &ctl_MP3DB::saveLayout},
        {bus::kLoadLayoutMp3db, &ctl_MP3DB::loadLayout},
        {bus::kLoadLayoutChangeMp3db, &ctl_MP3DB::loadLayout},
        {bus::kAutosizeMp3db, &ctl_MP3DB::autosize},
    };
    return kRows;
}

void ctl_MP3DB::createToolBars(const MLVMessage&)
{
    emit toolBarWanted();
    tellHistory();
}

void ctl_MP3DB::renewToolTips(const MLVMessage&)
{
    emit toolTipsWanted();
}

void ctl_MP3DB::disconnectDatabase(const MLVMessage&)
{
    if (m_connected) {
        m_connected = false;
        m_place.StartPosition();
        m_rowClone.reset();
        m_data1.closeDatabase();
    }
}

void ctl_MP3DB::reconnectDatabase(const MLVMessage&)
{
    if (m_connected) {
        return;
    }
    m_data1.SetDatabaseName(m_settings.DbName());
    requery();
    // A file that cannot be read yet is taken back by a later message.
    m_connected = true;
    m_place.Reposition();
    countLibrary();
    tellCount();
    updateEmptyNote();
}

void ctl_MP3DB::changeDatabase(const MLVMessage&)
{
    if (!m_connected) {
        return;
    }
    if (m_settings.DbName() == m_data1.DatabaseName() && m_data1.Database()) {
        // New content in the same file: the user stays where he is.
        Refresh();
        countLibrary();
        updateEmptyNote();
        return;
    }
    m_rowClone.reset();
    configure();
}

void ctl_MP3DB::changeConfig(const MLVMessage& message)
{
    updateColor(message);
    changeDatabase(message);
}

void ctl_MP3DB::updateColor(const MLVMessage&)
{
    const UpdateColors colours(m_settings);
    m_look.setColours(GridColours::from(colours));
    colours.UpdateSplitColors(m_controls.grid);
    m_data1.refreshCells();
}

void ctl_MP3DB::refreshByFid(const MLVMessage&)
{
    m_data1.refreshCells();
}

void ctl_MP3DB::showTrackOf(const MLVMessage& message)
{
    m_look.setShownTrack(message.Value1.toText());
    m_data1.refreshCells();
}

void ctl_MP3DB::clickRow(const MLVMessage& message)
{
    TreeRequest request{message.Value2.toText(), message.Value2.toText(), message.Value1.toText()};
    const QString kind = lowerCase(request.kind);
    if (kind == "cddir"_L1) {
        request.field = message.Value3.toText();
    } else if (kind == "statistik"_L1) {
        request.field = u"tday:long"_s;
    }
    FindTreeValue(request, true);
    m_controls.grid.focus();
}

void ctl_MP3DB::showDir(const MLVMessage& message)
{
    FindTreeValue({u"DIR"_s, u"path"_s, message.Value1.toText()}, true);
}

void ctl_MP3DB::clickImage(const MLVMessage& message)
{
    FindTreeValue({u"Image"_s, u"image"_s, message.Value1.toText()}, true);
}

void ctl_MP3DB::findTrackOfBpm(const MLVMessage& message)
{
    FindTreeValue({u"FID"_s, u"FID"_s, message.Value2.toText()}, true);
}

void ctl_MP3DB::findTempo(const MLVMessage&)
{
    m_actions.startBeatGauge(u"auto"_s, GetFID());
}

void ctl_MP3DB::findTempoByHand(const MLVMessage&)
{
    m_actions.startBeatGauge(u"manuell"_s, GetFID());
}

void ctl_MP3DB::setFavorit(const MLVMessage&)
{
    m_edits.toggleFavorit(m_controls.grid.currentRow());
}

void ctl_MP3DB::fillTagTable(const MLVMessage& message)
{
    if (message.Value1.toLong() != kViewIsPlaylist) {
        FillTempMp3EditTable();
    }
}

void ctl_MP3DB::showSampleTool(const MLVMessage& message)
{
    // Without a number the playlist acts, and the tool edits one thing at a time.
    if (message.Value1.toLong() == kViewIsLibrary) {
        MelovaneKIVShow({});
    }
}

void ctl_MP3DB::passAllRows(const MLVMessage& message)
{
    const QStringView answer = bus::playlistMessage(message.Command);
    const QString ids = SetAllBookmarks();
    if (!ids.isEmpty()) {
        m_bus.SendMessage(answer, dragText(DragKind::FidMp3db, {ids}));
    }
}

void ctl_MP3DB::saveLayout(const MLVMessage&)
{
    m_layouts.save(kLibraryLayout.toString(), m_controls.grid);
}

void ctl_MP3DB::loadLayout(const MLVMessage& message)
{
    m_layouts.load(message.Value1.toText(), m_controls.grid);
}

void ctl_MP3DB::autosize(const MLVMessage&)
{
    fitColumns();
}

} // namespace melovane
