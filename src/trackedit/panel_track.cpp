#include "trackedit/panel_track.h"

#include "config/config_objects.h"
#include "platform/db/recordset.h"
#include "trackedit/edit_tag.h"
#include "trackedit/panel_texts.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// What the panel tells of a track below its fields, file and folder first.
constexpr QStringView kFacts[] = {u"DName",     u"Path", u"DTime",        u"DBit",
                                  u"DKhz",      u"DLen", u"DTSDatei",     u"DTSImport",
                                  u"DriveName", u"Play", u"PlayCountDay", u"PlayCountAll"};

} // namespace

PanelTrack describeTrack(const Recordset& row, KsEditFid& record, const EditTagParts& parts)
{
    PanelTrack track;
    track.title = row.value(u"Titel").toText();
    track.artist = row.value(u"Interpret").toText();
    track.length = row.value(u"DTime").toText();
    track.start = paneltexts::startText(row.value(u"FrameStart").toLong());
    track.stop = paneltexts::stopText(row.value(u"FrameStop").toLong(), track.length);
    track.level = paneltexts::levelText(row.value(u"Normalize").toDouble());
    const QString file = row.value(u"Path").toText() + row.value(u"DName").toText();
    if (parts.placeOf(file).isEmpty()) {
        track.warning = parts.texts.text(u"edittag.file.missing");
    }
    for (const QStringView name : kFacts) {
        const KsField& field = *record.GetField(name);
        const QString text = paneltexts::factText(field, parts.texts);
        if (field.Visible && !text.isEmpty()) {
            track.facts.push_back(
                {field.DatabaseName, parts.texts.text(u"edittag."_s + field.DatabaseName), text});
        }
    }
    return track;
}

} // namespace melovane
