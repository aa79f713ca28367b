// How many files a second get a new tag: in place where the tag's room suffices, by a copy of the
// file where it does not. Warm, every batch on the disc before the next begins.
//
//   tag_bench [FOLDER]     where the files are made; without one in the folder of temporary files
//
// In place with files of 40 KB and of 5 MB, by copy with files of 5 MB. Bars: 1,000 and 100 files a
// second for the middle one of the runs. A folder in memory has no disc to wait for: the kind of
// the file system is printed.

#include "platform/linux/linux_tag_writer.h"
#include "siblings/demomusic/id3_writer.h"
#include "siblings/demomusic/mp3_frames.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QStorageInfo>
#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

namespace {

using namespace melovane;
using namespace melovane::demomusic;
using namespace Qt::Literals::StringLiterals;

/// Files that are handed over at once, as the job behind the console does.
constexpr int kBatch = 64;
constexpr int kRuns = 3;

struct Case
{
    const char* name;
    int files;
    int frames;  ///< of sound; 417 bytes each
    int padding; ///< in the tag
    double bar;  ///< files a second
    bool isInPlace;
};

/// What tells whether a file was written anew.
ino_t inodeOf(const QString& path)
{
    struct stat facts = {};
    return ::stat(QFile::encodeName(path).constData(), &facts) == 0 ? facts.st_ino : 0;
}

QStringList makeFiles(const QDir& folder, const Case& asked)
{
    const QByteArray bytes = Id3v2Writer(3)
                                 .text("TIT2", u"Title"_s)
                                 .text("TPE1", u"Artist"_s)
                                 .picture(QByteArray(20'000, 'p'))
                                 .tag(asked.padding) +
                             constantStream(FrameFormat(), asked.frames);
    QStringList paths;
    for (int i = 0; i < asked.files; ++i) {
        paths.append(folder.filePath(u"%1.mp3"_s.arg(i)));
        QFile file(paths.last());
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            std::fprintf(stderr, "cannot write %s\n", qUtf8Printable(paths.last()));
            std::exit(2);
        }
    }
    return paths;
}

/// Brings all that waits in memory to the disc of that folder. The writer waits for the whole
/// volume: music that was only just made would be counted as its work.
void settle(const QDir& folder)
{
    const int place = ::open(QFile::encodeName(folder.path()).constData(), O_RDONLY | O_DIRECTORY);
    if (place < 0 || ::syncfs(place) != 0) {
        std::perror("syncfs");
        std::exit(2);
    }
    ::close(place);
}

/// Seconds that all files take; below 0 when one of them failed.
double write(TagWriter& writer, const QStringList& paths)
{
    QElapsedTimer timer;
    timer.start();
    for (qsizetype begin = 0; begin < paths.size(); begin += kBatch) {
        std::vector<TagWork> work;
        for (const QString& path : paths.mid(begin, kBatch)) {
            work.push_back({path, {.Titel = u"Another title"_s, .Kommentar = QString(2000, u'k')}});
        }
        for (const TagWriting& result : writer.write(work)) {
            if (!result.changed) {
                return -1;
            }
        }
    }
    return double(timer.nsecsElapsed()) / 1e9;
}

/// Files a second of one run; 0 when they were not written, or not in the way that is measured.
double run(const QDir& folder, const Case& asked)
{
    const QTemporaryDir place(folder.filePath(u"tag-bench-XXXXXX"_s));
    const QDir files(place.path());
    linux_media::LinuxTagWriter writer(files.filePath(u"state"_s));
    const QStringList paths = makeFiles(files, asked);
    std::vector<ino_t> before;
    std::transform(paths.begin(), paths.end(), std::back_inserter(before), inodeOf);
    settle(files);
    const double seconds = write(writer, paths);
    if (seconds <= 0) {
        std::fprintf(stderr, "a file was not written\n");
        return 0;
    }
    for (size_t i = 0; i < before.size(); ++i) {
        if ((inodeOf(paths[qsizetype(i)]) == before[i]) != asked.isInPlace) {
            std::fprintf(stderr, "%s: not written so\n", asked.name);
            return 0;
        }
    }
    return asked.files / seconds;
}

bool measure(const QDir& folder, const Case& asked)
{
    std::array<double, kRuns> runs{};
    std::generate(runs.begin(), runs.end(), [&] { return run(folder, asked); });
    std::sort(runs.begin(), runs.end());
    const double middle = runs[kRuns / 2];
    const bool isMet = runs.front() > 0 && middle >= asked.bar;
    std::printf("%-20s %8.0f files/s (%.0f to %.0f)   bar %5.0f   %s\n", asked.name, middle,
                runs.front(), runs.back(), asked.bar, isMet ? "met" : "MISSED");
    return isMet;
}

} // namespace

int main(int argc, char** argv)
{
    const QDir folder(argc > 1 ? QFile::decodeName(argv[1]) : QDir::tempPath());
    std::printf("%s on %s\n", qUtf8Printable(folder.path()),
                QStorageInfo(folder).fileSystemType().constData());
    const bool small = measure(folder, {"in place, 40 KB", 2000, 50, 4000, 1000, true});
    const bool large = measure(folder, {"in place, 5 MB", 100, 12'500, 4000, 1000, true});
    const bool copied = measure(folder, {"by copy, 5 MB", 100, 12'500, 0, 100, false});
    return small && large && copied ? 0 : 1;
}
