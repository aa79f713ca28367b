#include "playlistfiles/m3u_place.h"
#include "playlistfiles/m3u_text.h"

#include <QStringEncoder>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

std::vector<M3uRecord> recordsOf(const QByteArray& bytes)
{
    M3uLines lines(bytes);
    M3uParser parser;
    std::vector<M3uRecord> records;
    while (const auto line = lines.next()) {
        if (auto record = parser.take(*line)) {
            records.push_back(std::move(*record));
        }
    }
    return records;
}

QStringList filesOf(const QByteArray& bytes)
{
    QStringList files;
    for (const M3uRecord& record : recordsOf(bytes)) {
        files.append(record.file);
    }
    return files;
}

TEST(M3uText, APlainListWithACommentAndPathsGivesOneRecordPerPath)
{
    EXPECT_EQ(filesOf("#EXTM3U\r\n#EXTINF:216,Artist - Title\r\nC:\\Music\\a.mp3\r\n/b/c.mp3\r\n"),
              (QStringList{u"C:\\Music\\a.mp3"_s, u"/b/c.mp3"_s}));
}

TEST(M3uText, ARecordHoldsWhatTheLinesBeforeItsPathTell)
{
    const auto records = recordsOf("#Melovane-M3U x\r\n#MLV:VER=1.0\r\n"
                                   "#MLV:FID= 800000000001 \r\n"
                                   "#MLV:TIT= T | I | G \r\n"
                                   "#MLV:VOL= 5 |-3 |128| 216000 \r\n"
                                   "#MLV:MIX= 10 | 20 | 5000 |1,2,3,4,5|Null|9,8\r\n"
                                   "/m/x.mp3\r\n");
    ASSERT_EQ(records.size(), 1U);
    const M3uRecord& record = records[0];
    EXPECT_EQ(record.FID, u"800000000001"_s);
    EXPECT_EQ(record.Titel, u"T"_s);
    EXPECT_EQ(record.Interpret, u"I"_s);
    EXPECT_EQ(record.Genre, u"G"_s);
    EXPECT_EQ(record.Volume, 5);
    EXPECT_EQ(record.Pitch, -3);
    EXPECT_EQ(record.BPM, u"128"_s);
    EXPECT_EQ(record.DTimeMsec, 216000);
    EXPECT_EQ(record.FrameStart, 10);
    EXPECT_EQ(record.FrameStop, 20);
    EXPECT_EQ(record.MixTime, 5000);
    EXPECT_EQ(record.MixIn, u"1,2,3,4,5"_s);
    EXPECT_EQ(record.MixOut, QString());
    EXPECT_EQ(record.eq, u"9,8"_s);
    EXPECT_EQ(record.file, u"/m/x.mp3"_s);
}

TEST(M3uText, TwoPathsInARowAreTwoRecordsTheSecondWithoutDataOfItsOwn)
{
    const auto records = recordsOf("#MLV:FID=1\n#MLV:MIX=7|8|9|a|b|c\n/a.mp3\n/b.mp3\n");
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].FID, u"1"_s);
    EXPECT_EQ(records[1].FID, QString());
    EXPECT_EQ(records[1].FrameStart, 0);
    EXPECT_EQ(records[1].MixIn, QString());
}

TEST(M3uText, DataBehindTheLastPathIsDropped)
{
    EXPECT_EQ(filesOf("/a.mp3\n#MLV:FID=800000000001\n#MLV:TIT=x|y|z\n"), QStringList{u"/a.mp3"_s});
}

TEST(M3uText, OfALineWithBarsThePathAloneIsTaken)
{
    EXPECT_EQ(filesOf("C:\\Music\\x.mp3|Artist|216\n"), QStringList{u"C:\\Music\\x.mp3"_s});
}

