#include "siblings/sleeveviewer/sleeve_viewer.h"

#include "config/config_objects.h"
#include "platform/system/path_text.h"
#include "platform/system/readable_name.h"

#include <algorithm>
#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Letters of a file's name below the picture.
constexpr qsizetype kMaxName = 32;

} // namespace

SleeveViewer::SleeveViewer(Parts parts)
    : m_parts(std::move(parts))
{}

void SleeveViewer::showFid(const QString& fid)
{
    showTrack(m_parts.trackByFid(fid));
}

void SleeveViewer::showImage(const QString& image)
{
    SleeveTrack track = m_parts.trackByImage(image);
    track.image = image.isEmpty() ? track.image : image;
    showTrack(std::move(track));
}

void SleeveViewer::showTrack(SleeveTrack track)
{
    const bool isOther = track.FID.isEmpty() || track.FID != m_track.FID;
    m_track = std::move(track);
    if (isOther) {
        m_index = 0;
    }
    if (m_track == SleeveTrack()) {
        m_files.clear();
        m_picture = {};
        m_state = State::NoTrack;
    } else {
        m_state = State::Busy;
        m_parts.find(m_track);
    }
    m_parts.changed();
}

void SleeveViewer::found(const QStringList& files)
{
    // The picture that is looked at stays, wherever it stands among them now.
    const QString shown = m_files.value(m_index);
    const qsizetype place = files.indexOf(shown);
    m_index = place >= 0 && m_index > 0 ? place : 0;
    m_files = files;
    if (m_files.isEmpty()) {
        m_picture = {};
        m_state = State::NoPictures;
        m_parts.changed();
        return;
    }
    m_parts.read(m_files[m_index]);
}

void SleeveViewer::pictureRead(const ReadPicture& picture)
{
    m_picture = picture;
    m_state = State::Shown;
    m_parts.changed();
}

void SleeveViewer::go(int step)
{
    if (hasOthers()) {
        goTo((m_index + step + m_files.size()) % m_files.size());
    }
}

void SleeveViewer::goTo(qsizetype index)
{
    if (index >= 0 && index < m_files.size() && index != m_index) {
        m_index = index;
        m_state = State::Busy;
        m_parts.read(m_files[m_index]);
        m_parts.changed();
    }
}

void SleeveViewer::choose()
{
    if (canChoose()) {
        m_parts.choose(m_track.image);
    }
}

QString SleeveViewer::caption() const
{
    if (m_files.isEmpty()) {
        return {};
    }
    QStringList texts;
    if (hasOthers()) {
        texts.append(u"%1 / %2"_s.arg(m_index + 1).arg(m_files.size()));
    }
    texts.append(shortened(readableName(path::fileName(m_files[m_index])), kMaxName));
    if (m_state == State::Shown && !m_picture.size.isEmpty()) {
        texts.append(u"%1 × %2"_s.arg(m_picture.size.width()).arg(m_picture.size.height()));
    }
    return texts.join(u"   "_s);
}

/// Name of the note's title; that of its sentence has ".text" behind it.
QString SleeveViewer::noteKey() const
{
    if (m_state == State::NoTrack) {
        return u"viewer.notrack"_s;
    }
    if (m_state == State::NoPictures) {
        return u"viewer.nopicture"_s;
    }
    if (m_state == State::Busy) {
        return {};
    }
    switch (m_picture.fault) {
    case PictureFault::None:
        return {};
    case PictureFault::Missing:
        return u"viewer.missing"_s;
    case PictureFault::TooLarge:
        return u"viewer.toolarge"_s;
    case PictureFault::NoPicture:
        return u"viewer.otherkind"_s;
    case PictureFault::Damaged:
        return u"viewer.damaged"_s;
    }
    return {};
}

QString SleeveViewer::noteTitle() const
{
    const QString key = noteKey();
    return key.isEmpty() ? QString() : m_parts.texts.text(key);
}

QString SleeveViewer::noteText() const
{
    const QString key = noteKey();
    return key.isEmpty() ? QString() : m_parts.texts.text(key + u".text"_s);
}

} // namespace melovane
