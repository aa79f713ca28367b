#include "trackedit/panel_fields.h"

#include "platform/db/recordset.h"
#include "store/track_writing.h"

namespace melovane {

namespace {

using P = PanelField;
using T = TrackField;

constexpr std::array<PanelFieldRow, kPanelFields> kRows = {{
    {P::Titel, T::Titel, u"txtTitel"},
    {P::Interpret, T::Interpret, u"txtInterpret"},
    {P::Album, T::Album, u"txtAlbum"},
    {P::Kommentar, T::Kommentar, u"txtKommentar"},
    {P::Jahr, T::Jahr, u"txtJahr"},
    {P::Track, T::Track, u"txtTrack"},
    {P::BPM, T::BPM, u"txtBPM"},
    {P::Genre, T::Genre, u"cmbGenre", true},
    {P::Kategorie, T::Kategorie, u"cmbKategorie", true, true},
    {P::Stimmung, T::Stimmung, u"cmbStimmung", true, true},
    {P::Situation, T::Situation, u"cmbSituation", true, true},
    {P::Tempo, T::Tempo, u"cmbTempo", true, true},
    {P::User1, T::User1, u"txtUser1"},
    {P::User2, T::User2, u"txtUser2"},
    {P::User3, T::User3, u"txtUser3"},
    {P::User4, T::User4, u"txtUser4"},
    {P::User5, T::User5, u"txtUser5"},
}};

} // namespace

std::span<const PanelFieldRow> panelFields()
{
    return kRows;
}

const PanelFieldRow& rowOf(PanelField field)
{
    return kRows[std::size_t(field)];
}

QString columnOf(PanelField field)
{
    return columnOf(rowOf(field).column).toString();
}

void PanelTexts::show(const Recordset& row)
{
    clear();
    renew(row);
    for (Text& text : m_texts) {
        text.former = text.typed;
    }
}

void PanelTexts::clear()
{
    m_texts.fill({});
}

void PanelTexts::renew(const Recordset& row)
{
    for (const PanelFieldRow& field : kRows) {
        Text& text = at(field.field);
        const bool isTyped = text.typed != text.kept;
        text.kept = row.value(columnOf(field.column)).toText();
        if (!isTyped) {
            text.typed = text.kept;
        }
    }
}

bool PanelTexts::isTyped(PanelField field) const
{
    return at(field).typed != at(field).kept;
}

std::vector<ColumnValue> PanelTexts::changes() const
{
    std::vector<ColumnValue> result;
    for (const PanelFieldRow& field : kRows) {
        if (isTyped(field.field)) {
            result.push_back({columnOf(field.field), text(field.field)});
        }
    }
    return result;
}

void PanelTexts::written()
{
    for (Text& text : m_texts) {
        text.kept = text.typed;
    }
}

void PanelTexts::takeUp(std::span<const ColumnValue> values)
{
    for (const ColumnValue& value : values) {
        for (const PanelFieldRow& field : kRows) {
            if (columnOf(field.field) == value.column) {
                type(field.field, value.value.toText());
            }
        }
    }
}

} // namespace melovane
