#pragma once

#include "player/air_engine.h"
#include "player/entry_to_sound.h"
#include "playlists/entry_records.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace melovane {

/// The jingles at hand: the first entries of the jingle list that is the playing one of its kind,
/// else of the first that is shown.
class JinglePads
{
public:
    /// Pads that the keys reach.
    static constexpr int kPads = 6;

    JinglePads(PlaylistParts parts, AirEngine& engine, std::function<AirSettings()> settings);

    /// Reads the list anew; while the database is away the pads stay as they are.
    void refresh();

    /// Titles, at most kPads.
    [[nodiscard]] QStringList titles() const;

    /// Plays the jingle of a pad, counted from 0, over everything; again from its beginning when it
    /// sounds. A pad without one does nothing.
    void play(int pad);

    /// True while the jingle of a pad sounds.
    [[nodiscard]] bool sounds(int pad) const;

    /// Fades all of them away.
    void stop();

private:
    PlaylistParts m_parts;
    EntryRecords m_entries;
    AirEngine& m_engine;
    std::function<AirSettings()> m_settings;
    std::vector<MlvPlaylistDetail> m_pads;
    std::vector<int> m_onDeck; ///< pad of each jingle deck, -1 for none
    size_t m_nextDeck = 0;
};

} // namespace melovane
