#pragma once

#include "playlists/playlist_ids.h"

#include <QString>

#include <optional>

namespace melovane {

/// Where the player was: what the one that is started after a crash goes on with.
struct NightState
{
    Plid entry{};
    QString fid; ///< at most kMaxFid letters
    double positionMs = 0;
    bool isPlaying = false;
    bool isMixMode = true;

    static constexpr int kMaxFid = 15;

    bool operator==(const NightState&) const = default;
};

/// The file of the state in the runtime folder.
[[nodiscard]] QString nightStatePath(const QString& runtimeFolder);

/// Keeps the state in two slots of a mapped file that take turns: a process that is killed in the
/// middle of writing one leaves the other whole. Costs less than a microsecond, so that it may be
/// written twenty times a second; it does not outlive the session of the user.
class NightStateFile
{
public:
    /// \param path made when it is not there; where it cannot be, nothing is kept
    explicit NightStateFile(const QString& path);
    ~NightStateFile();
    NightStateFile(const NightStateFile&) = delete;
    NightStateFile& operator=(const NightStateFile&) = delete;

    void write(const NightState& state);

    /// The newest whole state; nothing when none was written, or the file is foreign or damaged.
    [[nodiscard]] std::optional<NightState> read() const;

private:
    struct Slot;

    [[nodiscard]] static quint64 sumOf(const Slot& slot);
    [[nodiscard]] const Slot* newest() const;

    Slot* m_slots = nullptr; ///< two of them, in the file; null without it
};

} // namespace melovane
