#include "platform/linux/linux_files.h"
#include "store/kept_sounds.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class KeptSoundsTest : public testing::Test
{
protected:
    static AudioPrint print(char sign, qint64 bytes = 1000)
    {
        return {bytes, QByteArray(16, sign)};
    }

    void keep(const QString& fid, const AudioPrint& sound)
    {
        KeptSounds sounds(files, library);
        sounds.add(fid, sound);
        sounds.write();
    }

    [[nodiscard]] QHash<QString, AudioPrint> read() { return KeptSounds::read(files, library); }

    test::TempFolder folder;
    LinuxFiles files;
    QString library = folder.file(u"melovane.mdb"_s);
};

TEST_F(KeptSoundsTest, WhatIsKeptIsReadAndTheLastOfATrackCounts)
{
    EXPECT_TRUE(read().isEmpty());
    keep(u"300000000001"_s, print('a'));
    keep(u"300000000002"_s, print('\0', 5'000'000'000));
    keep(u"300000000001"_s, print('\n', 7));
    EXPECT_EQ(read(),
              (QHash<QString, AudioPrint>{{u"300000000001"_s, print('\n', 7)},
                                          {u"300000000002"_s, print('\0', 5'000'000'000)}}));
}

TEST_F(KeptSoundsTest, NothingToKeepMakesNoFile)
{
    KeptSounds sounds(files, library);
    sounds.write();
    EXPECT_FALSE(files.fileExists(folder.file(u"melovane.sounds"_s)));
}

TEST_F(KeptSoundsTest, ALineWithoutItsEndSpoilsNoOther)
{
    keep(u"300000000001"_s, print('a'));
    const QByteArray whole = folder.read(u"melovane.sounds"_s);
    for (qsizetype cut = 0; cut < whole.size(); ++cut) {
        folder.write(u"melovane.sounds"_s, whole.left(cut));
        EXPECT_TRUE(read().isEmpty()) << cut;
        keep(u"300000000002"_s, print('b'));
        const auto kept = read();
        EXPECT_EQ(kept.value(u"300000000002"_s), print('b')) << cut;
        // A line that lacks nothing but its end is whole by the end of the next one.
        EXPECT_EQ(kept.size(), cut == whole.size() - 1 ? 2 : 1) << cut;
    }
}

TEST_F(KeptSoundsTest, AnyBytesAreReadWithoutHarm)
{
    folder.write(u"melovane.sounds"_s,
                 "1 2\n\n1 -5 00\n1 x 00112233445566778899aabbccddeeff\n 7 "
                 "00112233445566778899aabbccddeeff\n1 5 zz112233445566778899aabbccddeeff\n"
                 "1 5 00112233445566778899aabbccddeeff 9\n\xFF\xFE\0\n");
    EXPECT_TRUE(read().isEmpty());
}

} // namespace
} // namespace melovane
