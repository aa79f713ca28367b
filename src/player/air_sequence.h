#pragma once

#include "player/air_engine.h"
#include "player/entry_to_sound.h"

#include <functional>
#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace melovane {

class PlayingList;

/// Why an entry was left out.
enum class AirFault
{
    Missing, ///< its file is nowhere, or its track is gone
    Damaged  ///< its file cannot be played, or broke off
};

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
        std::function<AirSettings()> settings;
        /// The entry that plays and the one that comes next, 0 for none and for tracks without an
        /// entry; called when one of them is another now.
        std::function<void(Plid playing, Plid next)> told;
        /// Half of an entry was heard. Called once for all rounds of a loop.
        std::function<void(const MlvPlaylistDetail& entry)> played;
        std::function<void(const MlvPlaylistDetail& entry, AirFault fault)> leftOut;
    };

    explicit AirSequence(Parts parts);

    // -- What the user and other programs ask --

    /// Begins with the entry that is ready, at first the one that the list stands at.
    void play();
    /// Fades out; the entry behind the present one is the next.
    void stop();
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
    /// Goes on with an entry, or with a track that has none, as it was left. False when it cannot.
    /// \param positionMs in its file
    bool resume(Plid entry, const QString& fid, double positionMs);

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

    /// True from play() to stop() or the end behind which nothing follows.
    [[nodiscard]] bool isPlaying() const { return m_wantsSound; }

    /// Looks in vain for something that can be played.
    [[nodiscard]] bool isStarved() const { return m_wantsSound && !m_onAir && m_restTurns > 0; }

    /// The deck of the present entry, or of the one that played last.
    [[nodiscard]] AirDeck deck() const { return m_deck; }

    /// Without a FID there is none.
    [[nodiscard]] MlvPlaylistDetail playing() const;
    /// What stands on the other deck; likewise.
    [[nodiscard]] MlvPlaylistDetail ready() const;
    /// The next one, also while it is still looked at.
    [[nodiscard]] MlvPlaylistDetail upcoming() const;

    /// The mix from the present entry into the next one; 0 for none.
    [[nodiscard]] int mixMs() const { return m_planned.value_or(0); }

    /// The next one begins by itself.
    [[nodiscard]] bool isMixPlanned() const { return m_planned.has_value(); }

private:
    /// An entry on a deck, or on its way there.
    struct Loaded
    {
        MlvPlaylistDetail entry;
        std::vector<MlvPlaylistDetail> jingles; ///< that begin with it
        bool isFromList = true;                 ///< the list goes on behind it
        bool isRepeat = false;                  ///< a round of the loop that plays
        bool isCounted = false;
        int fadeInMs = 0;
        quint32 load = 0;
    };

    /// How the next one is to begin as soon as it can.
    struct Go
    {
        int ms = 0;
        bool isMix = false; ///< along its curves
        bool isTaken = false;
    };

    [[nodiscard]] AirDeck otherDeck() const;
    [[nodiscard]] bool goesOn() const;
    [[nodiscard]] bool isLoop() const;
    [[nodiscard]] std::optional<Loaded> loadedOf(const QString& fid);
    [[nodiscard]] EntrySound soundOf(const Loaded& loaded, const FadeStyle& fadeOut) const;
    [[nodiscard]] Plid nextNumber() const;

    void followMix();
    void changeOver();
    void followEnd();
    void tellBroken();
    void countPlay();
    void followReady();
    void prepare();
    [[nodiscard]] bool prepareFromList();
    void lookedThrough();
    void put(Loaded candidate);
    void giveUp(const Loaded& loaded, AirFault fault);
    void go();
    void plan();
    void want(Loaded wanted, int fadeMs);
    void dropReady();
    void soundJingles(const std::vector<MlvPlaylistDetail>& jingles);
    void tell();

    Parts m_parts;
    AirDeck m_deck = AirDeck::B;
    std::optional<Loaded> m_onAir;
    std::optional<Loaded> m_ready;  ///< on the other deck
    std::optional<Loaded> m_wanted; ///< asked for, to come before all others
    std::optional<Go> m_go;
    std::optional<int> m_planned;             ///< mix that the engine knows of
    std::optional<double> m_from;             ///< place at which the wanted one begins, ms
    std::vector<MlvPlaylistDetail> m_jingles; ///< passed on the way to the next entry
    std::set<Plid> m_failed;                  ///< told already
    int m_places = 0;                         ///< looked at in vain since the last change
    int m_restTurns = 0;                      ///< before a hopeless list is looked through again
    int m_nextJingle = 0;
    std::pair<Plid, Plid> m_told{};
    bool m_isFresh = true; ///< the entry that the list stands at was not played yet
    bool m_wantsSound = false;
    bool m_isMixMode = true;
    bool m_takesJingles = false; ///< there is nothing else
};

} // namespace melovane
