#pragma once

#include "store/track_reader.h"
#include "trees/favorit_lists.h"
#include "trees/library_tree.h"
#include "trees/plain_tree.h"
#include "trees/tree_key.h"

#include <gtest/gtest.h>

#include <array>

namespace melovane::test {

/// A stack of trees without a window.
class PlainTreeForm : public TreeForm
{
public:
    [[nodiscard]] TreeControl& page(TreeKind kind) override { return pages[size_t(kind)]; }

    void bringUp(TreeKind kind) override { top = kind; }

    void setGroupButtons(bool shown) override { hasGroupButtons = shown; }

    void setFolds(bool wanted) override { folds = wanted; }

    std::array<PlainTree, kTreeKinds> pages;
    TreeKind top = TreeKind::Dir;
    bool hasGroupButtons = false;
    bool folds = true;
};

/// The library tree without a window, over a real file whose tree tables the test fills.
class LibraryTreeTest : public testing::Test
{
protected:
    void send(const QString& name, const Value& value1 = {}, const Value& value2 = {})
    {
        BusSender(lists.bus, QStringLiteral("MLVDB")).SendMessage(name, value1, value2);
    }

    void addDirectory(const QString& path,
                      int level,
                      const QString& name,
                      int own,
                      int total,
                      bool favourite = false,
                      int drive = 2,
                      const QString& volume = {})
    {
        lists.execute(
            QStringLiteral("insert into tree_dir (Path,Name,bname,vName,Drive,rLevel,anzahl,"
                           "BAnzahl,imgkey,favorit,tstamp) values ('%1','%2','%2','%3',%4,%5,%6,"
                           "%7,'%8',%9,now)")
                .arg(path, name, volume)
                .arg(drive)
                .arg(level)
                .arg(own)
                .arg(total)
                .arg(level == 0 ? QStringLiteral("DRIVE_%1").arg(drive) : QStringLiteral("DIR"))
                .arg(favourite ? -1 : 0));
    }

    /// A row of a tree table with a name; the newest favourite has the greatest number.
    void addNamed(const QString& table, const QString& name, int count, int favourite = 0)
    {
        QString quoted = name;
        quoted.replace(QLatin1Char('\''), QStringLiteral("''"));
        lists.execute(QStringLiteral("insert into %1 (Name,anzahl,imgkey,favorit,tstamp) values "
                                     "('%2',%3,'%4',%5,%6)")
                          .arg(table, quoted)
                          .arg(count)
                          .arg(QString(table).mid(5).toLower())
                          .arg(favourite != 0 ? -1 : 0)
                          .arg(40000 + favourite));
    }

    void
    addGenreArtist(const QString& genre, const QString& artist, int count, bool favourite = false)
    {
        lists.execute(QStringLiteral("insert into tree_genre_interpret (Genre,Name,anzahl,imgkey,"
                                     "favorit,tstamp) values ('%1','%2',%3,'interpret',%4,40000)")
                          .arg(genre, artist)
                          .arg(count)
                          .arg(favourite ? -1 : 0));
    }

    PlainTree& show(TreeKind kind, const QString& tool)
    {
        if (!started) {
            started = true;
            tree.start();
        }
        tree.toolPressed(tool);
        lists.messages.clear();
        return form.pages[size_t(kind)];
    }

    void tick(PlainTree& page, const QString& key, bool on, int nth = 0)
    {
        int row = -1;
        for (int index = 0; index < page.rowCount(); ++index) {
            if (page.row(index).key == key && nth-- == 0) {
                row = index;
            }
        }
        ASSERT_GE(row, 0) << qPrintable(key);
        page.rows[size_t(row)].tick = on ? RowTick::On : RowTick::Off;
        tree.rowTicked(row, on);
    }

    /// "key=ticked" of every row that has a box and this text in its key.
    [[nodiscard]] static QStringList ticks(const PlainTree& page, const QString& part)
    {
        QStringList result;
        for (const TreeRow& row : page.rows) {
            if (row.tick != RowTick::None && row.key.contains(part)) {
                result.append(row.key + (row.tick == RowTick::On ? QStringLiteral("=1")
                                                                 : QStringLiteral("=0")));
            }
        }
        return result;
    }

    /// "favorit" of the rows of a tree table with this name.
    [[nodiscard]] QString flag(const QString& table, const QString& column, const QString& name)
    {
        return lists
            .column(QStringLiteral("select favorit from %1 where %2='%3'").arg(table, column, name))
            .join(QLatin1Char(','));
    }

    [[nodiscard]] static QStringList keys(const PlainTree& page)
    {
        QStringList result;
        for (const TreeRow& row : page.rows) {
            result.append(row.key);
        }
        return result;
    }

    TreeParts parts()
    {
        return {
            .engine = *lists.engine,
            .settings = *lists.settings,
            .texts = lists.texts,
            .lists = lists.lists,
            .loop = loop,
            .bus = lists.bus,
            .warnings = lists.answers,
            .popup = lists.answers,
            .sink =
                [this](const QString& where, const QString& what) {
                    failures.append(where + QStringLiteral(": ") + what);
                },
            .mayWrite = [this] { return mayWrite; },
            .track =
                [this](const QString& fid) {
                    return TrackReader(*lists.engine, {}).GetAllDataByFid(lists.dbName(), fid, {});
                },
            .cover = [this](const MlvAllData&) { return cover; },
            .placeOf = [](const QString& file) { return file; },
            .append =
                [this](const QString& text, Pnid list) {
                    appended = {text, list};
                },
            .startViewer = [this] { ++viewers; },
            .rebuildTables = [this] { ++rebuilds; }};
    }

    FavoritLists lists;
    StillLoop loop;
    PlainTreeForm form;
    QStringList failures;
    bool mayWrite = true;
    bool started = false;
    QString cover;
    std::pair<QString, Pnid> appended;
    int viewers = 0;
    int rebuilds = 0;
    Tree tree{parts(), form};
};

} // namespace melovane::test
