#include "trackedit/cover_change.h"

#include "bus/event_guard.h"
#include "config/config_objects.h"
#include "platform/controls/file_chooser.h"
#include "platform/controls/warnings.h"
#include "trackedit/cover_settings.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

CoverChange::CoverChange(Parts parts)
    : m_parts(std::move(parts))
{}

void CoverChange::choose(const Covers::Track& track)
{
    const CoverSettings settings = CoverSettings::of(m_parts.settings);
    const QStringList chosen = m_parts.chooser.openFiles(
        {.title = m_parts.texts.text(u"edittag.image.title"),
         .start = settings.folder,
         .kind = m_parts.texts.text(u"edittag.image.kind"),
         .patterns = {u"*.bmp"_s, u"*.jpg"_s, u"*.jpeg"_s, u"*.gif"_s, u"*.png"_s}});
    if (chosen.isEmpty()) {
        return;
    }
    const QString& picture = chosen.first();
    CoverSettings::keepFolderOf(m_parts.settings, picture);
    m_parts.covers.prepare(
        track, picture, settings.mostWidth, settings.quality,
        [this, track, picture](const Covers::Ready& ready) { take(track, ready, picture); });
}

void CoverChange::take(const Covers::Track& track,
                       const Covers::Ready& ready,
                       const QString& picture)
{
    if (ready.image.isEmpty()) {
        m_parts.tell(m_parts.texts.text(u"edittag.image.unreadable", picture));
        return;
    }
    Covers::Track former = track;
    const bool isSaved = m_parts.guard.run(u"SaveImage"_s, [&] {
        if (!ready.former.isEmpty() && ready.former != track.image) {
            // What stood in the tag alone has a name from now on, which taking back goes to.
            m_parts.name(track.fid, ready.former);
            former.image = ready.former;
        }
        m_parts.save(former, ready.image);
    });
    if (!isSaved) {
        return;
    }
    if (former.image != ready.image) {
        m_parts.covers.setAside(former.image);
    }
    m_parts.changed(track.fid);
    m_parts.covers.write({track.fid, ready.image, track.file}, ready.jpeg,
                         [this, file = track.file](const TagWriting& how) { written(file, how); });
}

/// The database has the cover by now; that the file lacks it is for the user to know.
void CoverChange::written(const QString& file, const TagWriting& how) const
{
    if (how.fault == TagWriteFault::None) {
        return;
    }
    m_parts.warnings.ShowWarning(m_parts.texts.text(u"edittag.save.text", file), WarningType::Stop,
                                 m_parts.texts.text(u"edittag.save.title"), u"edittag.save"_s);
}

} // namespace melovane
