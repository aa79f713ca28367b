#include "trackedit/covers.h"

#include "platform/media/cover_reader.h"
#include "platform/media/picture_maker.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "platform/system/worker.h"
#include "trackedit/cover_files.h"
#include "trackedit/former_cover.h"

#include <memory>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Width and quality of a cover on the screen.
constexpr int kShownWidth = 640;
constexpr int kShownQuality = 90;

const QString kTempCover = u"tempcover.jpg"_s;

} // namespace

Covers::Covers(CoverParts parts)
    : m_parts(std::move(parts))
    , m_kept(m_parts.workFiles, m_parts.dataFolder, m_parts.reader)
{}

QString Covers::fileOf(const QString& image) const
{
    return coverFile(m_parts.files, m_parts.dataFolder, image);
}

bool Covers::put(const QString& file, const QByteArray& bytes) const
{
    try {
        m_parts.workFiles.writeWhole(file, bytes);
        return true;
    } catch (const IoError&) {
        return false;
    }
}

CoverSources Covers::sources() const
{
    return {m_parts.workFiles, m_parts.dataFolder, m_parts.reader, m_parts.pictures};
}

/// The picture of the tag that stands for a track.
QByteArray Covers::inTag(const Track& track) const
{
    return m_kept.isTakenOff(track.fid, track.image, track.file) ? QByteArray()
                                                                 : m_parts.reader.cover(track.file);
}

void Covers::show(const Track& track, std::function<void(const QByteArray&)> shown)
{
    const quint64 question = ++m_asked;
    const QString picture = fileOf(track.image);
    auto made = std::make_shared<QByteArray>();
    m_parts.worker.run(
        [this, picture, track, made] {
            const QByteArray bytes =
                picture.isEmpty() ? inTag(track) : pictureBytes(m_parts.workFiles, picture);
            *made = m_parts.pictures.jpeg(bytes, kShownWidth, kShownQuality);
        },
        [this, question, made, shown = std::move(shown)] {
            if (question == m_asked) {
                shown(*made);
            }
        });
}

void Covers::takeOut(const Track& track,
                     int mostWidth,
                     std::function<void(const QString& image)> done)
{
    const QString image = track.image.isEmpty() ? track.fid : track.image;
    auto isThere = std::make_shared<bool>(false);
    m_parts.worker.run(
        [this, image, track, mostWidth, isThere] {
            *isThere = !m_kept.isTakenOff(track.fid, track.image, track.file) &&
                       takeCoverOut(sources(), track.file, image, mostWidth);
        },
        [image, isThere, done = std::move(done)] { done(*isThere ? image : QString()); });
}

void Covers::prepare(const Track& track,
                     const QString& picture,
                     int mostWidth,
                     int quality,
                     std::function<void(const Ready&)> done)
{
    auto ready = std::make_shared<Ready>();
    const auto facts = m_parts.files.facts(picture);
    m_parts.worker.run(
        [this, picture, mostWidth, quality, facts, track, ready] {
            const QByteArray jpeg =
                m_parts.pictures.jpeg(pictureBytes(m_parts.workFiles, picture), mostWidth, quality);
            if (!facts || jpeg.isEmpty()) {
                return;
            }
            const QString image = freeCoverName(m_parts.workFiles, m_parts.dataFolder, track.fid,
                                                facts->modified, jpeg);
            ready->former = keepFormerCover(sources(), m_kept, track.fid, track.image, track.file);
            if (put(path::join(m_parts.dataFolder, kTempCover), jpeg) &&
                put(coverPlace(m_parts.dataFolder, image), jpeg)) {
                ready->image = image;
                ready->jpeg = jpeg;
            }
        },
        [ready, done = std::move(done)] { done(*ready); });
}

void Covers::write(const Track& track,
                   const QByteArray& jpeg,
                   std::function<void(const TagWriting&)> done)
{
    auto how = std::make_shared<TagWriting>();
    m_parts.worker.run(
        [this, track, jpeg, how] {
            TagWork work{track.file, {}};
            work.changes.cover = CoverPicture{jpeg, u"image/jpeg"_s};
            const std::vector<TagWriting> results = m_parts.writer.write({&work, 1});
            *how = results.empty() ? TagWriting{TagWriteFault::Failed, {}, false} : results[0];
            if (how->fault == TagWriteFault::None) {
                m_kept.written(track.fid, track.image);
            }
        },
        [how, done = std::move(done)] { done(*how); });
}

void Covers::setAside(const QString& image)
{
    setCoverAside(m_parts.files, m_parts.dataFolder, image);
}

} // namespace melovane
