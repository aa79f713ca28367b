// What the library view does with the messages of others.
#include "bus/view_number.h"
#include "config/global_settings.h"
#include "config/update_colors.h"
#include "library/mp3db.h"
#include "platform/db/db_error.h"
#include "platform/system/letter_case.h"
#include "playlists/drag_data.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

std::span<const ctl_MP3DB::BusRow> ctl_MP3DB::busTable()
{
    static constexpr BusRow kRows[] = {
        {u"create.toolbars", &ctl_MP3DB::createToolBars},
        {u"update.tolltip.text", &ctl_MP3DB::renewToolTips}, // "tolltip" is its spelling everywhere
        {u"db.disconnect", &ctl_MP3DB::disconnectDatabase},
        {u"db.reconnect", &ctl_MP3DB::reconnectDatabase},
        {u"db.change", &ctl_MP3DB::changeDatabase},
        {u"change.config", &ctl_MP3DB::changeConfig},
        {u"update.color", &ctl_MP3DB::updateColor},
        {u"db.refresh.by.fid", &ctl_MP3DB::refreshByFid},
        {u"info.from.fid", &ctl_MP3DB::showTrackOf},
        {u"tree.click.row", &ctl_MP3DB::clickRow},
        {u"context.click.row", &ctl_MP3DB::clickRow},
        {u"context.show.dir", &ctl_MP3DB::showDir},
        {u"sleeveviewer.click.image", &ctl_MP3DB::clickImage},
        {u"bpm.find.fid", &ctl_MP3DB::findTrackOfBpm},
        {u"db.beatgauge.menu.click", &ctl_MP3DB::findTempo},
        {u"db.beatgauge.menu.manuell.click", &ctl_MP3DB::findTempoByHand},
        {u"db.set.favorit", &ctl_MP3DB::setFavorit},
        {u"fill.temp.edit.table", &ctl_MP3DB::fillTagTable},
        {u"show.melovane.kiv", &ctl_MP3DB::showSampleTool},
        {u"all.db.append", &ctl_MP3DB::passAllRows},
        {u"all.db.append.aktuell", &ctl_MP3DB::passAllRows},
        {u"all.db.insert", &ctl_MP3DB::passAllRows},
        {u"all.db.insert.aktuell", &ctl_MP3DB::passAllRows},
        {u"save.layout.mp3db", &ctl_MP3DB::saveLayout},
        {u"load.layout.mp3db", &ctl_MP3DB::loadLayout},
        {u"load.layout.change.mp3db", &ctl_MP3DB::loadLayout},
        {u"autosize.mp3db", &ctl_MP3DB::autosize},
    };
    return kRows;
}

void ctl_MP3DB::MessBus_Message(const MLVMessage& message)
{
    const QString name = lowerCase(message.Command);
    for (const BusRow& row : busTable()) {
        if (row.name == name) {
            try {
                (this->*row.handler)(message);
            } catch (const DbError& error) {
                m_bus.SendMessage(u"show.statustext"_s, error.text());
            }
            return;
        }
    }
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
    const QString command = lowerCase(message.Command);
    const QString ids = SetAllBookmarks();
    if (!ids.isEmpty()) {
        m_bus.SendMessage(u"playlist."_s + command + u".data"_s,
                          dragText(DragKind::FidMp3db, {ids}));
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
