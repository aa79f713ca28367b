#include "library/track_edits.h"

#include "config/config_objects.h"
#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/db/recordset.h"
#include "platform/system/clock.h"
#include "platform/system/leading_number.h"
#include "platform/system/trim_blanks.h"
#include "store/pending_jobs.h"
#include "store/track_fields.h"
#include "views/track_look.h"

#include <optional>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// `PLID` of rows that come from no playlist.
constexpr int kNoEntry = -1;

/// What is known of a column of the view; null when it is no field of a track.
const TrackFieldRow* fieldOf(const QString& column)
{
    // The number of a genre stands for its name.
    const bool isGenreNumber = column.compare("Genre_ID"_L1, Qt::CaseInsensitive) == 0;
    return isGenreNumber ? &rowOf(TrackField::Genre) : findTrackField(column);
}

/// Columns of a view that are no fields of a track can be edited.
TrackEdit editOf(const QString& column)
{
    const TrackFieldRow* const row = fieldOf(column);
    return row ? row->edit : TrackEdit::Free;
}

/// The state of a track behind the delete toggle; nothing for one that stays, as one without a
/// state does.
std::optional<int> toggled(const Value& del)
{
    if (del.isNull()) {
        return std::nullopt;
    }
    switch (del.toLong()) {
    case 0:
    case 2:
    case 3:
        return -1;
    case -1:
        return 0;
    default:
        return std::nullopt;
    }
}

/// What a cell of numbers holds for a typed text; nothing for one that the field does not take.
std::optional<Value> numberText(TrackField field, const QString& text)
{
    if (leadingNumber(text) == 0) {
        return Value(QString());
    }
    if (field != TrackField::Note) {
        return Value(text);
    }
    const QString mark = trimBlanks(text);
    const bool isMark = mark.size() == 1 && mark[0] >= u'1' && mark[0] <= u'5';
    return isMark ? std::optional(Value(mark)) : std::nullopt;
}

} // namespace

TrackEdits::TrackEdits(DataControl& rows,
                       PendingJobs& jobs,
                       const GlobalSettings& settings,
                       const ConfigObjects& texts,
                       const Clock& clock,
                       std::function<void(const QString& fid)> changed,
                       std::function<void(const QString& text)> failed)
    : m_rows(rows)
    , m_jobs(jobs)
    , m_settings(settings)
    , m_texts(texts)
    , m_clock(clock)
    , m_changed(std::move(changed))
    , m_failed(std::move(failed))
{}

bool TrackEdits::canEdit(qint64 row, const QString& field) const
{
    const Recordset* const set = m_rows.Recordset();
    return m_settings.GridSwapEditPlay() == 0 && set && set->Updatable() && row >= 0 &&
           row < set->rowCount() && editOf(field) != TrackEdit::Barred;
}

QStringList TrackEdits::choices(const QString& field) const
{
    return editOf(field) == TrackEdit::Genre ? m_genres : QStringList();
}

QString TrackEdits::fidOf(qint64 row) const
{
    const Recordset* const set = m_rows.Recordset();
    return set ? m_rows.cell(row, set->fieldIndex(columnOf(TrackField::FID))).toText() : QString();
}

bool TrackEdits::write(qint64 row, QStringView field, const Value& value, const QString& tagsOf)
{
    if (!m_rows.Recordset() || !m_rows.Database()) {
        return false;
    }
    try {
        Transaction change(*m_rows.Database());
        // A clone, so that the grid's own row stays where it is.
        const auto set = m_rows.Recordset()->Clone();
        set->SetAbsolutePosition(row);
        set->Edit();
        set->setValue(field, value);
        set->Update();
        if (!tagsOf.isEmpty()) {
            PendingJobs::SaveEditFID(*m_rows.Database(), tagsOf);
        }
        change.commit();
        return true;
    } catch (const DbError& error) {
        m_failed(error.text());
        return false;
    }
}

void TrackEdits::commit(qint64 row, const QString& field, const QString& text)
{
    if (!canEdit(row, field)) {
        return;
    }
    const QString fid = fidOf(row);
    const TrackFieldRow* const known = fieldOf(field);
    const bool isNumber = known && known->edit == TrackEdit::Number;
    const std::optional<Value> value = isNumber ? numberText(known->field, text) : Value(text);
    if (!value) {
        m_failed(m_texts.text(u"library.edit.note"));
    }
    const bool written = value && write(row, field, *value, fid);
    m_rows.refreshCells();
    if (!written || fid.isEmpty()) {
        return;
    }
    if (known && !known->tree.isEmpty()) {
        m_jobs.ChangeTree(known->tree.toString());
    }
    m_changed(fid);
}

void TrackEdits::rate(qint64 row, int digit)
{
    const QString fid = row < 0 || digit < 0 || digit > 5 ? QString() : fidOf(row);
    if (fid.isEmpty()) {
        return;
    }
    if (write(row, columnOf(TrackField::Note), storedRating(digit), fid)) {
        m_rows.refreshCells();
        m_changed(fid);
    }
}

void TrackEdits::toggleDelete(const std::vector<RowRange>& rows)
{
    if (rows.empty() || !m_rows.Recordset() || !m_rows.Database()) {
        return;
    }
    m_jobs.ChangeTree(u"Dir"_s);
    try {
        Transaction change(*m_rows.Database());
        const auto set = m_rows.Recordset()->Clone();
        const int del = set->fieldIndex(columnOf(TrackField::DEL));
        for (const RowRange& range : rows) {
            for (qint64 row = range.first; row <= range.last; ++row) {
                set->SetAbsolutePosition(row);
                if (const auto state = toggled(set->value(del))) {
                    set->Edit();
                    set->setValue(del, *state);
                    set->Update();
                }
            }
        }
        change.commit();
    } catch (const DbError&) {
        // Nothing of it was written.
    }
    m_rows.refreshCells();
}

void TrackEdits::toggleFavorit(qint64 row)
{
    const Recordset* const set = m_rows.Recordset();
    const QString fid = row < 0 ? QString() : fidOf(row);
    if (!set || fid.isEmpty()) {
        return;
    }
    const bool isFavorit =
        !m_rows.cell(row, set->fieldIndex(columnOf(TrackField::favorit))).isNull();
    if (write(row, columnOf(TrackField::favorit), isFavorit ? Value() : Value(m_clock.now()), {})) {
        m_rows.refreshCells();
        m_changed(fid);
    }
}

void TrackEdits::FillTempMp3EditTable(const std::vector<RowRange>& rows)
{
    if (rows.empty() || !m_rows.Database()) {
        return;
    }
    try {
        Transaction change(*m_rows.Database());
        const auto query = m_rows.Database()->queryDefs().Item(u"QU_IntersTempMp3Edit"_s);
        query->SetParameter(u"INPLID"_s, kNoEntry);
        for (const RowRange& range : rows) {
            for (qint64 row = range.first; row <= range.last; ++row) {
                query->SetParameter(u"INFID"_s, fidOf(row));
                query->Execute();
            }
        }
        query->Close();
        change.commit();
    } catch (const DbError&) {
        // The tag tool opens with what it had before.
    }
}

} // namespace melovane
