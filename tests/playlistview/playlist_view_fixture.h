#pragma once

#include "config/config_objects.h"
#include "config/melovane_configuration.h"
#include "library/view_fixture.h"
#include "playlists/list_fixture.h"
#include "playlists/mlv_function.h"
#include "playlistview/playlist.h"
#include "shell/fakes.h"
#include "shell/window_fixture.h"
#include "views/plain_grid.h"

namespace melovane::test {

/// The playlist view without a window, over a real file; timers fire when the test says so.
class PlaylistViewTest : public testing::Test
{
protected:
    explicit PlaylistViewTest(const QString& inProgram = QStringLiteral("MelovaneDB"))
        : program(inProgram)
    {
        MelovaneConfiguration::fill(texts);
        grid.layout = playlistColumns();
        QObject::connect(&view.Data1(), &DataControl::refreshed, &view, [this] {
            // As a real grid: new rows, no place among them.
            grid.current = -1;
            grid.selected.clear();
        });
        QObject::connect(
            &view, &ctl_Playlist::historyChanged, &view,
            [this](const QString& undo, bool, const QString&, bool) { undoTip = undo; });
        view.start();
    }

    /// A list of `count` tracks at the positions 10, 20 ... opened as the tree opens it.
    Pnid openList(int count,
                  bool locked = false,
                  const QString& command = QStringLiteral("playlist.aktivieren"))
    {
        lists.addTracks(count + 3);
        QList<int> positions;
        for (int entry = 1; entry <= count; ++entry) {
            positions.append(10 * entry);
        }
        list = lists.addList(positions);
        others.SendMessage(command, numberOf(list), locked);
        sent.clear();
        return list;
    }

    /// Tracks in the order of the rows, counted from 1: "1 2 3".
    [[nodiscard]] QString rows()
    {
        QStringList result;
        for (qint64 row = 0; row < view.Data1().rowCount(); ++row) {
            result.append(
                QString::number(cell(row, u"FID").toText().toLongLong() - 800'000'000'000));
        }
        return result.join(QChar(u' '));
    }

    [[nodiscard]] Value cell(qint64 row, QStringView field)
    {
        return view.Data1().cell(row, view.Data1().Recordset()->fieldIndex(field));
    }

    [[nodiscard]] Value aktion(qint64 row)
    {
        return lists.value(QStringLiteral("select aktion from pl_all where plid=") +
                           cell(row, u"PLID").toText());
    }

    void stand(qint64 row)
    {
        grid.current = row;
        grid.selected = {{row, row}};
    }

    /// What the view has sent of one name, as "name value1 value2", oldest first.
    [[nodiscard]] QStringList sentOf(const QString& name) const
    {
        return sent.filter(name + QChar(u' '));
    }

    /// Texts of the status line, oldest first; they are then forgotten.
    [[nodiscard]] QStringList takeStatus()
    {
        QStringList result;
        for (const QString& message : sentOf(QStringLiteral("show.statustext"))) {
            result.append(message.section(QChar(u' '), 1).trimmed());
        }
        sent.clear();
        return result;
    }

    [[nodiscard]] DropOffer onRow(qint64 row, const QString& text, bool copyKey = false) const
    {
        return {text, {}, copyKey, DropOffer::Spot::OnRow, row};
    }

    Lists lists;
    MLVFunction functions{lists.parts, lists.clock};
    ConfigObjects texts{lists.folders.paths(), lists.folders.profile(), lists.files};
    MLVMessageBus bus{lists.folders.paths(), lists.files, lists.clock};
    BusSender others{bus, QStringLiteral("others")};
    QStringList sent;
    MLVMessageBus::Subscription listener = bus.subscribe([this](const MLVMessage& message) {
        if (message.Sender == QStringLiteral("ctl_Playlist")) {
            sent.append(message.Command + u' ' + message.Value1.toText() + u' ' +
                        message.Value2.toText());
        }
    });
    PlainGrid grid;
    PointerLog pointer;
    PlainClipboard clipboard;
    QStringList log; ///< warnings
    LoggedWarnings warnings{log};
    SteppedLoop loop;
    Pnid list{};
    QString undoTip;
    int monitorFrame = 0; ///< where the monitor player plays
    QStringList tempoSearches;
    QStringList fileTracks; ///< what dropped files hold
    std::function<void()> whileFilesAreRead;
    QStringList folders;                                ///< places that are folders
    std::vector<MlvPlaylistDetail> sampled;             ///< entries that the sample tool got
    std::vector<std::pair<QString, QString>> rehearsed; ///< tracks of a transition
    QStringList insertedLists;
    bool listsHaveEntries = true;
    QStringList cueSearches;
    std::optional<CueRange> cues;
    QString program; ///< the one that the view stands in
    ctl_Playlist view{
        {*lists.engine,
         *lists.settings,
         texts,
         lists.clock,
         loop,
         bus,
         {functions, lists.edits, lists.history, lists.snapshots},
         lists.sink},
        {grid, pointer, clipboard, warnings},
        {program,
         [this](const QString& cmd, const QString& fid, const QString& plid) {
             tempoSearches.append(cmd + u' ' + fid + u' ' + plid);
         },
         [this] { return monitorFrame; },
         [](const QString& file) { return file; },
         [this](const QString& place) { return folders.contains(place); },
         [this](const QStringList&) {
             if (whileFilesAreRead) {
                 whileFilesAreRead();
             }
             return fileTracks;
         },
         [](const QString&, const GridControl&) {},
         [](const QString&, GridControl&) {},
         [this](const QStringList& files, Pnid target, std::optional<Sid> place, int aktion) {
             insertedLists.append(
                 QStringLiteral("%1 into %2 at %3 as %4")
                     .arg(files.join(u','))
                     .arg(target == list ? QStringLiteral("list") : QStringLiteral("another"))
                     .arg(place ? QString::number(numberOf(*place)) : QStringLiteral("the end"))
                     .arg(aktion));
             return listsHaveEntries;
         },
         [this](const MlvPlaylistDetail& entry) { sampled.push_back(entry); },
         [this](const QString& file, int withinMs, int loudness) {
             cueSearches.append(QStringLiteral("%1 %2 %3").arg(file).arg(withinMs).arg(loudness));
             return cues;
         },
         {},
         {},
         [this](const MlvPlaylistDetail& from, const MlvPlaylistDetail& to) {
             rehearsed.emplace_back(from.FID, to.FID);
         }}};
};

} // namespace melovane::test
