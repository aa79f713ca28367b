#pragma once

#include "playlistfiles/export_plan.h"

#include <QHash>
#include <QStringList>

namespace melovane {

/// A copy that did not come about.
struct ExportFailure
{
    enum class Reason
    {
        NotFound,    ///< its file is nowhere
        NoSpace,     ///< the target volume is full
        LibraryFile, ///< it would have replaced another track's file
        System       ///< `detail` is the system's reason
    };

    QString DName;
    QString relative; ///< the copy
    Reason reason = Reason::System;
    QString detail = {};
};

/// What came of an export.
struct ExportResult
{
    enum class End
    {
        Done,
        Stopped,       ///< the list file holds the rows up to there
        Empty,         ///< the list has no tracks; nothing was written
        NoSpace,       ///< `needed` bytes are more than `free`; nothing was written
        ListNotWritten ///< all was copied, but `detail` kept the list file from being written
    };

    End end = End::Done;
    qint64 count = 0; ///< rows of the list
    qint64 rows = 0;  ///< rows that were dealt with
    qint64 copied = 0;
    qint64 needed = 0;
    qint64 free = 0;
    QString listFile;
    QString detail;
    std::vector<ExportFailure> failures;
    QStringList leftOut; ///< entries whose track is gone, see M3uWriter::withoutTrack
    /// Copies that a later row of another track has replaced, since both got the same path.
    QStringList replaced;
};

/// Copies the tracks of a list into a folder and writes there a list file that names the copies.
class SavePlaylistFiles
{
public:
    /// Told after each row: base name of the copy, place in the list from 1, rows in all.
    using ProgressSave = std::function<void(const QString& name, qint64 position, qint64 count)>;

    explicit SavePlaylistFiles(ExportParts parts, ProgressSave progress = {});

    /// Runs one export; the message loop turns all the time. A copy is written beside and renamed
    /// when it is whole, so an end at any moment leaves no piece of one. A copy that fails stands
    /// in the result and in the list file all the same.
    /// \throws DbError when the list cannot be read; nothing was written then
    [[nodiscard]] ExportResult run(ExportOrder order);

    /// Ends the running export after the block that is being copied.
    void stop() { m_stop = true; }

private:
    struct Written
    {
        QString relative;
        QString source;
    };

    [[nodiscard]] bool hasSpace(const ExportOrder& order, const ExportPlan& plan);
    void copyRows(const ExportOrder& order, const ExportPlan& plan);
    void copyRow(const ExportItem& item, const QString& folder);
    /// The copy of this run that stands where the item's would; null when there is none. Valid
    /// until the next noteCopy.
    [[nodiscard]] Written* copyAt(const ExportItem& item, const QString& folder);
    /// \param former what the new copy has replaced; null for nothing
    void noteCopy(const ExportItem& item, Written* former);
    void fail(const ExportItem& item, ExportFailure::Reason reason, const QString& detail = {});
    void writeList(const ExportPlan& plan);
    [[nodiscard]] bool turn();

    ExportParts m_parts;
    ProgressSave m_progress;
    bool m_stop = false;
    ExportResult m_result;
    QHash<QString, std::vector<Written>> m_written; ///< copies of this run by their folded path
};

} // namespace melovane
