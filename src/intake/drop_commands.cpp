#include "intake/drop_commands.h"

#include "config/config_objects.h"
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
    for (const Refusal& refusal : result.skipped.refused) {
        m_parts.logRefusal(refusal);
    }
    QStringList told;
    if (result.fids.isEmpty()) {
        told.append(m_parts.texts.text(u"playlist.notracks"));
    }
    if (!result.skipped.isEmpty()) {
        told.append(skippedText(m_parts.texts, result.skipped));
    }
    if (!told.isEmpty()) {
        m_parts.showStatusText(told.join(QStringLiteral(": ")));
    }
    return result.fids;
}

} // namespace melovane
