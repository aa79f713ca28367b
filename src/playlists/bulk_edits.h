#pragma once

#include "playlists/entry_records.h"

namespace melovane {

/// Values that are written to all entries of a list at once. Quiet.
class BulkEdits
{
public:
    explicit BulkEdits(PlaylistParts parts);

    /// The out style of one entry and the in style of another go to every entry of the list.
    /// Numbers come as texts; one that is none: nothing.
    void setAllMixStyle(const QString& list, const QString& outOf, const QString& inOf);

    /// Start, stop, pitch, volume, styles and command of all entries as if they had just come.
    void reset(Pnid list);

    /// All entries lose their mix styles and mix time.
    void deleteAllMixStyle(Pnid list);

private:
    void change(Pnid list, ListAction action, const QString& statement);

    PlaylistParts m_parts;
};

} // namespace melovane
