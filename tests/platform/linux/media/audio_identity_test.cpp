#include "platform/linux/audio_identity.h"
#include "support/mp3_maker.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>
#include <id3v1tag.h>
#include <id3v2tag.h>
#include <mpegfile.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace demomusic;

constexpr int kFrames = 800;

QByteArray tagOf(const QString& title, int version = 3)
{
    return Id3v2Writer(version).text("TIT2", title).text("TPE1", u"Wer"_s).tag(300);
}

QByteArray sound(quint32 seed, int frames = kFrames)
{
    return variableStream({}, frames, seed);
}

class AudioIdentityTest : public testing::Test
{
protected:
    QString write(const QString& name, const QByteArray& bytes)
    {
        folder.write(name, bytes);
        return folder.file(name);
    }

    test::TempFolder folder;
    linux_media::LinuxAudioIdentity identity;
};

TEST_F(AudioIdentityTest, TheSameSoundIsKnownUnderEveryTag)
{
    const QByteArray stream = sound(1);
    const QString bare = write(u"bare.mp3"_s, stream);
    const auto sampled = identity.sampled(bare);
    const auto whole = identity.whole(bare);
    ASSERT_TRUE(sampled && whole);
    EXPECT_EQ(sampled->bytes, stream.size());
    EXPECT_EQ(sampled->hash.size(), 16);
    EXPECT_EQ(identity.length(bare), stream.size());
    const QString tagged =
        write(u"tagged.mp3"_s, tagOf(u"Eins"_s) + stream + id3v1Tag({"Eins", "Wer", {}, {}, {}}));
    const QString other = write(u"other.mp3"_s, tagOf(u"Ganz anders"_s, 4) + stream);
    for (const QString& file : {tagged, other}) {
        EXPECT_EQ(identity.sampled(file), sampled) << file.toStdString();
        EXPECT_EQ(identity.whole(file), whole) << file.toStdString();
    }
}

TEST_F(AudioIdentityTest, AnotherProgramsTagsChangeNothing)
{
    const QString file = write(u"a.mp3"_s, tagOf(u"Eins"_s) + sound(2));
    const auto sampled = identity.sampled(file);
    const auto whole = identity.whole(file);
    ASSERT_TRUE(sampled && whole);
    {
        TagLib::MPEG::File changed(file.toLocal8Bit().constData());
        changed.ID3v2Tag(true)->setTitle(std::string(9000, 'x'));
        changed.ID3v1Tag(true)->setArtist("Wer");
        ASSERT_TRUE(changed.save());
    }
    EXPECT_EQ(identity.sampled(file), sampled);
    EXPECT_EQ(identity.whole(file), whole);
    {
        TagLib::MPEG::File changed(file.toLocal8Bit().constData());
        ASSERT_TRUE(changed.strip());
    }
    EXPECT_EQ(identity.whole(file), whole);
}

TEST_F(AudioIdentityTest, AHeaderFrameThatOnlyCountsIsNoSound)
{
    const QByteArray stream = sound(3);
    const auto plain = identity.whole(write(u"plain.mp3"_s, stream));
    ASSERT_TRUE(plain);
    for (const StreamHeader kind : {StreamHeader::Xing, StreamHeader::Info, StreamHeader::Vbri}) {
        const QString file =
            write(u"h.mp3"_s, tagOf(u"Eins"_s) + withHeader(kind, {}, stream, kFrames));
        EXPECT_EQ(identity.whole(file), plain) << int(kind);
    }
}

TEST_F(AudioIdentityTest, OtherSoundOfTheSameLengthIsAnother)
{
    const QByteArray stream = sound(4);
    QByteArray changed = stream;
    changed[changed.size() / 2 + 100] = char(changed[changed.size() / 2 + 100] ^ 1);
    const QString one = write(u"one.mp3"_s, stream);
    const QString two = write(u"two.mp3"_s, changed);
    EXPECT_EQ(identity.length(one), identity.length(two));
    EXPECT_NE(identity.sampled(one), identity.sampled(two));
    EXPECT_NE(identity.whole(one), identity.whole(two));
}

TEST_F(AudioIdentityTest, AByteThatNoSampleMeetsIsSeenByTheWhole)
{
    const QByteArray stream = sound(5);
    QByteArray changed = stream;
    changed[changed.size() / 10] = char(changed[changed.size() / 10] ^ 1);
    const QString one = write(u"one.mp3"_s, stream);
    const QString two = write(u"two.mp3"_s, changed);
    EXPECT_EQ(identity.sampled(one), identity.sampled(two));
    EXPECT_NE(identity.whole(one), identity.whole(two));
}

TEST_F(AudioIdentityTest, AFileWithoutSoundHasNoIdentity)
{
    EXPECT_FALSE(identity.sampled(folder.file(u"none.mp3"_s)));
    EXPECT_FALSE(identity.length(folder.path()));
    for (const test::OddFile& odd : test::oddFiles()) {
        const QString file = write(u"odd.mp3"_s, odd.bytes);
        const auto whole = identity.whole(file);
        EXPECT_EQ(whole.has_value(), identity.sampled(file).has_value()) << odd.name;
        EXPECT_TRUE(whole || !odd.playable) << odd.name;
    }
}

} // namespace
} // namespace melovane