TEST(M3uText, TheWordNullInAnyCaseReadsAsEmpty)
{
    for (const char* word : {"Null", "null", "NULL", " nUlL "}) {
        const QByteArray fid = QByteArray("#MLV:FID=") + word;
        const QByteArray title = QByteArray("\n#MLV:TIT=") + word + '|' + word + '|' + word;
        const auto records = recordsOf(fid + title + "\n#MLV:MIX=Null|null| 3 |" + word + "|" +
                                       word + "|" + word + "\nx.mp3");
        ASSERT_EQ(records.size(), 1U);
        EXPECT_EQ(records[0].FID + records[0].Titel + records[0].Interpret + records[0].Genre +
                      records[0].MixIn + records[0].MixOut + records[0].eq,
                  QString());
        EXPECT_EQ(records[0].FrameStart, 0);
        EXPECT_EQ(records[0].MixTime, 3);
    }
}

TEST(M3uText, ATitleWithABarIsSplitThere)
{
    const auto records = recordsOf("#MLV:TIT=A|B|Artist|Genre\nx.mp3\n");
    EXPECT_EQ(records.at(0).Titel, u"A"_s);
    EXPECT_EQ(records.at(0).Interpret, u"B"_s);
    EXPECT_EQ(records.at(0).Genre, u"Artist"_s);
}

TEST(M3uText, ALineWithTooFewFieldsIsIgnoredAsAWholeAndTheRecordKeepsWhatItHad)
{
    const auto records =
        recordsOf("#MLV:TIT=T|I|G\n#MLV:TIT=X|Y\n#MLV:VOL=1|2|3|4\n#MLV:VOL=9|9|9\n"
                  "#MLV:MIX=1|2|3|a|b|c\n#MLV:MIX=9|9|9|z|z\nx.mp3\n");
    EXPECT_EQ(records.at(0).Titel, u"T"_s);
    EXPECT_EQ(records.at(0).Volume, 1);
    EXPECT_EQ(records.at(0).MixOut, u"b"_s);
}

TEST(M3uText, ThePrefixIsTakenInItsExactCase)
{
    const auto records = recordsOf("#mlv:FID=1\n #MLV:FID=2\nx.mp3\n");
    ASSERT_EQ(records.size(), 2U); // a blank in front makes a path of it
    EXPECT_EQ(records[0].FID + records[1].FID, QString());
}

TEST(M3uText, LinesEndWithCrLfLfOrCr)
{
    const QStringList both{u"a.mp3"_s, u"b.mp3"_s};
    EXPECT_EQ(filesOf("a.mp3\r\nb.mp3\r\n"), both);
    EXPECT_EQ(filesOf("a.mp3\nb.mp3"), both);
    EXPECT_EQ(filesOf("a.mp3\rb.mp3\r"), both);
    EXPECT_EQ(filesOf("\r\n\n\ra.mp3\n\n   \nb.mp3\n"), both);
    EXPECT_EQ(filesOf(""), QStringList());
}

TEST(M3uText, EveryEncodingOfAListIsRead)
{
    const QString text = u"Müller – Grüße.mp3\n"_s;
    const QStringList expected{u"Müller – Grüße.mp3"_s};
    EXPECT_EQ(filesOf(text.toUtf8()), expected);
    EXPECT_EQ(filesOf("\xEF\xBB\xBF" + text.toUtf8()), expected);
    EXPECT_EQ(filesOf("M\xFCller \x96 Gr\xFC\xDF"
                      "e.mp3\n"),
              expected);
    for (const auto encoding : {QStringConverter::Utf16LE, QStringConverter::Utf16BE}) {
        for (const auto flag :
             {QStringConverter::Flag::Default, QStringConverter::Flag::WriteBom}) {
            QStringEncoder encoder(encoding, flag);
            EXPECT_EQ(filesOf(QByteArray(encoder(u"M3U\n"_s + text))),
                      (QStringList{u"M3U"_s} + expected));
        }
    }
}

