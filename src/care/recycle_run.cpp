#include "care/recycle_run.h"

namespace melovane {

RecycleRun::RecycleRun(RecycleTools tools,
                       std::vector<RemovedTrack> tracks,
                       RecycleFolder::Reason reason)
    : m_tools(std::move(tools))
    , m_tracks(std::move(tracks))
    , m_reason(reason)
{
    m_progress.whole = int(m_tracks.size());
}

bool RecycleRun::goesOn()
{
    const QMutexLocker lock(&m_mutex);
    return !m_isEnded;
}

void RecycleRun::run()
{
    const std::unique_ptr<Files> files = m_tools.makeFiles();
    RecycleFolder folder(
        {*files, m_tools.clock, m_tools.dataFolder, m_tools.homeFolder, m_tools.systemName});
    for (const RemovedTrack& track : m_tracks) {
        {
            const QMutexLocker lock(&m_mutex);
            if (m_isEnded) {
                return;
            }
            m_progress.name = track.name;
        }
        const bool isMoved = folder.take(track, m_reason, [this](qint64) { return goesOn(); });
        const QMutexLocker lock(&m_mutex);
        ++m_progress.done;
        m_progress.moved += isMoved ? 1 : 0;
    }
    const QMutexLocker lock(&m_mutex);
    m_progress.isOver = !m_isEnded;
}

void RecycleRun::end()
{
    const QMutexLocker lock(&m_mutex);
    m_isEnded = true;
}

RecycleRun::Progress RecycleRun::progress()
{
    const QMutexLocker lock(&m_mutex);
    return m_progress;
}

} // namespace melovane
