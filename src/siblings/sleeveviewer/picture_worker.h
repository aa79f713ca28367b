#pragma once

#include "siblings/sleeveviewer/picture_reader.h"
#include "siblings/sleeveviewer/sleeve_track.h"

#include <QObject>
#include <QStringList>
#include <QThread>

#include <atomic>
#include <functional>

namespace melovane {

/// Looks for pictures and reads them beside the window, which never waits for a disk. Of several
/// requests of a kind only the last is answered.
class PictureWorker : public QObject
{
    Q_OBJECT

public:
    using Find = std::function<QStringList(const SleeveTrack& track)>;
    using Read = std::function<ReadPicture(const QString& file)>;

    /// Both are called on the worker's thread.
    explicit PictureWorker(Find find, Read read = readPicture);
    /// Waits for the picture that is being read.
    ~PictureWorker() override;
    PictureWorker(const PictureWorker&) = delete;
    PictureWorker& operator=(const PictureWorker&) = delete;

    void find(const SleeveTrack& track);
    void read(const QString& file);

signals:
    void found(const QStringList& files);
    void pictureRead(const ReadPicture& picture);

private:
    void run(std::atomic<int>& latest, const std::function<std::function<void()>()>& work);

    Find m_find;
    Read m_read;
    std::atomic<int> m_search = 0;  ///< number of the last request to find
    std::atomic<int> m_reading = 0; ///< number of the last request to read
    QThread m_thread;
    QObject m_there; ///< lives on the thread: what is called there is called by it
};

} // namespace melovane
