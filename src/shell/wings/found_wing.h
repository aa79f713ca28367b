#pragma once

#include "care/backup_record.h"
#include "care/recycle_run.h"
#include "platform/linux/audio_identity.h"
#include "platform/linux/linux_files.h"
#include "platform/qt/qt_worker.h"
#include "shell/mlvdb_parts.h"

namespace melovane {

struct Desk;
class LeftMerges;
struct ListsWing;
struct Machine;
struct SuiteWing;

/// Files that are found again, and tracks that are there twice.
struct FoundWing
{
    /// \param backUp keeps the library as it is before many of its rows change; false when the user
    ///               does not want to begin
    FoundWing(Machine& machine,
              Desk& desk,
              SuiteWing& suite,
              ListsWing& lists,
              RecycleTools recycler,
              std::function<bool(BackupOccasion)> backUp);
    ~FoundWing();
    FoundWing(const FoundWing&) = delete;
    FoundWing& operator=(const FoundWing&) = delete;

    /// Files that a killed merge has left go to the recycle folder, beside the window.
    void endLeftMerges();

    /// What their menu entries do.
    [[nodiscard]] CareCommands commands();

    Machine& machine;
    Desk& desk;
    SuiteWing& suite;
    ListsWing& lists;
    RecycleTools recycler;
    std::function<bool(BackupOccasion)> backUp;
    LinuxFiles searchFiles; ///< of the worker's thread
    linux_media::LinuxAudioIdentity audio;
    QtWorker worker;

private:
    std::shared_ptr<LeftMerges> m_leftMerges; ///< null until the start

    void findAgain();
    void mergeDoubles();
    /// Why the library must not be written now; empty when it may be.
    [[nodiscard]] QString whyNotNow() const;
    /// The rows of the views are others, and so are these trees.
    void libraryChanged(const QStringList& trees);
};

} // namespace melovane
