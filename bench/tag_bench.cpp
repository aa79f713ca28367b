// How many files a second get a new tag: in place where the tag's room suffices, by a copy of the
// file where it does not. Warm, every batch on the disc before the next begins.
//
//   tag_bench [FOLDER]     where the files are made; without one in the folder of temporary files
//
// In place with files of 40 KB, by copy with files of 5 MB. Bars: 1,000 and 100 files a second.

#include "platform/linux/linux_tag_writer.h"
#include "siblings/demomusic/id3_writer.h"
#include "siblings/demomusic/mp3_frames.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

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
};

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

bool measure(const QDir& folder, const Case& asked)
{
    double best = 0;
    for (int run = 0; run < kRuns; ++run) {
        const QTemporaryDir place(folder.filePath(u"tag-bench-XXXXXX"_s));
        const QDir files(place.path());
        linux_media::LinuxTagWriter writer(files.filePath(u"state"_s));
        const double seconds = write(writer, makeFiles(files, asked));
        if (seconds <= 0) {
            std::fprintf(stderr, "a file was not written\n");
            return false;
        }
        best = std::max(best, asked.files / seconds);
    }
    std::printf("%-24s %8.0f files/s   bar %5.0f   %s\n", asked.name, best, asked.bar,
                best >= asked.bar ? "met" : "MISSED");
    return best >= asked.bar;
}

} // namespace

int main(int argc, char** argv)
{
    const QDir folder(argc > 1 ? QFile::decodeName(argv[1]) : QDir::tempPath());
    const bool inPlace = measure(folder, {"in place, 40 KB", 2000, 50, 4000, 1000});
    const bool copied = measure(folder, {"by copy, 5 MB", 100, 12'500, 0, 100});
    return inPlace && copied ? 0 : 1;
}
