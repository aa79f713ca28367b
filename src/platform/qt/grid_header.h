#pragma once

#include "platform/controls/grid_control.h"

#include <QHeaderView>

namespace melovane {

class Skin;

/// The column heads of a grid: flat, with the sort arrow right behind the heading.
class GridHeader : public QHeaderView
{
    Q_OBJECT

public:
    GridHeader(const Skin& skin, QWidget* parent);

    void setSortArrow(int column, SortArrow arrow);

    [[nodiscard]] int arrowColumn() const { return m_arrowColumn; }

    [[nodiscard]] SortArrow arrow() const { return m_arrow; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
    [[nodiscard]] QSize sectionSizeFromContents(int section) const override;

private:
    void drawArrow(QPainter& painter, const QRect& rect) const;
    [[nodiscard]] int arrowSize() const;
    /// The room that the sort arrow of a column takes; 0 for a column without one.
    [[nodiscard]] int arrowSpaceOf(int section) const;

    const Skin& m_skin;
    int m_arrowColumn = -1;
    SortArrow m_arrow = SortArrow::None;
};

} // namespace melovane
