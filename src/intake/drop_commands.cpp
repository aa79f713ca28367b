#include "intake/drop_commands.h"

#include "intake/dropped_tracks.h"
#include "platform/controls/pointer_control.h"

namespace melovane {

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
        m_parts.showStatusText(skippedText(m_parts.texts, result.skipped));
    }
    return result.fids;
}

} // namespace melovane
