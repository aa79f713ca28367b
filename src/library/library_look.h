#pragma once

#include "platform/controls/grid_control.h"
#include "views/track_look.h"

namespace melovane {

class Clock;
class UpdateColors;

/// Colours of track rows, section "Color" of the settings.
struct GridColours : NoteColours
{
    Colour playNow;       ///< a track played within the last day
    Colour rowShowDel;    ///< a row out of use
    CellStyle shownTrack; ///< style "FIDBOLD": the track that another view stands on

    [[nodiscard]] static GridColours from(const UpdateColors& colours);
};

/// How the library grid shows a track.
class LibraryLook : public GridLook
{
public:
    explicit LibraryLook(const Clock& clock);

    void setColours(const GridColours& colours) { m_colours = colours; }

    /// The track that another view stands on; empty for none.
    void setShownTrack(const QString& fid) { m_shownTrack = fid; }

    [[nodiscard]] const QString& shownTrack() const { return m_shownTrack; }

    /// The track in the monitor player; empty for none.
    /// \param meaning what its mark says
    void setHeardTrack(const QString& fid, const QString& meaning)
    {
        m_heardTrack = fid;
        m_heardMeaning = meaning;
    }

    /// Whether `Play` is always shown as a time of day with seconds: the plays of one day.
    void setPlayIsTimeOfDay(bool on) { m_playIsTimeOfDay = on; }

    /// `Play` is the time of day for the last twelve hours and the day before that; a `DBit` of -99
    /// is "VBR"; null is empty; all else as Value::toText writes it.
    [[nodiscard]] QString text(const QString& field, const Value& value) const override;

    /// A row whose `DEL` is not 0 is struck out in its colour, the shown track has its style;
    /// `Note` 1 to 5 is a badge; a `Play` within the last day is tinted. The title of the heard
    /// track has the ground and the picture that tell it.
    [[nodiscard]] CellStyle style(const QString& field, const RowValues& row) const override;

private:
    [[nodiscard]] bool playedWithin(const Value& play, qint64 seconds) const;

    const Clock& m_clock;
    GridColours m_colours;
    QString m_shownTrack;
    QString m_heardTrack;
    QString m_heardMeaning;
    bool m_playIsTimeOfDay = false;
};

} // namespace melovane
