#include "playlistview/playlist_drags.h"

#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/system/path_text.h"
#include "playlists/drag_list.h"
#include "playlists/playlist_table.h"
#include "playlistview/playlist_edits.h"
#include "views/drag_data.h"
#include "views/grid_rows.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView kEntries = u"DRAG_TYP_PLID";
constexpr QStringView kTracks = u"DRAG_TYP_FID_MP3DB";

/// A file of sound, a list, or what may be a folder of sound: one without an extension is taken
/// for that without a look at the disk.
bool isWelcome(const QString& place, const PlaylistActions& actions)
{
    const QString extension = path::extension(place);
    return extension.isEmpty() || extension.compare("mp3"_L1, Qt::CaseInsensitive) == 0 ||
           isListFile(place) || (actions.isFolder && actions.isFolder(place));
}

} // namespace

PlaylistDrags::PlaylistDrags(GridControl& grid,
                             GridRows& rows,
                             const OpenList& list,
                             PlaylistEdits& edits,
                             const PlaylistActions& actions)
    : m_grid(grid)
    , m_rows(rows)
    , m_list(list)
    , m_edits(edits)
    , m_actions(actions)
{}

// ---- selection

QString PlaylistDrags::selectAll(const QString& field)
{
    if (m_rows.count() == 0) {
        return {};
    }
    m_grid.select({{0, m_rows.count() - 1}});
    if (field == "null"_L1) {
        return {};
    }
    const QString joined = m_rows.texts(field).join(u',');
    if (field.compare("PLID"_L1, Qt::CaseInsensitive) == 0) {
        m_selectedIds = joined;
    }
    return joined;
}

void PlaylistDrags::selectRange(qint64 start, qint64 stop)
{
    if (start < 0) {
        return;
    }
    const auto [from, to] = std::minmax(start, stop);
    m_grid.select({{from, to}});
    m_anchor = to;
}

void PlaylistDrags::forgetAll()
{
    m_selectedIds.clear();
    m_anchor = -1;
}

// ---- dragging

DragContent PlaylistDrags::content()
{
    if (!m_rows.isRead()) {
        return {};
    }
    DragContent content = GetDragData(DragKind::Plid, m_grid, m_rows.walker(),
                                      DragOrder::ByPosition, m_selectedIds, m_actions.locate);
    const auto rows = m_grid.selection();
    m_draggedFid = rows.empty() ? QString() : m_rows.cell(rows.front().first, u"FID").toText();
    return content;
}

// ---- dropping

bool PlaylistDrags::isOfThisList(const QString& dragText)
{
    // Asked at each move of the pointer, and always about the same drag.
    const bool isKnown = m_checkedDrag == dragText && m_checkedReading == m_rows.reading();
    if (!isKnown && m_rows.database()) {
        m_checkedDrag = dragText;
        m_checkedReading = m_rows.reading();
        m_checkedIsOwn = true;
        const std::vector<qint64> entries = entryNumbers(parseDragList(dragText).ids);
        for (const QString& condition : keyConditions(u"PLID", entries)) {
            const auto others = m_rows.database()->OpenRecordset(
                u"select count(*) as anz from pl_all where pnid<>"_s +
                QString::number(numberOf(m_list.pnid)) + u" and "_s + condition);
            m_checkedIsOwn = m_checkedIsOwn && others->value(u"anz").toLong() == 0;
        }
    }
    return m_checkedIsOwn;
}

DropEffect PlaylistDrags::effect(const DropOffer& offer)
{
    if (!m_edits.canChange()) {
        return DropEffect::None;
    }
    const DragList list = parseDragList(offer.text);
    if (list.type == kTracks && !list.ids.isEmpty()) {
        return DropEffect::Copy;
    }
    if (list.type != kEntries || list.ids.isEmpty()) {
        const bool any =
            std::any_of(offer.files.begin(), offer.files.end(),
                        [this](const QString& place) { return isWelcome(place, m_actions); });
        return any ? DropEffect::Copy : DropEffect::None;
    }
    try {
        // A move out of another list would leave that one with a wrong count: it is a copy.
        if (offer.copyKey || !isOfThisList(offer.text)) {
            return DropEffect::Copy;
        }
    } catch (const DbError&) {
        return DropEffect::None;
    }
    const bool onItself = offer.spot == DropOffer::Spot::OnRow && !m_draggedFid.isEmpty() &&
                          m_rows.cell(offer.row, u"FID").toText() == m_draggedFid;
    return onItself ? DropEffect::None : DropEffect::Move;
}

std::optional<Sid> PlaylistDrags::target(const DropOffer& offer) const
{
    switch (offer.spot) {
    case DropOffer::Spot::OnRow:
        return Sid(m_rows.cell(offer.row, u"SID").toLong());
    case DropOffer::Spot::AboveRows:
        return Sid{0};
    case DropOffer::Spot::BelowRows:
        break;
    }
    return std::nullopt;
}

void PlaylistDrags::drop(const DropOffer& offer)
{
    const DropEffect wanted = effect(offer);
    if (wanted == DropEffect::None) {
        return;
    }
    const DragList list = parseDragList(offer.text);
    if (list.type == kEntries) {
        m_edits.placeEntries(offer.text, target(offer), wanted == DropEffect::Copy);
    } else if (list.type == kTracks) {
        m_edits.addTracks(offer.text, target(offer));
    } else if (!m_edits.addFiles(offer.files, target(offer))) {
        return;
    }
    m_anchor = -1;
    m_grid.focus();
}

} // namespace melovane
