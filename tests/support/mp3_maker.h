#pragma once

#include "siblings/demomusic/id3_writer.h"
#include "siblings/demomusic/mp3_frames.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace melovane::test {

/// Milliseconds of so many frames, as a file of that format plays.
[[nodiscard]] int millisecondsOf(int frames,
                                 const demomusic::FrameFormat& format = demomusic::FrameFormat());

/// An MP3 file of half a second with a tag of title and artist.
[[nodiscard]] QByteArray simpleMp3(const QString& title, const QString& artist);

/// The same with an identifier in the tag.
[[nodiscard]] QByteArray
mp3WithFid(const QString& title, const QString& artist, const QString& fid);

/// Frames of half a second without a tag.
[[nodiscard]] QByteArray shortStream();

/// A file that is no proper MP3, or lies about itself.
struct OddFile
{
    const char* name; ///< what is odd about it, usable as part of a file's name
    QByteArray bytes;
    bool playable = false; ///< true when it can be imported all the same
};

/// One of every kind that the importer must survive.
[[nodiscard]] std::vector<OddFile> oddFiles();

} // namespace melovane::test
