#pragma once

#include "platform/linux/id3_frames.h"
#include "platform/media/tag_writer.h"

#include <QByteArray>
#include <QString>

/// What our fields look like in the frames of an ID3v2 tag. Bytes in, bytes out.
namespace melovane::linux_media {

/// A field of ours that a frame can hold.
struct OwnField
{
    FrameContent content = FrameContent::Nothing;
    QString name = {}; ///< of a text with a name of its own (TXXX)
};

/// The name of the frame that a field gets in a tag of that version where it has none yet.
[[nodiscard]] QByteArray frameNameOf(FrameContent content, int version);

/// True when a frame of the field's content is the field: the comment without a description, the
/// rating of our address, the text of that name.
/// \param plain the frame's content, decoded
[[nodiscard]] bool holdsField(const OwnField& field, Bytes plain);

/// The field as the reader of tags shows it; empty when the frame has none.
[[nodiscard]] QString fieldText(const OwnField& field, Bytes plain, int version);

/// The content of a frame with another text.
///
/// \param text   without a zero character
/// \param former the content that it replaces, or nothing: language, spelling of the name and the
///               counter of plays stay
/// Letters are stored as single bytes where all of them fit, else as UTF-16 with a byte order mark,
/// in version 4 as UTF-8. A field that had several values gets several ones again.
[[nodiscard]] QByteArray
contentWith(const OwnField& field, const QString& text, int version, Bytes former);

/// The content of our rating frame without a rating but with its counter; empty when no play was
/// counted, and the frame has no more use.
[[nodiscard]] QByteArray contentWithoutRating(Bytes former);

/// True for the content of a front cover with an empty description.
[[nodiscard]] bool isFrontCover(int version, Bytes plain);

/// True for the content of any front cover, whatever its description.
[[nodiscard]] bool isFrontPicture(int version, Bytes plain);

/// True when a cover's content shows exactly that picture.
[[nodiscard]] bool showsPicture(int version, Bytes plain, const CoverPicture& picture);

/// The picture of a cover's content; empty when it is cut short.
[[nodiscard]] CoverPicture coverOf(int version, Bytes plain);

[[nodiscard]] QByteArray coverContent(int version, const CoverPicture& picture);

} // namespace melovane::linux_media
