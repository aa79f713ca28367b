#include "playlistfiles/export_run.h"

#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "platform/system/timers.h"

#include <QDir>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

SavePlaylistFiles::SavePlaylistFiles(ExportParts parts, ProgressSave progress)
    : m_parts(parts)
    , m_progress(std::move(progress))
{}

bool SavePlaylistFiles::turn()
{
    m_parts.loop.turn();
    return !m_stop;
}

ExportResult SavePlaylistFiles::run(ExportOrder order)
{
    // The library knows folders in their plain spelling.
    order.folder = QDir::cleanPath(order.folder);
    m_stop = false;
    m_result = {};
    m_written.clear();
    const auto plan = planExport(m_parts, order, [this] { return !m_stop; });
    if (plan) {
        m_result.leftOut = plan->leftOut;
    }
    if (!plan) {
        m_result.end = ExportResult::End::Stopped;
    } else if (plan->items.empty()) {
        m_result.end = ExportResult::End::Empty;
    } else if (!hasSpace(order, *plan)) {
        m_result.end = ExportResult::End::NoSpace;
    } else {
        copyRows(order, *plan);
    }
    return std::move(m_result);
}

bool SavePlaylistFiles::hasSpace(const ExportOrder& order, const ExportPlan& plan)
{
    const auto space = m_parts.files.space(order.folder);
    if (!space) {
        return true;
    }
    m_result.free = space->free;
    m_result.needed = plan.spaceNeeded(m_parts.files, order.folder, space->block);
    return m_result.needed <= m_result.free;
}

void SavePlaylistFiles::copyRows(const ExportOrder& order, const ExportPlan& plan)
{
    m_result.count = qint64(plan.items.size());
    const bool hadList = m_parts.files.fileExists(plan.listFile);
    for (const ExportItem& item : plan.items) {
        copyRow(item, order.folder);
        if (m_stop) {
            break;
        }
        ++m_result.rows;
        if (m_progress) {
            m_progress(path::baseName(item.relative), m_result.rows, m_result.count);
        }
        if (!turn()) {
            break;
        }
    }
    m_result.end =
        m_result.rows < m_result.count ? ExportResult::End::Stopped : ExportResult::End::Done;
    // A stop leaves the list of an earlier export, which names more than this one got to.
    const bool isWhole = m_result.end == ExportResult::End::Done;
    if (isWhole || (m_result.rows > 0 && !hadList)) {
        writeList(plan);
    }
}

void SavePlaylistFiles::copyRow(const ExportItem& item, const QString& folder)
{
    using Reason = ExportFailure::Reason;
    const QString target = path::join(folder, item.relative);
    m_parts.files.makeFolders(path::parent(target));
    if (item.source.isEmpty()) {
        return fail(item, Reason::NotFound);
    }
    if (item.hitsLibrary) {
        return fail(item, Reason::LibraryFile);
    }
    const auto space = m_parts.files.space(folder);
    if (space && space->free < item.size) {
        return fail(item, Reason::NoSpace);
    }
    Written* const former = copyAt(item, folder);
    try {
        if (m_parts.files.copyInSteps(item.source, target, [this](qint64) { return turn(); })) {
            ++m_result.copied;
            noteCopy(item, former);
        }
    } catch (const IoError& error) {
        fail(item, Reason::System, error.reason());
    }
}

SavePlaylistFiles::Written* SavePlaylistFiles::copyAt(const ExportItem& item, const QString& folder)
{
    const auto present = m_parts.files.facts(path::join(folder, item.relative));
    if (!present || present->isLink) {
        return nullptr;
    }
    std::vector<Written>& copies = m_written[item.relative.toCaseFolded()];
    const auto found = std::find_if(copies.begin(), copies.end(), [&](const Written& copy) {
        // Names that differ in letter case alone are one file on some volumes. Both are asked now,
        // since files of some sticks change their numbers.
        const auto facts = m_parts.files.facts(path::join(folder, copy.relative));
        return facts && facts->device == present->device && facts->inode == present->inode;
    });
    return found == copies.end() ? nullptr : &*found;
}

void SavePlaylistFiles::noteCopy(const ExportItem& item, Written* former)
{
    const Written copy{item.relative, item.source};
    if (former == nullptr) {
        m_written[item.relative.toCaseFolded()].push_back(copy);
        return;
    }
    if (former->source != item.source) {
        m_result.replaced.append(item.relative);
    }
    *former = copy;
}

void SavePlaylistFiles::fail(const ExportItem& item,
                             ExportFailure::Reason reason,
                             const QString& detail)
{
    m_result.failures.push_back({item.DName, item.relative, reason, detail});
}

void SavePlaylistFiles::writeList(const ExportPlan& plan)
{
    QString text = plan.header;
    for (qint64 row = 0; row < m_result.rows; ++row) {
        // Elsewhere the name of a refused copy would lead to another track.
        if (const ExportItem& item = plan.items[size_t(row)]; !item.hitsLibrary) {
            text += item.lines;
        }
    }
    m_result.listFile = plan.listFile;
    try {
        m_parts.files.writeNamed(plan.listFile, text.toUtf8());
    } catch (const IoError& error) {
        m_result.end = ExportResult::End::ListNotWritten;
        m_result.detail = error.reason();
    }
}

} // namespace melovane
