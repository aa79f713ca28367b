#include "playlists/entry_records.h"

#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/sql_text.h"
#include "platform/system/files.h"
#include "platform/system/leading_number.h"
#include "playlists/list_edit.h"
#include "playlists/playlist_table.h"
#include "store/file_locator.h"
#include "store/milli_sec_to_min.h"
#include "store/record_fields.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Null for a column that the row does not have: the row of a track has no action.
Value cellOf(const Recordset& row, QStringView column)
{
    const int index = row.fieldIndex(column);
    return index < 0 ? Value() : row.value(index);
}

using F = TrackField;
using D = MlvPlaylistDetail;
/// What the record of an entry holds of its track.
constexpr std::array kDetailFields = std::to_array<RecordField<D>>({
    {F::FID, &D::FID},
    {F::Titel, &D::Titel},
    {F::Interpret, &D::Interpret},
    {F::Pitch, &D::Pitch},
    {F::Volume, &D::Volume},
    {F::DName, &D::DName},
    {F::DKhz, &D::DKhz},
    {F::DBit, &D::DBit},
    {F::BPM, &D::BPM},
    {F::FrameStart, &D::FrameStart},
    {F::FrameStop, &D::FrameStop},
    {F::Normalize, &D::Normalize},
    {F::Path, &D::Path},
    {F::DriveTyp, &D::DriveTyp},
    {F::DriveName, &D::DriveName},
    {F::MixIn, &D::MixIn},
    {F::MixOut, &D::MixOut},
    {F::eq, &D::eq},
    {F::MixTime, &D::MixTime},
});

void setIfDifferent(Recordset& row, QStringView column, int value)
{
    const Value stored = row.value(column);
    if (stored.isNull() || stored.toLong() != value) {
        row.setValue(column, value);
    }
}

QString whereEntry(Plid entry)
{
    return u"plid="_s + sql::number(numberOf(entry));
}

} // namespace

MLVMixStyle styleOrDefault(const MLVMixStyle& style, const QString& fallback)
{
    return style.IsSet || fallback == kNoMixStyle ? style : MixStyleSplit(fallback);
}

MlvEQStyle styleOrDefault(const MlvEQStyle& style)
{
    return style.IsSet ? style : EQStyleSplit(kDefaultEqStyle);
}

MLVMixStyle MixStyleComputeTime(int total, const MLVMixStyle& source)
{
    const double scaled = std::floor(total / 10000.0 * source.MixValue1);
    using Limits = std::numeric_limits<int>;
    const int value = int(std::clamp<double>(scaled, Limits::min(), Limits::max()));
    MLVMixStyle style;
    style.MixValue1 = style.MixValue2 = style.MixValue3 = style.MixValue4 = value;
    return style;
}

EntryRecords::EntryRecords(PlaylistParts parts)
    : m_parts(std::move(parts))
{}

void EntryRecords::quiet(const QString& where, const std::function<void(Database&)>& work) const
{
    quietly(m_parts.sink, where,
            [&] { work(*m_parts.engine.OpenDatabase(m_parts.settings.DbName())); });
}

void EntryRecords::fill(const Recordset& row, MlvPlaylistDetail& detail) const
{
    for (const auto& known : kDetailFields) {
        known.read(cellOf(row, columnOf(known.field)), detail);
    }
    if (detail.FrameStop == 0) {
        const int length = cellOf(row, columnOf(F::DTimeMsec)).toLong();
        detail.FrameStop = toLongHalfEven(length / Mod_MilliSecToMin::kFrameMs);
    }
    detail.PLID = Plid(cellOf(row, u"PLID").toLong());
    detail.PNID = Pnid(cellOf(row, u"PNID").toLong());
    detail.Aktion = cellOf(row, u"Aktion").toLong();
    detail.Command = cellOf(row, u"Command").toText();
    detail.commands = CommandToMap(detail.Command).value_or(CommandMap());
    QString folder = detail.Path;
    const QString file = m_parts.locator.ExistFile(folder, detail.DName);
    detail.file = m_parts.files.fileExists(file) ? file : QString();
}

void EntryRecords::fillStyles(MlvPlaylistDetail& detail) const
{
    detail.mixInStyle =
        styleOrDefault(MixStyleSplit(detail.MixIn), m_parts.settings.DefaultMixStyleIN());
    detail.mixOutStyle =
        styleOrDefault(MixStyleSplit(detail.MixOut), m_parts.settings.DefaultMixStyleOUT());
    detail.eqStyle = styleOrDefault(EQStyleSplit(detail.eq));
    detail.MixTime = mixTimeOrDefault(detail.MixTime, m_parts.settings.DefaultMixTime());
}

