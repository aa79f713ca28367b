#include "intake/tree_marks.h"

#include "store/pending_jobs.h"

#include <QString>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

void markTrees(Database& library)
{
    for (const QString& tree : {u"Dir"_s, u"Interpret"_s, u"Album"_s, u"Genre"_s}) {
        PendingJobs::ChangeTree(library, tree);
    }
}

} // namespace melovane
