#pragma once

#include "playlists/entry_records.h"

#include <vector>

namespace melovane {

/// Where a list stands in the tree of lists.
struct ListPlace
{
    Pnid list{};
    GroupId group{};
    int position = 0;
};

/// Where a group stands there.
struct GroupPlace
{
    GroupId group{};
    int position = 0;
};

/// Makes, names, marks, sorts and deletes lists and their groups. Quiet: what fails changes
/// nothing.
class ListCatalogue
{
public:
    explicit ListCatalogue(PlaylistParts parts);

    /// Deletes a group without lists. True when no list stands in it any more; also for a number
    /// that no group has.
    [[nodiscard]] bool deleteGroup(GroupId group);

    /// A group at the end of all; GroupId{0} when it could not be made.
    [[nodiscard]] GroupId newGroup(const QString& name);

    /// A list at the end of its group; Pnid{0} when it could not be made.
    [[nodiscard]] Pnid newList(GroupId group, const QString& name);

    /// Quotes in names become "*", here and below.
    void renameGroup(GroupId group, const QString& name);
    /// The file of the list waits to be saved then.
    void renameList(Pnid list, const QString& name);

    /// The list with its entries; the history can bring it back.
    void deleteList(Pnid list);

    /// Gives the lists of the same group the positions 1, 2, 3 in ascending order of a column of
    /// `pl_name`; a name that is no column: nothing.
    void sortLists(Pnid list, const QString& column);

    /// Makes it the playing one among playlists or, for a jingle list, among jingle lists.
    void activate(Pnid list);

    void setLock(Pnid list, bool lock);

    enum class State
    {
        Open,
        Locked,
        Gone
    };

    /// What may be done with a list, as the database has it now.
    [[nodiscard]] State stateOf(Pnid list) const;

    /// Whether it stands among the jingle lists; not for a list that is gone.
    [[nodiscard]] bool isJingleList(Pnid list) const;

    /// Whether the playlist panel shows it.
    void setActiv(Pnid list, bool activ);

    /// Puts lists into groups and gives them their positions, all or none. One that becomes a
    /// jingle list, or no longer is one, stops being the playing one: there is one of each kind.
    /// \param groups where groups stand, too; none leaves them where they are
    void arrange(const std::vector<ListPlace>& places, const std::vector<GroupPlace>& groups = {});

    /// A name by a format of the settings: each text between two "#" becomes the date and time of
    /// now by that pattern. The format itself when that fails.
    [[nodiscard]] QString nameFromFormat(const QString& format) const;

private:
    void quiet(const QString& where, const std::function<void(Database&)>& work) const;

    PlaylistParts m_parts;
};

} // namespace melovane
