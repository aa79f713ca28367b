#include "playlistview/list_figures.h"

#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "store/milli_sec_to_min.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Bytes of one second of 44100 Hz stereo with 16 bits.
constexpr double kAudioBytesPerSecond = 176400;

/// Format of MilliSecToMin with hours where there are any.
constexpr int kWithHours = 4;

} // namespace

QString megabytes(double bytes)
{
    const double hundredths = std::trunc(bytes / 1024 / 1024 * 100);
    return QString::number(hundredths / 100, 'g', 15) + u" MB"_s;
}

frmDetailPlaylist::frmDetailPlaylist(DBEngine& engine,
                                     const GlobalSettings& settings,
                                     DetailForm& form)
    : m_engine(engine)
    , m_settings(settings)
    , m_form(form)
{}

void frmDetailPlaylist::Show(Pnid list)
{
    const QString info = m_form.ask(read(list));
    if (!info.isNull()) {
        save(list, info);
    }
}

PlaylistDetails frmDetailPlaylist::read(Pnid list) const
{
    const QString number = sql::number(numberOf(list));
    const auto database = m_engine.OpenDatabase(m_settings.DbName());
    PlaylistDetails details;
    const auto head = database->OpenRecordset(u"select * from pl_name where nid="_s + number);
    if (head->Eof()) {
        return details;
    }
    details.name = head->value(u"Name").toText();
    details.createTime = head->value(u"CreateTime").toText();
    details.updateTime = head->value(u"UpdateTime").toText();
    details.info = head->value(u"Info").toText();
    const auto group = database->OpenRecordset(u"select * from pl_group where grid="_s +
                                               sql::number(head->value(u"GRID").toInt64()));
    details.group = group->Eof() ? QString() : group->value(u"Name").toText();

    const auto sums = database->OpenRecordset(
        u"select count(*) as anz,sum(framestop-framestart) as frtime from pl_all where pnid="_s +
        number);
    const double ms = sums->value(u"frtime").toDouble() * Mod_MilliSecToMin::kFrameMs;
    const double max = std::numeric_limits<int>::max();
    details.count = sums->value(u"anz").toText();
    details.totalTime = Mod_MilliSecToMin::MilliSecToMin(int(std::clamp(ms, 0.0, max)), kWithHours);
    details.audioSpace = megabytes(ms / 1000 * kAudioBytesPerSecond);

    const auto space =
        database->OpenRecordset(u"select sdlen from VPL_REALMP3SPACE where pnid="_s + number);
    details.mp3Space = megabytes(space->Eof() ? 0 : space->value(u"sdlen").toDouble());

    const auto plays = database->OpenRecordset(
        u"select min(a.tstamp) as mintime,max(a.tstamp) as maxtime from pl_stat a,pl_all b "
        u"where a.plid=b.plid and b.pnid="_s +
        number);
    details.playFirst = plays->value(u"mintime").toText();
    details.playLast = plays->value(u"maxtime").toText();
    return details;
}

void frmDetailPlaylist::save(Pnid list, const QString& info)
{
    const auto database = m_engine.OpenDatabase(m_settings.DbName());
    const auto row = database->OpenRecordset(u"select info from pl_name where nid="_s +
                                             sql::number(numberOf(list)));
    if (!row->Eof() && row->value(u"Info").toText() != info) {
        row->Edit();
        row->setValue(u"Info", info);
        row->Update();
    }
}

} // namespace melovane