MlvPlaylistDetail EntryRecords::byEntry(Plid entry) const
{
    MlvPlaylistDetail detail;
    quiet(u"GetPlaylistDetailByPLID"_s, [&](Database& database) {
        const auto row = database.OpenRecordset(u"select * from vpl_all where plid="_s +
                                                sql::number(numberOf(entry)));
        if (row->Eof()) {
            return;
        }
        fill(*row, detail);
        const auto list = database.OpenRecordset(u"select * from pl_name where nid="_s +
                                                 sql::number(numberOf(detail.PNID)));
        if (!list->Eof()) {
            detail.GRID = GroupId(list->value(u"GRID").toLong());
        }
    });
    fillStyles(detail);
    return detail;
}

MlvPlaylistDetail EntryRecords::byTrack(const QString& fid) const
{
    MlvPlaylistDetail detail;
    quiet(u"GetPlaylistDetailByFID"_s, [&](Database& database) {
        const auto row =
            database.OpenRecordset(u"select * from db_all where fid="_s + sql::text(fid));
        if (!row->Eof()) {
            fill(*row, detail);
        }
    });
    fillStyles(detail);
    return detail;
}

void EntryRecords::change(Plid entry,
                          ListAction action,
                          const std::function<void(Recordset&)>& write)
{
    quiet(u"Playlist entry"_s, [&](Database& database) {
        const QString where = whereEntry(entry);
        const auto row = database.OpenRecordset(u"select * from pl_all where "_s + where);
        if (row->Eof()) {
            return;
        }
        const Pnid list{row->value(u"PNID").toLong()};
        ListEdit edit(m_parts.history, database, action, list);
        edit.before(where);
        row->Edit();
        write(*row);
        row->Update();
        markChanged(database, list);
        edit.after(where);
        edit.commit();
    });
}

void EntryRecords::update(MlvPlaylistDetail& detail)
{
    const QString eq = detail.eqStyle.IsSet ? EQStyleToString(detail.eqStyle) : detail.eq;
    change(detail.PLID, ListAction::Entry, [&](Recordset& row) {
        setIfDifferent(row, u"FrameStart", detail.FrameStart);
        setIfDifferent(row, u"FrameStop", detail.FrameStop);
        setIfDifferent(row, u"Volume", detail.Volume);
        setIfDifferent(row, u"Pitch", detail.Pitch);
        setIfDifferent(row, u"MixTime", detail.MixTime);
        setIfDifferent(row, u"Aktion", detail.Aktion);
        const Value command = row.value(u"Command");
        if (command.isNull() || command.toText() != detail.Command) {
            row.setValue(u"Command", detail.Command);
        }
        if (detail.eqStyle.IsSet) {
            row.setValue(u"EQ", eq);
            detail.eq = eq;
        }
    });
}

void EntryRecords::saveStartStop(Plid entry, int start, int stop)
{
    change(entry, ListAction::Entry, [&](Recordset& row) {
        setIfDifferent(row, u"FrameStart", start);
        setIfDifferent(row, u"FrameStop", stop);
    });
}

void EntryRecords::saveAktion(Plid entry, int aktion, const QString& command)
{
    change(entry, ListAction::Aktion, [&](Recordset& row) {
        row.setValue(u"Aktion", aktion);
        if (!command.isNull()) {
            row.setValue(u"Command", command);
        }
    });
}

void EntryRecords::saveStartStopDefault(const MlvPlaylistDetail& detail)
{
    if (!detail.saveDefault) {
        return;
    }
    quiet(u"PlaylistSaveStartStopDefault"_s, [&](Database& database) {
        database.Execute(u"update db_all set FrameStart = "_s +
                         sql::number(qint64{detail.FrameStart}) + u" , FrameStop = "_s +
                         sql::number(qint64{detail.FrameStop}) + u" where fid="_s +
                         sql::text(detail.FID));
    });
}

void EntryRecords::saveColumn(Plid entry, QStringView column, const QString& text)
{
    change(entry, ListAction::Entry, [&](Recordset& row) { row.setValue(column, text); });
}

void EntryRecords::saveMixIn(const MlvPlaylistDetail& detail)
{
    if (detail.mixInStyle.IsSet || detail.mixOutStyle.IsSet) {
        saveColumn(detail.PLID, u"MixIn", MixStyleToString(detail.mixInStyle));
    }
}

void EntryRecords::saveMixOut(const MlvPlaylistDetail& detail)
{
    if (detail.mixInStyle.IsSet || detail.mixOutStyle.IsSet) {
        saveColumn(detail.PLID, u"MixOut", MixStyleToString(detail.mixOutStyle));
    }
}

void EntryRecords::saveEq(const MlvPlaylistDetail& detail)
{
    if (detail.eqStyle.IsSet) {
        saveColumn(detail.PLID, u"EQ", EQStyleToString(detail.eqStyle));
    }
}

} // namespace melovane
