// All 32 ways to tick the boxes of the cleaning, against a plain model in memory.
#include "care/ber_db_fixture.h"

#include <QMap>
#include <QSet>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

struct ModelTrack
{
    int del = 0;
    bool isDamaged = false;
    bool isOnDisc = false;
};

struct ModelList
{
    QStringList tracks;
    bool isActiv = false;
    bool isPlay = false;
    int group = 0; ///< -1: jingles
};

/// What a library amounts to, for a comparison.
struct Model
{
    QMap<QString, ModelTrack> tracks;
    QMap<int, ModelList> lists;
    QSet<int> groups;
    QStringList plays;
    QSet<QString> files; ///< tracks whose file is in its place

    QStringList removed; ///< since the beginning of the run

    void removeTracks(const std::function<bool(const ModelTrack&)>& isMeant, bool moves)
    {
        for (const QString& fid : tracks.keys()) {
            if (!isMeant(tracks[fid])) {
                continue;
            }
            if (moves && !tracks[fid].isOnDisc) {
                files.remove(fid);
            }
            tracks.remove(fid);
            removed.append(fid);
        }
    }

    void removeOrphans()
    {
        const bool isSearch = removed.isEmpty();
        const auto isOrphan = [&](const QString& fid) {
            return isSearch ? !tracks.contains(fid) : removed.contains(fid);
        };
        plays.removeIf(isOrphan);
        for (const int id : lists.keys()) {
            lists[id].tracks.removeIf(isOrphan);
            if (lists[id].tracks.isEmpty() && !lists[id].isActiv && !lists[id].isPlay) {
                lists.remove(id);
            }
        }
        QSet<int> used;
        for (const ModelList& list : lists) {
            used.insert(list.group);
        }
        groups.intersect(used);
    }
};

class BerDbBoxes : public BerDbTest, public testing::WithParamInterface<int>
{
protected:
    BerDbBoxes()
    {
        const ModelTrack kinds[] = {{},
                                    {-1},
                                    {0, true},
                                    {2},
                                    {3},
                                    {-1, true},
                                    {2, true},
                                    {3, true},
                                    {-1, false, true},
                                    {0, true, true},
                                    {7}};
        for (const ModelTrack& kind : kinds) {
            const QString fid = addTrack({.DTime = kind.isDamaged ? u"MP3ERROR"_s : u"03:36"_s,
                                          .DriveTyp = kind.isOnDisc ? 4 : 2,
                                          .DEL = kind.del});
            model.tracks.insert(fid, kind);
            model.files.insert(fid);
        }
        const QStringList fids = model.tracks.keys();
        const QString orphan = u"826816169999"_s;
        addList({fids + QStringList{orphan}, true, false, 0});
        for (const QString& fid : fids + QStringList{orphan}) {
            addList({{fid}, false, false, 0});
            suite.library.addPlayback(fid, suite.clock.now());
            model.plays.append(fid);
        }
        addList({{fids[1], fids[2], fids[3]}, false, false, 0});
        addList({{fids[1]}, false, true, 0});
        addList({{fids[2]}, false, false, -1});
        addList({{orphan}, true, false, -1});
        addList({{}, false, false, 0});
        model.groups.insert(suite.library.addGroup(u"Leer"_s));
    }

    void addList(const ModelList& list)
    {
        const int group = list.group == 0 ? suite.library.addGroup(u"Gruppe"_s) : list.group;
        const int id = suite.library.addPlaylist(
            {.GRID = group, .tracks = list.tracks, .Activ = list.isActiv, .IsPlay = list.isPlay});
        model.lists.insert(id, list);
        model.lists[id].group = group;
        if (group > 0) {
            model.groups.insert(group);
        }
    }

    Model model;
};

} // namespace

TEST_P(BerDbBoxes, LeaveWhatTheModelLeaves)
{
    std::vector<int> boxes;
    const auto isTicked = [](int box) { return (GetParam() >> box & 1) != 0; };
    for (int box = 0; box < kCleaningBoxes; ++box) {
        if (isTicked(box)) {
            boxes.push_back(box);
        }
    }
    const bool moves = isTicked(4);
    if (isTicked(0)) {
        model.removeTracks([](const ModelTrack& track) { return track.del == -1; }, moves);
    }
    if (isTicked(1)) {
        model.removeTracks([](const ModelTrack& track) { return track.isDamaged; }, moves);
    }
    if (isTicked(2)) {
        model.removeTracks([](const ModelTrack& track) { return track.del == 2; }, false);
    }
    if (isTicked(3)) {
        model.removeOrphans();
    }

    run(boxes);

    EXPECT_EQ(suite.column(u"select fid from db_all order by fid"_s),
              QStringList(model.tracks.keys()));
    QStringList plays = suite.column(u"select fid from pl_stat order by fid"_s);
    model.plays.sort();
    EXPECT_EQ(plays, model.plays);
    QStringList lists;
    for (const int id : model.lists.keys()) {
        lists.append(QString::number(id));
        EXPECT_EQ(suite.column(u"select fid from pl_all where pnid=%1 order by sid"_s.arg(id)),
                  model.lists[id].tracks);
        EXPECT_EQ(suite.value(u"select anzahl from pl_name where nid=%1"_s.arg(id)).toLong(),
                  model.lists[id].tracks.size());
    }
    EXPECT_EQ(suite.column(u"select nid from pl_name order by nid"_s), lists);
    EXPECT_EQ(count(u"pl_group"_s), model.groups.size());
    EXPECT_EQ(count(u"todo where id=1"_s), 0);
    QSet<QString> present;
    for (const QString& name : LinuxFiles().names(disk.path())) {
        if (name.endsWith(u".mp3"_s)) {
            present.insert(name.chopped(4));
        }
    }
    EXPECT_EQ(present, model.files);
    for (int box = 0; box < 4; ++box) {
        EXPECT_EQ(form.shown.boxes[size_t(box)].isDone, isTicked(box)) << box;
    }
}

INSTANTIATE_TEST_SUITE_P(All,
                         BerDbBoxes,
                         testing::Range(0, 1 << kCleaningBoxes),
                         [](const testing::TestParamInfo<int>& boxes) {
                             std::string name;
                             for (int box = 0; box < kCleaningBoxes; ++box) {
                                 name += (boxes.param >> box & 1) != 0 ? std::to_string(box) : "";
                             }
                             return name.empty() ? std::string("None") : "Boxes" + name;
                         });

} // namespace melovane::test
