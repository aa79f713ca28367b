// What the library view does with the messages of others, and what it asks of them.
#include "config/global_settings.h"
#include "config/update_colors.h"
#include "library/mp3db.h"
#include "platform/controls/pointer_control.h"
#include "platform/controls/search_box.h"
#include "platform/db/db_error.h"
#include "platform/system/text_number.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Builder modes: texts that begin with the find text, and texts that equal it.
constexpr int kPrefixMode = 2;
constexpr int kExactMode = 3;

} // namespace

std::span<const ctl_MP3DB::BusRow> ctl_MP3DB::busTable()
{
    static constexpr BusRow kRows[] = {
        {u"create.toolbars", &ctl_MP3DB::createToolBars},
        {u"db.disconnect", &ctl_MP3DB::disconnectDatabase},
        {u"db.reconnect", &ctl_MP3DB::reconnectDatabase},
        {u"db.change", &ctl_MP3DB::changeDatabase},
        {u"change.config", &ctl_MP3DB::changeConfig},
        {u"update.color", &ctl_MP3DB::updateColor},
        {u"db.refresh.by.fid", &ctl_MP3DB::refreshByFid},
        {u"tree.click.row", &ctl_MP3DB::clickRow},
        {u"context.click.row", &ctl_MP3DB::clickRow},
        {u"context.show.dir", &ctl_MP3DB::showDir},
        {u"sleeveviewer.click.image", &ctl_MP3DB::clickImage},
        {u"db.beatgauge.menu.click", &ctl_MP3DB::findTempo},
        {u"db.beatgauge.menu.manuell.click", &ctl_MP3DB::findTempoByHand},
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
}

void ctl_MP3DB::disconnectDatabase(const MLVMessage&)
{
    if (!m_connected) {
        return;
    }
    m_rowBefore = m_controls.grid.currentRow();
    m_topBefore = m_controls.grid.firstVisibleRow();
    m_connected = false;
    m_rowClone.reset();
    m_data1.closeDatabase();
}

void ctl_MP3DB::reconnectDatabase(const MLVMessage&)
{
    if (m_connected) {
        return;
    }
    m_connected = true;
    describeRows();
    requery();
    countLibrary();
    countMatches();
    if (m_rowBefore >= 0) {
        m_controls.grid.goToRow(m_rowBefore, m_topBefore);
    }
    updateEmptyNote();
}

void ctl_MP3DB::changeDatabase(const MLVMessage&)
{
    if (!m_connected) {
        return;
    }
    const bool otherFile = m_settings.DbName() != m_data1.DatabaseName();
    if (otherFile) {
        m_rowClone.reset();
        describeRows();
    }
    Refresh();
    countLibrary();
    updateEmptyNote();
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

void ctl_MP3DB::clickRow(const MLVMessage& message)
{
    const QString kind = message.Value2.toText();
    const bool disc = lowerCase(kind) == "cddir"_L1;
    FindTreeValue(kind, disc ? message.Value3.toText() : kind, message.Value1.toText());
    m_controls.grid.focus();
}

void ctl_MP3DB::showDir(const MLVMessage& message)
{
    FindTreeValue(u"DIR"_s, u"path"_s, message.Value1.toText());
}

void ctl_MP3DB::clickImage(const MLVMessage& message)
{
    FindTreeValue(u"Image"_s, u"image"_s, message.Value1.toText());
}

void ctl_MP3DB::findTempo(const MLVMessage&)
{
    m_actions.startBeatGauge(u"auto"_s, GetFID());
}

void ctl_MP3DB::findTempoByHand(const MLVMessage&)
{
    m_actions.startBeatGauge(u"manuell"_s, GetFID());
}

void ctl_MP3DB::FindTreeValue(const QString& kind, const QString& field, const QString& value)
{
    if (!m_connected || lowerCase(field).contains("gruppe"_L1)) {
        return;
    }
    const BusyCursor busy(m_controls.pointer,
                          value.startsWith(u'*') ? PointerShape::Search : PointerShape::Wait);
    if (m_viewKind != ViewKind::DBGrid) {
        setViewKind(ViewKind::DBGrid);
    }
    if (lowerCase(kind) == "allfind"_L1) {
        setFindColumns();
    } else {
        m_sql.ClearFieldFind();
        m_sql.AddFieldFind(field);
    }
    m_sql.SetFind(value);
    m_sql.SetOrderBy(m_sortColName);
    m_sql.SetSortRichtung(m_sortRichtung);
    showFound(lowerCase(kind) == "cddir"_L1 ? m_sql.GetCDSql(value, field)
                                            : m_sql.GetSql(kExactMode));
}

void ctl_MP3DB::showFound(const QString& statement)
{
    if (statement == m_data1.RecordSource() || applyStatement(statement)) {
        m_searchShown = true;
        m_countIsRows = true;
        countMatches();
    }
    updateEmptyNote();
}

void ctl_MP3DB::DB_ALL_DEL()
{
    showMarked(ViewKind::DBGridDel);
}

void ctl_MP3DB::DB_ALL_NOEXIST()
{
    showMarked(ViewKind::DBGridNoExist);
}

void ctl_MP3DB::showMarked(ViewKind kind)
{
    if (!m_connected) {
        return;
    }
    setViewKind(kind);
    m_sql.ClearFieldFind();
    m_sql.SetOrderBy(m_sortColName);
    m_sql.SetSortRichtung(m_sortRichtung);
    showFound(m_sql.GetSql(kPrefixMode));
}

void ctl_MP3DB::contextMenuWanted()
{
    const QString fid = GetFID();
    if (!fid.isEmpty()) {
        m_bus.SendMessage(u"show.context.menu.mp3db"_s, fid);
    }
}

void ctl_MP3DB::monitorPressed(const QString& key)
{
    m_bus.SendMessage(u"player.monitor."_s + key, GetFID());
}

} // namespace melovane
