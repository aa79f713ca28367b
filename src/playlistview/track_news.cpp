#include "playlistview/track_news.h"

#include "platform/system/timers.h"

namespace melovane {

namespace {

/// Rapid scrolling tells the other views no more often than this.
constexpr std::chrono::milliseconds kInfoInterval{250};

} // namespace

TrackNews::TrackNews(MessageLoop& loop, std::function<void(const QString& fid)> tell)
    : m_tell(std::move(tell))
    , m_timerInfo(loop.makeTimer(kInfoInterval, [this] {
        m_timerInfo->stop();
        if (m_current != m_told) {
            this->tell();
        }
    }))
{}

TrackNews::~TrackNews() = default;

void TrackNews::setCurrent(const QString& fid)
{
    m_current = fid;
    if (!m_timerInfo->isActive()) {
        tell();
    }
}

void TrackNews::tell()
{
    if (!m_current.isEmpty()) {
        m_told = m_current;
        m_timerInfo->start();
        m_tell(m_current);
    }
}

} // namespace melovane
