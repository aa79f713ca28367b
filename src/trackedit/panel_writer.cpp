#include "trackedit/panel_writer.h"

#include "bus/event_guard.h"
#include "bus/message_names.h"
#include "bus/mlv_message_bus.h"
#include "config/config_objects.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "playlists/track_step.h"
#include "store/track_fields.h"
#include "trackedit/edit_tag.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

PanelWriter::PanelWriter(const EditTagParts& parts, BusSender& bus, const EventGuard& guard)
    : m_parts(parts)
    , m_bus(bus)
    , m_guard(guard)
    , m_jobs(parts.engine, parts.settings)
{}

bool PanelWriter::write(const QString& library,
                        const QString& fid,
                        const std::vector<ColumnValue>& values)
{
    const bool isRating = values.size() == 1 && values.front().column == columnOf(TrackField::Note);
    const ListAction action = isRating ? ListAction::Rating : ListAction::Tracks;
    QStringList trees;
    const bool written = m_guard.run(u"EditTag.write"_s, [&] {
        const auto database = m_parts.engine.OpenDatabase(library);
        try {
            TrackStep step(m_parts.history, *database, action);
            step.write(fid, values, TagOrder::Enter);
            step.commit();
            trees = step.trees();
        } catch (const DbError& error) {
            if (error.number() != dberror::kNoCurrentRecord) {
                throw;
            }
            // Another program has taken the track out: there is no place for it any more.
            m_bus.SendMessage(bus::kShowStatusText, m_parts.texts.text(u"edittag.gone"));
        }
    });
    for (const QString& tree : trees) {
        m_jobs.ChangeTree(tree);
    }
    return written;
}

void PanelWriter::keep(const QString& fid, const std::vector<ColumnValue>& values)
{
    m_kept.insert(fid, values);
    m_bus.SendMessage(bus::kShowStatusText, m_parts.texts.text(u"edittag.kept"));
}

void PanelWriter::writeKept(const QString& library)
{
    for (const QString& fid : m_kept.keys()) {
        if (!write(library, fid, m_kept.value(fid))) {
            return;
        }
        m_kept.remove(fid);
        m_bus.SendMessage(bus::kDbRefreshByFid, fid);
    }
}

} // namespace melovane
