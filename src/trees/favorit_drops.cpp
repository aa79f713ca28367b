#include "trees/favorit_drops.h"

#include "platform/system/leading_number.h"
#include "playlists/mlv_function.h"
#include "trees/favorit_tree.h"
#include "trees/tree_key.h"

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView kEntries = u"DRAG_TYP_PLID:";
constexpr QStringView kTracks = u"DRAG_TYP_FID_MP3DB:";

/// Whether the text is more than its head; a look at all ids would be too slow for each move.
bool carries(const QString& text, QStringView head)
{
    return text.startsWith(head) && text.size() > head.size();
}

} // namespace

FavoritDrops::FavoritDrops(Parts parts)
    : m_parts(std::move(parts))
{}

/// All entries of a drag come from one list: the first tells.
bool FavoritDrops::areJingles(const QString& entries)
{
    // Asked at each move of the pointer, and always about the same drag.
    if (m_checkedDrag != entries) {
        m_checkedDrag = entries;
        const auto entry = Plid(leadingLong(QStringView(entries).mid(kEntries.size())));
        m_areJingles = m_parts.lists.GetPlaylistDetailByPLID(entry).GRID == kJingleGroup;
    }
    return m_areJingles;
}

DropEffect FavoritDrops::dropEffect(const DropOffer& offer)
{
    const int row = int(offer.row);
    const bool isTarget = offer.spot == DropOffer::Spot::OnRow && m_parts.rows.isList(row) &&
                          !m_parts.rows.isLocked(row) && !m_parts.rows.isAway();
    const bool isEntries = carries(offer.text, kEntries);
    if (!isTarget || (!isEntries && !carries(offer.text, kTracks)) || !m_parts.mayWrite()) {
        return DropEffect::None;
    }
    const bool toJingles = treekey::isJingleRow(m_parts.rows.control().row(row).key);
    return isEntries && areJingles(offer.text) != toJingles ? DropEffect::None : DropEffect::Copy;
}

void FavoritDrops::drop(const DropOffer& offer)
{
    m_parts.append(offer.text, m_parts.rows.listOf(int(offer.row)));
}

} // namespace melovane
