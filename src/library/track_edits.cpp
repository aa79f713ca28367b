#include "library/track_edits.h"

#include "bus/event_guard.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/system/clock.h"
#include "platform/system/leading_number.h"
#include "platform/system/trim_blanks.h"
#include "playlists/track_step.h"
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
    const QString typed = trimBlanks(text);
    if (field == TrackField::Note) {
        // Nothing and 0 take the rating away; a slip of the finger must not.
        const bool isMark = typed.size() == 1 && typed[0] >= u'1' && typed[0] <= u'5';
        const bool isNone = typed.isEmpty() || typed == "0"_L1;
        return isMark   ? std::optional(Value(typed))
               : isNone ? std::optional(Value(QString()))
                        : std::nullopt;
    }
    const double number = leadingNumber(typed);
    if (number == 0) {
        return Value(QString());
    }
    bool isWhole = false;
    typed.toDouble(&isWhole);
    return Value(isWhole ? typed : QString::number(number));
}

} // namespace

TrackEdits::TrackEdits(Parts parts)
    : m_parts(std::move(parts))
{}

bool TrackEdits::canEdit(qint64 row, const QString& field) const
{
    const Recordset* const set = m_parts.rows.Recordset();
    return m_parts.settings.GridSwapEditPlay() == 0 && set && set->Updatable() && row >= 0 &&
           row < set->rowCount() && editOf(field) != TrackEdit::Barred;
}

QStringList TrackEdits::choices(const QString& field) const
{
    return editOf(field) == TrackEdit::Genre ? m_genres : QStringList();
}

QString TrackEdits::fidOf(qint64 row) const
{
    const Recordset* const set = m_parts.rows.Recordset();
    return set ? m_parts.rows.cell(row, set->fieldIndex(columnOf(TrackField::FID))).toText()
               : QString();
}

bool TrackEdits::write(ListAction action, qint64 row, const QString& column, const Value& value)
{
    if (!m_parts.rows.Recordset() || !m_parts.rows.Database()) {
        return false;
    }
    const TagOrder order = action == ListAction::Favorit ? TagOrder::None : TagOrder::Enter;
    return m_parts.guard.run(u"TrackEdits.write"_s, [&] {
        Database& database = *m_parts.rows.Database();
        if (const TrackFieldRow* const known = fieldOf(column)) {
            TrackStep step(m_parts.history, database, action);
            const std::vector<ColumnValue> values{{known->column.toString(), value}};
            step.write(fidOf(row), values, order);
            step.commit();
            return;
        }
        Transaction change(database);
        // A clone, so that the grid's own row stays where it is.
        const auto set = m_parts.rows.Recordset()->Clone();
        set->SetAbsolutePosition(row);
        set->Edit();
        set->setValue(column, value);
        set->Update();
        if (order == TagOrder::Enter) {
            PendingJobs::SaveEditFID(database, fidOf(row));
        }
        change.commit();
    });
}

bool TrackEdits::commit(qint64 row, const QString& field, const QString& text)
{
    if (!canEdit(row, field)) {
        return false;
    }
    const QString fid = fidOf(row);
    const TrackFieldRow* const known = fieldOf(field);
    const bool isNumber = known && known->edit == TrackEdit::Number;
    const std::optional<Value> value = isNumber ? numberText(known->field, text) : Value(text);
    if (!value) {
        m_parts.refused(m_parts.texts.text(u"library.edit.note"));
    }
    const bool written = value && write(ListAction::Tracks, row, field, *value);
    m_parts.rows.refreshCells();
    if (!written || fid.isEmpty()) {
        return written;
    }
    if (known && !known->tree.isEmpty()) {
        m_parts.jobs.ChangeTree(known->tree.toString());
    }
    m_parts.changed(fid);
    return true;
}

void TrackEdits::rate(qint64 row, int digit)
{
    const QString fid = row < 0 || digit < 0 || digit > 5 ? QString() : fidOf(row);
    if (fid.isEmpty()) {
        return;
    }
    if (write(ListAction::Rating, row, columnOf(TrackField::Note).toString(),
              storedRating(digit))) {
        m_parts.rows.refreshCells();
        m_parts.changed(fid);
    }
}

void TrackEdits::toggleDelete(const std::vector<RowRange>& rows)
{
    if (rows.empty() || !m_parts.rows.Recordset() || !m_parts.rows.Database()) {
        return;
    }
    m_parts.jobs.ChangeTree(u"Dir"_s);
    const bool written = m_parts.guard.run(u"TrackEdits.toggleDelete"_s, [&] {
        TrackStep change(m_parts.history, *m_parts.rows.Database(), ListAction::Flag);
        const auto set = m_parts.rows.Recordset()->Clone();
        const int del = set->fieldIndex(columnOf(TrackField::DEL));
        for (const RowRange& range : rows) {
            for (qint64 row = range.first; row <= range.last; ++row) {
                set->SetAbsolutePosition(row);
                if (const auto state = toggled(set->value(del))) {
                    const QString name = columnOf(TrackField::DEL).toString();
                    const TrackChange flag{fidOf(row), {{name, set->value(del), *state}}};
                    set->Edit();
                    set->setValue(del, *state);
                    set->Update();
                    change.wrote(flag);
                }
            }
        }
        change.commit();
    });
    m_parts.rows.refreshCells();
    if (written) {
        // Once for all of them: who hears it paints every row anew.
        m_parts.changed(fidOf(rows.front().first));
    }
}

void TrackEdits::toggleFavorit(qint64 row)
{
    const Recordset* const set = m_parts.rows.Recordset();
    const QString fid = row < 0 ? QString() : fidOf(row);
    if (!set || fid.isEmpty()) {
        return;
    }
    const bool isFavorit =
        !m_parts.rows.cell(row, set->fieldIndex(columnOf(TrackField::favorit))).isNull();
    const Value since = isFavorit ? Value() : Value(m_parts.clock.now());
    if (write(ListAction::Favorit, row, columnOf(TrackField::favorit).toString(), since)) {
        m_parts.rows.refreshCells();
        m_parts.changed(fid);
    }
}

void TrackEdits::FillTempMp3EditTable(const std::vector<RowRange>& rows)
{
    if (rows.empty() || !m_parts.rows.Database()) {
        return;
    }
    m_parts.guard.run(u"TrackEdits.FillTempMp3EditTable"_s, [&] {
        Transaction change(*m_parts.rows.Database());
        const auto query = m_parts.rows.Database()->queryDefs().Item(u"QU_IntersTempMp3Edit"_s);
        query->SetParameter(u"INPLID"_s, kNoEntry);
        for (const RowRange& range : rows) {
            for (qint64 row = range.first; row <= range.last; ++row) {
                query->SetParameter(u"INFID"_s, fidOf(row));
                query->Execute();
            }
        }
        query->Close();
        change.commit();
    });
}

} // namespace melovane
