#include "care/found_matches.h"

#include "platform/db/text_compare.h"
#include "platform/media/audio_identity.h"
#include "platform/media/track_tags.h"
#include "platform/system/path_text.h"

#include <algorithm>
#include <cstdlib>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A name that so many files have says nothing; the first ones stand for all.
constexpr size_t kMaxCandidates = 20;

/// Two measurements of the same sound may differ by so many milliseconds.
constexpr int kSameLengthMs = 1000;

QString lastFolder(const QString& folder)
{
    return path::fileName(path::withoutSeparator(folder));
}

qsizetype commonBack(const QString& one, const QString& other)
{
    const QStringList left = path::components(one);
    const QStringList right = path::components(other);
    qsizetype count = 0;
    while (count < left.size() && count < right.size() &&
           textcompare::equal(left[left.size() - 1 - count], right[right.size() - 1 - count])) {
        ++count;
    }
    return count;
}

} // namespace

FoundMatches::FoundMatches(const FoundInput& input)
    : m_input(input)
    , m_fileOf(input.tracks.size(), -1)
    , m_trackOf(input.files.size(), -1)
    , m_readings(input.files.size())
{}

FoundMatches::~FoundMatches() = default;

std::vector<FoundTrack> FoundMatches::run()
{
    indexFiles();
    matchGiven();
    voteForFolders();
    matchByFolders();
    readMatched();
    matchByContent();
    std::vector<FoundTrack> result;
    result.reserve(m_fileOf.size());
    for (size_t track = 0; track < m_fileOf.size(); ++track) {
        FoundTrack& found = result.emplace_back();
        found.track = int(track);
        const int file = m_fileOf[track];
        if (file >= 0 && !m_input.isCancelled) {
            found.folder = m_input.files[size_t(file)].folder;
            found.name = m_input.files[size_t(file)].name;
            found.evidence = evidenceOf(int(track), file);
            found.isChosen = found.evidence.isCertain();
        }
    }
    return result;
}

QString FoundMatches::keyOf(Key key, const QString& name, const QString& folder, qint64 size)
{
    QString text = textcompare::fold(name);
    if (key == kNameFolderSize || key == kNameFolder) {
        text += u'/' + textcompare::fold(lastFolder(folder));
    }
    if (key == kNameFolderSize || key == kNameSize) {
        text += u'/' + QString::number(size);
    }
    return text;
}

void FoundMatches::indexFiles()
{
    for (size_t i = 0; i < m_input.files.size(); ++i) {
        const FoundFile& file = m_input.files[i];
        m_byPlace.insert(textcompare::fold(file.path()), int(i));
        for (size_t key = 0; key < kKeys; ++key) {
            auto& files = m_files[key][keyOf(Key(key), file.name, file.folder, file.facts.size)];
            if (files.size() < kMaxCandidates && isFree(int(i))) {
                files.push_back(int(i));
            }
        }
    }
}

bool FoundMatches::isFree(int file) const
{
    return m_trackOf[size_t(file)] < 0 &&
           !m_input.taken.contains(m_input.files[size_t(file)].path());
}

const std::vector<int>& FoundMatches::candidates(const MissingTrack& track) const
{
    static const std::vector<int> none;
    for (size_t key = 0; key < kKeys; ++key) {
        const auto files =
            m_files[key].constFind(keyOf(Key(key), track.name, track.folder, track.size));
        if (files != m_files[key].cend() && !files->empty()) {
            return *files;
        }
    }
    return none;
}

int FoundMatches::fileAt(const QString& folder, const QString& name) const
{
    const int file = m_byPlace.value(textcompare::fold(folder + name), -1);
    return file >= 0 && isFree(file) ? file : -1;
}

void FoundMatches::take(int track, int file)
{
    m_fileOf[size_t(track)] = file;
    m_trackOf[size_t(file)] = track;
}

