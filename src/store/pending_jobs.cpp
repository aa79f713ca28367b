#include "store/pending_jobs.h"

#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/system/trim_blanks.h"
#include "store/error_sink.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

PendingJobs::PendingJobs(DBEngine& engine, const GlobalSettings& settings)
    : m_engine(engine)
    , m_settings(settings)
{}

void PendingJobs::ChangeTree(const QString& tree)
{
    const QString library = m_settings.DbName();
    const auto note = std::pair(library, tree);
    if (m_noted.contains(note)) {
        return;
    }
    try {
        ChangeTree(*m_engine.OpenDatabase(library), tree);
        m_noted.insert(note);
    } catch (const DbError& error) {
        passReleased(error);
        // The next change of the kind notes it.
    }
}

void PendingJobs::ChangeTree(Database& database, const QString& tree)
{
    const auto found = database.OpenRecordset(
        u"select count(*) as anz from ChangeTree where TreeName="_s + sql::text(tree));
    if (found->value(u"anz").toLong() == 0) {
        database.Execute(u"insert into ChangeTree ( TreeName ) values ( "_s + sql::text(tree) +
                         u" )"_s);
    }
}

void PendingJobs::SaveEditFID(const QString& fid)
{
    try {
        SaveEditFID(*m_engine.OpenDatabase(m_settings.DbName()), fid);
    } catch (const DbError& error) {
        passReleased(error);
        // The row is changed all the same; only its file keeps the former tag.
    }
}

void PendingJobs::SaveEditFID(Database& database, const QString& fid)
{
    database.Execute(u"insert into db_edit (fid) values ("_s + sql::text(trimBlanks(fid)) + u")"_s);
}

} // namespace melovane
