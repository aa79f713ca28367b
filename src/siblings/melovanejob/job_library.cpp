#include "siblings/melovanejob/job_library.h"

#include "platform/db/database.h"
#include "platform/system/files.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

QString stateOf(const FileFacts& facts)
{
    return u"%1 %2 %3 %4;"_s.arg(facts.device)
        .arg(facts.inode)
        .arg(facts.size)
        .arg(facts.modified.toMSecsSinceEpoch());
}

/// Counts what waits. Notes of trees that no rebuild knows would wait for ever.
QString countOf(JobKind kind)
{
    switch (kind) {
    case JobKind::Tags:
        return u"select count(*) as anz from db_edit"_s;
    case JobKind::Lists:
        return u"select count(*) as anz from VPLGROUP_SAVE"_s;
    case JobKind::Trees:
        return u"select count(*) as anz from ChangeTree where TreeName in ('Dir', 'Genre', "
               "'Album', 'Interpret')"_s;
    }
    return {};
}

} // namespace

QString libraryState(const Files& files, const QString& library)
{
    const auto facts = files.facts(library);
    if (!facts || facts->isFolder) {
        return {};
    }
    QString state = stateOf(*facts);
    // Changes stand in the log beside the library until it is folded in; an empty one comes and
    // goes with those who only read.
    const auto log = files.facts(library + u"-wal"_s);
    if (log && log->size > 0) {
        state += stateOf(*log);
    }
    return state;
}

bool hasWork(DBEngine& engine, const QString& library, JobKind kind)
{
    const auto database = engine.OpenDatabase(library);
    const bool found = database->OpenRecordset(countOf(kind))->value(u"anz").toLong() > 0;
    database->Close();
    engine.Release(library);
    return found;
}

} // namespace melovane
