#include "playlistfiles/drop_commands.h"

#include "config/config_objects.h"
#include "platform/controls/pointer_control.h"
#include "platform/system/path_text.h"
#include "playlistfiles/dropped_tracks.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

DropCommands::DropCommands(DropParts parts)
    : m_parts(std::move(parts))
{}

QStringList DropCommands::tracksOf(const QStringList& places)
{
    const BusyCursor busy(m_parts.pointer);
    DroppedTracks dropped(m_parts.engine, m_parts.settings, m_parts.files, m_parts.reader,
                          m_parts.clock);
    const DroppedTracks::Result result = dropped.take(places);
    if (!result.skipped.isEmpty()) {
        m_parts.showStatusText(m_parts.texts.text(u"playlist.skipped"_s, result.skipped.size(),
                                                  path::fileName(result.skipped.first())));
    }
    return result.fids;
}

} // namespace melovane
