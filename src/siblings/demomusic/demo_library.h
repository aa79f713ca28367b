#pragma once

#include <QByteArray>
#include <QString>

namespace melovane::demomusic {

/// A file of the demo library: where it lies and what it holds.
struct DemoFile
{
    QString folder; ///< below the library's folder, "/" between names
    QString name;
    QByteArray bytes;
};

struct DemoOptions
{
    int count = 200;
    quint32 seed = 1;
    /// Length of each track. 0 gives lengths as songs have them, at about 5 kB a second.
    int seconds = 0;
};

/// An invented library, track by track: the same options give the same bytes.
///
/// A few artists have many tracks and many have few, as in real collections. Tracks of an album lie
/// in one folder, "Artist/Album/03 Title.mp3". Some carry a cover, a rating, a tempo, the four
/// selection fields; some have old tags alone, some none but a name that tells artist and title.
class DemoLibrary
{
public:
    explicit DemoLibrary(const DemoOptions& options);

    /// Track number 0 to count - 1. \param cover bytes of a JPEG picture, or none
    [[nodiscard]] DemoFile track(int number, const QByteArray& cover = {}) const;

private:
    DemoOptions m_options;
};

} // namespace melovane::demomusic
