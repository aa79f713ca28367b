#include "player/captured_engine.h"
#include "player/sequence_stage.h"
#include "playlists/play_statistics.h"
#include "support/proof.h"

#include <QFile>

#include <random>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::CapturedEngine;
using test::Lists;
using test::SequenceStage;
using test::SilentEngine;
using test::StageEngine;

constexpr int kTracks = 30;
constexpr int kEntriesOfTheNight = 600;
/// Of the night that is heard, unless the proof is wanted in full: it is mixed sample by sample.
constexpr int kEntriesOfAnHour = 15;
constexpr int kSeed = 20261122;

/// What a DJ expects of the list, told without decks: which track comes behind the present one.
class NightModel
{
public:
    struct Entry
    {
        int track = 0;
        int aktion = kAktionMix;
        bool isPlayable = true;
    };

    /// The track that comes next; 0 for none.
    [[nodiscard]] int next() const
    {
        if (guest != 0) {
            return guest;
        }
        return successor(playing != 0 && at >= 0 && list[size_t(at)].aktion == kAktionLoop);
    }

    /// The same when the user goes on by hand, out of a loop, too.
    [[nodiscard]] int nextByHand() const { return guest != 0 ? guest : successor(false); }

    /// The track begins.
    void begin(int track)
    {
        playing = track;
        if (track == guest) {
            guest = 0;
            isGuest = true;
            return;
        }
        isGuest = false;
        place = placeOf(track);
        at = place;
        isGone = false;
    }

    [[nodiscard]] bool stopsBehind() const
    {
        return !isGuest && !isGone && list[size_t(place)].aktion == kAktionStop;
    }

    void remove(int track)
    {
        const int index = placeOf(track);
        list.erase(list.begin() + index);
        if (index < place) {
            --place;
        } else if (index == place) {
            isGone = true;
        }
        at = isGone || isGuest ? -1 : place;
    }

    [[nodiscard]] int placeOf(int track) const
    {
        for (size_t index = 0; index < list.size(); ++index) {
            if (list[index].track == track) {
                return int(index);
            }
        }
        return -1;
    }

    std::vector<Entry> list;
    int playing = 0;
    int guest = 0;
    int place = -1; ///< from which the list goes on
    int at = -1;    ///< of the entry that plays; -1 for one that is not in the list
    bool isGone = false;
    bool isGuest = false;

private:
    [[nodiscard]] int successor(bool isLoop) const
    {
        if (isLoop && !isGuest) {
            return playing;
        }
        const int count = int(list.size());
        for (int step = isGone ? 0 : 1; step <= count; ++step) {
            const Entry& entry = list[size_t((place + step) % count)];
            if (entry.isPlayable && entry.aktion != kAktionJinglePlay) {
                return entry.track;
            }
        }
        return 0;
    }
};

/// A night in fast motion: whatever is done to the list, what is heard is what the model says.
class NightTest : public testing::TestWithParam<bool>
{
protected:
    NightTest()
    {
        // The track that is only asked for mixes as long as the entries do.
        stage.settings->SetDefaultMixTime(2000);
        stage.addPlaying(kTracks);
        for (int track = 1; track <= kTracks; ++track) {
            model.list.push_back({track});
        }
        stage.addTrack(kTracks + 1);
        stage.onPlayed = [this](const MlvPlaylistDetail& entry) {
            savePlayStatistics(stage.parts, stage.clock, entry);
        };
    }

    static bool isHeard() { return GetParam(); }

    static std::unique_ptr<StageEngine> engine()
    {
        if (isHeard()) {
            return std::make_unique<CapturedEngine>();
        }
        return std::make_unique<SilentEngine>();
    }

    static int entries()
    {
        return isHeard() ? test::repetitions(kEntriesOfAnHour, kEntriesOfTheNight)
                         : kEntriesOfTheNight;
    }

    int random(int from, int to) { return std::uniform_int_distribution<int>(from, to)(dice); }

    [[nodiscard]] NightModel::Entry& any()
    {
        return model.list[size_t(random(0, int(model.list.size()) - 1))];
    }

    /// The number of sounds that have begun on the two decks.
    [[nodiscard]] int begun() const
    {
        return int(std::count_if(stage.engineOfStage.heard.begin(), stage.engineOfStage.heard.end(),
                                 [](const auto& one) { return one.deck <= AirDeck::B; }));
    }

    /// The track that began last.
    [[nodiscard]] int lastTrack() const
    {
        const auto& heard = stage.engineOfStage.heard;
        const auto last = std::find_if(heard.rbegin(), heard.rend(),
                                       [](const auto& one) { return one.deck <= AirDeck::B; });
        return last->sound.file.section(u'/', -1).section(u'.', 0, 0).mid(1).toInt();
    }

