#include "siblings/melovanedj/night_state.h"

#include "platform/system/path_text.h"

#include <QFile>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstring>

namespace melovane {

namespace {

/// In front of the number of a writing; another form of the slot gets another one.
constexpr quint64 kForm = 0x4d4c56444a000001;

} // namespace

QString nightStatePath(const QString& runtimeFolder)
{
    return path::join(runtimeFolder, QStringLiteral("player.state"));
}

/// As it lies in the file: keep.
struct NightStateFile::Slot
{
    quint64 form;
    quint64 number; ///< of the writing; the higher one is the newer
    double positionMs;
    qint32 entry;
    quint32 flags; ///< 1 plays, 2 mixes
    char fid[16];
    quint64 sum; ///< of all in front of it
};

NightStateFile::NightStateFile(const QString& path)
{
    constexpr size_t kSize = 2 * sizeof(Slot);
    const int file = ::open(QFile::encodeName(path).constData(),
                            O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (file < 0) {
        return;
    }
    if (::ftruncate(file, off_t(kSize)) == 0) {
        void* place = ::mmap(nullptr, kSize, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        if (place != MAP_FAILED) {
            m_slots = static_cast<Slot*>(place);
        }
    }
    ::close(file);
}

NightStateFile::~NightStateFile()
{
    if (m_slots != nullptr) {
        ::munmap(m_slots, 2 * sizeof(Slot));
    }
}

quint64 NightStateFile::sumOf(const Slot& slot)
{
    // FNV-1a
    quint64 sum = 0xcbf29ce484222325;
    const auto* byte = reinterpret_cast<const unsigned char*>(&slot);
    for (size_t index = 0; index < offsetof(Slot, sum); ++index) {
        sum = (sum ^ byte[index]) * 0x100000001b3;
    }
    return sum;
}

const NightStateFile::Slot* NightStateFile::newest() const
{
    const Slot* best = nullptr;
    for (int index = 0; m_slots != nullptr && index < 2; ++index) {
        const Slot& slot = m_slots[index];
        const bool isWhole = slot.form == kForm && slot.sum == sumOf(slot);
        if (isWhole && (best == nullptr || slot.number > best->number)) {
            best = &slot;
        }
    }
    return best;
}

void NightStateFile::write(const NightState& state)
{
    if (m_slots == nullptr) {
        return;
    }
    const Slot* const last = newest();
    Slot slot{};
    slot.form = kForm;
    slot.number = last == nullptr ? 1 : last->number + 1;
    slot.positionMs = state.positionMs;
    slot.entry = qint32(numberOf(state.entry));
    slot.flags = (state.isPlaying ? 1U : 0U) | (state.isMixMode ? 2U : 0U);
    const QByteArray fid = state.fid.toLatin1().left(NightState::kMaxFid);
    std::copy(fid.begin(), fid.end(), slot.fid);
    slot.sum = sumOf(slot);
    Slot* const place = last == m_slots ? m_slots + 1 : m_slots;
    // The sum of the former content must not hold for a mixture of both.
    place->sum = 0;
    std::atomic_signal_fence(std::memory_order_seq_cst);
    std::memcpy(place, &slot, offsetof(Slot, sum));
    std::atomic_signal_fence(std::memory_order_seq_cst);
    place->sum = slot.sum;
}

std::optional<NightState> NightStateFile::read() const
{
    const Slot* const slot = newest();
    if (slot == nullptr) {
        return std::nullopt;
    }
    NightState state;
    state.entry = Plid(slot->entry);
    state.fid = QString::fromLatin1(slot->fid, qsizetype(qstrnlen(slot->fid, sizeof(slot->fid))));
    state.positionMs = slot->positionMs;
    state.isPlaying = (slot->flags & 1U) != 0;
    state.isMixMode = (slot->flags & 2U) != 0;
    return state;
}

} // namespace melovane
