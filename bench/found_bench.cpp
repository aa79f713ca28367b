// How long it takes until the user sees what became of his missing files: all files below a folder
// are looked for, compared with the missing tracks, and the tags of those that agree are read.
//
//   found_bench [FOLDER] [COUNT]   where the files are made, and how many; 50,000 without a number
//
// Warm, on one thread. Bar: 3 s for 50,000 missing files.

#include "care/found_rules.h"
#include "platform/linux/audio_identity.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/tag_reader.h"
#include "siblings/demomusic/id3_writer.h"
#include "siblings/demomusic/mp3_frames.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>

namespace {

using namespace melovane;
using namespace melovane::demomusic;
using namespace Qt::Literals::StringLiterals;

constexpr int kTracks = 50'000;
constexpr int kInFolder = 20;
constexpr int kFrames = 20;
constexpr int kRuns = 3;
constexpr double kBar = 3; ///< seconds

/// Files, and the missing tracks that they are.
std::vector<MissingTrack> make(const QDir& folder, int count)
{
    const FrameFormat format;
    const QByteArray sound = constantStream(format, kFrames);
    const int milliseconds = kFrames * samplesPerFrame(format) * 1000 / format.sampleRate;
    std::vector<MissingTrack> tracks;
    for (int i = 0; i < count; ++i) {
        const QString fid = QString::number(400'000'000'000 + i);
        const QString album = u"Album %1/"_s.arg(i / kInFolder);
        const QString name = u"%1 Titel.mp3"_s.arg(i % kInFolder + 1);
        const QByteArray bytes =
            Id3v2Writer(3).text("TIT2", u"Titel"_s).userText(u"FID"_s, fid).tag(1000) + sound;
        folder.mkpath(album);
        QFile file(folder.filePath(album + name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            std::fprintf(stderr, "cannot write %s\n", qUtf8Printable(file.fileName()));
            std::exit(2);
        }
        tracks.push_back(
            {fid, u"Titel"_s, u"/media/alt/"_s + album, name, bytes.size(), milliseconds, 2});
    }
    return tracks;
}

/// Tracks found; the seconds that it took are told.
int preview(const QString& folder, const std::vector<MissingTrack>& tracks, double& seconds)
{
    QElapsedTimer time;
    time.start();
    const LinuxFiles files;
    const linux_media::LinuxTagReader reader;
    const linux_media::LinuxAudioIdentity audio;
    std::vector<FoundFile> met;
    Skipped skipped;
    FolderWalk walk(files, {folder}, skipped);
    for (auto some = walk.next(); some; some = walk.next()) {
        std::move(some->begin(), some->end(), std::back_inserter(met));
    }
    std::atomic<int> done = 0;
    const std::atomic<bool> isCancelled = false;
    const std::vector<FoundRule> rules = findRules({.tracks = tracks,
                                                    .files = met,
                                                    .taken = {},
                                                    .given = {},
                                                    .reader = reader,
                                                    .audio = audio,
                                                    .kept = {},
                                                    .done = done,
                                                    .isCancelled = isCancelled});
    seconds = double(time.nsecsElapsed()) / 1e9;
    int found = 0;
    for (const FoundRule& rule : rules) {
        found += rule.foundCount();
    }
    return found;
}

} // namespace

int main(int argc, char** argv)
{
    const QTemporaryDir folder(argc > 1 ? QString::fromLocal8Bit(argv[1]) + u"/found"_s
                                        : QDir::tempPath() + u"/found"_s);
    const int count = argc > 2 ? QString::fromLocal8Bit(argv[2]).toInt() : kTracks;
    const std::vector<MissingTrack> tracks = make(QDir(folder.path()), count);
    double best = 0;
    for (int run = 0; run < kRuns; ++run) {
        double seconds = 0;
        if (preview(folder.path(), tracks, seconds) != count) {
            std::fprintf(stderr, "not all files were found\n");
            return 1;
        }
        best = run == 0 ? seconds : std::min(best, seconds);
    }
    std::printf("preview of %d missing files: %.2f s (bar %.0f s)\n", count, best, kBar);
    return 0;
}
