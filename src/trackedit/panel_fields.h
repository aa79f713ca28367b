#pragma once

#include "platform/db/value.h"
#include "store/track_fields.h"

#include <QString>
#include <QStringView>

#include <array>
#include <span>
#include <vector>

namespace melovane {

class Recordset;
struct ColumnValue;

/// The fields of the tag panel that hold a text, in the order of the keyboard.
enum class PanelField
{
    Titel,
    Interpret,
    Album,
    Kommentar,
    Jahr,
    Track,
    BPM,
    Genre,
    Kategorie,
    Stimmung,
    Situation,
    Tempo,
    User1,
    User2,
    User3,
    User4,
    User5,
};

inline constexpr std::size_t kPanelFields = std::size_t(PanelField::User5) + 1;

/// How a field of the panel is bound.
struct PanelFieldRow
{
    PanelField field;
    TrackField column;
    QStringView control; ///< objectName
    bool isList = false; ///< texts are offered for it
    /// Filled from the catalogue of values, and written when Enter is pressed in it.
    bool isCatalogue = false;
};

/// All of them; a row stands at the number of its field.
[[nodiscard]] std::span<const PanelFieldRow> panelFields();

[[nodiscard]] const PanelFieldRow& rowOf(PanelField field);

/// The column of a field.
[[nodiscard]] QString columnOf(PanelField field);

/// What stands in the fields of the panel: each as it is kept in the row of its track, and as the
/// user has it now.
///
/// Nothing that was typed is ever lost here: values that come from the row change a field only as
/// long as nobody has typed in it.
class PanelTexts
{
public:
    /// Another track: its row, and nothing typed.
    void show(const Recordset& row);

    /// No track.
    void clear();

    /// The same track was read anew. Fields with something typed keep it.
    void renew(const Recordset& row);

    [[nodiscard]] QString text(PanelField field) const { return at(field).typed; }

    /// The user has typed, or chosen.
    void type(PanelField field, const QString& text) { at(field).typed = text; }

    /// The keyboard comes into a field: what stands there now is its former text.
    void enter(PanelField field) { at(field).former = at(field).typed; }

    [[nodiscard]] QString former(PanelField field) const { return at(field).former; }

    [[nodiscard]] bool isTyped(PanelField field) const;

    /// The columns that hold something else than was typed.
    [[nodiscard]] std::vector<ColumnValue> changes() const;

    /// What was typed stands in the row now.
    void written();

    /// Takes up what could not be written before.
    void takeUp(std::span<const ColumnValue> values);

private:
    struct Text
    {
        QString kept;
        QString typed;
        QString former;
    };

    [[nodiscard]] Text& at(PanelField field) { return m_texts[std::size_t(field)]; }

    [[nodiscard]] const Text& at(PanelField field) const { return m_texts[std::size_t(field)]; }

    std::array<Text, kPanelFields> m_texts;
};

} // namespace melovane
