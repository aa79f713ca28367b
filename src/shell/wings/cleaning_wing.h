#pragma once

#include "care/missing_files.h"
#include "care/recycle_run.h"
#include "platform/qt/qt_live_wait.h"
#include "platform/qt/qt_worker.h"
#include "shell/mlvdb_parts.h"

namespace melovane {

struct Desk;
struct Machine;
struct SuiteWing;

/// Missing files, cleaning, and the way back from the recycle folder.
struct CleaningWing
{
    /// \param backUp keeps the library as it is before a work that may lose rows; false when the
    ///               user does not want to begin
    CleaningWing(Machine& machine, Desk& desk, SuiteWing& suite, std::function<bool()> backUp);

    /// What their menu entries do.
    [[nodiscard]] CareCommands commands();

    /// What moves files to the recycle folder.
    [[nodiscard]] RecycleTools recycler() const;

    Machine& machine;
    Desk& desk;
    SuiteWing& suite;
    std::function<bool()> backUp;
    QtLiveWait wait;
    MissingFiles missing;

private:
    [[nodiscard]] BesideTools beside() const;
    [[nodiscard]] MissingFilesParts missingParts();
    void clean();
    void bringBack();
    [[nodiscard]] QString failureText(const DbError& error);
    void libraryChanged();

    QtWorker m_worker; ///< the last member: it ends before all that it works on
};

} // namespace melovane
