#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace melovane {

/// What tells one recording from another, whatever its tags say.
struct AudioPrint
{
    qint64 bytes = 0; ///< of the sound, without tags and without a header frame that only counts
    QByteArray hash;  ///< 16 bytes; of pieces or of all, see AudioIdentity

    bool operator==(const AudioPrint&) const = default;
};

/// Knows a recording again by its sound: the answers stay the same when tags are written, removed
/// or changed in kind, by this program or another. Never changes a file; has no state, so several
/// threads may share one.
///
/// All answers are nothing for a file that cannot be read or holds no sound that we know.
class AudioIdentity
{
public:
    virtual ~AudioIdentity() = default;

    /// Bytes of the sound: dear enough to ask only when the rest agrees, cheap beside a hash.
    [[nodiscard]] virtual std::optional<qint64> length(const QString& path) const = 0;

    /// A hash of 16 KB each at a quarter, a half and three quarters of the sound; of all of a
    /// shorter one. The beginning alone says little: many files share it.
    [[nodiscard]] virtual std::optional<AudioPrint> sampled(const QString& path) const = 0;

    /// A hash of all of it: reads the whole file. Proof enough to give one of two files away.
    [[nodiscard]] virtual std::optional<AudioPrint> whole(const QString& path) const = 0;
};

} // namespace melovane
