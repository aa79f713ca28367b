#pragma once

#include "shell/console_words.h"

#include <QAction>
#include <QRegularExpression>

namespace melovane::test {

/// One test over the list of all message names, in three parts for its three groups of views.
class Vocabulary : public ConsoleWords
{
protected:
    /// One name of the list: before-state, values, what is to be seen at each of its handlers.
    struct Row
    {
        QString name;
        std::function<void()> before;
        Values values;
        std::function<void()> effect;
        /// Who acts in place of handlers that have nothing to do here; empty where all act.
        QString owner = {};
    };

    using Rows = std::vector<Row>;

    /// Sends each name in mixed letter case and looks at what it does.
    void play(const Rows& rows);

    [[nodiscard]] Rows libraryRows();
    [[nodiscard]] Rows databaseRows();
    [[nodiscard]] Rows lookRows();
    [[nodiscard]] Rows entryRows();
    [[nodiscard]] Rows listRows();
    [[nodiscard]] Rows treeRows();
    [[nodiscard]] Rows windowRows();
    [[nodiscard]] Rows monitorRows();

    void seeTitles(const QString& expected) { EXPECT_EQ(titles(library()), expected); }

    void seeEntries(const QString& expected) { EXPECT_EQ(titles(list()), expected); }

    std::function<void()> asked(const QString& dialog)
    {
        return [this, dialog] { EXPECT_EQ(dialogs.take(), QStringList{dialog}); };
    }

    void rename(const QString& title)
    {
        suite.execute(
            QStringLiteral("update db_all set Titel='%1' where fid='%2'").arg(title, tracks[0]));
    }

    void addList()
    {
        suite.library.addPlaylist({.Name = QStringLiteral("Neu"), .GRID = group, .SID = 9});
    }

    void seeNewList() { EXPECT_FALSE(rowOf(lists(), QStringLiteral("Neu")).key.isEmpty()); }

    /// "DRAG_TYP_FID_MP3DB:" and tracks.
    [[nodiscard]] QString dragged() const
    {
        return QStringLiteral("DRAG_TYP_FID_MP3DB:") + tracks[2];
    }

    /// Widths and order of the columns that are shown.
    static QStringList columnsOf(const DataGrid& grid)
    {
        QStringList result;
        for (const GridColumn& column : grid.columns()) {
            if (column.shown) {
                result.append(column.field + u' ' + QString::number(column.width));
            }
        }
        return result;
    }

    /// Only the first two columns, turned round.
    static void disarrange(DataGrid& grid)
    {
        std::vector<GridColumn> columns = grid.columns();
        for (size_t i = 2; i < columns.size(); ++i) {
            columns[i].shown = false;
        }
        std::swap(columns[0], columns[1]);
        grid.arrange(columns);
    }

    static QStringList shownFields(const DataGrid& grid)
    {
        return columnsOf(grid).replaceInStrings(QRegularExpression(QStringLiteral(" .*")),
                                                QString());
    }

    /// A tip of each view that is not the one it makes.
    void forgetTips()
    {
        for (const auto& [name, key] : kTools) {
            tool(name, key).setToolTip(QStringLiteral("?"));
        }
    }

    void seeTips(const QStringList& views)
    {
        for (const auto& [name, key] : kTools) {
            if (views.contains(name)) {
                EXPECT_NE(tool(name, key).toolTip(), QStringLiteral("?")) << name.toStdString();
            }
        }
    }

    /// A tool of each view.
    inline static const std::vector<std::pair<QString, QString>> kTools = {
        {QStringLiteral("ctl_MP3DB1"), QStringLiteral("all.volume")},
        {QStringLiteral("ctl_Playlist1"), QStringLiteral("all.volume")},
        {QStringLiteral("Tree1"), QStringLiteral("tree.album")},
        {QStringLiteral("PlaylistFavorit1"), QStringLiteral("all.lock")}};

    void setAutosize(bool on)
    {
        auto* entry = window->findChild<QAction*>(QStringLiteral("mnuAutosizeGrid"));
        if (entry->isChecked() != on) {
            entry->trigger();
        }
    }

    void narrow(DataGrid& grid)
    {
        std::vector<GridColumn> columns = grid.columns();
        for (GridColumn& column : columns) {
            column.width = 60;
            column.stretched = false;
        }
        grid.arrange(columns);
        kept = columnsOf(grid);
    }

    [[nodiscard]] QString layout(const QString& name) const
    {
        return suite.file(QStringLiteral("Layout/") + name);
    }

    QImage picture(const QString& name)
    {
        return tool(name, QStringLiteral("all.volume")).icon().pixmap(32).toImage();
    }

    /// The ground of the cell with the number of an entry.
    QRgb groundOf(int row)
    {
        DataGrid& grid = list();
        const QRect cell =
            grid.visualRect(grid.model()->index(row, grid.columnOf(QStringLiteral("Nr"))));
        return grid.viewport()->grab().toImage().pixel(cell.topLeft() + QPoint(3, 3));
    }

    /// The track of the library's current row.
    QString current()
    {
        const QString title =
            library()
                .model()
                ->index(int(library().currentRow()), library().columnOf(QStringLiteral("Titel")))
                .data()
                .toString();
        return suite.value(QStringLiteral("select fid from db_all where Titel='%1'").arg(title))
            .toText();
    }

    QStringList kept;
    QList<QImage> pictures;
    QRgb ground = 0;
};

} // namespace melovane::test
