#include "library/library_place.h"

#include "library/mp3db.h"
#include "platform/controls/grid_control.h"
#include "platform/controls/search_box.h"
#include "platform/system/quoted_record.h"
#include "platform/system/trim_blanks.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

// First fields of a line: keep, they stand in the file.
const QString kSearch = u"search"_s;
const QString kNode = u"node"_s;
const QString kDeleted = u"deleted"_s;
const QString kMissing = u"missing"_s;

/// Parts the numbers and names of a short line.
constexpr QChar kComma = u',';

} // namespace

QString libraryplace::tracks(const ctl_MP3DB& view, const SearchBox& search)
{
    if (const auto& node = view.shown().node()) {
        return recordLine({kNode, node->kind, node->field, node->value, qint64(node->byNumber)});
    }
    switch (view.shown().request().kind) {
    case ShownRequest::Kind::Deleted:
        return kDeleted;
    case ShownRequest::Kind::Missing:
        return kMissing;
    default:
        break;
    }
    const QString typed = search.text();
    return trimBlanks(typed).isEmpty() ? QString() : recordLine({kSearch, typed});
}

void libraryplace::showTracks(ctl_MP3DB& view, SearchBox& search, const QString& line)
{
    const QStringList fields = readRecordLine(line).value_or(QStringList());
    const QString what = fields.value(0);
    if (what == kSearch && fields.size() == 2) {
        search.setText(fields[1]);
        view.search(fields[1]);
    } else if (what == kNode && fields.size() == 5) {
        view.FindTreeValue({fields[1], fields[2], fields[3], qint16(fields[4].toInt())}, false);
    } else if (what == kDeleted) {
        view.DB_ALL_DEL();
    } else if (what == kMissing) {
        view.DB_ALL_NOEXIST();
    }
}

QString libraryplace::sorting(const ctl_MP3DB& view)
{
    return view.SortColName() + kComma + view.SortRichtung();
}

void libraryplace::sort(ctl_MP3DB& view, const GridControl& grid, const QString& line)
{
    const int column = grid.columnOf(line.section(kComma, 0, 0));
    // A click on another column sorts it, a second one turns the order round.
    for (int click = 0; click < 2 && column >= 0 && sorting(view) != line; ++click) {
        view.headerClicked(column);
    }
}

QString rowPlace(const GridControl& grid)
{
    const qint64 row = grid.currentRow();
    return row < 0 ? QString()
                   : QString::number(row) + kComma + QString::number(grid.firstVisibleRow());
}

void goToRowPlace(GridControl& grid, qint64 count, const QString& line)
{
    bool isNumber = false;
    const qint64 row = line.section(kComma, 0, 0).toLongLong(&isNumber);
    if (isNumber && row >= 0 && row < count) {
        grid.goToRow(row, line.section(kComma, 1).toLongLong());
    }
}

} // namespace melovane
