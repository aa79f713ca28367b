#pragma once

#include "care/recycle_folder.h"
#include "care/removed_track.h"

#include <QMutex>

#include <memory>

namespace melovane {

/// What the worker that moves files makes for itself; see BesideTools.
struct RecycleTools
{
    std::function<std::unique_ptr<Files>()> makeFiles;
    const Clock& clock; ///< outlives the program's threads
    QString dataFolder;
    QString homeFolder;
    std::function<QByteArray(const QString&)> systemName;
};

/// Moves the files of tracks to the recycle folder. One thread calls run(), another one everything
/// else, at any time.
class RecycleRun
{
public:
    RecycleRun(RecycleTools tools, std::vector<RemovedTrack> tracks, RecycleFolder::Reason reason);

    /// Files that cannot be moved stay; the rest is moved all the same.
    void run();

    /// run() ends at the next file; a copy to another volume is given up.
    void end();

    struct Progress
    {
        int done = 0; ///< files tried
        int whole = 0;
        int moved = 0;
        QString name;        ///< of the present file
        bool isOver = false; ///< all were tried
    };

    [[nodiscard]] Progress progress();

private:
    [[nodiscard]] bool goesOn();

    const RecycleTools m_tools;
    const std::vector<RemovedTrack> m_tracks;
    const RecycleFolder::Reason m_reason;

    QMutex m_mutex; ///< of all below
    Progress m_progress;
    bool m_isEnded = false;
};

} // namespace melovane
