#include "siblings/sleeveviewer/picture_worker.h"

#include <utility>

namespace melovane {

PictureWorker::PictureWorker(Find find, Read read)
    : m_find(std::move(find))
    , m_read(std::move(read))
{
    m_thread.setObjectName(QStringLiteral("pictures"));
    m_there.moveToThread(&m_thread);
    m_thread.start(QThread::LowPriority);
}

PictureWorker::~PictureWorker()
{
    ++m_search;
    ++m_reading;
    m_thread.quit();
    m_thread.wait();
}

/// \param work done on the worker's thread; its result is called on the window's, unless there is a
///             newer request by then
void PictureWorker::run(std::atomic<int>& latest,
                        const std::function<std::function<void()>()>& work)
{
    const int number = ++latest;
    QMetaObject::invokeMethod(&m_there, [this, &latest, number, work] {
        if (latest != number) {
            return;
        }
        const std::function<void()> tell = work();
        QMetaObject::invokeMethod(this, [&latest, number, tell] {
            if (latest == number) {
                tell();
            }
        });
    });
}

void PictureWorker::find(const SleeveTrack& track)
{
    ++m_reading; // a picture of another track
    run(m_search, [this, track]() -> std::function<void()> {
        return [this, files = m_find(track)] { emit found(files); };
    });
}

void PictureWorker::read(const QString& file)
{
    run(m_reading, [this, file]() -> std::function<void()> {
        return [this, picture = m_read(file)] { emit pictureRead(picture); };
    });
}

} // namespace melovane
