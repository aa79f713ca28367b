#pragma once

#include "platform/db/value.h"
#include "store/track_fields.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <span>
#include <variant>
#include <vector>

namespace melovane {

struct ImportedField;

/// A row of `db_all` as an import makes it. Columns that belong to the user's work with the track
/// (play counts, favourite, mix styles) are not in it: they start as null, and a second reading of
/// the file leaves them alone.
struct ImportedTrack
{
    QString FID;
    QString Titel, Interpret, Album, Genre, Jahr, Track, Kommentar;
    QString Note; ///< "1" to "5", or empty
    QString BPM;
    QString Path; ///< with its separator at the end
    QString DName;
    int DLen = 0;      ///< bytes, clamped to 32 bits
    QString DTime;     ///< play time as shown
    int DTimeMsec = 0; ///< play time in milliseconds
    int DKhz = 0;      ///< Hz
    int DBit = 0;      ///< KBit/s, -99 for variable
    QDateTime DTSDatei;
    QDateTime DTSImport;
    int DriveTyp = 0;
    QString DriveName;
    int DEL = 0;
    int FrameStart = 0;
    int FrameStop = 0; ///< frames of 26.12245 ms
    int Normalize = 0;
    int Pitch = 0;
    int Volume = 0;
    QString Kategorie, Situation, Stimmung, Tempo;
    QString User1, User2, User3, User4, User5;

    /// The fields that an import knows, in the order of the table.
    [[nodiscard]] static std::span<const ImportedField> fields();

    /// Names of the columns, in the order of fields() and values().
    [[nodiscard]] static const QStringList& columns();

    /// Empty extended tags are null, all other texts are written as they are.
    [[nodiscard]] std::vector<Value> values() const;

    /// One of them. \pre fields() has it
    [[nodiscard]] Value value(TrackField field) const;
};

/// Where an import keeps a field of a track.
struct ImportedField
{
    TrackField field;
    std::variant<QString ImportedTrack::*, int ImportedTrack::*, QDateTime ImportedTrack::*> member;

    /// The member of a field that is a text, else null.
    [[nodiscard]] QString ImportedTrack::*text() const
    {
        const auto* const found = std::get_if<QString ImportedTrack::*>(&member);
        return found ? *found : nullptr;
    }

    /// True when the file's tag tells it, so that the tag of a file read again replaces it.
    [[nodiscard]] bool isFromTag() const
    {
        return field != TrackField::FID && !rowOf(field).frame.id.isEmpty();
    }
};

} // namespace melovane
