#pragma once

#include "platform/linux/id3_frames.h"

#include <QByteArray>

#include <optional>
#include <vector>

namespace melovane::linux_media {

/// A frame as it stands in its tag.
struct StoredFrame
{
    QByteArray bytes;                             ///< header and content
    FrameContent content = FrameContent::Nothing; ///< Nothing also for what cannot be decoded
    QByteArray plain;                             ///< of contents of ours: decoded
    bool isEmpty = false; ///< without any content: many readers stop before such a frame

    [[nodiscard]] Bytes plainBytes() const
    {
        return {reinterpret_cast<const quint8*>(plain.constData()), size_t(plain.size())};
    }
};

/// One ID3v2 tag taken apart, and put together again.
///
/// Every frame keeps its bytes, whatever they are. Put together, a tag of version 2.2 or 2.3 is no
/// longer unsynchronised, an extended header has no checksum, and a footer has become padding.
class TagParts
{
public:
    /// A tag of version 2.3 without a frame.
    TagParts() = default;

    /// \param tag from its "ID3" to the end of its footer
    /// Nothing for a tag of an unknown kind, and for one whose extended header leads nowhere.
    [[nodiscard]] static std::optional<TagParts> of(Bytes tag);

    [[nodiscard]] int version() const { return m_version; }

    /// A tag of the same kind with those frames alone, or with none.
    [[nodiscard]] TagParts withOnly(std::vector<StoredFrame> frames) const;

    /// True when a frame of the other tag can stand in this one as it is.
    [[nodiscard]] bool takesFramesOf(const TagParts& other) const;

    [[nodiscard]] std::vector<StoredFrame>& frames() { return m_frames; }

    [[nodiscard]] const std::vector<StoredFrame>& frames() const { return m_frames; }

    /// A frame of this tag's version with new content.
    /// \param former the frame that it replaces, which gives its name and its group, or null
    [[nodiscard]] StoredFrame
    frameWith(const QByteArray& name, const QByteArray& content, const StoredFrame* former) const;

    /// Bytes of the whole tag without padding.
    [[nodiscard]] qint64 needed() const;

    /// The tag with padding up to `length` bytes, which is not below needed().
    [[nodiscard]] QByteArray bytes(qint64 length) const;

    /// Largest tag that a header can tell.
    static constexpr qint64 kLargest = qint64{1} << 28U;

private:
    [[nodiscard]] bool takeExtendedHeader(const TagBody& body, qint64 length);
    [[nodiscard]] qint64 takeFrames(const TagBody& body, qint64 place);
    void takeRest(const TagBody& body, qint64 place);
    [[nodiscard]] QByteArray sizeFor(const QByteArray& content) const;
    [[nodiscard]] QByteArray extendedHeaderFor(qint64 padding) const;

    int m_version = 3;
    char m_revision = 0;
    quint8 m_flags = 0;        ///< of the header as it will be written
    bool m_plainSizes = false; ///< version 2.4 by a program that writes sizes of eight bits
    QByteArray m_extended;     ///< extended header without its checksum
    std::vector<StoredFrame> m_frames;
    QByteArray m_rest; ///< behind the last frame: what is none, and no padding
};

/// Length of the tag that begins with these bytes, its footer included; 0 when none begins here.
/// \param header at least ten bytes, or all there are
[[nodiscard]] qint64 tagLength(Bytes header);

} // namespace melovane::linux_media
