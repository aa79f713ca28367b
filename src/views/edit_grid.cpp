#include "views/edit_grid.h"

#include "views/layout_files.h"

#include <algorithm>

namespace melovane {

namespace {

using Columns = std::vector<GridColumn>;

/// Width of the rating, which holds one figure.
constexpr double kRatingWidth = 4;

bool isField(const GridColumn& column, const QString& field)
{
    return column.field.compare(field, Qt::CaseInsensitive) == 0;
}

Columns::iterator find(Columns& columns, const QString& field)
{
    return std::find_if(columns.begin(), columns.end(),
                        [&field](const GridColumn& column) { return isField(column, field); });
}

} // namespace

frmEditGrid::frmEditGrid(LayoutFiles& layouts,
                         QString name,
                         GridControl& grid,
                         const std::vector<GridColumn>& present)
    : m_layouts(layouts)
    , m_name(std::move(name))
    , m_grid(grid)
{
    const Columns stored = m_layouts.read(m_name);
    m_grid.arrange(stored.empty() ? present : stored);
}

std::vector<ColumnChoice> frmEditGrid::choices() const
{
    std::vector<ColumnChoice> result;
    for (const GridColumn& column : m_grid.columns()) {
        result.push_back({column.field, column.heading, column.shown});
    }
    std::sort(result.begin(), result.end(), [](const ColumnChoice& one, const ColumnChoice& two) {
        return one.heading.localeAwareCompare(two.heading) < 0;
    });
    return result;
}

void frmEditGrid::addColumn(const QString& field)
{
    Columns columns = m_grid.columns();
    const auto wanted = find(columns, field);
    if (wanted == columns.end() || wanted->shown) {
        return;
    }
    GridColumn column = *wanted;
    column.shown = true;
    if (isField(column, QStringLiteral("Note"))) {
        column.width = kRatingWidth;
    }
    columns.erase(wanted);
    const auto current = find(columns, m_grid.dataField(m_grid.currentColumn()));
    auto place = std::find_if(columns.begin(), columns.end(),
                              [](const GridColumn& one) { return !one.shown; });
    if (current != columns.end() && current->shown) {
        place = current + 1;
    }
    columns.insert(place, column);
    m_grid.arrange(columns);
}

void frmEditGrid::removeColumn(const QString& field)
{
    Columns columns = m_grid.columns();
    const auto wanted = find(columns, field);
    if (wanted != columns.end()) {
        // Without one column left the grid keeps them.
        wanted->shown = false;
        m_grid.arrange(columns);
    }
}

void frmEditGrid::setHeading(const QString& field, const QString& heading)
{
    Columns columns = m_grid.columns();
    const auto wanted = find(columns, field);
    if (wanted != columns.end()) {
        wanted->heading = heading;
        m_grid.arrange(columns);
    }
}

bool frmEditGrid::save()
{
    return m_layouts.write(m_name, m_grid.columns());
}

} // namespace melovane
