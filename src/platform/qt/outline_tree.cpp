#include "platform/qt/outline_tree.h"

#include "platform/qt/empty_view.h"
#include "platform/qt/grid_font.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/outline_model.h"
#include "platform/qt/skin.h"
#include "platform/qt/whole_text_tip.h"

#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Units added to the height of a line of text.
constexpr int kRowSpacing = 8;

/// Units between picture and text, and between text and border.
constexpr int kGap = 7;

QFont fontOf(const TreeRow& row, QFont font)
{
    font.setBold(row.bold || row.heading || font.bold());
    return font;
}

/// Height of a row, the editor of its text, and the tool tip of a text that has no room.
class OutlineDelegate : public QStyledItemDelegate
{
public:
    explicit OutlineDelegate(OutlineTree& tree)
        : QStyledItemDelegate(&tree)
        , m_tree(tree)
    {}

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override
    {
        const int picture = option.fontMetrics.height();
        return {picture + option.fontMetrics.horizontalAdvance(index.data().toString()) + 3 * kGap,
                option.fontMetrics.height() + kRowSpacing + m_tree.rowSpacing()};
    }

    void updateEditorGeometry(QWidget* editor,
                              const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override
    {
        Q_UNUSED(index)
        editor->setGeometry(option.rect.adjusted(option.fontMetrics.height() + kGap - 3, 0, 0, 0));
    }

    bool helpEvent(QHelpEvent* event,
                   QAbstractItemView* view,
                   const QStyleOptionViewItem& option,
                   const QModelIndex& index) override
    {
        const int room = view->viewport()->width() - view->visualRect(index).left();
        const bool fits = !index.isValid() || sizeHint(option, index).width() <= room;
        showWholeText(*event, view, index.data().toString(), fits);
        return true;
    }

private:
    const OutlineTree& m_tree;
};

} // namespace

OutlineTree::OutlineTree(const Skin& skin, const IconSet& icons, QWidget* parent)
    : QTreeView(parent)
    , m_skin(skin)
    , m_icons(icons)
    , m_model(new OutlineModel(this))
    , m_note(new EmptyView(icons, u"note"_s, viewport()))
{
    m_note->setAutoFillBackground(true);
    m_note->hide();
    setModel(m_model);
    setItemDelegate(new OutlineDelegate(*this));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setFrameShape(QFrame::NoFrame);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabKeyNavigation(false);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDragDropMode(DragDrop);
    setDefaultDropAction(Qt::MoveAction);
    setDropIndicatorShown(false);
    constexpr int kUnfoldMs = 600;
    m_unfold.setSingleShot(true);
    m_unfold.setInterval(kUnfoldMs);
    connect(&m_unfold, &QTimer::timeout, this,
            [this] { expand(m_model->indexOf(m_rowUnderPointer)); });
    OutlineTree::setTreeFont({.name = {}, .size = 0});
    connect(this, &QTreeView::clicked, this,
            [this](const QModelIndex& index) { emit rowClicked(m_model->placeOf(index)); });
    connect(m_model, &OutlineModel::edited, this, &OutlineTree::rowEdited);
    connect(&skin, &Skin::changed, viewport(), qOverload<>(&QWidget::update));
}

OutlineTree::~OutlineTree() = default;

void OutlineTree::setTreeFont(const GridFont& wanted)
{
    setFont(toQFont(wanted));
    m_rowSpacing = clampedSpacing(wanted);
    QTreeView::setIndentation(fontMetrics().height() * 5 / 4);
    scheduleDelayedItemsLayout();
}

void OutlineTree::setNote(const EmptyNote& note)
{
    m_note->setNote(note);
    m_note->setGeometry(viewport()->rect());
    m_note->setVisible(note != EmptyNote());
}

void OutlineTree::resizeEvent(QResizeEvent* event)
{
    QTreeView::resizeEvent(event);
    m_note->setGeometry(viewport()->rect());
}

void OutlineTree::setRows(std::vector<TreeRow> rows)
{
    m_model->setRows(std::move(rows));
    expandAll();
}

int OutlineTree::rowCount() const
{
    return m_model->count();
}

TreeRow OutlineTree::row(int index) const
{
    return m_model->has(index) ? m_model->row(index) : TreeRow();
}

int OutlineTree::find(const QString& key) const
{
    return m_model->find(key);
}

void OutlineTree::setRow(int index, const TreeRow& row)
{
    m_model->setRow(index, row);
}

void OutlineTree::insertRow(int index, const TreeRow& row)
{
    m_model->insertRow(index, row);
}

void OutlineTree::removeRow(int index)
{
    m_model->removeRow(index);
}

int OutlineTree::currentRow() const
{
    return m_model->placeOf(currentIndex());
}

