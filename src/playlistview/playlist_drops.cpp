// Drags from and onto the playlist view.
#include "bus/message_names.h"
#include "config/config_objects.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/system/path_text.h"
#include "playlists/drag_list.h"
#include "playlists/pl_insert_move_del.h"
#include "playlists/playlist_table.h"
#include "playlistview/playlist.h"
#include "views/drag_data.h"

#include <algorithm>
#include <iterator>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView kEntries = u"DRAG_TYP_PLID";
constexpr QStringView kTracks = u"DRAG_TYP_FID_MP3DB";

/// A list of tracks.
bool isList(const QString& place)
{
    const QString extension = path::extension(place).toLower();
    return extension == "m3u"_L1 || extension == "m3u8"_L1;
}

/// A file of sound, a list, or what may be a folder of sound.
bool isWelcome(const QString& place)
{
    const QString extension = path::extension(place);
    return extension.isEmpty() || extension.compare("mp3"_L1, Qt::CaseInsensitive) == 0 ||
           isList(place);
}

} // namespace

DragContent ctl_Playlist::dragContent()
{
    if (!m_rowClone) {
        return {};
    }
    DragContent content = GetDragData(DragKind::Plid, m_controls.grid, *m_rowClone,
                                      DragOrder::ByPosition, m_selectedRows);
    const auto rows = m_controls.grid.selection();
    m_draggedFid = rows.empty() ? QString() : cellOf(rows.front().first, u"FID").toText();
    QStringList found;
    for (const QString& file : content.files) {
        const QString place = m_actions.locate(file);
        if (!place.isEmpty()) {
            found.append(place);
        }
    }
    content.files = found;
    return content;
}

bool ctl_Playlist::isOfThisList(const QString& dragText)
{
    // Asked at each move of the pointer, and always about the same drag.
    if (m_checkedDrag != dragText && m_data1.Database()) {
        m_checkedDrag = dragText;
        m_checkedIsOwn = true;
        const std::vector<qint64> entries = entryNumbers(parseDragList(dragText).ids);
        for (const QString& condition : keyConditions(u"PLID", entries)) {
            const auto others = m_data1.Database()->OpenRecordset(
                u"select count(*) as anz from pl_all where pnid<>"_s +
                QString::number(numberOf(m_pnid)) + u" and "_s + condition);
            m_checkedIsOwn = m_checkedIsOwn && others->value(u"anz").toLong() == 0;
        }
    }
    return m_checkedIsOwn;
}

DropEffect ctl_Playlist::dropEffect(const DropOffer& offer)
{
    if (!canChange()) {
        return DropEffect::None;
    }
    const DragList list = parseDragList(offer.text);
    if (list.type == kTracks && !list.ids.isEmpty()) {
        return DropEffect::Copy;
    }
    if (list.type != kEntries || list.ids.isEmpty()) {
        const bool any = std::any_of(offer.files.begin(), offer.files.end(), isWelcome);
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
                          cellOf(offer.row, u"FID").toText() == m_draggedFid;
    return onItself ? DropEffect::None : DropEffect::Move;
}

void ctl_Playlist::drop(const DropOffer& offer)
{
    const DropEffect effect = dropEffect(offer);
    if (effect == DropEffect::None) {
        return;
    }
    try {
        const DragList list = parseDragList(offer.text);
        if (list.type == kEntries) {
            dropEntries(offer, effect);
        } else if (list.type == kTracks) {
            dropTracks(offer, offer.text);
        } else if (!dropFiles(offer)) {
            return;
        }
        m_anchor = -1;
        changed();
        m_controls.grid.focus();
    } catch (const DbError& error) {
        m_bus.SendMessage(bus::kShowStatusText, error.text());
    }
}

bool ctl_Playlist::dropFiles(const DropOffer& offer)
{
    // The first file decides what the drop is about.
    if (isList(offer.files.first())) {
        QStringList lists;
        std::copy_if(offer.files.begin(), offer.files.end(), std::back_inserter(lists), isList);
        std::optional<Sid> target;
        if (offer.spot != DropOffer::Spot::BelowRows) {
            target = offer.spot == DropOffer::Spot::OnRow ? sidOf(offer.row) : Sid{0};
        }
        return m_actions.insertLists(lists, m_pnid, target, newAktion());
    }
    const QStringList fids = m_actions.tracksOf(offer.files);
    if (fids.isEmpty()) {
        m_bus.SendMessage(bus::kShowStatusText, m_texts.text(u"playlist.notracks"_s));
        return false;
    }
    dropTracks(offer, dragText(DragKind::FidMp3db, fids));
    return true;
}

void ctl_Playlist::dropEntries(const DropOffer& offer, DropEffect effect)
{
    Sid target = kEndOfList;
    if (offer.spot == DropOffer::Spot::OnRow) {
        target = sidOf(offer.row);
    } else if (offer.spot == DropOffer::Spot::AboveRows) {
        target = Sid{0};
    }
    const int mode = effect == DropEffect::Move ? cls_PLInsertMoveDel::kMove
                                                : cls_PLInsertMoveDel::kInsertCopies;
    m_tools.edits.InsertORMoveFromPlaylist(mode, target, m_pnid, offer.text, newAktion());
}

void ctl_Playlist::dropTracks(const DropOffer& offer, const QString& dragText)
{
    if (offer.spot == DropOffer::Spot::BelowRows) {
        m_tools.edits.AppendFromMP3DB(dragText, m_pnid, newAktion());
        return;
    }
    const bool onRow = offer.spot == DropOffer::Spot::OnRow;
    m_tools.edits.InsertFromMP3DB(onRow ? sidOf(offer.row) : Sid{0}, m_pnid, dragText, newAktion());
}

} // namespace melovane
