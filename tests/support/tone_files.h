#pragma once

#include "platform/media/sound_stream.h"

#include <QHash>
#include <QString>

#include <vector>

namespace melovane::test {

/// A file whose every sample the test knows.
struct ToneFile
{
    AudioFormat format{44100, 2};
    std::vector<qint16> samples;
    /// Moments that it turns out to hold; negative for all that it promises.
    qint64 breaksOffAt = -1;
};

/// Files of tones, by their path; a path that is not among them is missing. They stand in for MP3
/// files where samples must be known beforehand, as no encoder gives them back.
class ToneFiles
{
public:
    ToneFile& operator[](const QString& path) { return m_files[path]; }

    /// A tone on the left, and upside down on the right.
    /// \param loudness of its peak, 1 is what 16 bits take
    void addTone(const QString& path, double hertz, double seconds, double loudness = 0.4);

    /// Lives as long as its streams do not outlive the files.
    [[nodiscard]] SoundStreamMaker maker();

private:
    QHash<QString, ToneFile> m_files;
};

} // namespace melovane::test
