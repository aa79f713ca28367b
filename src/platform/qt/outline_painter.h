#pragma once

#include "platform/qt/outline_pictures.h"
#include "platform/qt/theme.h"

#include <QHash>
#include <QPixmap>
#include <QStyledItemDelegate>

#include <functional>

namespace melovane {

class IconSet;
class OutlineModel;
class Skin;
struct TreeRow;

/// Where the parts of a line of an outline stand; what it has not is empty.
struct OutlinePlaces
{
    QRect mark; ///< that folds and opens
    QRect picture;
    QRect text;
    QRect tick;
};

/// Paints the lines of an outline, and answers what the pointer rests on.
class OutlinePainter : public QStyledItemDelegate
{
    Q_OBJECT

public:
    OutlinePainter(const Skin& skin,
                   const IconSet& icons,
                   const OutlineModel& model,
                   QAbstractItemView& view);

    /// \param line the place of a line, as wide as the view
    [[nodiscard]] OutlinePlaces placesOf(const QRect& line, int row) const;

    /// Height of a line of text, and of a row with an image as far as it can be read.
    [[nodiscard]] int lineHeight() const;
    [[nodiscard]] int heightOf(int row) const;

    /// Units added to the height of a line by the settings of the font.
    void setSpacing(int units) { m_spacing = units; }

    /// What is said over the box of a row.
    void setTickTip(std::function<QString(int row)> tip) { m_tickTip = std::move(tip); }

    void paint(QPainter* painter,
               const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor,
                              const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event,
                   QAbstractItemView* view,
                   const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
    /// Clicks are the view's.
    bool editorEvent(QEvent* event,
                     QAbstractItemModel* model,
                     const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;

private:
    [[nodiscard]] QString tipAt(const QPoint& place, const QRect& line, int row) const;
    [[nodiscard]] QPixmap imageOf(const TreeRow& row) const;
    [[nodiscard]] bool isOneOfSeveral(const QModelIndex& index) const;
    [[nodiscard]] Colour ground(const QStyleOptionViewItem& option) const;
    void
    paintIcon(QPainter& painter, const QRect& place, const QString& name, ThemeRole role) const;
    void paintText(QPainter& painter,
                   const QRect& room,
                   const TreeRow& row,
                   const Colour& ground,
                   bool selected) const;
    void paintTick(QPainter& painter, const QRect& box, bool on, const Colour& ground) const;

    const Skin& m_skin;
    const IconSet& m_icons;
    const OutlineModel& m_model;
    QAbstractItemView& m_view;
    std::function<QString(int row)> m_tickTip;
    mutable OutlinePictures m_images;
    mutable QHash<QString, QPixmap> m_iconsMade; ///< by name, colour and size
    int m_spacing = 0;
};

} // namespace melovane
