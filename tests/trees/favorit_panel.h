#pragma once

#include "trees/favorit_lists.h"
#include "trees/plain_tree.h"
#include "trees/tree_key.h"

#include <gtest/gtest.h>

namespace melovane::test {

/// The playlist panel without a window, over a real file.
class PlaylistFavoritTest : public testing::Test
{
protected:
    PlaylistFavoritTest() { start(); }

    void start()
    {
        send(QStringLiteral("refresh.all"), QStringLiteral("start"));
        lists.messages.clear();
    }

    void send(const QString& name, const Value& value1 = {}, const Value& value2 = {})
    {
        BusSender(lists.bus, QStringLiteral("MLVDB")).SendMessage(name, value1, value2);
    }

    [[nodiscard]] int rowOf(int list) const
    {
        const int row = tree.find(treekey::playlist(list));
        return row >= 0 ? row : tree.find(treekey::jingleList(list));
    }

    [[nodiscard]] int groupRow(int group) const { return tree.find(treekey::group(group)); }

    [[nodiscard]] QString picture(int list) const { return tree.row(rowOf(list)).picture; }

    [[nodiscard]] static DropOffer onRow(int row, const QString& text)
    {
        return {
            text, {}, false, row < 0 ? DropOffer::Spot::BelowRows : DropOffer::Spot::OnRow, row};
    }

    void press(const QString& tool, int row)
    {
        tree.current = row;
        panel.toolPressed(tool);
    }

    void choose(int entry, int row)
    {
        lists.answers.expectPopup(entry);
        tree.current = row;
        panel.contextMenu(row);
    }

    FavoritLists lists;
    PlainTree tree;
    StillLoop loop;
    PlaylistFavorit panel{lists.parts(loop), tree};
};

} // namespace melovane::test
