#pragma once

#include <QString>
#include <QStringList>

namespace melovane {

enum class DropEffect
{
    None, ///< refused
    Copy,
    Move,
};

/// What hangs on the pointer over a grid, and where.
struct DropOffer
{
    enum class Spot
    {
        OnRow,
        AboveRows, ///< on the headings
        BelowRows, ///< in the free room behind the last row
    };

    QString text;      ///< empty when the drag carries none
    QStringList files; ///< full paths of files and folders of this machine
    bool copyKey = false;
    Spot spot = Spot::BelowRows;
    qint64 row = -1; ///< only for Spot::OnRow
};

/// Decides over drags that come to a grid, and takes what is dropped.
class DropTarget
{
public:
    virtual ~DropTarget() = default;

    /// Asked at each move of the pointer.
    [[nodiscard]] virtual DropEffect dropEffect(const DropOffer& offer) = 0;

    /// Only called for an offer whose effect is not None.
    virtual void drop(const DropOffer& offer) = 0;
};

} // namespace melovane
