#pragma once

#include "platform/controls/grid_control.h"
#include "playlists/playlist_ids.h"
#include "views/track_look.h"

namespace melovane {

class Clock;
class ConfigObjects;
class UpdateColors;

/// How a play action is told.
struct AktionLook
{
    int number;
    QStringView key;  ///< of its text
    QStringView icon; ///< name of its picture
};

/// Null for a number that is no action.
[[nodiscard]] const AktionLook* aktionLook(int number);

/// The columns of the playlist grid in their first order.
[[nodiscard]] std::vector<GridColumn> playlistColumns();

/// How the playlist grid shows an entry.
class PlaylistLook : public GridLook
{
public:
    PlaylistLook(const Clock& clock, const ConfigObjects& texts);

    void setColours(const UpdateColors& colours);

    /// Milliseconds shown where an entry has no mix time of its own.
    void setDefaultMixTime(int milliseconds) { m_defaultMixTime = milliseconds; }

    /// Entries of a locked list step back.
    void setLocked(bool locked) { m_locked = locked; }

    /// \param players in jingle mode so many rows from the top are marked as ready to play
    void setJingleMode(bool on, int players);

    /// The entries that play now and next; 0 for none.
    void setPlayed(Plid now, Plid next);

    /// The entry in the monitor player. Without one, 0, it is every entry of the track that the
    /// monitor player has; empty for none.
    void setHeard(Plid entry, const QString& fid = {})
    {
        m_heard = entry;
        m_heardTrack = fid;
    }

    [[nodiscard]] Plid heard() const { return m_heard; }

    /// Texts of single fields: `MixTime` in seconds ("5.00"), `Start` and `Stop` as "mm:ss:hh",
    /// `DBit`, `Play`; all else as it stands.
    [[nodiscard]] QString text(const QString& field, const Value& value) const override;

    /// `Nr` is the place of the row with a dot, `DTime` the time between start and stop, a `Stop`
    /// of 0 is the end of the track, `Aktion` is a picture without text.
    [[nodiscard]] QString
    rowText(const QString& field, const Value& value, const RowValues& row) const override;

    /// `Aktion` and `Nr` tell by ground and picture what plays; `Note` is a badge; a flagged track
    /// is struck out.
    [[nodiscard]] CellStyle style(const QString& field, const RowValues& row) const override;

private:
    [[nodiscard]] bool isHeard(Plid entry, const RowValues& row) const;
    [[nodiscard]] CellGround groundOf(const RowValues& row) const;

    const Clock& m_clock;
    const ConfigObjects& m_texts;
    NoteColours m_notes;
    Colour m_flagged;
    int m_defaultMixTime = 0;
    bool m_locked = false;
    bool m_jingleMode = false;
    int m_players = 0;
    Plid m_now{};
    Plid m_next{};
    Plid m_heard{};
    QString m_heardTrack;
};

} // namespace melovane