void OutlineTree::setCurrentRow(int index)
{
    const QModelIndex wanted = m_model->indexOf(index);
    if (!wanted.isValid()) {
        selectionModel()->clear();
        return;
    }
    setCurrentIndex(wanted);
    scrollTo(wanted);
}

void OutlineTree::editRow(int index, const QString& text)
{
    const QModelIndex wanted = m_model->indexOf(index);
    if (!wanted.isValid()) {
        return;
    }
    setCurrentIndex(wanted);
    scrollTo(wanted);
    m_model->setEdited(wanted, text);
    edit(wanted);
}

bool OutlineTree::isEditing() const
{
    return state() == EditingState;
}

QStringList OutlineTree::folded() const
{
    QStringList keys;
    for (int place = 0; place < m_model->count(); ++place) {
        const QModelIndex index = m_model->indexOf(place);
        if (m_model->rowCount(index) > 0 && !isExpanded(index)) {
            keys.append(m_model->row(place).key);
        }
    }
    return keys;
}

void OutlineTree::setFolded(const QStringList& keys)
{
    expandAll();
    for (const QString& key : keys) {
        collapse(m_model->indexOf(m_model->find(key)));
    }
}

int OutlineTree::firstVisibleRow() const
{
    return m_model->placeOf(indexAt(QPoint(0, 0)));
}

void OutlineTree::setFirstVisibleRow(int index)
{
    const QModelIndex wanted = m_model->indexOf(index);
    if (wanted.isValid()) {
        scrollTo(wanted, PositionAtTop);
    }
}

void OutlineTree::focus()
{
    setFocus(Qt::OtherFocusReason);
}

QRect OutlineTree::placeOf(int index) const
{
    return visualRect(m_model->indexOf(index));
}

QColor OutlineTree::ground(bool selected) const
{
    if (!selected) {
        return m_skin.theme().qcolor(ThemeRole::GridColor);
    }
    return m_skin.theme().qcolor(hasFocus() ? ThemeRole::GridColorSelGotFocus
                                            : ThemeRole::GridColorSelLostFocus);
}

void OutlineTree::drawRow(QPainter* painter,
                          const QStyleOptionViewItem& option,
                          const QModelIndex& index) const
{
    const TreeRow& shown = m_model->row(m_model->placeOf(index));
    const QColor colour = ground(selectionModel()->isSelected(index));
    painter->save();
    painter->fillRect(QRect(0, option.rect.top(), viewport()->width(), option.rect.height()),
                      colour);
    const QRect place = visualRect(index);
    const int side = fontMetrics().height();
    const int top = place.top() + (place.height() - side) / 2;
    if (m_model->rowCount(index) > 0) {
        const QRect mark(place.left() - (indentation() + side) / 2, top, side, side);
        const QString name = isExpanded(index) ? u"tree.open"_s : u"tree.close"_s;
        m_icons.icon(name, ThemeRole::TextSecond).paint(painter, mark);
    }
    const ThemeRole pictureRole = shown.heading  ? ThemeRole::Accent
                                  : shown.dimmed ? ThemeRole::TextDisabled
                                                 : ThemeRole::TextSecond;
    m_icons.icon(shown.picture.toLower(), pictureRole)
        .paint(painter, QRect(place.left(), top, side, side));
    const ThemeRole textRole = shown.dimmed ? ThemeRole::TextSecond : ThemeRole::Text;
    painter->setPen(toQColor(readableOn(m_skin.theme().colour(textRole), fromQColor(colour))));
    painter->setFont(fontOf(shown, font()));
    const QRect room(place.left() + side + kGap, place.top(),
                     viewport()->width() - place.left() - side - 2 * kGap, place.height());
    const QString line = shown.text.left(500).section(u'\n', 0, 0);
    painter->drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                      painter->fontMetrics().elidedText(line, Qt::ElideRight, room.width()));
    painter->restore();
}

void OutlineTree::paintTarget(QPainter& painter) const
{
    const QRect place = placeOf(m_target.row);
    if (!place.isValid()) {
        return;
    }
    painter.setPen(QPen(m_skin.theme().qcolor(ThemeRole::Accent), 2));
    if (m_target.place == DropPlace::Into) {
        painter.drawRect(QRect(1, place.top() + 1, viewport()->width() - 2, place.height() - 2));
        return;
    }
    const int y = m_target.place == DropPlace::Above ? place.top() : place.bottom() + 1;
    painter.drawLine(place.left(), y, viewport()->width() - kGap, y);
}

void OutlineTree::paintEvent(QPaintEvent* event)
{
    QTreeView::paintEvent(event);
    if (m_target.row >= 0) {
        QPainter painter(viewport());
        paintTarget(painter);
    }
}

} // namespace melovane