    void setAktion(NightModel::Entry& entry, int aktion)
    {
        entry.aktion = aktion;
        stage.edit(entry.track, u"aktion=%1"_s.arg(aktion));
    }

    void takeOut()
    {
        const int track = any().track;
        if (model.list.size() > kTracks / 2) {
            model.remove(track);
            stage.execute(u"delete from pl_all where fid='%1'"_s.arg(Lists::fid(track)));
            stage.sequence.listChanged();
        }
    }

    void breakOrMend()
    {
        NightModel::Entry& entry = any();
        const QString file = stage.file(u"t%1.mp3"_s.arg(entry.track));
        if (entry.track != model.playing && entry.isPlayable) {
            entry.isPlayable = false;
            stage.engineOfStage.broken[file] = 0;
        } else if (!entry.isPlayable) {
            entry.isPlayable = true;
            stage.engineOfStage.broken.erase(file);
        }
        stage.sequence.listChanged();
    }

    void askNext()
    {
        model.guest = kTracks + 1;
        stage.sequence.playNext(Lists::fid(model.guest));
    }

    /// Something that happens in the first half of an entry. \return the track that begins by it, 0
    /// for none
    int happen()
    {
        switch (random(0, 11)) {
        case 0:
            setAktion(any(), kAktionStop);
            break;
        case 1:
            setAktion(any(), kAktionLoop);
            break;
        case 2:
            setAktion(any(), kAktionJinglePlay);
            break;
        case 3:
        case 4:
            setAktion(any(), kAktionMix);
            break;
        case 5:
            takeOut();
            break;
        case 6:
            breakOrMend();
            break;
        case 7:
            askNext();
            break;
        case 8: {
            const int wanted = model.nextByHand();
            stage.sequence.next();
            return wanted;
        }
        case 9: {
            const NightModel::Entry& entry = any();
            if (!entry.isPlayable || model.guest != 0) {
                break;
            }
            const int wanted = entry.track;
            stage.sequence.playNow(Lists::fid(wanted));
            return wanted;
        }
        default:
            break;
        }
        return 0;
    }

    /// As the console is told: a track without an entry is none.
    [[nodiscard]] static int inList(int track) { return track > kTracks ? 0 : track; }

    void runUntilNext(int limitMs)
    {
        const int before = begun();
        for (int passed = 0; begun() == before && passed < limitMs; passed += 10) {
            stage.run(10);
        }
    }

    SequenceStage stage{engine()};
    NightModel model;
    std::mt19937 dice{kSeed};
};

TEST_P(NightTest, TheEntriesComeAsAModelSaysWithoutAGap)
{
    stage.sequence.play();
    runUntilNext(1000);
    model.begin(lastTrack());
    ASSERT_EQ(model.playing, 1);
    QStringList counted;
    bool isCounted = false;
    for (int entry = 1; entry < entries(); ++entry) {
        stage.run(3000); // the mix before is over
        const int byHand = happen();
        int expected = byHand;
        if (byHand == 0) {
            stage.run(1500); // as long as the search may last
            expected = model.next();
            ASSERT_EQ(
                stage.told.last(),
                u"%1>%2"_s.arg(inList(model.isGuest ? 0 : model.playing)).arg(inList(expected)))
                << entry;
            if (!isCounted) {
                counted.append(Lists::fid(model.playing));
            }
        }
        const bool isRepeat = byHand == 0 && model.guest == 0 && expected == model.playing;
        if (byHand == 0 && model.stopsBehind()) {
            const int longest = stage.engineOfStage.longestSilenceMs;
            stage.run(SequenceStage::kTrackMs);
            ASSERT_FALSE(stage.sequence.isPlaying()) << entry;
            stage.engineOfStage.silentMs = 0;
            stage.engineOfStage.longestSilenceMs = longest;
            stage.sequence.play();
        }
        runUntilNext(SequenceStage::kTrackMs + 1000);
        ASSERT_EQ(lastTrack(), expected) << entry;
        model.begin(expected);
        isCounted = isRepeat;
    }
    EXPECT_EQ(stage.played.mid(0, counted.size()).join(u' ').toStdString(),
              counted.join(u' ').toStdString());
    EXPECT_LE(stage.played.size() - counted.size(), 1);
    EXPECT_EQ(stage.column(u"select fid from pl_stat"_s), stage.played);
    EXPECT_LE(stage.engineOfStage.longestSilenceMs, 2000);
}

INSTANTIATE_TEST_SUITE_P(Engines,
                         NightTest,
                         testing::Bool(),
                         [](const testing::TestParamInfo<bool>& night) {
                             return night.param ? "Heard" : "Silent";
                         });

} // namespace
} // namespace melovane
