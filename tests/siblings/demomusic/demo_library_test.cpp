#include "platform/linux/tag_reader.h"
#include "siblings/demomusic/demo_library.h"
#include "support/temp_folder.h"

#include <QElapsedTimer>
#include <QSet>

#include <gtest/gtest.h>

namespace {

using namespace melovane;
using namespace melovane::demomusic;
using namespace melovane::test;
using namespace Qt::Literals::StringLiterals;

TEST(DemoMusic, TheSameSeedGivesTheSameBytesAndAnotherSeedOthers)
{
    const DemoLibrary one({20, 5, 1});
    const DemoLibrary same({20, 5, 1});
    const DemoLibrary other({20, 6, 1});
    int different = 0;
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(one.track(i).bytes, same.track(i).bytes);
        EXPECT_EQ(one.track(i).name, same.track(i).name);
        different += one.track(i).bytes != other.track(i).bytes ? 1 : 0;
    }
    EXPECT_GT(different, 15);
}

TEST(DemoMusic, EveryTrackIsAFileOfItsOwnThatReads)
{
    const TempFolder folder;
    const linux_media::LinuxTagReader reader;
    const DemoLibrary library({300, 3, 2});
    QSet<QString> names;
    int umlauts = 0;
    int rated = 0;
    int covers = 0;
    for (int i = 0; i < 300; ++i) {
        const DemoFile file = library.track(i, QByteArray(500, 'c'));
        names.insert(file.folder + u'/' + file.name);
        const MediaReading reading = reader.read(folder.write(u"x.mp3"_s, file.bytes));
        ASSERT_EQ(reading.fault, MediaFault::None) << file.name.toStdString();
        EXPECT_NEAR(reading.audio.milliseconds, 2000, 60);
        umlauts += reading.tags.id3v2.Titel.contains(u'ü') ? 1 : 0;
        rated += reading.tags.Note.isEmpty() ? 0 : 1;
        covers += reading.tags.hasPicture ? 1 : 0;
    }
    EXPECT_EQ(names.size(), 300);
    EXPECT_GT(umlauts, 10);
    EXPECT_GT(rated, 30);
    EXPECT_GT(covers, 30);
}

} // namespace
