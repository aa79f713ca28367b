#pragma once

#include "platform/linux/mpeg_file.h"

#include <QtGlobal>

#include <algorithm>
#include <optional>
#include <span>
#include <utility>
#include <vector>

/// The frames of an ID3v2 tag, as both its reader and its writer walk over them.
namespace melovane::linux_media {

using Bytes = std::span<const quint8>;

/// A frame with texts is read up to here; the rest of a longer one is not looked at.
inline constexpr qint64 kLongestFrame = qint64{256} * 1024;
/// Frames that are looked at in a tag.
inline constexpr int kMaxFrames = 4096;

/// What a frame holds for us.
enum class FrameContent
{
    Nothing,
    Titel,
    Interpret,
    Album,
    Genre,
    Year,          ///< TYER
    RecordingTime, ///< TDRC
    Track,
    BPM,
    Comment,
    Rating,
    UserText,
    Picture
};

/// By the name of a frame, four letters or the three of version 2.2 in one number.
[[nodiscard]] FrameContent contentOf(quint32 name);

/// True for a frame all values of which count: artists and genres of version 4. Elsewhere a zero
/// ends the text.
[[nodiscard]] inline bool holdsValues(FrameContent content, int version)
{
    return version == 4 && (content == FrameContent::Interpret || content == FrameContent::Genre);
}

/// The frames of one tag: bytes of the file, or of memory when they had to be decoded first.
class TagBody
{
public:
    TagBody(MpegFile& file, qint64 begin, qint64 length)
        : m_file(&file)
        , m_begin(begin)
        , m_length(length)
    {}

    explicit TagBody(std::vector<quint8> bytes)
        : m_bytes(std::move(bytes))
        , m_length(static_cast<qint64>(m_bytes.size()))
    {}

    [[nodiscard]] qint64 length() const { return m_length; }

    [[nodiscard]] Bytes at(qint64 offset, qint64 length) const
    {
        if (offset < 0 || offset >= m_length) {
            return {};
        }
        length = std::min(length, m_length - offset);
        if (m_file != nullptr) {
            return m_file->at(m_begin + offset, length);
        }
        return Bytes(m_bytes).subspan(static_cast<size_t>(offset), static_cast<size_t>(length));
    }

private:
    MpegFile* m_file = nullptr;
    std::vector<quint8> m_bytes;
    qint64 m_begin = 0;
    qint64 m_length = 0;
};

/// Takes the zero out that was put behind each 0xFF.
[[nodiscard]] std::vector<quint8> synchronised(Bytes bytes);

struct FrameHeader
{
    quint32 name = 0;
    qint64 size = 0;
    bool grouped = false;
    bool compressed = false;
    bool encrypted = false;
    bool unsynchronised = false;
    bool hasLength = false;
};

/// Tells where the frames of one tag begin and end.
class FrameWalk
{
public:
    /// \param body           outlives this
    /// \param version        2, 3 or 4 for ID3v2.2, 2.3 and 2.4
    /// \param unsynchronised as the header of the tag says; the frames of older versions are
    ///                       expected in their plain form all the same
    FrameWalk(const TagBody& body, int version, bool unsynchronised)
        : m_body(body)
        , m_version(version)
        , m_unsynchronised(unsynchronised && version == 4)
    {}

    [[nodiscard]] qint64 headerLength() const { return m_version == 2 ? 6 : 10; }

    /// Nothing at padding, at the end, where no frame starts, and for a frame that claims to reach
    /// beyond its tag.
    [[nodiscard]] std::optional<FrameHeader> headerAt(qint64 place) const;

    /// The plain content of the frame whose header stands at `place`, up to `longest` bytes, what
    /// has to be unpacked up to kLongestFrame; empty for an encrypted one. `decoded` holds it where
    /// it had to be decoded first.
    [[nodiscard]] Bytes contentAt(const FrameHeader& header,
                                  qint64 place,
                                  std::vector<quint8>& decoded,
                                  qint64 longest = kLongestFrame) const;

private:
    [[nodiscard]] std::optional<FrameHeader> anyHeaderAt(qint64 place) const;
    [[nodiscard]] qint64 sizeOfVersion4(qint64 place, quint32 plain, quint32 sevenBits) const;
    [[nodiscard]] bool startsFrame(qint64 place) const;
    [[nodiscard]] bool startsNamedFrame(qint64 place) const;
    [[nodiscard]] bool startsStrange(qint64 place) const;

    const TagBody& m_body;
    int m_version;
    bool m_unsynchronised;
};

/// Bytes of an extended header in front of the frames, as it claims.
[[nodiscard]] qint64 extendedHeader(const TagBody& body, int version);

/// Size as the header of a tag tells it. Seven bits a byte, unless a byte shows that its writer
/// didn't know.
[[nodiscard]] qint64 tagSize(const quint8* bytes);

} // namespace melovane::linux_media
