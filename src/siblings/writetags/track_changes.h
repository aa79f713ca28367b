#pragma once

#include "platform/media/tag_writer.h"

#include <QStringList>

namespace melovane {

class GenreList;
class ImportedTrack;
class Recordset;
struct TrackTags;

/// The columns of `db_all` that a tag holds, as a statement lists them.
[[nodiscard]] const QStringList& taggedColumns();

/// The texts of these columns, in their order; a null is empty.
[[nodiscard]] QStringList taggedTexts(const Recordset& row);

/// What the user has changed: what an import of the file would put into the row, and the row says
/// otherwise. A file without an ID3v2 tag then gets all that the row knows, for many programs look
/// into no other tag once it has one. The identifier goes along with any change.
///
/// \param texts of the row, see taggedTexts()
/// \param file  what an import makes of the file
/// \param more  something besides these texts will be written
/// Nothing when row and file agree, and there is no more.
[[nodiscard]] std::optional<TagChanges> changesOf(const QStringList& texts,
                                                  const ImportedTrack& file,
                                                  const TrackTags& tags,
                                                  const GenreList& genres,
                                                  bool more = false);

} // namespace melovane