TEST(M3uText, ALineInAnotherEncodingLeavesTheUmlautsOfTheOthers)
{
    EXPECT_EQ(filesOf("\xC3\xA4.mp3\n\xE4.mp3\n\xFF\xFF\n"),
              (QStringList{u"ä.mp3"_s, u"ä.mp3"_s, u"ÿÿ"_s}));
}

TEST(M3uText, FewBytesAreNoReasonToFail)
{
    for (const char* bytes : {"\xFF", "\xFE", "\xEF\xBB", "#", "\r", "|"}) {
        EXPECT_LE(filesOf(bytes).size(), 1);
    }
    EXPECT_EQ(filesOf(QByteArray("\0\0\0\0\0", 5)).size(), 1);
    EXPECT_EQ(filesOf(QByteArray("\xFF\xFE\x0A", 3)).size(), 1);
}

struct Address
{
    const char16_t* line;
    const char16_t* path;
};

class M3uAddress : public testing::TestWithParam<Address>
{};

TEST_P(M3uAddress, IsReadAsThePathThatItMeans)
{
    const QString line = QString::fromUtf16(GetParam().line);
    EXPECT_EQ(m3uplace::readings(line, line).first(), QString::fromUtf16(GetParam().path));
}

INSTANTIATE_TEST_SUITE_P(Addresses,
                         M3uAddress,
                         testing::Values(Address{u"file:///home/u/a%20b.mp3", u"/home/u/a b.mp3"},
                                         Address{u"FILE://localhost/m/x.mp3", u"/m/x.mp3"},
                                         Address{u"file:/m/x.mp3", u"/m/x.mp3"},
                                         Address{u"file:///C:/Musik/%C3%A4.mp3", u"C:/Musik/ä.mp3"},
                                         Address{u"file:///m/%E4.mp3", u"/m/ä.mp3"},
                                         Address{u"file://srv/share/x.mp3", u"\\\\srv/share/x.mp3"},
                                         Address{u"file://C:\\x.mp3", u"C:\\x.mp3"},
                                         Address{u"/m/100%.mp3", u"/m/100%.mp3"},
                                         Address{u"x.mp3", u"x.mp3"}));

TEST(M3uPlace, APlainPathMayBeEncodedAllTheSame)
{
    EXPECT_EQ(m3uplace::readings(u"a%20b.mp3"_s, u"a%20b.mp3"_s),
              (QStringList{u"a%20b.mp3"_s, u"a b.mp3"_s}));
}

TEST(M3uPlace, ABarMayBelongToTheName)
{
    EXPECT_EQ(m3uplace::readings(u"/m/a"_s, u"/m/a|b.mp3"_s),
              (QStringList{u"/m/a"_s, u"/m/a|b.mp3"_s}));
}

TEST(M3uPlace, DotsAreTakenOutOfAPath)
{
    EXPECT_EQ(m3uplace::cleaned(u"/a/b/../c/./d.mp3"_s), u"/a/c/d.mp3"_s);
    EXPECT_EQ(m3uplace::cleaned(u"/../../d.mp3"_s), u"/d.mp3"_s);
    EXPECT_EQ(m3uplace::cleaned(u"C:\\a\\..\\b.mp3"_s), u"C:\\b.mp3"_s);
    EXPECT_EQ(m3uplace::cleaned(u"\\\\srv\\share\\x.mp3"_s), u"\\\\srv\\share\\x.mp3"_s);
    EXPECT_EQ(m3uplace::cleaned(u"../x.mp3"_s), u"../x.mp3"_s);
    EXPECT_EQ(m3uplace::cleaned(u"."_s), QString());
    EXPECT_EQ(m3uplace::cleaned(u"C:x.mp3"_s), u"C:x.mp3"_s);
    EXPECT_EQ(m3uplace::cleaned(u"./C:C:"_s), u"C:C:"_s);
    EXPECT_EQ(m3uplace::cleaned(u"a/b"_s), u"a/b"_s);
}

} // namespace
} // namespace melovane
