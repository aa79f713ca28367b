#include "tag_corpus.h"

#include "platform/linux/id3_tags.h"
#include "raw_tag.h"
#include "siblings/demomusic/id3_writer.h"
#include "siblings/demomusic/mp3_frames.h"

#include <array>

namespace melovane::test {

namespace {

using namespace demomusic;
using namespace Qt::Literals::StringLiterals;

QByteArray randomBytes(std::mt19937& random, int length)
{
    QByteArray bytes;
    for (int i = 0; i < length; ++i) {
        // Bytes that tempt readers to find sound, ends of texts, or the next frame.
        constexpr std::array<quint8, 8> kTempting = {0xFF, 0xFB, 0x00, 0xE0, 'T', 'I', 0xFE, 0x80};
        bytes += char(random() % 3 == 0 ? kTempting[random() % kTempting.size()] : random() % 256);
    }
    return bytes;
}

/// What a shape needs while it is made.
struct Maker
{
    int version;
    std::mt19937& random;
    CorpusFile& file;
    Id3v2Writer writer;

    Maker(int tagVersion, TextEncoding encoding, std::mt19937& source, CorpusFile& made)
        : version(tagVersion)
        , random(source)
        , file(made)
        , writer(tagVersion, encoding)
    {}

    [[nodiscard]] QByteArray name(const char* old, const char* current) const
    {
        return version == 2 ? old : current;
    }

    /// A frame of another program, which no change may touch.
    void foreign(const QByteArray& id, const QByteArray& body, quint16 flags = 0)
    {
        const qsizetype before = writer.tag().size();
        writer.frame(id, body, version == 2 ? 0 : flags);
        file.foreign.append(writer.tag().mid(before));
    }

    void texts()
    {
        writer.text("TPE1", u"Interpret %1"_s.arg(random() % 100));
        foreign(name("TP2", "TPE2"), QByteArray("\0Other artist\0", 14));
        writer.text("TIT2", u"Titel Ä %1"_s.arg(random() % 100));
        writer.text("TALB", u"Album"_s).text("TYER", u"1999"_s).text("TRCK", u"3/12"_s);
        foreign(name("TEN", "TENC"), "\7odd" + randomBytes(random, int(random() % 30)));
        writer.text("TCON", u"(17)"_s).comment(u""_s, u"Kommentar"_s);
    }

