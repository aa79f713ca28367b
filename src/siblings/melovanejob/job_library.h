#pragma once

#include "siblings/melovanejob/job_settings.h"

#include <QString>

namespace melovane {

class DBEngine;
class Files;

/// Changes whenever the library is written, by whomever; empty when there is none. Looks at the
/// facts of its files alone and opens nothing.
[[nodiscard]] QString libraryState(const Files& files, const QString& library);

/// Whether a job has something to do in the library, which is let go of again. \throws DbError
[[nodiscard]] bool hasWork(DBEngine& engine, const QString& library, JobKind kind);

} // namespace melovane
