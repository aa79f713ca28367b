#pragma once

#include <array>

class QGridLayout;
class QWidget;

namespace melovane {

class CoverFrame;

/// How the form of the tag panel lies: the cover, three columns of fields beside or below one
/// another, by the room there is, and the facts at its foot.
class PanelColumns
{
public:
    /// \param form gets the layout, and outlives this like the others
    PanelColumns(QWidget& form, CoverFrame& cover, QWidget& line, QWidget& facts);

    /// Makes the columns: rows of a label and what it names.
    [[nodiscard]] QGridLayout& make(std::size_t column);

    /// Lays all out for that width, in pixels. A layout that stays is not touched.
    void reflow(int width);

private:
    [[nodiscard]] int widthOf(int columns, int cover) const;

    QWidget& m_form;
    CoverFrame& m_cover;
    QWidget& m_line;
    QWidget& m_facts;
    QGridLayout* m_grid;
    std::array<QWidget*, 3> m_columns{};
    int m_layout = -1; ///< number of columns and side of the cover
};

} // namespace melovane
