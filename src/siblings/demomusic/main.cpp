#include "config/program_call.h"
#include "siblings/demomusic/demo_library.h"
#include "siblings/demomusic/id3_writer.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTextStream>

#include <cmath>
#include <numbers>
#include <optional>

using namespace Qt::Literals::StringLiterals;
using namespace melovane::demomusic;

namespace {

/// Tracks that can be heard, when an encoder is installed.
constexpr int kAudibleTracks = 4;

int fail(const QString& what)
{
    QTextStream(stderr) << "demomusic: " << what << Qt::endl;
    return 1;
}

/// A cover: a slope of two colours that depend on the track.
QByteArray coverOf(int number)
{
    constexpr int kSide = 120;
    QImage image(kSide, kSide, QImage::Format_RGB32);
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            image.setPixel(x, y, QColor::fromHsv((number * 47 + y / 2) % 360, 120, 130 + x).rgb());
        }
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "JPEG", 75);
    return bytes;
}

/// Sixteen seconds of a slow melody of sine tones, as 16-bit samples of one channel.
QByteArray melody(int number)
{
    constexpr int kRate = 44100;
    constexpr int kSeconds = 16;
    constexpr int kTone = kRate / 2;
    static constexpr int kSteps[] = {0, 4, 7, 12, 9, 7, 5, 2};
    QByteArray samples;
    samples.reserve(qsizetype{kRate} * kSeconds * 2);
    double phase = 0;
    for (int i = 0; i < kRate * kSeconds; ++i) {
        const int step = kSteps[static_cast<size_t>(i / kTone + number) % std::size(kSteps)];
        phase += 2 * std::numbers::pi * 220.0 * std::pow(2.0, (step + number) / 12.0) / kRate;
        const double fade = 1.0 - static_cast<double>(i % kTone) / kTone;
        const auto value = static_cast<qint16>(12000 * fade * std::sin(phase));
        samples.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    return samples;
}

/// The melody as MPEG audio; empty when no encoder is installed or it fails.
QByteArray encoded(int number)
{
    const QString encoder = QStandardPaths::findExecutable(u"lame"_s);
    if (encoder.isEmpty()) {
        return {};
    }
    QProcess process;
    process.start(encoder, {u"--quiet"_s, u"-r"_s, u"-s"_s, u"44.1"_s, u"-m"_s, u"m"_s, u"-b"_s,
                            u"64"_s, u"-"_s, u"-"_s});
    process.write(melody(number));
    process.closeWriteChannel();
    if (!process.waitForFinished(30'000) || process.exitCode() != 0) {
        return {};
    }
    return process.readAllStandardOutput();
}

/// Replaces what stands there: a link, or another name of a file, must not lead the bytes into
/// somebody's music.
bool write(const QString& root, const DemoFile& file)
{
    const QString folder = root + u'/' + file.folder;
    QFile out(folder + u'/' + file.name);
    out.remove();
    return QDir().mkpath(folder) && out.open(QIODevice::WriteOnly | QIODevice::NewOnly) &&
           out.write(file.bytes) == file.bytes.size();
}

/// The numbers behind the folder; nothing when one of them is none.
std::optional<DemoOptions> optionsOf(const QStringList& call)
{
    if (call.isEmpty() || call.size() > 4 || call[0].isEmpty() || call[0].startsWith(u'-')) {
        return {};
    }
    bool count = false;
    bool seed = false;
    bool seconds = false;
    DemoOptions options;
    options.count = call.value(1, u"200"_s).toInt(&count);
    options.seed = call.value(2, u"1"_s).toUInt(&seed);
    options.seconds = call.value(3, u"0"_s).toInt(&seconds);
    const bool fits = count && seed && seconds && options.count >= 0 && options.seconds >= 0;
    return fits ? std::optional(options) : std::nullopt;
}

DemoFile audibleTrack(int number, const QByteArray& sound)
{
    Id3v2Writer writer;
    writer.text("TIT2", u"Sinuslied Nr. %1"_s.arg(number + 1))
        .text("TPE1", u"Das Prüfton-Ensemble"_s)
        .text("TALB", u"Hörbares"_s)
        .text("TCON", u"Electronic"_s)
        .text("TRCK", QString::number(number + 1))
        .text("TBPM", u"120"_s);
    return {u"Das Prüfton-Ensemble/Hörbares"_s,
            u"%1 Sinuslied.mp3"_s.arg(number + 1, 2, 10, QChar(u'0')), writer.tag(128) + sound};
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QString name = u"demomusic"_s;
    const QStringList call = melovane::argumentsOf(argc, argv);
    if (const auto code = melovane::answerCall(name, call)) {
        return *code;
    }
    const auto read = optionsOf(call);
    if (!read) {
        return melovane::refuseCall(name, call.join(u' '));
    }
    const QString& root = call[0];
    const DemoOptions& options = *read;
    const DemoLibrary library(options);
    constexpr int kTracksPerCover = 10;
    QByteArray cover;
    for (int i = 0; i < options.count; ++i) {
        if (i % kTracksPerCover == 0) {
            cover = coverOf(i / kTracksPerCover);
        }
        if (!write(root, library.track(i, cover))) {
            return fail(u"cannot write below "_s + root);
        }
    }
    int audible = 0;
    for (int i = 0; i < kAudibleTracks && options.seconds == 0; ++i) {
        const QByteArray sound = encoded(i);
        if (!sound.isEmpty() && !write(root, audibleTrack(i, sound))) {
            return fail(u"cannot write below "_s + root);
        }
        audible += sound.isEmpty() ? 0 : 1;
    }
    QTextStream(stdout) << options.count + audible << " files in " << root << Qt::endl;
    return 0;
}
