#pragma once

#include "trackedit/edit_tag_form.h"

namespace melovane {

class KsEditFid;
class Recordset;
struct EditTagParts;

/// What head and foot of the tag panel say about a track: title and artist, positions and level as
/// texts, whether its file is there, and what is known of the file.
///
/// \param row    of `db_all`
/// \param record the same track
[[nodiscard]] PanelTrack
describeTrack(const Recordset& row, KsEditFid& record, const EditTagParts& parts);

} // namespace melovane
