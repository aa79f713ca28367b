#pragma once

#include "platform/controls/drop_target.h"
#include "platform/controls/tree_control.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

class QDragEnterEvent;
class QDragMoveEvent;
class QDropEvent;
class QMimeData;
class QPainter;
class QTableView;

namespace melovane {

class OutlineModel;
class OutlinePainter;
class Skin;

/// The drags that begin on an outline and those that come to it.
class OutlineDrags : public QObject
{
    Q_OBJECT

public:
    /// Belongs to the view, which hands its events on.
    OutlineDrags(const Skin& skin,
                 const OutlineModel& model,
                 const OutlinePainter& painter,
                 QTableView& view);

    void setDropTarget(DropTarget& target) { m_dropTarget = &target; }

    void setDragSource(std::function<DragContent(const std::vector<int>& rows)> source);

    /// What a drag of a row carries; only its own view understands it.
    [[nodiscard]] std::unique_ptr<QMimeData> cargo(int row) const;

    /// Drags the current row if it is movable, else the selected rows as copies; ends when the user
    /// lets go.
    void drag(int current, const std::vector<int>& selected);

    void enter(QDragEnterEvent& event);
    void move(QDragMoveEvent& event);
    void leave();
    void drop(QDropEvent& event);

    /// Where a drag would put its row.
    void paint(QPainter& painter) const;

signals:
    void rowDropped(int from, int to, DropPlace place);
    /// A drag has rested on a row for a while.
    void restedOn(int row);

private:
    /// Where a drag would drop its row now.
    struct Target
    {
        int row = -1;
        DropPlace place = DropPlace::Into;

        bool operator==(const Target&) const = default;
    };

    [[nodiscard]] int rowAt(const QPoint& place) const;
    [[nodiscard]] int draggedRow(const QMimeData* cargo) const;
    [[nodiscard]] Target targetAt(const QPoint& place, const QMimeData* cargo) const;
    void setTarget(const Target& target);
    [[nodiscard]] DropOffer offerOf(const QDropEvent& event) const;
    void moveOfOthers(QDragMoveEvent& event);
    void watchRow(int row);

    const Skin& m_skin;
    const OutlineModel& m_model;
    const OutlinePainter& m_painter;
    QTableView& m_view;
    DropTarget* m_dropTarget = nullptr;
    std::function<DragContent(const std::vector<int>& rows)> m_source;
    Target m_target;
    QTimer m_rest; ///< from the pointer's coming to a row
    int m_rowUnderPointer = -1;
};

} // namespace melovane
