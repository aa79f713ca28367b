#include "library/library_columns.h"

#include "config/built_in_texts.h"
#include "store/track_fields.h"

#include <algorithm>

namespace melovane {

namespace {

QString headingOf(const GridColumn& column)
{
    const QString key = headingKey(column.field);
    const auto texts = owntexts::columns();
    const auto found = std::find_if(texts.begin(), texts.end(),
                                    [&key](const BuiltInText& text) { return text.name == key; });
    return found == texts.end() ? column.field : found->description.toString();
}

} // namespace

std::vector<GridColumn> libraryColumns()
{
    std::vector<GridColumn> columns;
    for (const TrackField field : libraryGridFields()) {
        columns.push_back(gridColumn(rowOf(field), rowOf(field).library));
        columns.back().heading = headingOf(columns.back());
    }
    return columns;
}

} // namespace melovane
