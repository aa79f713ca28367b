#include "platform/linux/mp3_stream.h"

#include "platform/linux/system_names.h"

#include <fcntl.h>
#include <mpg123.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>

namespace melovane::linux_media {

namespace {

/// Frames decoded in front of a place that is sought: sound of low bit rates reaches back further
/// than the decoder's own choice, and would begin with a crackle.
constexpr long kPreFrames = 24;

/// The decoder's filter comes round to the same state after so many frames. Begun anywhere else,
/// the same frame gives samples whose last bit differs.
constexpr qint64 kFilterFrames = 8;
static_assert(kPreFrames % kFilterFrames == 0);

/// Damaged bytes that are skipped in search of the next frame. More is no music.
constexpr long kResyncBytes = 64L * 1024;

/// Places remembered for seeking; negative lets the table grow with the file.
constexpr long kIndexSize = -64;

void configure(mpg123_handle* handle)
{
    mpg123_param(handle, MPG123_ADD_FLAGS, MPG123_QUIET | MPG123_SKIP_ID3V2, 0);
    // Gapless would cut the encoder's delay off and move every frame.
    mpg123_param(handle, MPG123_REMOVE_FLAGS, MPG123_GAPLESS, 0);
    mpg123_param(handle, MPG123_RESYNC_LIMIT, kResyncBytes, 0);
    mpg123_param(handle, MPG123_PREFRAMES, kPreFrames, 0);
    mpg123_param(handle, MPG123_INDEX_SIZE, kIndexSize, 0);
}

/// A regular file opened for reading, or -1. A pipe of that name would block the window.
int openFile(const QString& file)
{
    const int descriptor =
        ::open(linuxnames::systemPath(file).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat facts = {};
    if (descriptor >= 0 && (::fstat(descriptor, &facts) != 0 || !S_ISREG(facts.st_mode))) {
        ::close(descriptor);
        return -1;
    }
    return descriptor;
}

} // namespace

void Mp3Stream::HandleEnd::operator()(mpg123_handle_struct* handle) const
{
    mpg123_close(handle);
    mpg123_delete(handle);
}

Mp3Stream::~Mp3Stream()
{
    close();
}

PlayFault Mp3Stream::open(const QString& file)
{
    close();
    m_descriptor = openFile(file);
    if (m_descriptor < 0) {
        return PlayFault::Missing;
    }
    if (!startDecoder() || mpg123_scan(m_handle.get()) != MPG123_OK) {
        close();
        return PlayFault::NoAudio;
    }
    m_length = std::max<qint64>(0, mpg123_length(m_handle.get()));
    keepIndex();
    if (!isOpen()) {
        close();
        return PlayFault::NoAudio;
    }
    return PlayFault::None;
}

/// A decoder at the beginning of the file, which gives samples in the file's own format.
bool Mp3Stream::startDecoder()
{
    m_handle.reset(mpg123_new(nullptr, nullptr));
    mpg123_handle* handle = m_handle.get();
    long rate = 0;
    int channels = 0;
    int encoding = 0;
    if (handle == nullptr || ::lseek(m_descriptor, 0, SEEK_SET) != 0) {
        return false;
    }
    configure(handle);
    if (mpg123_open_fd(handle, m_descriptor) != MPG123_OK ||
        mpg123_getformat(handle, &rate, &channels, &encoding) != MPG123_OK || rate <= 0 ||
        channels <= 0) {
        return false;
    }
    mpg123_format_none(handle);
    m_format = {static_cast<int>(rate), channels};
    return mpg123_format(handle, rate, channels, MPG123_ENC_SIGNED_16) == MPG123_OK;
}

void Mp3Stream::keepIndex()
{
    off_t* offsets = nullptr;
    off_t step = 0;
    size_t count = 0;
    m_index.clear();
    if (mpg123_index(m_handle.get(), &offsets, &step, &count) == MPG123_OK) {
        m_index.assign(offsets, offsets + count);
        m_indexStep = step;
    }
}

void Mp3Stream::close()
{
    m_handle.reset();
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
    m_descriptor = -1;
    m_format = {};
    m_length = 0;
    m_broken = false;
}

bool Mp3Stream::seek(qint64 sample)
{
    if (!isOpen()) {
        return false;
    }
    // A decoder that has decoded before carries the state of its filter along, whatever it is asked
    // for: a place would sound a little different each time.
    m_broken = !startDecoder();
    if (!m_broken && !m_index.empty()) {
        mpg123_set_index(m_handle.get(), m_index.data(), m_indexStep, m_index.size());
    }
    const qint64 step = m_broken ? 0 : qint64{mpg123_spf(m_handle.get())} * kFilterFrames;
    const qint64 before = step > 0 ? sample / step * step : sample;
    m_broken = m_broken || mpg123_seek(m_handle.get(), before, SEEK_SET) != before;
    skip(static_cast<size_t>((sample - before) * m_format.channels));
    return !m_broken;
}

void Mp3Stream::skip(size_t samples)
{
    std::array<qint16, 4096> dropped; // NOLINT(cppcoreguidelines-pro-type-member-init): filled
    while (samples > 0 && !m_broken) {
        const size_t got = read(std::span(dropped).first(std::min(samples, dropped.size())));
        m_broken = m_broken || got == 0;
        samples -= got;
    }
}

size_t Mp3Stream::read(std::span<qint16> samples)
{
    size_t filled = 0;
    while (isOpen() && !m_broken && filled < samples.size_bytes()) {
        auto* target = reinterpret_cast<unsigned char*>(samples.data()) + filled;
        size_t got = 0;
        const int answer = mpg123_read(m_handle.get(), target, samples.size_bytes() - filled, &got);
        filled += got;
        if (answer == MPG123_DONE) {
            break;
        }
        // MPG123_NEW_FORMAT only announces what was forced at the opening.
        m_broken = answer != MPG123_OK && answer != MPG123_NEW_FORMAT;
    }
    return filled / sizeof(qint16);
}

} // namespace melovane::linux_media
