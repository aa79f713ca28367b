#include "support/mp3_maker.h"

#include <cmath>
#include <random>

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;
using namespace demomusic;

namespace {

QByteArray noise(int length, quint32 seed)
{
    std::mt19937 random(seed);
    QByteArray bytes(length, '\0');
    for (char& byte : bytes) {
        byte = static_cast<char>(random());
    }
    return bytes;
}

/// A WAV file of a saw tooth: real sound, no MPEG.
QByteArray wavFile()
{
    QByteArray data;
    for (int i = 0; i < 20000; ++i) {
        data += static_cast<char>(i % 251);
    }
    return QByteArray(
               "RIFF\x44\x4E\0\0WAVEfmt \x10\0\0\0\1\0\1\0\x44\xAC\0\0\x88\x58\1\0\2\0\x10\0data"
               "\x20\x4E\0\0",
               44) +
           data;
}

QByteArray pngFile()
{
    return QByteArray("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\1\0\0\0\1\x08\6\0\0\0", 29) +
           noise(3000, 7);
}

Id3v2Writer titled(int version = 3)
{
    Id3v2Writer writer(version);
    writer.text("TIT2", u"Odd"_s).text("TPE1", u"File"_s);
    return writer;
}

std::vector<OddFile> refusedFiles()
{
    const QByteArray stream = shortStream();
    const FrameFormat format;
    // Headers everywhere, and never one where the former says that it should be.
    const QByteArray syncNoise = QByteArray("\xFF\xFB\x90\x64", 4).repeated(75000);
    return {
        {"empty", {}},
        {"one_byte", "I"},
        {"only_ff", QByteArray(50000, '\xFF')},
        {"zeros", QByteArray(50000, '\0')},
        {"text", QByteArray("This is a shopping list, not a song.\n").repeated(400)},
        {"png", pngFile()},
        {"wav", wavFile()},
        {"noise", noise(200000, 3)},
        {"sync_noise", syncNoise},
        {"cut_in_the_tag", titled().tag(4000).left(300)},
        {"cut_in_the_tag_header", titled().tag().left(8)},
        {"cut_in_the_first_frame", titled().tag() + silentFrame(format).left(100)},
        {"cut_in_the_first_frame_header", titled().tag() + silentFrame(format).left(3)},
        {"only_a_tag", titled().tag(500)},
        {"only_both_tags", titled().tag() + id3v1Tag({"Odd", "File", {}, {}, {}, 0, 3})},
        {"only_id3v1", id3v1Tag({"Odd", "File", {}, {}, {}, 0, 3})},
        {"tag_larger_than_the_file", titled().tagWithSize(5000000) + stream},
        {"tag_size_absurd", titled().tagWithSize(0x7F7F7F7F) + stream},
        {"tag_size_all_ones",
         QByteArray("ID3\3\0\0\xFF\xFF\xFF\xFF", 10) + titled().tag().mid(10) + stream},
    };
}

std::vector<OddFile> playableFiles()
{
    const QByteArray stream = shortStream();
    Id3v2Writer huge(3, TextEncoding::Latin1);
    huge.text("TIT2", QString(300000, u'x')).text("TPE1", u"File"_s);
    Id3v2Writer lying = titled();
    lying.text("TALB", u"Liar"_s).lieAboutLastSize(0x7F7F7F7F);
    Id3v2Writer broken(3);
    broken.frame("TIT2", QByteArray("\1\xFF\xFE\0\xD8\x41\0\0\xDC", 9)).text("TPE1", u"File"_s);
    Id3v2Writer oddBytes(3);
    oddBytes.frame("TIT2", QByteArray("\1\xFF\xFE\x41", 4)).frame("TPE1", QByteArray("\1\xFF", 2));
    Id3v2Writer badUtf8(4);
    badUtf8.frame("TIT2", QByteArray("\3\xC3\x28\xF0\x80\x80", 6));
    Id3v2Writer unknownEncoding(4);
    unknownEncoding.frame("TIT2", QByteArray("\x09hello", 6));
    Id3v2Writer encrypted(3);
    encrypted.frame("TIT2", "\1secret", 0x0040);
    Id3v2Writer badPacked(3);
    badPacked.frame("TIT2", QByteArray("\0\0\0\x7Fnot packed", 14), 0x0080);
    const FrameFormat format;
    return {
        {"no_tag", stream, true},
        {"huge_text", huge.tag() + stream, true},
        {"frame_size_absurd", lying.tag() + stream, true},
        {"broken_utf16", broken.tag() + stream, true},
        {"odd_utf16_length", oddBytes.tag() + stream, true},
        {"broken_utf8", badUtf8.tag() + stream, true},
        {"unknown_encoding", unknownEncoding.tag() + stream, true},
        {"encrypted_frame", encrypted.tag() + stream, true},
        {"bad_compressed_frame", badPacked.tag() + stream, true},
        {"unknown_tag_version", QByteArray("ID3\x09\0\0\0\0\0\x0A", 10) + "0123456789" + stream,
         true},
        {"padding_behind_the_tag", titled().tag() + QByteArray(3000, '\0') + stream, true},
        {"junk_in_front", noise(777, 5) + stream, true},
        {"lying_header",
         titled().tag() + headerFrame(StreamHeader::Xing, format, 0x7F7F7F7F, 0x7F7F7F7F) + stream,
         true},
        {"two_tags", titled().tag() + titled(4).tag() + stream, true},
        {"cut_in_the_last_frame", titled().tag() + stream.chopped(50), true},
        {"free_format", titled().tag() + freeFormatStream(format, 40, 300), true},
    };
}

} // namespace

int millisecondsOf(int frames, const FrameFormat& format)
{
    const auto samples = static_cast<double>(qint64{frames} * samplesPerFrame(format));
    return static_cast<int>(std::lround(samples * 1000.0 / format.sampleRate));
}

QByteArray shortStream()
{
    static const QByteArray stream = constantStream(FrameFormat(), 20);
    return stream;
}

QByteArray simpleMp3(const QString& title, const QString& artist)
{
    return Id3v2Writer().text("TIT2", title).text("TPE1", artist).tag() + shortStream();
}

QByteArray mp3WithFid(const QString& title, const QString& artist, const QString& fid)
{
    return Id3v2Writer().text("TIT2", title).text("TPE1", artist).userText(u"FID"_s, fid).tag() +
           shortStream();
}

std::vector<OddFile> oddFiles()
{
    std::vector<OddFile> files = refusedFiles();
    for (OddFile& file : playableFiles()) {
        files.push_back(std::move(file));
    }
    return files;
}

} // namespace melovane::test
