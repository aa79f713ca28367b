#include "care/double_groups.h"

#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/db/text_compare.h"
#include "platform/media/audio_identity.h"
#include "store/file_locator.h"
#include "store/track_fields.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <map>
#include <tuple>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Two measurements of the same sound may differ by so many milliseconds.
constexpr int kSameLengthMs = 1000;

/// The file of a row that is no missing one and on no disc.
const QString kThere = u" from db_all where drivetyp<>4 and del<2"_s;

using Tracks = std::vector<DoubleTrack>;

QString nameKey(const QString& title, const QString& artist)
{
    return title.isEmpty() ? QString()
                           : textcompare::fold(title) + u'\n' + textcompare::fold(artist);
}

/// Which lengths and names more than one row has: most have none of both.
class Candidates
{
public:
    Candidates(Database& database, unsigned kinds)
        : m_kinds(kinds)
    {
        const auto rows = database.OpenRecordset(u"select DTimeMsec, Titel, Interpret"_s + kThere);
        for (; !rows->Eof(); rows->MoveNext()) {
            if (has(DoubleKind::Sound)) {
                ++m_lengths[rows->value(0).toLong()];
            }
            if (has(DoubleKind::Names)) {
                ++m_names[qHash(nameKey(rows->value(1).toText(), rows->value(2).toText()))];
            }
        }
    }

    [[nodiscard]] bool isOne(const DoubleTrack& track) const
    {
        const bool isSameLength = track.milliseconds > 0 && m_lengths.value(track.milliseconds) > 1;
        return isSameLength || (!track.title.isEmpty() &&
                                m_names.value(qHash(nameKey(track.title, track.artist))) > 1);
    }

private:
    [[nodiscard]] bool has(DoubleKind kind) const { return (m_kinds & unsigned(kind)) != 0; }

    unsigned m_kinds;
    QHash<int, int> m_lengths;
    QHash<size_t, int> m_names;
};

Tracks readCandidates(Database& database, unsigned kinds)
{
    const Candidates candidates(database, kinds);
    using F = TrackField;
    Tracks tracks;
    const auto rows = database.OpenRecordset(
        u"select "_s +
        columnList({F::FID, F::Titel, F::Interpret, F::Path, F::DName, F::DTimeMsec, F::DBit,
                    F::DLen, F::Note, F::PlayCountAll, F::DEL}) +
        kThere);
    for (; !rows->Eof(); rows->MoveNext()) {
        DoubleTrack track{
            rows->value(0).toText(), rows->value(1).toText(),      rows->value(2).toText(),
            rows->value(3).toText(), rows->value(4).toText(),      rows->value(5).toLong(),
            rows->value(6).toLong(), rows->value(7).toLong(),      rows->value(8).toText(),
            rows->value(9).toLong(), rows->value(10).toLong() != 0};
        // Another key stands in no step that could be taken back.
        const bool isPlain = QString::number(track.fid.toLongLong()) == track.fid;
        if (isPlain && candidates.isOne(track)) {
            tracks.push_back(std::move(track));
        }
    }
    return tracks;
}

void addGroup(std::vector<DoubleGroup>& groups, Tracks tracks, bool isSameSound)
{
    if (tracks.size() > 1) {
        groups.push_back({isSameSound, std::move(tracks), 0, isSameSound});
    }
}

/// Groups of tracks for which a question has the same answer; those without one are left out.
template <typename Question> std::vector<Tracks> parted(const Tracks& tracks, Question question)
{
    using Answer = typename decltype(question(tracks.front()))::value_type;
    std::vector<std::pair<Answer, Tracks>> parts;
    for (const DoubleTrack& track : tracks) {
        const auto answer = question(track);
        if (!answer) {
            continue;
        }
        auto part = std::find_if(parts.begin(), parts.end(),
                                 [&](const auto& known) { return known.first == *answer; });
        if (part == parts.end()) {
            part = parts.insert(parts.end(), {*answer, {}});
        }
        part->second.push_back(track);
    }
    std::vector<Tracks> result;
    for (auto& [answer, part] : parts) {
        if (part.size() > 1) {
            result.push_back(std::move(part));
        }
    }
    return result;
}

