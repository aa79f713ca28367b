#include "store/track_mix_values.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "store/milli_sec_to_min.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

QString timeOfFrame(int frame)
{
    const double milliseconds = std::trunc(frame * Mod_MilliSecToMin::kFrameMs);
    return Mod_MilliSecToMin::MilliSecToMin(
        int(std::clamp(milliseconds, 0.0, double(std::numeric_limits<int>::max()))));
}

} // namespace

GetMP3DBData::GetMP3DBData(DBEngine& engine)
    : m_engine(engine)
{}

GetMP3DBData::~GetMP3DBData() = default;

void GetMP3DBData::DBOpen(const QString& name)
{
    DBClose();
    m_database = m_engine.OpenDatabase(name);
}

void GetMP3DBData::DBClose()
{
    RecClose();
    m_database.reset();
}

void GetMP3DBData::RecClose()
{
    m_row.reset();
}

void GetMP3DBData::clear()
{
    for (QString* text : {&MixIn, &MixOut, &DTime, &eq, &Start, &Stop}) {
        text->clear();
    }
    for (int* number : {&MixTime, &FrameStart, &FrameStop, &Normalize, &Pitch, &Volume}) {
        *number = 0;
    }
}

bool GetMP3DBData::GetData(const QString& fid)
{
    RecClose();
    clear();
    if (!m_database) {
        return false;
    }
    m_row = m_database->OpenRecordset(u"select * from db_all where fid="_s + sql::text(fid));
    if (m_row->Eof()) {
        return false;
    }
    MixIn = m_row->value(u"MixIn").toText();
    MixOut = m_row->value(u"MixOut").toText();
    MixTime = m_row->value(u"MixTime").toLong();
    DTime = m_row->value(u"DTime").toText();
    eq = m_row->value(u"eq").toText();
    FrameStart = m_row->value(u"FrameStart").toLong();
    FrameStop = m_row->value(u"FrameStop").toLong();
    Normalize = m_row->value(u"Normalize").toLong();
    Pitch = m_row->value(u"Pitch").toLong();
    Volume = m_row->value(u"Volume").toLong();
    Start = timeOfFrame(FrameStart);
    Stop = timeOfFrame(FrameStop);
    return true;
}

} // namespace melovane
