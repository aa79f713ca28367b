#include "siblings/mediaintake/import_lock.h"

#include "platform/system/files.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

QString importLockName(const Files& files, const QString& database)
{
    const FileFacts facts = files.facts(database).value_or(FileFacts{});
    return u"mediaintake-%1-%2"_s.arg(facts.device, 0, 16).arg(facts.inode, 0, 16);
}

} // namespace melovane