void groupBySound(const Tracks& tracks,
                  const AudioIdentity& audio,
                  FileLocator& locator,
                  DoubleProgress& progress,
                  const KeepSound& keep,
                  std::vector<DoubleGroup>& groups)
{
    std::map<int, Tracks> byLength;
    for (const DoubleTrack& track : tracks) {
        if (track.milliseconds > 0) {
            byLength[track.milliseconds].push_back(track);
        }
    }
    std::erase_if(byLength, [](const auto& bucket) { return bucket.second.size() < 2; });
    for (const auto& [length, bucket] : byLength) {
        progress.size += int(bucket.size());
    }
    for (const auto& [length, bucket] : byLength) {
        const auto sampled = parted(bucket, [&](const DoubleTrack& track) {
            ++progress.done;
            const auto print = progress.isCancelled ? std::optional<AudioPrint>()
                                                    : audio.sampled(locator.placeOf(track.place()));
            if (print && keep) {
                keep(track.fid, *print);
            }
            return print;
        });
        for (const Tracks& some : sampled) {
            for (Tracks& same : parted(some, [&](const DoubleTrack& track) {
                     return progress.isCancelled ? std::optional<AudioPrint>()
                                                 : audio.whole(locator.placeOf(track.place()));
                 })) {
                addGroup(groups, std::move(same), true);
            }
        }
    }
}

void groupByNames(const Tracks& tracks, std::vector<DoubleGroup>& groups)
{
    QSet<QString> grouped;
    for (const DoubleGroup& group : groups) {
        for (const DoubleTrack& track : group.tracks) {
            grouped.insert(track.fid);
        }
    }
    std::map<QString, Tracks> byName;
    for (const DoubleTrack& track : tracks) {
        const QString key = nameKey(track.title, track.artist);
        if (!key.isEmpty() && !grouped.contains(track.fid)) {
            byName[key].push_back(track);
        }
    }
    for (auto& [name, same] : byName) {
        std::stable_sort(same.begin(), same.end(), [](const auto& one, const auto& other) {
            return one.milliseconds < other.milliseconds;
        });
        Tracks group;
        for (DoubleTrack& track : same) {
            if (!group.empty() && track.milliseconds - group.front().milliseconds > kSameLengthMs) {
                addGroup(groups, std::exchange(group, {}), false);
            }
            group.push_back(std::move(track));
        }
        addGroup(groups, std::move(group), false);
    }
}

void countEntries(Database& database, std::vector<DoubleGroup>& groups)
{
    for (DoubleGroup& group : groups) {
        for (DoubleTrack& track : group.tracks) {
            track.entries = database
                                .OpenRecordset(u"select count(*) as anz from pl_all where FID="_s +
                                               sql::text(track.fid))
                                ->value(0)
                                .toLong();
        }
    }
}

} // namespace

int DoubleTrack::rate() const
{
    return bitRate > 0 || milliseconds <= 0 ? bitRate : int(size * 8 / milliseconds);
}

int bestOf(const std::vector<DoubleTrack>& tracks)
{
    const auto worth = [](const DoubleTrack& track) {
        return std::tuple(!track.isDeleted, track.rate(), track.entries, !track.note.isEmpty(),
                          track.plays, -track.fid.toLongLong());
    };
    const auto best =
        std::max_element(tracks.begin(), tracks.end(), [&](const auto& one, const auto& other) {
            return worth(one) < worth(other);
        });
    return int(best - tracks.begin());
}

std::vector<DoubleGroup> findDoubles(Database& database,
                                     const AudioIdentity& audio,
                                     FileLocator& locator,
                                     unsigned kinds,
                                     DoubleProgress& progress,
                                     const KeepSound& keep)
{
    std::vector<DoubleGroup> groups;
    const Tracks tracks = readCandidates(database, kinds);
    if ((kinds & unsigned(DoubleKind::Sound)) != 0) {
        groupBySound(tracks, audio, locator, progress, keep, groups);
    }
    if ((kinds & unsigned(DoubleKind::Names)) != 0) {
        groupByNames(tracks, groups);
    }
    countEntries(database, groups);
    for (DoubleGroup& group : groups) {
        group.kept = bestOf(group.tracks);
    }
    return groups;
}

} // namespace melovane
