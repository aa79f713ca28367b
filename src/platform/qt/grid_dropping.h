#pragma once

#include "platform/controls/drop_target.h"

#include <QObject>
#include <QTimer>

class QDropEvent;
class QTableView;
class QWidget;

namespace melovane {

class Skin;

/// Lets things be dropped on the rows of a grid: asks the target, shows where it would come to
/// lie, and scrolls while the pointer is held at an edge.
class GridDropping : public QObject
{
    Q_OBJECT

public:
    /// Belongs to the grid. `target` outlives the grid's last event.
    GridDropping(const Skin& skin, DropTarget& target, QTableView& grid);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] DropOffer offerOf(const QDropEvent& event, bool onHeadings) const;
    bool handle(QDropEvent& event, bool onHeadings);
    void showMarker(const DropOffer& offer);
    void hideMarker();
    void watchEdges(int y);
    void scrollOneRow();

    const Skin& m_skin;
    DropTarget& m_target;
    QTableView& m_grid;
    QWidget* m_marker;         ///< `frame_InsertPos`
    QTimer m_timerRowScroll;   ///< `Timer_RowScroll`
    QTimer m_timerVisibleDrag; ///< `TimerVisibleDrag`
    int m_pointerY = 0;        ///< of the drag, in the viewport
    int m_scrollStep = 0;      ///< rows per tick: -1, 0 or 1
};

} // namespace melovane
