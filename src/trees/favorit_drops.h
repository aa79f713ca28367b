#pragma once

#include "platform/controls/drop_target.h"
#include "playlists/playlist_ids.h"

#include <functional>

namespace melovane {

class FavoritTree;
class MLVFunction;

/// What is dropped on the tree of lists from other views: tracks and entries are appended to the
/// list of the row. All of what it is made with outlives it.
class FavoritDrops : public DropTarget
{
public:
    struct Parts
    {
        const FavoritTree& rows;
        const MLVFunction& lists;
        std::function<bool()> mayWrite; ///< false while the library can only be read
        /// Appends the tracks or entries of a drag text to a list.
        std::function<void(const QString& dragText, Pnid list)> append;
    };

    explicit FavoritDrops(Parts parts);

    /// Copy on the row of a list; nothing on a heading, beside all rows, on a locked list, while
    /// the library is lent or cannot be written, and for an entry of the other kind: jingles keep
    /// their play actions, which ordinary lists have not, and the other way round.
    [[nodiscard]] DropEffect dropEffect(const DropOffer& offer) override;

    void drop(const DropOffer& offer) override;

private:
    [[nodiscard]] bool areJingles(const QString& entries);

    Parts m_parts;
    QString m_checkedDrag; ///< the drag text that m_areJingles is about
    bool m_areJingles = false;
};

} // namespace melovane
