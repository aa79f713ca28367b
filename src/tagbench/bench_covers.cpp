#include "tagbench/bench_covers.h"

#include "platform/media/cover_reader.h"
#include "platform/media/picture_maker.h"
#include "platform/system/files.h"
#include "platform/system/worker.h"
#include "tagbench/bench_tracks.h"
#include "trackedit/cover_files.h"
#include "trackedit/kept_covers.h"

#include <QCryptographicHash>
#include <QSet>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Width and quality of a cover on the screen.
constexpr int kShownWidth = 320;
constexpr int kShownQuality = 90;

/// Audio files that are read before the next question is heard: some 50 ms of a warm disc.
constexpr size_t kFilesAtOnce = 32;

/// Of a track that has no cover.
const QByteArray kNone;
/// Of a track whose file was not asked yet.
const QByteArray kUnknown = "?";

/// Before the identifier of a first track that the library does not know yet.
const QString kNewTrack = u"new"_s;

} // namespace

struct BenchCovers::Question
{
    std::vector<int> tracks;
    std::function<void(const Shown&)> shown;
    std::vector<int> files; ///< tracks whose tags are to be read
    QHash<QString, QByteArray> keys;
};

BenchCovers::BenchCovers(CoverSources sources, Worker& worker, BenchTracks& tracks)
    : m_sources(std::move(sources))
    , m_worker(worker)
    , m_tracks(tracks)
    , m_locator(m_sources.files, m_sources.dataFolder)
{}

/// What tells the cover of a track from others: the name of its picture, else that of its tag.
QByteArray BenchCovers::keyOf(int track) const
{
    const QString& cover = m_tracks.text(track, kBenchCover);
    if (cover == kNoCover) {
        return kNone;
    }
    if (m_pictures.contains(cover) ||
        !coverPictureOf(m_sources.files, m_sources.dataFolder, cover).isEmpty()) {
        return "name " + cover.toUtf8();
    }
    return m_tagKeys.value(m_tracks.at(track).storedPlace(), kUnknown);
}

void BenchCovers::show(const std::vector<int>& tracks, std::function<void(const Shown&)> shown)
{
    auto question = std::make_shared<Question>();
    question->tracks = tracks;
    question->shown = std::move(shown);
    for (const int track : tracks) {
        if (keyOf(track) == kUnknown) {
            question->files.push_back(track);
        }
    }
    m_asked = question;
    readTags(question);
}

void BenchCovers::readTags(const std::shared_ptr<Question>& question)
{
    if (question->files.empty()) {
        answer(question);
        return;
    }
    const size_t count = std::min(kFilesAtOnce, question->files.size());
    QHash<QString, TagOf> tags; // by the stored name
    for (size_t index = question->files.size() - count; index < question->files.size(); ++index) {
        const int track = question->files[index];
        tags.insert(m_tracks.at(track).storedPlace(), tagOf(track));
    }
    question->files.resize(question->files.size() - count);
    m_worker.run(
        [this, question, tags] {
            for (auto tag = tags.cbegin(); tag != tags.cend(); ++tag) {
                const QByteArray cover = pictureIn(*tag);
                question->keys.insert(
                    tag.key(), cover.isEmpty()
                                   ? kNone
                                   : QCryptographicHash::hash(cover, QCryptographicHash::Sha1));
            }
        },
        [this, question] {
            m_tagKeys.insert(question->keys);
            question->keys.clear();
            if (question == m_asked) {
                readTags(question);
            }
        });
}

BenchCovers::TagOf BenchCovers::tagOf(int track)
{
    return {m_tracks.at(track).fid, imageOf(m_tracks.storedText(track, kBenchCover)),
            m_locator.placeOf(m_tracks.at(track).storedPlace())};
}

/// The picture of the tag that stands for a track.
QByteArray BenchCovers::pictureIn(const TagOf& tag) const
{
    const KeptCovers kept(m_sources.files, m_sources.dataFolder, m_sources.reader);
    return kept.isTakenOff(tag.fid, tag.image, tag.file) ? QByteArray()
                                                         : m_sources.reader.cover(tag.file);
}

void BenchCovers::answer(const std::shared_ptr<Question>& question)
{
    auto result = std::make_shared<Shown>();
    QSet<QByteArray> different;
    int first = -1;
    for (const int track : question->tracks) {
        const QByteArray key = keyOf(track);
        if (key == kNone) {
            ++result->without;
            continue;
        }
        first = first < 0 ? track : first;
        different.insert(key);
    }
    result->pictures = int(different.size());
    if (first < 0) {
        question->shown(*result);
        return;
    }
    const QString& cover = m_tracks.text(first, kBenchCover);
    const QByteArray chosen = m_pictures.value(cover);
    const QString picture = coverPictureOf(m_sources.files, m_sources.dataFolder, cover);
    m_worker.run(
        [this, chosen, picture, tag = tagOf(first), result] {
            const QByteArray bytes = !chosen.isEmpty()    ? chosen
                                     : !picture.isEmpty() ? pictureBytes(m_sources.files, picture)
                                                          : pictureIn(tag);
            result->picture = m_sources.pictures.jpeg(bytes, kShownWidth, kShownQuality);
        },
        [this, question, result] {
            if (question == m_asked) {
                question->shown(*result);
            }
        });
}

void BenchCovers::choose(const QByteArray& picture,
                         const QDateTime& date,
                         const Size& size,
                         const std::vector<int>& tracks,
                         std::function<void(bool)> done)
{
    auto jpeg = std::make_shared<QByteArray>();
    m_worker.run([this, picture, size,
                  jpeg] { *jpeg = m_sources.pictures.jpeg(picture, size.mostWidth, size.quality); },
                 [this, date, tracks, jpeg, done = std::move(done)] {
                     if (!jpeg->isEmpty() && !tracks.empty()) {
                         const QString name = nameFor(tracks, date, *jpeg);
                         m_pictures.insert(name, *jpeg);
                         std::vector<BenchCell> cells;
                         cells.reserve(tracks.size());
                         for (const int track : tracks) {
                             cells.push_back({track, kBenchCover, name});
                         }
                         m_tracks.change(cells);
                     }
                     done(!jpeg->isEmpty());
                 });
}

QString BenchCovers::nameFor(const std::vector<int>& tracks,
                             const QDateTime& date,
                             const QByteArray& jpeg) const
{
    // Chosen again, for other tracks: still one picture.
    if (const QString known = m_pictures.key(jpeg); !known.isEmpty()) {
        return known;
    }
    const QString& fid = m_tracks.at(tracks.front()).fid;
    for (QDateTime moment = date;; moment = moment.addSecs(1)) {
        const QString name = freeCoverName(m_sources.files, m_sources.dataFolder,
                                           fid.isEmpty() ? kNewTrack : fid, moment, jpeg);
        if (m_pictures.value(name, jpeg) == jpeg) {
            return name;
        }
    }
}

void BenchCovers::takeOff(const std::vector<int>& tracks)
{
    std::vector<BenchCell> cells;
    cells.reserve(tracks.size());
    for (const int track : tracks) {
        cells.push_back({track, kBenchCover, kNoCover.toString()});
    }
    m_tracks.change(cells);
}

} // namespace melovane
