#pragma once

#include <QDateTime>
#include <QString>

#include <map>
#include <optional>

namespace melovane {

/// The text fields that a track's tag may hold. In both tag versions where the version knows them.
struct TagFields
{
    QString Titel;
    QString Interpret;
    QString Album;
    QString Genre; ///< as it stands in the tag: a name, "(17)", or "17"
    QString Jahr;
    QString Kommentar;
    QString Track;
};

/// What an audio file says about itself.
struct TrackTags
{
    bool hasId3v1 = false;
    bool hasId3v2 = false;
    TagFields id3v1;
    TagFields id3v2;

    // Only ID3v2 knows these.
    QString BPM;
    QString Note; ///< "1" to "5" from the rating frame of ours, or empty
    QString FID;  ///< as it stands in the tag, unchecked
    QString Kategorie;
    QString Situation;
    QString Stimmung;
    QString Tempo;
    QString User1, User2, User3, User4, User5;
    bool hasPicture = false;
};

/// How the file sounds.
struct AudioFacts
{
    int milliseconds = 0; ///< play time
    int bitRate = 0;      ///< KBit/s; -99 for variable bit rate
    int sampleRate = 0;   ///< Hz
    int channels = 0;
};

/// Why a file was refused.
enum class MediaFault
{
    None,
    NotFound,  ///< no such file, or not readable
    Empty,     ///< no bytes
    NoAudio,   ///< no sequence of MPEG audio frames
    TagSize,   ///< a tag that claims to be larger than its file
    Truncated, ///< ends before its first complete frames
};

struct MediaReading
{
    MediaFault fault = MediaFault::None;
    QString detail; ///< what exactly was found: the name of a text, or the system's own words
    TrackTags tags;
    AudioFacts audio;
};

/// Reads tags and sound facts of MPEG audio files. Never changes a file and never trusts one: any
/// bytes give a MediaReading, quickly.
class TagReader
{
public:
    virtual ~TagReader() = default;

    [[nodiscard]] virtual MediaReading read(const QString& path) const = 0;
};

} // namespace melovane
