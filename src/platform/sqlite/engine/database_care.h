#pragma once

#include "platform/db/database_care.h"

#include <memory>

namespace melovane {
class Clock;
}

namespace melovane::sqlite {

/// \param clock outlives it, and may be asked on any thread
[[nodiscard]] std::unique_ptr<DatabaseCare> makeDatabaseCare(const Clock& clock);

} // namespace melovane::sqlite
