#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace melovane::test {

/// What an encoder makes a file of.
struct Sound
{
    int sampleRate = 44100; ///< Hz
    int channels = 2;
    double seconds = 4;
    QStringList encoding = {QStringLiteral("-b"), QStringLiteral("128")};
};

/// A real MP3 file whose sound is nowhere silent and nowhere the same. Made once a program.
[[nodiscard]] QByteArray soundingMp3(const Sound& sound = {});

/// All samples of a file, interleaved, decoded from front to back in one go without cutting
/// anything off: what a player must let hear.
[[nodiscard]] std::vector<qint16> wholeSound(const QString& file);

} // namespace melovane::test