void FoundMatches::drop(int track)
{
    int& file = m_fileOf[size_t(track)];
    m_trackOf[size_t(file)] = -1;
    file = -1;
}

/// What the user has shown needs no vote.
void FoundMatches::matchGiven()
{
    for (const auto& [from, to] : m_input.given) {
        const QStringList old = path::components(from);
        for (size_t i = 0; i < m_input.tracks.size(); ++i) {
            const MissingTrack& track = m_input.tracks[i];
            const QStringList parts = path::components(track.folder);
            const bool isBelow =
                old.size() <= parts.size() && std::equal(old.begin(), old.end(), parts.begin(),
                                                         [](const QString& a, const QString& b) {
                                                             return textcompare::equal(a, b);
                                                         });
            if (!isBelow) {
                continue;
            }
            QString folder = path::withSeparator(to);
            for (qsizetype at = old.size(); at < parts.size(); ++at) {
                folder = path::withSeparator(path::join(folder, parts[at]));
            }
            m_folders.insert(track.folder, folder);
        }
    }
}

/// Where most files of a folder have gone to, all have gone to.
void FoundMatches::voteForFolders()
{
    QHash<QString, QHash<QString, int>> votes;
    for (const MissingTrack& track : m_input.tracks) {
        if (m_folders.contains(track.folder)) {
            continue;
        }
        for (const int file : candidates(track)) {
            const FoundFile& found = m_input.files[size_t(file)];
            votes[track.folder][found.folder] += found.facts.size == track.size ? 2 : 1;
        }
    }
    for (auto folder = votes.cbegin(); folder != votes.cend(); ++folder) {
        const auto better = [&](const QString& one, int count, const QString& other, int others) {
            if (count != others) {
                return count > others;
            }
            const qsizetype back = commonBack(folder.key(), one);
            const qsizetype otherBack = commonBack(folder.key(), other);
            return back != otherBack ? back > otherBack : one < other;
        };
        QString best;
        int most = 0;
        for (auto vote = folder->cbegin(); vote != folder->cend(); ++vote) {
            if (best.isEmpty() || better(vote.key(), *vote, best, most)) {
                best = vote.key();
                most = *vote;
            }
        }
        m_folders.insert(folder.key(), best);
    }
}

void FoundMatches::matchByFolders()
{
    for (size_t i = 0; i < m_input.tracks.size(); ++i) {
        const MissingTrack& track = m_input.tracks[i];
        const QString folder = m_folders.value(track.folder);
        if (const int file = folder.isEmpty() ? -1 : fileAt(folder, track.name); file >= 0) {
            take(int(i), file);
        }
    }
    // What lies elsewhere than the rest of its folder.
    for (size_t i = 0; i < m_input.tracks.size(); ++i) {
        if (m_fileOf[i] >= 0) {
            continue;
        }
        for (const int file : candidates(m_input.tracks[i])) {
            if (isFree(file) && m_input.files[size_t(file)].facts.size == m_input.tracks[i].size) {
                take(int(i), file);
                break;
            }
        }
    }
}

const FoundMatches::Reading& FoundMatches::read(int file)
{
    Reading& reading = m_readings[size_t(file)];
    if (!reading.isRead && !m_input.isCancelled) {
        const MediaReading found = m_input.reader.read(m_input.files[size_t(file)].path());
        reading = {true, found.audio.milliseconds, found.tags.FID};
        ++m_input.done;
    }
    return reading;
}

void FoundMatches::readMatched()
{
    for (const int file : std::vector<int>(m_fileOf)) {
        if (file >= 0) {
            read(file);
        }
    }
}

