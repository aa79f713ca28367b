#pragma once

#include "platform/media/sound_stream.h"

#include <QByteArray>

#include <optional>
#include <vector>

namespace melovane {

/// What is heard in a fiftieth of a second, both sides together.
struct ShapeBin
{
    qint8 low = 0; ///< lowest and highest sample, 127 is the loudest
    qint8 high = 0;
    quint8 power = 0; ///< mean loudness, 255 is the loudest

    bool operator==(const ShapeBin&) const = default;
};

/// A file's sound as it is drawn: 9 KB a minute.
struct SoundShape
{
    static constexpr int kPerSecond = 50;

    std::vector<ShapeBin> bins;

    bool operator==(const SoundShape&) const = default;
};

/// Reads a stream from its beginning to its end, or to where it breaks off: some hundred times
/// faster than it is heard. \param stream is open; stands anywhere afterwards
[[nodiscard]] SoundShape measureShape(SoundStream& stream);

/// A stretch of a shape in fewer bins, none of whose peaks is lost.
/// \param from,to bins; what lies outside the shape is silent
/// \param columns at least one; more than there are bins repeats them
[[nodiscard]] std::vector<ShapeBin>
reduceShape(const SoundShape& shape, double from, double to, int columns);

/// As it is kept in a file, and back; nothing for bytes that are none.
[[nodiscard]] QByteArray shapeToBytes(const SoundShape& shape);
[[nodiscard]] std::optional<SoundShape> shapeOfBytes(const QByteArray& bytes);

} // namespace melovane
