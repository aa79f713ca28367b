#pragma once

#include "platform/controls/grid_control.h"
#include "platform/qt/cell_fonts.h"
#include "platform/qt/cell_texts.h"

#include <QStyledItemDelegate>

#include <functional>

namespace melovane {

class IconSet;
class Skin;

/// Paints the cells of a grid: ground, badge, text, with every text readable on its ground.
class DataGridPainter : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// Units between a cell's border and its text.
    static constexpr int kPadding = 8;

    DataGridPainter(const Skin& skin, const IconSet& icons, QObject* parent);

    void paint(QPainter* painter,
               const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

    /// A list for fields with choices, else a line of text.
    QWidget* createEditor(QWidget* parent,
                          const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor,
                      QAbstractItemModel* model,
                      const QModelIndex& index) const override;

    /// Room for the whole text.
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;

    /// Shows the whole text of a cell that had no room for it.
    bool helpEvent(QHelpEvent* event,
                   QAbstractItemView* view,
                   const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

    /// Texts laid out for painting so far; those painted again are not among them.
    [[nodiscard]] qint64 laidOut() const { return m_texts.laidOut(); }

    /// Fonts measured so far.
    [[nodiscard]] qint64 fontsMade() const { return m_fonts.made(); }

private:
    [[nodiscard]] int wholeWidth(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const;
    [[nodiscard]] Colour
    ground(const QStyleOptionViewItem& option, int row, const CellStyle& style) const;
    void paintIcon(QPainter& painter, const QRect& place, const CellStyle& style) const;

    const Skin& m_skin;
    const IconSet& m_icons;
    mutable CellFonts m_fonts;
    mutable CellTexts m_texts;
    std::function<void(QWidget* editor)> m_finish; ///< takes over what an editor holds, ends it
};

} // namespace melovane
