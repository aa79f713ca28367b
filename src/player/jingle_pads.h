#pragma once

#include "player/jingle_decks.h"
#include "playlists/entry_records.h"

#include <QStringList>

#include <array>
#include <vector>

namespace melovane {

/// The jingles at hand: the first entries of the jingle list that is the playing one of its kind,
/// else of the first that is shown.
class JinglePads
{
public:
    /// Pads that the keys reach.
    static constexpr int kPads = 6;

    /// \param decks outlive the pads
    JinglePads(PlaylistParts parts, JingleDecks& decks);

    /// Reads the list anew; while the database is away the pads stay as they are.
    void refresh();

    /// Titles, at most kPads.
    [[nodiscard]] QStringList titles() const;

    /// Plays the jingle of a pad, counted from 0, over everything; again from its beginning when it
    /// sounds. A pad without one does nothing.
    void play(int pad);

    /// True while the jingle of a pad sounds.
    [[nodiscard]] bool sounds(int pad) const;

    /// Fades all jingles away.
    void stop() { m_decks.stop(); }

private:
    PlaylistParts m_parts;
    EntryRecords m_entries;
    JingleDecks& m_decks;
    std::vector<MlvPlaylistDetail> m_pads;
    std::array<JinglePlace, kPads> m_places; ///< where each was played last
};

} // namespace melovane
