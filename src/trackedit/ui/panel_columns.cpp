#include "trackedit/ui/panel_columns.h"

#include "trackedit/ui/cover_frame.h"
#include "trackedit/ui/panel_measures.h"

#include <QGridLayout>
#include <QWidget>

#include <algorithm>

namespace melovane {

namespace {

/// Widths of the panel, in lines of text, from which on there is room for three columns, for two,
/// and for a large cover.
constexpr int kThreeColumns = 60;
constexpr int kTwoColumns = 43;
constexpr int kLargeCover = 35;

/// Side of the cover in lines of text.
constexpr int kCover = 13;
constexpr int kSmallCover = 6;

} // namespace

PanelColumns::PanelColumns(QWidget& form, CoverFrame& cover, QWidget& line, QWidget& facts)
    : m_form(form)
    , m_cover(cover)
    , m_line(line)
    , m_facts(facts)
    , m_grid(new QGridLayout(&form))
{
    m_grid->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    m_grid->setHorizontalSpacing(kColumnGap);
    m_grid->setVerticalSpacing(kRowGap);
    for (QWidget*& column : m_columns) {
        column = new QWidget;
    }
}

QGridLayout& PanelColumns::make(std::size_t column)
{
    auto* grid = new QGridLayout(m_columns[column]);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(kLabelGap);
    grid->setVerticalSpacing(kRowGap);
    return *grid;
}

/// The width that a form of so many columns beside such a cover needs.
int PanelColumns::widthOf(int columns, int cover) const
{
    const auto least = [this](size_t column) {
        return m_columns[column]->minimumSizeHint().width();
    };
    const int beside = columns == 3   ? least(0) + least(1) + least(2)
                       : columns == 2 ? least(0) + std::max(least(1), least(2))
                                      : std::max({least(0), least(1), least(2)});
    return cover * m_form.fontMetrics().height() + beside + columns * kColumnGap + 2 * kMargin;
}

/// As many columns beside the cover as have room; the others stand below.
void PanelColumns::reflow(int width)
{
    const int lines = width / std::max(1, m_form.fontMetrics().height());
    const auto fits = [&](int columns, int cover) { return widthOf(columns, cover) <= width; };
    const int columns = lines >= kThreeColumns && fits(3, kCover)      ? 3
                        : lines >= kTwoColumns && fits(2, kSmallCover) ? 2
                                                                       : 1;
    const int cover = lines >= kLargeCover && fits(columns, kCover) ? kCover : kSmallCover;
    const int layout = columns * 100 + cover;
    if (layout == m_layout) {
        return;
    }
    m_layout = layout;
    m_cover.setSide(cover * m_form.fontMetrics().height());
    while (QLayoutItem* item = m_grid->takeAt(0)) {
        delete item;
    }
    m_grid->addWidget(&m_cover, 0, 0, columns == 1 ? 1 : 2, 1, Qt::AlignTop);
    m_grid->addWidget(m_columns[0], 0, 1, columns == 2 ? 2 : 1, 1);
    m_grid->addWidget(m_columns[1], columns == 1 ? 1 : 0, columns == 1 ? 1 : 2);
    m_grid->addWidget(m_columns[2],
                      columns == 3   ? 0
                      : columns == 2 ? 1
                                     : 2,
                      columns == 3   ? 3
                      : columns == 2 ? 2
                                     : 1);
    m_grid->addWidget(&m_line, 3, 0, 1, 1 + columns);
    m_grid->addWidget(&m_facts, 4, 0, 1, 1 + columns);
    for (int column = 1; column < 4; ++column) {
        const bool isUsed = column <= columns;
        m_grid->setColumnStretch(column, !isUsed ? 0 : column == 1 ? 3 : 2);
    }
    m_grid->setRowStretch(5, 1);
}

} // namespace melovane
