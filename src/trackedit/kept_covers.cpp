#include "trackedit/kept_covers.h"

#include "platform/media/cover_reader.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "trackedit/cover_files.h"

#include <algorithm>
#include <vector>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Bytes; no column holds a longer name.
constexpr qint64 kLongestName = 1024;

/// A tag with a picture and what stands around it.
constexpr qint64 kLongestTag = kLargestPicture + 4096;

/// FIDs of every track that anybody chooses a picture for at once.
constexpr qint64 kLongestList = qint64{64} * 1024 * 1024;

bool leadsOut(const QString& name)
{
    return std::any_of(name.begin(), name.end(), path::isSeparator);
}

} // namespace

KeptCovers::KeptCovers(Files& files, const QString& dataFolder, const CoverReader& reader)
    : m_files(files)
    , m_dataFolder(dataFolder)
    , m_folder(path::join(path::join(dataFolder, u"Image"), u"tags"))
    , m_reader(reader)
{}

QString KeptCovers::placeOf(const QString& fid, const QString& image) const
{
    return leadsOut(fid + image) ? QString() : path::join(m_folder, fid + u'.' + image + u".id3"_s);
}

QString KeptCovers::placeOfNow(const QString& fid) const
{
    return leadsOut(fid) ? QString() : path::join(m_folder, fid + u".now"_s);
}

QString KeptCovers::placeOfTracks(const QString& image) const
{
    return image.isEmpty() || leadsOut(image) ? QString()
                                              : path::join(m_folder, image + u".tracks"_s);
}

std::optional<QByteArray> KeptCovers::read(const QString& place, qint64 longest) const
{
    if (place.isEmpty() || !m_files.fileExists(place)) {
        return std::nullopt;
    }
    try {
        return m_files.read(place, longest);
    } catch (const IoError&) {
        return std::nullopt;
    }
}

void KeptCovers::write(const QString& place, const QByteArray& bytes)
{
    if (place.isEmpty() || !m_files.makeFolders(m_folder)) {
        return;
    }
    try {
        m_files.writeWhole(place, bytes);
    } catch (const IoError&) {
        // What was kept before stays.
    }
}

/// The cover that the file has, as far as anybody knows.
std::optional<QString> KeptCovers::shown(const QString& fid) const
{
    const auto name = read(placeOfNow(fid), kLongestName);
    return name ? std::optional(QString::fromUtf8(*name)) : std::nullopt;
}

bool KeptCovers::isChosen(const QString& fid, const QString& image) const
{
    if (image.startsWith(fid + u'_')) {
        return true;
    }
    const auto tracks = read(placeOfTracks(image), kLongestList);
    return tracks && tracks->split('\n').contains(fid.toUtf8());
}

/// How the file gets a cover that it had, or that was made for it.
std::optional<KeptCovers::Order> KeptCovers::orderOf(const QString& fid, const QString& image) const
{
    if (auto tag = read(placeOf(fid, image), kLongestTag)) {
        return tag->isEmpty() ? Order{CoverPicture{}, {}} : Order{{}, std::move(tag)};
    }
    // Names of other tracks and of other programs stand for pictures that this file never had.
    const QString picture =
        isChosen(fid, image) ? coverPictureOf(m_files, m_dataFolder, image) : QString();
    if (auto jpeg = read(picture, kLargestPicture); jpeg && !jpeg->isEmpty()) {
        return Order{CoverPicture{std::move(*jpeg), u"image/jpeg"_s}, {}};
    }
    return std::nullopt;
}

/// Whether the user took the cover off, now or when it last had none.
bool KeptCovers::isMarkedOff(const QString& fid) const
{
    const QString place = placeOf(fid, {});
    const auto facts = place.isEmpty() ? std::nullopt : m_files.facts(place);
    return facts && facts->size == 0;
}

bool KeptCovers::isTakenOff(const QString& fid, const QString& image, const QString& file) const
{
    const auto hasFollowed = [&] { return shown(fid).value_or(image) == image; };
    return image.isEmpty() && isMarkedOff(fid) && !(hasFollowed() && m_reader.hasFrontCover(file));
}

void KeptCovers::keep(const QString& fid, const QString& image, const QString& file)
{
    if (image.isEmpty() && isMarkedOff(fid)) {
        return; // going back to it takes all off again
    }
    if (const QByteArray tag = m_reader.frontCover(file); !tag.isEmpty()) {
        makeRoom();
        write(placeOf(fid, image), tag);
    }
}

void KeptCovers::beforeChange(const QString& fid, const QString& image, const QString& file)
{
    if (shown(fid).value_or(image) != image && orderOf(fid, image)) {
        return;
    }
    keep(fid, image, file);
    written(fid, image);
}

void KeptCovers::chosen(const QStringList& fids, const QString& image)
{
    if (image.isEmpty()) {
        for (const QString& fid : fids) {
            write(placeOf(fid, image), {});
        }
        return;
    }
    const QByteArray before = read(placeOfTracks(image), kLongestList).value_or(QByteArray());
    write(placeOfTracks(image), before + fids.join(u'\n').toUtf8() + '\n');
}

void KeptCovers::notTakenOff(const QStringList& fids)
{
    for (const QString& fid : fids) {
        const QString place = placeOf(fid, {});
        if (const auto tag = read(place, kLongestTag); tag && tag->isEmpty()) {
            m_files.remove(place);
        }
    }
}

std::optional<KeptCovers::Order>
KeptCovers::due(const QString& fid, const QString& image, const QString& file)
{
    const auto now = shown(fid);
    if (!now || *now == image) {
        return std::nullopt;
    }
    auto order = orderOf(fid, image);
    if (order && !m_files.fileExists(placeOf(fid, *now))) {
        keep(fid, *now, file);
    }
    return order;
}

void KeptCovers::written(const QString& fid, const QString& image)
{
    write(placeOfNow(fid), image.toUtf8());
}

void KeptCovers::makeRoom()
{
    if (m_untilRoom-- > 0) {
        return;
    }
    // A track whose cover is changed leaves two.
    constexpr int kPerTrack = 2;
    const QStringList names = m_files.names(m_folder);
    m_untilRoom = int(kMaxFiles - names.size()) / kPerTrack;
    if (m_untilRoom > 0) {
        return;
    }
    std::vector<std::pair<QDateTime, QString>> kept;
    for (const QString& name : names) {
        const QString place = path::join(m_folder, name);
        if (const auto facts = m_files.facts(place)) {
            kept.emplace_back(facts->modified, place);
        }
    }
    std::sort(kept.begin(), kept.end());
    // Some at once, so that this is not asked at each change.
    constexpr qsizetype kMaxRemoved = kMaxFiles / 10;
    for (qsizetype i = 0; i < std::min<qsizetype>(kMaxRemoved, qsizetype(kept.size())); ++i) {
        m_files.remove(kept[size_t(i)].second);
    }
}

} // namespace melovane
