#pragma once

#include "player/air_sequence.h"
#include "player/jingle_pads.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace melovane {

class ConfigObjects;
class GlobalSettings;
class PlayingList;

/// What one deck shows.
struct DeckFace
{
    QString file; ///< of the sound
    QString title;
    QString artist;
    double bpm = 0;         ///< at the speed that it has, where the user wants that; 0 unknown
    double fromMs = 0;      ///< place of the entry's start in its file
    double elapsedMs = 0;   ///< since the entry's start
    double remainingMs = 0; ///< until its end
    double lengthMs = 0;    ///< of the entry; 0 while nothing is known
    int level = 0;          ///< 0 to 32767
    int pitch = 0;          ///< 1/100 percent
    bool isLoaded = false;
    bool isOnAir = false;
    bool isPaused = false;

    bool operator==(const DeckFace&) const = default;
};

/// The mix ahead: how much of the present entry is left where the next one begins.
struct MixFace
{
    double remainingMs = 0; ///< of the present entry
    int mixMs = 0;
    bool isPlanned = false;
};

/// What the player's window shows and what its buttons and keys do. No window, no clock.
class PlayerDesk
{
public:
    PlayerDesk(AirSequence& sequence,
               AirEngine& engine,
               PlayingList& list,
               JinglePads& jingles,
               GlobalSettings& settings,
               const ConfigObjects& texts,
               std::function<void()> showConsole = {});

    // -- Commands --

    /// Play or, while it plays, stop.
    void playOrStop();

    /// Play or, while it plays, leave it where it is.
    void playOrPause();

    /// On: the music steps back for somebody who speaks.
    void setTalkover(bool isOn);
    /// Of the present entry, within the user's range; 1/100 percent.
    void setPitch(int pitch);
    /// Back to the speed of the file, so gently that nobody hears it.
    void easePitch();

    /// Does what a key binding of the player stands for.
    /// \param id of the binding, such as "PLMix". False for one that is not the player's
    bool run(const QString& id);

    /// The combination held down now was pressed: runs the first of the player's bindings with it.
    /// True when there is one.
    bool keyPressed();
    /// Looks whether the combination is still held: as long as it is, it runs once.
    void turn();

    void leftOut(const MlvPlaylistDetail& entry, AirFault fault);

    // -- To be seen --

    [[nodiscard]] DeckFace deck(AirDeck deck) const;
    [[nodiscard]] MixFace mix() const;
    /// "Interpret - Titel" of the entries behind the present one; read when the list or the place
    /// in it is another.
    [[nodiscard]] QStringList upcoming(int count);

    [[nodiscard]] bool isTalkover() const { return m_isTalkover; }

    [[nodiscard]] int pitch() const { return m_sequence.playing().Pitch; }

    [[nodiscard]] int maxPitch() const;
    /// Faster is to the left, or down.
    [[nodiscard]] bool isPitchReversed() const;

    /// What went wrong last; empty for nothing.
    [[nodiscard]] QString notice() const;

    [[nodiscard]] AirSequence& sequence() { return m_sequence; }

    [[nodiscard]] JinglePads& jingles() { return m_jingles; }

    /// The console comes to the front.
    void showConsole();

private:
    AirSequence& m_sequence;
    AirEngine& m_engine;
    PlayingList& m_list;
    JinglePads& m_jingles;
    GlobalSettings& m_settings;
    const ConfigObjects& m_texts;
    std::function<void()> m_showConsole;
    QString m_notice;
    QString m_keys; ///< that ran and are still held
    bool m_isTalkover = false;
};

/// The user's settings for the player.
[[nodiscard]] AirSettings airSettings(const GlobalSettings& settings, const ConfigObjects& texts);

} // namespace melovane
