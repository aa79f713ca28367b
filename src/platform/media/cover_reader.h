#pragma once

#include <QByteArray>
#include <QString>

namespace melovane {

/// Largest picture file that is taken out of a tag or read from a disc, in bytes.
inline constexpr qint64 kLargestPicture = qint64{30} * 1000 * 1000;

/// The pictures in the tags of audio files.
class CoverReader
{
public:
    virtual ~CoverReader() = default;

    /// The picture file that stands for a track: the front cover, else one of no kind, else any but
    /// the small icons and the back. Empty for a file without one, a link to one, a picture above
    /// kLargestPicture, and for a file that cannot be read. Any thread may ask.
    [[nodiscard]] virtual QByteArray cover(const QString& path) const = 0;

    /// Whether cover() is a front cover and no picture that stands in for one. Any thread may ask.
    [[nodiscard]] virtual bool hasFrontCover(const QString& path) const = 0;

    /// What a new cover will replace in a file, or taking it off remove, to be put back by
    /// TagChanges::formerCover: a tag that holds the frames of the front covers as they stand, byte
    /// for byte, or no frame when there is none. Empty for a file that cannot be read, and for a
    /// tag that is larger than any picture. Any thread may ask.
    [[nodiscard]] virtual QByteArray frontCover(const QString& path) const = 0;
};

} // namespace melovane
