#include "store/track_mix_values.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "store/milli_sec_to_min.h"
#include "store/track_fields.h"

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
    using F = TrackField;
    const auto text = [this](F field) { return m_row->value(columnOf(field)).toText(); };
    const auto number = [this](F field) { return m_row->value(columnOf(field)).toLong(); };
    MixIn = text(F::MixIn);
    MixOut = text(F::MixOut);
    MixTime = number(F::MixTime);
    DTime = text(F::DTime);
    eq = text(F::eq);
    FrameStart = number(F::FrameStart);
    FrameStop = number(F::FrameStop);
    Normalize = number(F::Normalize);
    Pitch = number(F::Pitch);
    Volume = number(F::Volume);
    Start = timeOfFrame(FrameStart);
    Stop = timeOfFrame(FrameStop);
    return true;
}

} // namespace melovane
