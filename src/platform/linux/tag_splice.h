#pragma once

#include "platform/linux/id3_tags.h"
#include "platform/linux/tag_parts.h"
#include "platform/media/tag_writer.h"

#include <QByteArray>

#include <optional>
#include <variant>
#include <vector>

namespace melovane::linux_media {

struct OwnField;

/// Sets our fields in the ID3v2 tags at the beginning of a file. Bytes in, bytes out.
///
/// Frames that are not ours are carried as they stand, in their order; ours are set in their old
/// places, a field that had none gets one in front of all frames, a cover behind them. A field that
/// the tags already show, as the reader of tags shows it, is not touched, nor are its further
/// values. Of several tags the first is changed, and the field taken out of the others. A
/// file without a tag gets one of version 2.3.
class TagSplice
{
public:
    /// \param front the tags at the beginning of the file, whole and nothing else; empty for none
    TagSplice(Bytes front, const TagChanges& changes);

    /// False when the first tag is of a kind that we cannot change. Nothing else may be asked then.
    [[nodiscard]] bool isPossible() const { return m_possible; }

    /// False when the tags already hold all of it.
    [[nodiscard]] bool isChanged() const { return m_changed; }

    /// Bytes of all tags without any padding.
    [[nodiscard]] qint64 needed() const;

    /// All tags, with padding in the first one up to `room` bytes, which is not below needed().
    [[nodiscard]] QByteArray front(qint64 room) const;

private:
    /// A further tag may be one that we do not know; it stays as it is.
    using Tag = std::variant<TagParts, QByteArray>;

    void takeApart(Bytes front);
    void setText(const OwnField& field, const QString& wanted);
    void setYear(const QString& wanted);
    void setCover(const CoverPicture& wanted);
    void removeCovers(bool (*isMeant)(int version, Bytes plain));
    void putBack(const QByteArray& former);
    void putBackFrame(const TagParts& kept, const StoredFrame& frame);
    [[nodiscard]] StoredFrame* cover();
    [[nodiscard]] bool hasOtherCovers();
    void putCover(StoredFrame frame);
    void addFrame(StoredFrame frame);
    void put(const OwnField& field, const QString& text);
    void takeOut(const OwnField& field, size_t firstTag);
    [[nodiscard]] FoundRating rating() const;
    [[nodiscard]] QString shown(const OwnField& field) const;

    [[nodiscard]] TagParts& first() { return std::get<TagParts>(m_tags.front()); }

    void addInFront(StoredFrame frame);

    std::vector<Tag> m_tags;
    size_t m_added = 0; ///< frames that were put in front of all others
    bool m_possible = true;
    bool m_changed = false;
};

/// The 128 bytes of an old tag with the changed fields; nothing when it already holds them, cut to
/// their places and with "?" for letters that it has not.
/// \param tag its 128 bytes, beginning with "TAG"
[[nodiscard]] std::optional<QByteArray> changedId3v1(const QByteArray& tag,
                                                     const TagChanges& changes);

} // namespace melovane::linux_media
