#include "library/track_marks.h"

#include "config/config_objects.h"
#include "library/library_look.h"
#include "views/grid_rows.h"

namespace melovane {

TrackMarks::TrackMarks(const ConfigObjects& texts, GridRows& rows, LibraryLook& look)
    : m_texts(texts)
    , m_rows(rows)
    , m_look(look)
{}

void TrackMarks::setShown(const QString& fid)
{
    m_look.setShownTrack(fid);
    m_rows.data().refreshCells();
}

void TrackMarks::setHeard(const QString& fid)
{
    m_look.setHeardTrack(fid, m_texts.text(u"look.heard"));
    m_rows.data().refreshCells();
}

} // namespace melovane
