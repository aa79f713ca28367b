#include "playlistfiles/m3u_fixture.h"

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// A list as some kind of program writes it; "@" stands for the folder of the music.
struct Dialect
{
    const char* name;
    const char* text;
};

void PrintTo(const Dialect& dialect, std::ostream* out)
{
    *out << dialect.name;
}

class M3uDialect : public M3uTest, public testing::WithParamInterface<Dialect>
{
protected:
    M3uDialect()
    {
        addTrack(u"Rock/Müller - Grüße.mp3"_s);
        addTrack(u"Rock/100% live #1.mp3"_s);
        addTrack(u"plain.mp3"_s);
    }
};

TEST_P(M3uDialect, GivesAllTracksInOrder)
{
    QByteArray text = GetParam().text;
    text.replace('@', music.path().toUtf8());
    EXPECT_EQ(load(text), 0) << told.join(u'\n').toStdString();
    EXPECT_EQ(loaded(),
              (QStringList{u"Müller - Grüße.mp3"_s, u"100% live #1.mp3"_s, u"plain.mp3"_s}));
    EXPECT_EQ(lists.value(u"select count(*) from db_all"_s).toLong(), 3);
}

INSTANTIATE_TEST_SUITE_P(
    Programs,
    M3uDialect,
    testing::Values(
        Dialect{"bare_paths", "@/Rock/Müller - Grüße.mp3\n@/Rock/100% live #1.mp3\n@/plain.mp3\n"},
        Dialect{"extended_relative", "#EXTM3U\n#EXTINF:216,Müller - Grüße\n"
                                     "Rock/Müller - Grüße.mp3\n#EXTINF:-1,\n"
                                     "Rock/100% live #1.mp3\n#EXTINF:0,x\nplain.mp3\n"},
        Dialect{"relative_with_dots", "#EXTM3U\r\n./Rock/Müller - Grüße.mp3\r\n"
                                      "Rock/../Rock/100% live #1.mp3\r\n.\\plain.mp3\r\n"},
        Dialect{"addresses", "#EXTM3U\n#PLAYLIST:Mix\nfile://@/Rock/M%C3%BCller%20-%20Gr%C3%BC"
                             "%C3%9Fe.mp3\nfile://@/Rock/100%25%20live%20%231.mp3\n"
                             "file://@/plain.mp3"},
        Dialect{"encoded_relative", "#EXTM3U\n#EXTVLCOPT:network-caching=1000\n"
                                    "Rock/M%C3%BCller%20-%20Gr%C3%BC%C3%9Fe.mp3\n"
                                    "Rock/100%25%20live%20%231.mp3\nplain.mp3\n"},
        Dialect{"backslashes_latin", "#EXTM3U\r\n#EXTINF:216,M\xFCller\r\n"
                                     "Rock\\M\xFCller - Gr\xFC\xDF"
                                     "e.mp3\r\nRock\\100% live #1.mp3\r\nplain.mp3\r\n"},
        Dialect{"marked_old_line_ends", "\xEF\xBB\xBF#EXTM3U\rRock/Müller - Grüße.mp3\r"
                                        "Rock/100% live #1.mp3\rplain.mp3\r"},
        Dialect{"bars", "Rock\\Müller - Grüße.mp3|Müller|216\r\nRock\\100% live #1.mp3|Live|1|x\r\n"
                        "plain.mp3|\r\n"},
        Dialect{"composed_otherwise", "Rock/Mu\xCC\x88ller - Gru\xCC\x88\xC3\x9F"
                                      "e.mp3\nROCK/100% LIVE #1.MP3\nPlain.mp3\n"}),
    [](const testing::TestParamInfo<Dialect>& dialect) { return std::string(dialect.param.name); });

} // namespace
} // namespace melovane::test
