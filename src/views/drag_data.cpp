#include "views/drag_data.h"

#include "platform/controls/clipboard.h"
#include "platform/db/db_error.h"
#include "platform/db/recordset.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

struct DraggedRow
{
    QString id;
    QString file;
};

struct DragColumns
{
    int id;
    int del;
    int path;
    int name;
};

std::optional<DraggedRow> readRow(Recordset& rows, const DragColumns& columns, qint64 row)
{
    try {
        rows.SetAbsolutePosition(row);
        const bool flagged = columns.del >= 0 && rows.value(columns.del).toLong() != 0;
        const QString id = rows.value(columns.id).toText();
        if (flagged || id.isEmpty()) {
            return std::nullopt;
        }
        const bool hasFile = columns.path >= 0 && columns.name >= 0;
        return DraggedRow{id, hasFile ? rows.value(columns.path).toText() +
                                            rows.value(columns.name).toText()
                                      : QString()};
    } catch (const DbError&) {
        // A sibling has deleted the row since the set was opened.
        return std::nullopt;
    }
}

QStringList foundFiles(const QStringList& files,
                       const std::function<QString(const QString& file)>& locate)
{
    QStringList found;
    for (const QString& file : files) {
        const QString place = locate(file);
        if (!place.isEmpty()) {
            found.append(place);
        }
    }
    return found;
}

} // namespace

QString dragPrefix(DragKind kind)
{
    return kind == DragKind::Plid ? u"DRAG_TYP_PLID:"_s : u"DRAG_TYP_FID_MP3DB:"_s;
}

QString dragText(DragKind kind, const QStringList& ids)
{
    return ids.isEmpty() ? QString() : dragPrefix(kind) + ids.join(u',');
}

DragContent GetDragData(DragKind kind,
                        GridControl& grid,
                        Recordset& rows,
                        DragOrder order,
                        const QString& cached,
                        const std::function<QString(const QString& file)>& locate)
{
    if (!cached.isEmpty()) {
        return {dragPrefix(kind) + cached, {}};
    }
    if (grid.selection().empty() && grid.currentRow() >= 0) {
        grid.select({{grid.currentRow(), grid.currentRow()}});
    }
    const DragColumns columns{rows.fieldIndex(kind == DragKind::Plid ? u"PLID" : u"FID"),
                              rows.fieldIndex(u"DEL"), rows.fieldIndex(u"Path"),
                              rows.fieldIndex(u"DName")};
    std::vector<DraggedRow> dragged;
    for (const RowRange& range : grid.selection()) {
        for (qint64 row = range.first; columns.id >= 0 && row <= range.last; ++row) {
            if (auto read = readRow(rows, columns, row)) {
                dragged.push_back(std::move(*read));
            }
        }
    }
    if (order == DragOrder::ById) {
        std::stable_sort(dragged.begin(), dragged.end(), [](const auto& one, const auto& two) {
            return one.id.toLongLong() < two.id.toLongLong();
        });
    }
    QStringList ids;
    QStringList files;
    for (const DraggedRow& row : dragged) {
        ids.append(row.id);
        if (!row.file.isEmpty()) {
            files.append(row.file);
        }
    }
    DragContent result{dragText(kind, ids), {}};
    if (locate && !files.isEmpty()) {
        result.files = [files, locate] { return foundFiles(files, locate); };
    }
    return result;
}

void copyDrag(DragKind kind, const DragContent& content, GridControl& grid, Clipboard& clipboard)
{
    if (!content.text.isEmpty() || !grid.selection().empty()) {
        clipboard.setText(content.text.isEmpty() ? dragPrefix(kind) : content.text);
    }
}

} // namespace melovane