/// Files that no name has led to, where one may be a missing one under another name.
std::vector<int> FoundMatches::likelyFiles() const
{
    QSet<QString> folders;
    for (const QString& folder : m_folders) {
        folders.insert(folder);
    }
    QSet<qint64> sizes;
    for (size_t i = 0; i < m_fileOf.size(); ++i) {
        if (m_fileOf[i] < 0) {
            sizes.insert(m_input.tracks[i].size);
        }
    }
    std::vector<int> likely;
    for (size_t i = 0; i < m_input.files.size() && !sizes.isEmpty(); ++i) {
        const FoundFile& file = m_input.files[i];
        if (isFree(int(i)) && (sizes.contains(file.facts.size) || folders.contains(file.folder))) {
            likely.push_back(int(i));
        }
    }
    return likely;
}

bool FoundMatches::hasKeptSound(const QString& fid, int file) const
{
    const auto kept = m_input.kept ? m_input.kept(fid) : std::nullopt;
    if (!kept) {
        return false;
    }
    const QString place = m_input.files[size_t(file)].path();
    return m_input.audio.length(place) == kept->bytes && m_input.audio.sampled(place) == kept;
}

void FoundMatches::matchByContent()
{
    QHash<QString, int> tracks;
    for (size_t i = 0; i < m_input.tracks.size(); ++i) {
        tracks.insert(m_input.tracks[i].fid, int(i));
    }
    const std::vector<int> likely = likelyFiles();
    // A file that says whose it is belongs to that one, whatever it is called.
    for (size_t file = 0; file < m_readings.size(); ++file) {
        const bool isLikely = std::binary_search(likely.begin(), likely.end(), int(file));
        if (m_trackOf[file] < 0 && !isLikely) {
            continue;
        }
        const int owner = tracks.value(read(int(file)).fid, -1);
        const int holder = m_trackOf[file];
        if (owner < 0 || owner == holder) {
            continue;
        }
        const int present = m_fileOf[size_t(owner)];
        if (present >= 0 && m_readings[size_t(present)].fid == m_input.tracks[size_t(owner)].fid) {
            continue; // two copies: the one of the right name
        }
        if (present >= 0) {
            drop(owner);
        }
        if (holder >= 0) {
            drop(holder);
        }
        take(owner, int(file));
    }
    matchBySound(likely);
}

/// What is left when neither name nor tag says whose it is.
void FoundMatches::matchBySound(const std::vector<int>& likely)
{
    if (!m_input.kept) {
        return;
    }
    QMultiHash<qint64, int> tracks; // by bytes of sound
    for (size_t i = 0; i < m_fileOf.size(); ++i) {
        const auto kept = m_fileOf[i] < 0 ? m_input.kept(m_input.tracks[i].fid) : std::nullopt;
        if (kept) {
            tracks.insert(kept->bytes, int(i));
        }
    }
    for (const int file : likely) {
        if (tracks.isEmpty() || m_input.isCancelled) {
            return;
        }
        const auto length =
            isFree(file) ? m_input.audio.length(m_input.files[size_t(file)].path()) : std::nullopt;
        if (!length) {
            continue;
        }
        for (const int track : tracks.values(*length)) {
            if (m_fileOf[size_t(track)] < 0 && isFree(file) &&
                hasKeptSound(m_input.tracks[size_t(track)].fid, file)) {
                take(track, file);
            }
        }
    }
}

FoundEvidence FoundMatches::evidenceOf(int track, int file)
{
    const MissingTrack& missing = m_input.tracks[size_t(track)];
    const Reading& reading = read(file);
    FoundEvidence evidence;
    evidence.name = textcompare::equal(missing.name, m_input.files[size_t(file)].name);
    evidence.length = m_input.files[size_t(file)].facts.size == missing.size ||
                      std::abs(missing.milliseconds - reading.milliseconds) <= kSameLengthMs;
    evidence.fid = !reading.fid.isEmpty() && reading.fid == missing.fid;
    evidence.otherFid = !reading.fid.isEmpty() && !evidence.fid;
    const bool isInDoubt = !evidence.fid && (!evidence.length || !evidence.name);
    evidence.audio = isInDoubt && hasKeptSound(missing.fid, file);
    return evidence;
}

} // namespace melovane
