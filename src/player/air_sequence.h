#pragma once

#include "player/deck_pair.h"
#include "player/entry_search.h"

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace melovane {

class JingleDecks;

/// Plays the list that is on air, entry after entry, round and round.
///
/// The entry behind the present one stands ready on the other deck, and the engine knows where it
/// begins: a mix does not depend on anybody being in time. An entry that cannot be played is left
/// out while the present one plays. What follows is the choice of the present entry's action: mix
/// goes on, stop ends behind it, loop repeats it; entries with the action of a jingle sound over
/// the mix of their neighbours.
///
/// Has no clock: somebody calls advance() twenty times a second.
class AirSequence
{
public:
    struct Parts
    {
        PlayingList& list;
        AirEngine& engine;
        JingleDecks& jingles;
        std::function<AirSettings()> settings;
        /// The entry that plays and the one that comes next, 0 for none and for tracks without an
        /// entry; called when one of them is another now.
        std::function<void(Plid playing, Plid next)> told;
        /// Half of an entry was heard. Called once for all rounds of a loop.
        std::function<void(const MlvPlaylistDetail& entry)> played;
        EntrySearch::LeftOut leftOut;
    };

    explicit AirSequence(Parts parts);

    // -- What the user and other programs ask --

    /// Begins with the entry that is ready, at first the one that the list stands at.
    void play();
    /// Fades out; the entry behind the present one is the next.
    void stop();
    /// Fades out; play() goes on at that place, on the same deck.
    void pause();
    /// Goes over to the next entry within a short fade, out of a loop, too.
    void next();
    /// The prepared mix, now.
    void mixNow();
    /// A track at once, as the entry that it has in the list, from which the list goes on.
    void playNow(const QString& fid);
    /// An entry of the list at once.
    void playEntry(Plid entry);
    /// A track behind the present one; then the list goes on as it would have.
    void playNext(const QString& fid);
    /// With false each entry plays to its end, and the next one waits for play().
    void setMixMode(bool isOn);
    /// Has the present entry repeated, or not, whatever its action is.
    void setLoop(bool isOn);
    /// Speed of the present entry, as long as it plays; 1/100 percent.
    /// \param glideMs time that the way takes
    void setPitch(int pitch, int glideMs);
    /// Goes on with an entry, or with a track that has none, as it was left. False when it cannot.
    /// \param positionMs in its file
    bool resume(Plid entry, const QString& fid, double positionMs);
    /// The same, but it waits for play().
    bool waitAt(Plid entry, const QString& fid, double positionMs);

    /// An entry that is not in the list changes nothing: the next play() begins with it, or with
    /// the one behind it.
    void standAt(Plid entry);
    void standBehind(Plid entry);

    /// Entries, their order or which list plays are others now. What is to begin within the next
    /// second and a half begins all the same.
    void listChanged();

    /// Looks where the decks are, and does what is to be done.
    void advance();

    // -- What is to be seen --

    [[nodiscard]] bool isMixMode() const { return m_isMixMode; }

    /// The present entry begins again at its end.
    [[nodiscard]] bool isLoop() const;

    /// An entry stands where it was left, until play() or something else is asked for.
    [[nodiscard]] bool isPaused() const { return m_paused.has_value(); }

    /// True from play() to stop() or the end behind which nothing follows.
    [[nodiscard]] bool isPlaying() const { return m_wantsSound; }

    /// Looks in vain for something that can be played.
    [[nodiscard]] bool isStarved() const
    {
        return m_wantsSound && !m_onAir && m_search.isResting();
    }

    /// The deck of the present entry, or of the one that played last.
    [[nodiscard]] AirDeck deck() const { return m_decks.present(); }

    /// With the speed that it has. Without a FID there is none.
    [[nodiscard]] MlvPlaylistDetail playing() const;
    /// Place in the file of the present entry, or of the one on pause; 0 for none.
    [[nodiscard]] double positionMs() const;
    /// What stands on the other deck; likewise.
    [[nodiscard]] MlvPlaylistDetail ready() const;
    /// The next one, also while it is still looked at.
    [[nodiscard]] MlvPlaylistDetail upcoming() const;

    /// The mix from the present entry into the next one; 0 for none.
    [[nodiscard]] int mixMs() const { return m_planned.value_or(0); }

    /// The next one begins by itself.
    [[nodiscard]] bool isMixPlanned() const { return m_planned.has_value(); }

private:
    /// How the next one is to begin as soon as it can.
    struct Go
    {
        int ms = 0;
        bool isMix = false; ///< along its curves
        bool isTaken = false;
    };

    [[nodiscard]] bool goesOn() const;
    [[nodiscard]] bool isPlayable(const AirEntry& entry) const;
    [[nodiscard]] FadeStyle fadeInOf(const AirEntry& candidate) const;
    [[nodiscard]] const AirEntry* waiting() const;
    [[nodiscard]] Plid nextNumber() const;

    void followMix();
    void changeOver();
    void followEnd();
    void tellBroken();
    void countPlay();
    void followReady();
    void prepare();
    void prepareFromList();
    void put(AirEntry candidate);
    void giveUp(const AirEntry& loaded, AirFault fault);
    void go();
    void plan();
    void playAtOnce(const AirEntry& wanted);
    void want(AirEntry wanted, int fadeMs);
    void dropReady();
    void standOnPause(AirEntry left);
    void tell();

    Parts m_parts;
    EntrySearch m_search;
    DeckPair m_decks;
    std::optional<AirEntry> m_onAir;
    std::optional<AirEntry> m_ready;  ///< on the other deck
    std::optional<AirEntry> m_wanted; ///< asked for, to come before all others
    std::optional<AirEntry> m_paused; ///< comes before even those
    std::optional<Go> m_go;
    std::optional<int> m_planned; ///< mix that the engine knows of
    std::pair<Plid, Plid> m_told{};
    bool m_wantsSound = false;
    bool m_isMixMode = true;
};

} // namespace melovane
