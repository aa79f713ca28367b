#pragma once

#include "config/melovane_configuration.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/qt_message_loop.h"
#include "platform/qt/skin.h"
#include "playlists/list_fixture.h"
#include "playlists/mlv_function.h"
#include "playlistview/playlist.h"
#include "playlistview/ui/playlist_widget.h"
#include "shell/window_fixture.h"

#include <QApplication>
#include <QVBoxLayout>

namespace melovane::test {

/// The form of the playlist view with its logic over a real file; above it a grid of the library's
/// tracks to drag from.
class PlaylistWindow
{
public:
    explicit PlaylistWindow(int tracks, int entries)
    {
        MelovaneConfiguration::fill(texts);
        form.attach(view, texts);
        library.SetDatabaseName(lists.dbName());
        library.SetRecordSource(QStringLiteral("select FID, Titel from db_all order by FID"));
        lists.addTracks(tracks);
        QList<int> positions;
        for (int entry = 1; entry <= entries; ++entry) {
            positions.append(entry);
        }
        list = lists.addList(positions);
        library.Refresh();
        source.setSource(library, look, {{QStringLiteral("Titel"), QStringLiteral("Titel"), 30}});
        source.setDragSource([this] {
            return DragContent{Lists::tracksText({int(source.currentRow()) + 1}), {}};
        });
        auto* column = new QVBoxLayout(&window);
        column->addWidget(&source, 1);
        column->addWidget(&form, 2);
        window.resize(1000, 700);
        view.start();
        bus.SendMessage(QStringLiteral("create.toolbars"));
    }

    ~PlaylistWindow()
    {
        source.setParent(nullptr);
        form.setParent(nullptr);
        skin.clear();
        qApp->setStyleSheet({});
    }

    PlaylistWindow(const PlaylistWindow&) = delete;
    PlaylistWindow& operator=(const PlaylistWindow&) = delete;

    void open() { bus.SendMessage(QStringLiteral("playlist.aktivieren"), numberOf(list), false); }

    [[nodiscard]] DataGrid& grid()
    {
        auto* found = form.findChild<DataGrid*>(QStringLiteral("PlaylistGrid1"));
        Q_ASSERT(found);
        return *found;
    }

    /// Tracks in the order of the rows, counted from 1.
    [[nodiscard]] QString rows()
    {
        QStringList result;
        const int column = view.Data1().Recordset()->fieldIndex(u"FID");
        for (qint64 row = 0; row < view.Data1().rowCount(); ++row) {
            const qint64 fid = view.Data1().cell(row, column).toText().toLongLong();
            result.append(QString::number(fid - 800'000'000'000));
        }
        return result.join(QChar(u' '));
    }

    /// The play action of a row.
    [[nodiscard]] int aktion(qint64 row)
    {
        return view.Data1().cell(row, view.Data1().Recordset()->fieldIndex(u"Aktion")).toLong();
    }

    /// The middle of a row of a grid, on the screen.
    [[nodiscard]] static QPoint placeOf(const DataGrid& of, int row)
    {
        const QRect cell =
            of.visualRect(of.model()->index(row, of.columnOf(QStringLiteral("Titel"))));
        return of.viewport()->mapToGlobal(QPoint(cell.left() + 40, cell.center().y()));
    }

    class PlainTexts : public GridLook
    {
    public:
        [[nodiscard]] QString text(const QString&, const Value& value) const override
        {
            return value.toText();
        }

        [[nodiscard]] CellStyle style(const QString&, const RowValues&) const override
        {
            return {};
        }
    };

    Lists lists;
    ConfigObjects texts{lists.folders.paths(), lists.folders.profile(), lists.files};
    MLVMessageBus messages{lists.folders.paths(), lists.files, lists.clock};
    BusSender bus{messages, QStringLiteral("PlaylistFavorit")};
    MLVFunction functions{lists.parts, lists.clock};
    QtMessageLoop loop;
    QStringList log;
    LoggedWarnings warnings{log};
    Skin skin{*qApp};
    IconSet icons{skin};
    PlainTexts look;
    DataControl library{*lists.engine};
    Pnid list{};
    QWidget window;
    DataGrid source{skin, icons};
    PlaylistWidget form{skin, icons};
    QStringList dropped; ///< places of dropped files
    ctl_Playlist view{{*lists.engine,
                       *lists.settings,
                       texts,
                       lists.clock,
                       loop,
                       messages,
                       {functions, lists.edits, lists.history, lists.snapshots}},
                      form.controls(warnings),
                      {QStringLiteral("MelovaneDB"),
                       [](const QString&, const QString&, const QString&) {},
                       [] { return 0; },
                       [](const QString& file) { return file; },
                       {},
                       [this](const QStringList& places) {
                           dropped = places;
                           return QStringList();
                       },
                       [](const QString&, const GridControl&) {},
                       [](const QString&, GridControl&) {}}};
};

} // namespace melovane::test