    void foreigners()
    {
        foreign(name("UFI", "UFID"), "owner" + QByteArray(1, '\0') + randomBytes(random, 20));
        foreign(name("GEO", "GEOB"), randomBytes(random, int(random() % 3000)));
        foreign(name("RVA", "RVAD"), randomBytes(random, 12));
        foreign(name("XYZ", "ZZ99"), randomBytes(random, int(random() % 50) + 1));
        foreign(name("POP", "POPM"),
                QByteArray("a@b\0\xC4", 5) + randomBytes(random, int(random() % 9)));
        foreign(name("COM", "COMM"), QByteArray("\0engdescribed\0text", 18));
        foreign(name("TXX", "TXXX"), QByteArray("\0BARCODE\0"
                                                "123",
                                                12));
        foreign(name("PIC", "APIC"), version == 2 ? QByteArray("\0JPG\4\0back", 10)
                                                  : QByteArray("\0image/png\0\4\0back", 17));
    }
};

QByteArray withSize(QByteArray tag)
{
    qint64 size = tag.size() - 10;
    for (qsizetype i = 9; i >= 6; --i, size >>= 7) {
        tag[i] = char(size & 0x7F);
    }
    return tag;
}

using Shape = void (*)(Maker&);

struct NamedShape
{
    const char* name;
    Shape make;
};

QByteArray plain(Maker& maker)
{
    return maker.writer.tag(int(maker.random() % 3) * 700);
}

constexpr std::array kShapes = std::to_array<NamedShape>({
    {"plain", [](Maker& m) { m.file.tags = plain(m); }},
    {"tight", [](Maker& m) { m.file.tags = m.writer.tag(); }},
    {"roomy", [](Maker& m) { m.file.tags = m.writer.tag(6000); }},
    {"extended header",
     [](Maker& m) {
         if (m.version == 2) {
             m.file.tags = plain(m);
             return;
         }
         QByteArray tag = plain(m);
         tag.insert(10, m.version == 3 ? QByteArray("\0\0\0\12\x80\0\0\0\0\0CRC!", 14)
                                       : QByteArray("\0\0\0\14\1\x20\5\1\2\3\4\5", 12));
         tag[5] = 0x40;
         m.file.tags = withSize(tag);
         m.file.isReadByTagLibrary = m.version == 4;
     }},
    {"footer",
     [](Maker& m) {
         QByteArray tag = m.writer.tag();
         if (m.version == 4) {
             tag[5] = 0x10;
             tag += "3DI" + tag.mid(3, 7);
         }
         m.file.tags = tag;
     }},
    {"unsynchronised",
     [](Maker& m) {
         if (m.version == 4) {
             m.file.tags = plain(m);
             m.file.tags[5] = '\x80';
         } else {
             m.file.tags = m.writer.unsynchronised();
         }
     }},
    {"two tags",
     [](Maker& m) {
         Id3v2Writer second(m.version == 3 ? 4 : 3);
         second.frame("PRIV", "second" + randomBytes(m.random, 40)).text("TIT2", u"Second"_s);
         const QByteArray tag = second.tag();
         m.file.foreign.append(rawTag(tag).frames[0].bytes);
         m.file.tags = m.writer.tag(100) + second.tag(50);
     }},
    {"empty frame",
     [](Maker& m) {
         m.foreign(m.name("TOA", "TOPE"), {});
         m.foreign(m.name("TOL", "TOLY"), QByteArray("\0behind", 7));
         m.writer.text("TBPM", u"100"_s);
         m.file.tags = plain(m);
     }},
    {"lower case",
     [](Maker& m) {
         QByteArray strange =
             m.version == 2 ? QByteArray("ncn\0\0\6", 6) : QByteArray("ncon\0\0\0\6\0\0", 10);
         strange += randomBytes(m.random, 5) + 'x';
         m.file.foreign.append(strange);
         m.file.tags = withSize(m.writer.tag() + strange + QByteArray(200, '\0'));
     }},
    {"too large",
     [](Maker& m) {
         QByteArray strange =
             m.version == 2 ? QByteArray("XYQ\x7F\0\0", 6) : QByteArray("WXYQ\x7F\0\0\0\0\0", 10);
         strange += "cut off";
         m.file.foreign.append(strange);
         m.file.tags = withSize(m.writer.tag() + strange + QByteArray(90, '\0'));
     }},
    {"grouped",
     [](Maker& m) {
         const quint16 group = m.version == 3 ? 0x20 : 0x40;
         m.foreign(m.name("TT3", "TIT3"), QByteArray("G\0grouped", 9), group);
         m.file.tags = plain(m);
     }},
    {"encrypted",
     [](Maker& m) {
         const quint16 flag = m.version == 3 ? 0x40 : 0x04;
         m.foreign(m.name("TT3", "TIT3"), "\7" + randomBytes(m.random, 30), flag);
         m.foreign(m.name("EQU", "EQUA"), randomBytes(m.random, 30), 0xE000);
         m.file.tags = plain(m);
     }},
    {"compressed",
     [](Maker& m) {
         const QByteArray packed = qCompress(QByteArray("\0a text that was packed", 23));
         // Its first four bytes are the length, plain in version 2.3 and of seven bits in 2.4.
         m.foreign(m.name("TT3", "TIT3"), packed, m.version == 3 ? 0x80 : 0x09);
         m.file.tags = plain(m);
     }},
    {"plain sizes",
     [](Maker& m) {
         if (m.version == 4) {
             const qsizetype before = m.writer.tag().size();
             m.writer.frame("GEOB", QByteArray(300, 'g')).lieAboutLastSize(300);
             m.file.foreign.append(m.writer.tag().mid(before));
         }
         m.writer.text("TBPM", u"99"_s);
         m.file.tags = m.writer.tag(400);
     }},
    {"several values",
     [](Maker& m) {
         Id3v2Writer several(m.version, TextEncoding::Latin1);
         several.frame(m.name("TP1", "TPE1"), QByteArray("\0One\0Two", 8));
         m.file.foreign.clear();
         m.file.tags = several.text("TIT2", u"T"_s).tag(int(m.random() % 500));
     }},
    {"own fields",
     [](Maker& m) {
         m.writer.userText(u"Kategorie"_s, u"Kat"_s).userText(u"USER1"_s, u"eins"_s);
         m.writer.rating(linux_media::kRatingAddress, 196, quint32(m.random()));
         m.writer.picture(randomBytes(m.random, 500));
         m.file.tags = plain(m);
     }},
    {"no tag",
     [](Maker& m) {
         m.file.foreign.clear();
         m.file.tags.clear();
     }},
});

/// A tag of the other kind, with header and footer.
QByteArray apeTag()
{
    const QByteArray items("\3\0\0\0\0\0\0\0Key\0abc", 15);
    const QByteArray size = QByteArray(1, char(items.size() + 32)) + QByteArray(3, '\0');
    const QByteArray start =
        "APETAGEX" + QByteArray("\xD0\7\0\0", 4) + size + QByteArray("\1\0\0\0", 4);
    const QByteArray zeros(8, '\0');
    return start + QByteArray("\0\0\0\xA0", 4) + zeros + items + start +
           QByteArray("\0\0\0\x80", 4) + zeros;
}

QByteArray tailOf(int number, CorpusFile& file)
{
    const QByteArray old = id3v1Tag({"Old title", "Old artist", "Old album", "1998", "c", 4, 12});
    switch (number) {
    case 0:
        return {};
    case 1:
        file.oldTag = old;
        return {};
    case 2:
        file.oldTag = old;
        return apeTag();
    case 3:
        file.oldTag = old;
        return "LYRICSBEGININD00002xx000021LYRICS200"_ba;
    case 4:
        file.oldTag = old;
        return "AUD" + QByteArray(43, 'p');
    case 5:
        file.oldTag = old;
        return "TAG+" + QByteArray(223, 'x');
    default:
        return apeTag();
    }
}

} // namespace

CorpusFile corpusFile(int number, std::mt19937& random)
{
    CorpusFile file;
    const auto& shape = kShapes[size_t(number) % kShapes.size()];
    const int version = 2 + number / int(kShapes.size()) % 3;
    const int tail = number / 5 % 7;
    const auto encoding = number % 2 == 0                   ? TextEncoding::Latin1
                          : version == 4 && number % 4 == 1 ? TextEncoding::Utf8
                                                            : TextEncoding::Utf16;
    Maker maker(version, encoding, random, file);
    maker.texts();
    if (number % 3 != 0) {
        maker.foreigners();
    }
    shape.make(maker);
    file.shape = std::string(shape.name) + " 2." + std::to_string(version) + " tail " +
                 std::to_string(tail) + " number " + std::to_string(number);
    const FrameFormat format{MpegVersion::V1, number % 2 == 0 ? 128 : 192, 44100, number % 5 == 0};
    const QByteArray stream =
        number % 3 == 0 ? variableStream(format, 20, quint32(number)) : constantStream(format, 20);
    const QByteArray between = number % 11 == 3   ? QByteArray(300, '\0')
                               : number % 11 == 7 ? apeTag()
                                                  : QByteArray();
    file.sound = between +
                 (number % 4 == 0 ? withHeader(StreamHeader::Xing, format, stream, 20) : stream) +
                 tailOf(tail, file);
    return file;
}

} // namespace melovane::test
