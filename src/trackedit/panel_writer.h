#pragma once

#include "store/pending_jobs.h"
#include "store/track_writing.h"

#include <QHash>
#include <QString>

#include <vector>

namespace melovane {

class BusSender;
class EventGuard;
struct EditTagParts;

/// Writes what was typed in the tag panel into the rows of its tracks, each time as one step that
/// can be taken back, and keeps what the library does not take at the moment.
class PanelWriter
{
public:
    /// All outlive it.
    PanelWriter(const EditTagParts& parts, BusSender& bus, const EventGuard& guard);

    /// Writes columns of a track and enters it for its tags. A track that another program has taken
    /// out is told and counts as written: there is no place for it any more. False when it could
    /// not be written.
    /// \param library that the row is from, also when the settings name another one by now
    bool write(const QString& library, const QString& fid, const std::vector<ColumnValue>& values);

    /// Keeps what could not be written, which is told.
    void keep(const QString& fid, const std::vector<ColumnValue>& values);

    /// What was kept of a track, which is kept no longer.
    [[nodiscard]] std::vector<ColumnValue> takeKept(const QString& fid) { return m_kept.take(fid); }

    /// Writes all that was kept, until something cannot be written.
    void writeKept(const QString& library);

    /// Another library: what is kept belongs to none of its tracks.
    void forgetKept() { m_kept.clear(); }

private:
    const EditTagParts& m_parts;
    BusSender& m_bus;
    const EventGuard& m_guard;
    PendingJobs m_jobs;
    QHash<QString, std::vector<ColumnValue>> m_kept; ///< columns by their track
};

} // namespace melovane
