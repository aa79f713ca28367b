#pragma once

#include "care/recycle_run.h"
#include "platform/linux/audio_identity.h"
#include "platform/linux/linux_files.h"
#include "platform/qt/qt_worker.h"
#include "shell/mlvdb_parts.h"

namespace melovane {

struct Desk;
struct ListsWing;
struct Machine;
struct SuiteWing;

/// Files that are found again, and tracks that are there twice.
struct FoundWing
{
    FoundWing(Machine& machine,
              Desk& desk,
              SuiteWing& suite,
              ListsWing& lists,
              RecycleTools recycler);

    /// What their menu entries do.
    [[nodiscard]] CareCommands commands();

    Machine& machine;
    Desk& desk;
    SuiteWing& suite;
    ListsWing& lists;
    RecycleTools recycler;
    LinuxFiles searchFiles; ///< of the worker's thread
    linux_media::LinuxAudioIdentity audio;
    QtWorker worker;

private:
    void findAgain();
    void mergeDoubles();
    /// Why the library must not be written now; empty when it may be.
    [[nodiscard]] QString whyNotNow() const;
    /// The rows of the views are others, and so are these trees.
    void libraryChanged(const QStringList& trees);
};

} // namespace melovane
