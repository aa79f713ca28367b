#pragma once

#include "platform/controls/grid_control.h"

#include <QString>

#include <optional>
#include <vector>

namespace melovane {

class GlobalSettings;

/// Font and colours of the grids, as section "Color" of the settings keeps them.
///
/// Colours are numbers in which blue is the highest of three bytes. Values that are absent have
/// their built-in ones; 0 is black, not absent. Nothing is reported.
class UpdateColors
{
public:
    struct ColorValue
    {
        QString name;
        QString value; ///< as it stands in the file
        bool changed = false;
    };

    /// Reads the values.
    explicit UpdateColors(GlobalSettings& settings);

    /// A value as the program delivers it; empty for an unknown name.
    [[nodiscard]] static QString builtIn(QStringView name);

    /// Keeps a value and marks it as changed; a name outside the table is skipped.
    void SetColorValue(const QString& name, const QString& value);

    [[nodiscard]] const std::vector<ColorValue>& GetColors() const { return m_values; }

    /// The number of a value, 0 for an unknown name. Names have no letter case.
    [[nodiscard]] int GetColor(const QString& name) const;
    [[nodiscard]] Colour colour(const QString& name) const;

    /// `FontName`, `FontSize`, `FontBold` and `RowSpacing`.
    [[nodiscard]] GridFont font() const;
    void setFont(const GridFont& font);

    /// Gives a grid its font and row spacing; its rows take their colours from here as they are
    /// painted.
    void UpdateSplitColors(GridControl& grid) const;

    /// A named style of rows: "FIDBOLD" marks the track that the other view stands on. Nothing for
    /// an unknown name.
    [[nodiscard]] std::optional<CellStyle> gridStyle(const QString& name) const;

    /// Reads all values anew; what was changed and not written is lost.
    void dLoadIni();

    /// Writes the changed values.
    void SaveChangedData();

    /// Writes `FontName`, `FontBold` and `FontSize`.
    void SaveIni();

private:
    [[nodiscard]] const ColorValue* find(const QString& name) const;
    void write(const ColorValue& value);

    GlobalSettings& m_settings;
    std::vector<ColorValue> m_values;
};

} // namespace melovane
