#include "care/missing_files.h"

#include "care/library_scan.h"
#include "config/config_objects.h"
#include "config/counted_text.h"
#include "config/global_settings.h"
#include "platform/controls/progress_window.h"
#include "platform/controls/warnings.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/system/files.h"
#include "platform/system/live_wait.h"
#include "platform/system/path_text.h"

#include <QScopedValueRollback>

#include <exception>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Rows of one transaction: some 30 ms, in which nobody else can write.
constexpr size_t kRowsAtOnce = 1000;

/// `DEL` as it is at the writing: the user marks tracks while a slow disk is looked at.
QHash<QString, int> marksNow(Database& database, const std::vector<LibraryScan::Change>& changes)
{
    QStringList fids;
    for (const LibraryScan::Change& change : changes) {
        fids.append(sql::text(change.fid));
    }
    QHash<QString, int> marks;
    const auto rows = database.OpenRecordset(u"select fid, del from db_all where fid in ("_s +
                                             fids.join(u',') + u')');
    for (; !rows->Eof(); rows->MoveNext()) {
        marks.insert(rows->value(0).toText(), rows->value(1).toLong());
    }
    return marks;
}

} // namespace

MissingFiles::MissingFiles(MissingFilesParts parts)
    : m_parts(std::move(parts))
{}

/// Writes the next rows; false when there were none.
bool MissingFiles::writeSome(LibraryScan& scan)
{
    const std::vector<LibraryScan::Change> changes = scan.takeChanges(kRowsAtOnce);
    if (changes.empty()) {
        return false;
    }
    const auto database = m_parts.engine.OpenDatabase(m_parts.settings.DbName());
    Transaction rows(*database);
    const QHash<QString, int> now = marksNow(*database, changes);
    for (const LibraryScan::Change& change : changes) {
        const auto mark = now.constFind(change.fid);
        const auto del = mark == now.cend() ? std::nullopt : delAfterLook(*mark, change.isThere);
        if (del) {
            database->Execute(u"update db_all set del="_s + sql::number(qint64{*del}) +
                              u" where fid='"_s + sql::quoted(change.fid) + u"' "_s);
            ++m_written;
        }
    }
    rows.commit();
    return true;
}

/// Gives the user his turn; false when he wants an end.
bool MissingFiles::goesOn(LibraryScan& scan, ProgressWindow& progress) const
{
    const auto [done, whole] = scan.progress();
    if (progress.show(m_parts.texts.text(u"care.scan.progress"_s, done, whole), done, whole)) {
        return true;
    }
    scan.end();
    return false;
}

/// True when every track was looked for and every change is written.
bool MissingFiles::lookAndWrite(const std::shared_ptr<LibraryScan>& scan)
{
    const auto progress = m_parts.openProgress(m_parts.texts.text(u"care.scan.title"_s));
    const bool isOver = m_parts.wait.run([scan] { scan->run(); },
                                         [&] {
                                             static_cast<void>(writeSome(*scan));
                                             return goesOn(*scan, *progress);
                                         });
    if (!isOver) {
        return false;
    }
    if (scan->result().error != 0) {
        throw DbError(scan->result().error, scan->result().errorText);
    }
    bool isWanted = scan->result().isWhole;
    while (isWanted && writeSome(*scan)) {
        isWanted = goesOn(*scan, *progress);
    }
    return isWanted;
}

void MissingFiles::Scan()
{
    if (m_isRunning) {
        return;
    }
    const QScopedValueRollback running(m_isRunning, true);
    m_written = 0;
    // It may outlive the wait, when a disk does not answer.
    const auto scan = std::make_shared<LibraryScan>(m_parts.beside, m_parts.dataFolder,
                                                    m_parts.settings.DbName());
    std::exception_ptr fault;
    bool isWhole = false;
    try {
        isWhole = lookAndWrite(scan);
    } catch (const DbError&) {
        fault = std::current_exception();
        scan->end();
    }
    if (m_written > 0) {
        m_parts.changed();
    }
    if (isWhole) {
        report(scan->result());
    } else if (m_written > 0) {
        m_parts.rebuildTrees();
    }
    if (fault) {
        std::rethrow_exception(fault);
    }
    if (!isWhole) {
        m_parts.tell(m_parts.texts.text(u"care.scan.ended"_s));
    }
}

void MissingFiles::report(const LibraryScanResult& found) const
{
    const QString list = path::join(m_parts.dataFolder, kMissingList);
    std::exception_ptr fault;
    try {
        m_parts.files.writeWhole(list, found.list.toUtf8());
    } catch (const IoError&) {
        fault = std::current_exception();
    }
    if (found.missing > 0) {
        m_parts.warnings.ShowWarning(reportText(found, list), WarningType::Note, u"Melovane"_s,
                                     u"mnuNoExistSuchen"_s);
    } else {
        m_parts.tell(m_parts.texts.text(u"care.scan.allthere"_s));
    }
    if (found.missing > 0 || found.restored > 0) {
        m_parts.rebuildTrees();
    }
    if (fault) {
        std::rethrow_exception(fault);
    }
}

QString MissingFiles::reportText(const LibraryScanResult& found, const QString& list) const
{
    QString text = m_parts.texts.text(u"nofile.text"_s, list);
    qint64 absent = 0;
    for (const qint64 count : found.absent) {
        absent += count;
    }
    if (absent > 0) {
        text += u"\n\n"_s + countedText(m_parts.texts, u"care.scan.absent"_s, absent,
                                        QStringList(found.absent.keys()).join(u", "_s));
    }
    return text;
}

} // namespace melovane
