#include "fuzz/formats/formats.h"
#include "views/grid_layout.h"

#include <QSet>

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

QString columnFault(const GridColumn& column)
{
    if (column.field.isEmpty() || column.field.contains(u'|')) {
        return u"a field without a name"_s;
    }
    if (!(column.width >= 1 && column.width <= 500)) {
        return u"a width that no screen shows"_s;
    }
    if (column.renamed == column.heading.isEmpty()) {
        return u"a heading that is not the user's"_s;
    }
    return {};
}

QString check(const QByteArray& bytes)
{
    const std::vector<GridColumn> columns = readLayout(bytes);
    QSet<QString> fields;
    for (const GridColumn& column : columns) {
        if (const QString fault = columnFault(column); !fault.isEmpty()) {
            return fault + u": "_s + column.field;
        }
        fields.insert(column.field.toLower());
    }
    if (fields.size() != qsizetype(columns.size()) || columns.size() > 500) {
        return u"%1 columns, %2 fields"_s.arg(columns.size()).arg(fields.size());
    }
    const QByteArray text = layoutText(columns);
    const std::vector<GridColumn> again = readLayout(text);
    return again.size() == columns.size() && layoutText(again) == text
               ? QString()
               : u"reads back otherwise: "_s + QString::fromUtf8(text);
}

std::vector<QByteArray> seeds()
{
    GridColumn plain;
    plain.field = u"Titel"_s;
    plain.width = 30.5;
    GridColumn renamed;
    renamed.field = u"BPM"_s;
    renamed.heading = u"Tempo | je Minute"_s;
    renamed.renamed = true;
    renamed.shown = false;
    renamed.stretched = true;
    return {layoutText({}), layoutText({plain}), layoutText({plain, renamed})};
}

} // namespace

Format layout()
{
    return {"layout", check, seeds};
}

} // namespace melovane::fuzz
