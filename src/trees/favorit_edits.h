#pragma once

#include "playlists/playlist_ids.h"

#include <QString>

#include <functional>

namespace melovane {

enum class DropPlace;
class BusSender;
class ConfigObjects;
class FavoritTree;
class GlobalSettings;
class MLVFunction;
class TreeControl;
class Warnings;

/// What edits of the playlist panel are made over; all of it outlives them.
struct FavoritEditParts
{
    FavoritTree& rows;
    MLVFunction& lists;
    GlobalSettings& settings;
    const ConfigObjects& texts;
    Warnings& warnings;
    BusSender& bus;
    std::function<void(int row)> open; ///< shows the list of a row in the playlist view
};

/// What the user changes in the tree of lists: makes, names, locks, sorts, marks, moves and deletes
/// them. Each change is told to the other views.
class FavoritEdits
{
public:
    explicit FavoritEdits(FavoritEditParts parts);

    /// A list in the group of the current row, open and ready to be named; without a group the
    /// user is told.
    void newList();
    /// A playlist wherever the current row is: in its group, unless that is the jingles', else in
    /// the first group, else in a new one.
    void newPlaylist();
    /// A group, ready to be named.
    void newGroup();
    /// The group that imported lists go into: that of the current row, else a new one. Never that
    /// of the jingle lists: a list file holds music, and jingles have other play actions.
    [[nodiscard]] GroupId importGroup();

    /// Lets the user type another name for a list or group.
    void rename(int row);
    /// He has typed it; blanks alone change nothing.
    void rowEdited(int row, const QString& text);
    /// Rereads the name of a list and marks its file to be written.
    void UpdatePlaylistName(Pnid list);

    void lock(int row);
    /// \param column of `VPL_ALL`
    void sort(int row, const QString& column);
    /// Marks a list for the panel, or no longer.
    void showInPanel(int row);
    /// \see PlaylistFavorit::rowDropped
    void rowDropped(int from, int to, DropPlace place);

    /// Deletes a list once the user has said yes, or a group without lists.
    void deleteRow(int row);

private:
    [[nodiscard]] int firstGroup() const;
    void deleteList(int row);
    void deleteGroup(int row);

    FavoritEditParts m_parts;
    FavoritTree& m_rows;
    TreeControl& m_tree;
};

} // namespace melovane
