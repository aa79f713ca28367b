#pragma once

#include <QString>

#include <functional>
#include <memory>

namespace melovane {

class MessageLoop;
class Timer;

/// Tells others which track is current, but no more often than they can follow: while the user
/// scrolls, the first one at once, and then the latest one every quarter of a second.
class TrackNews
{
public:
    TrackNews(MessageLoop& loop, std::function<void(const QString& fid)> tell);
    ~TrackNews();

    /// The current row is another one. Nothing is told of a row without a track.
    void setCurrent(const QString& fid);

private:
    void tell();

    std::function<void(const QString& fid)> m_tell;
    QString m_current;
    QString m_told;
    std::unique_ptr<Timer> m_timerInfo; ///< from one telling to the next
};

} // namespace melovane
