#include "platform/qt/outline_tree.h"

#include "platform/qt/empty_view.h"
#include "platform/qt/grid_font.h"
#include "platform/qt/outline_drags.h"
#include "platform/qt/outline_model.h"
#include "platform/qt/outline_painter.h"
#include "platform/qt/skin.h"

#include <QHeaderView>
#include <QMimeData>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>

// Rows, folding, filter and place; keys and mouse are in outline_tree_input.cpp.

namespace melovane {

using namespace Qt::Literals::StringLiterals;

OutlineTree::OutlineTree(const Skin& skin, const IconSet& icons, QWidget* parent)
    : QTableView(parent)
    , m_model(new OutlineModel(this))
    , m_painter(new OutlinePainter(skin, icons, *m_model, *this))
    , m_drags(new OutlineDrags(skin, *m_model, *m_painter, *this))
    , m_note(new EmptyView(icons, u"note"_s, viewport()))
{
    m_note->setAutoFillBackground(true);
    m_note->hide();
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->hide();
    horizontalHeader()->setMinimumSectionSize(1);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    setModel(m_model);
    setItemDelegate(m_painter);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setFrameShape(QFrame::NoFrame);
    setSelectionBehavior(SelectRows);
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
    OutlineTree::setTreeFont({.name = {}, .size = 0});
    connect(this, &QTableView::clicked, this,
            [this](const QModelIndex& index) { emit rowClicked(m_model->rowOf(index)); });
    connect(m_model, &OutlineModel::edited, this, &OutlineTree::rowEdited);
    connect(m_model, &QAbstractItemModel::modelAboutToBeReset, this, [this] {
        m_kept = {currentRow(), firstVisibleRow(), selectedRows()};
    });
    connect(m_model, &QAbstractItemModel::modelReset, this, &OutlineTree::afterReset);
    connect(m_model, &QAbstractItemModel::rowsInserted, this, &OutlineTree::fitImages);
    // The view drops its editor then without a word. Told in a turn of its own: whoever waits for
    // the end fills the tree anew, and that must not be in the midst of a change.
    connect(m_model, &QAbstractItemModel::modelReset, this, [this] {
        if (m_model->takeLostEdit()) {
            QMetaObject::invokeMethod(this, &OutlineTree::editEnded, Qt::QueuedConnection);
        }
    });
    connect(m_drags, &OutlineDrags::rowDropped, this, &OutlineTree::rowDropped);
    // Opens only: a row that is open must not fold under the pointer of the user.
    connect(m_drags, &OutlineDrags::restedOn, this, [this](int row) { toggle(row, true); });
    connect(&skin, &Skin::changed, viewport(), qOverload<>(&QWidget::update));
}

OutlineTree::~OutlineTree() = default;

void OutlineTree::setTreeFont(const GridFont& wanted)
{
    setFont(toQFont(wanted));
    m_painter->setSpacing(clampedSpacing(wanted));
    verticalHeader()->setDefaultSectionSize(m_painter->lineHeight());
    fitImages();
}

void OutlineTree::setNote(const EmptyNote& note)
{
    m_wantedNote = note;
    updateNote();
}

void OutlineTree::setFilterNote(const QString& text)
{
    m_filterNote = text;
    updateNote();
}

void OutlineTree::updateNote()
{
    EmptyNote note = m_wantedNote;
    if (note == EmptyNote() && m_model->filterHits() == 0 && m_model->rows().lineCount() == 0) {
        note.title = m_filterNote;
    }
    m_note->setNote(note);
    m_note->setGeometry(viewport()->rect());
    m_note->setVisible(note != EmptyNote());
}

void OutlineTree::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    m_note->setGeometry(viewport()->rect());
    fitImages();
}

void OutlineTree::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    QPainter painter(viewport());
    m_drags->paint(painter);
}

void OutlineTree::setRows(std::vector<TreeRow> rows)
{
    const QScopedValueRollback forgets(m_forgets, true);
    m_currentUnfiltered.clear();
    m_firstUnfiltered.clear();
    m_model->setRows(std::move(rows));
}

int OutlineTree::rowCount() const
{
    return m_model->rows().count();
}

TreeRow OutlineTree::row(int index) const
{
    return m_model->rows().has(index) ? m_model->rows().row(index) : TreeRow();
}

int OutlineTree::find(const QString& key) const
{
    return m_model->find(key);
}

int OutlineTree::findNext(const QString& key, int behind) const
{
    return m_model->findNext(key, behind);
}

void OutlineTree::setRow(int index, const TreeRow& row)
{
    m_model->setRow(index, row);
    const QModelIndex line = m_model->indexOf(index);
    if (line.isValid() && rowHeight(line.row()) != m_painter->heightOf(index)) {
        setRowHeight(line.row(), m_painter->heightOf(index));
    }
    fitImages();
    updateNote();
}

void OutlineTree::insertRow(int index, const TreeRow& row)
{
    m_model->insertRows(index, {row});
    updateNote();
}

void OutlineTree::insertRows(int index, std::vector<TreeRow> rows)
{
    m_model->insertRows(index, std::move(rows));
    updateNote();
}

void OutlineTree::removeRow(int index)
{
    m_model->removeRow(index);
    if (currentIndex().isValid() && !selectionModel()->hasSelection()) {
        // The row that became the current one because another has gone.
        selectionModel()->select(currentIndex(), QItemSelectionModel::Select);
    }
    updateNote();
}

int OutlineTree::currentRow() const
{
    return m_model->rowOf(currentIndex());
}

void OutlineTree::setCurrentRow(int index)
{
    m_model->reveal(index);
    const QModelIndex wanted = m_model->indexOf(index);
    if (!wanted.isValid()) {
        selectionModel()->clear();
        return;
    }
    updateNote();
    setCurrentIndex(wanted);
    updateGeometries();
    scrollTo(wanted);
}

std::vector<int> OutlineTree::selectedRows() const
{
    std::vector<int> rows;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        for (int line = range.top(); line <= range.bottom(); ++line) {
            rows.push_back(m_model->rows().rowOfLine(line));
        }
    }
    std::sort(rows.begin(), rows.end());
    if (rows.empty() && currentIndex().isValid()) {
        rows.push_back(currentRow());
    }
    return rows;
}

void OutlineTree::setMultiSelection(bool on)
{
    setSelectionMode(on ? ExtendedSelection : SingleSelection);
}

void OutlineTree::editRow(int index, const QString& text)
{
    m_model->reveal(index);
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
    return m_model->folded();
}

void OutlineTree::setFolded(const QStringList& keys)
{
    m_model->foldOnly(keys);
}

void OutlineTree::setFolds(const QStringList& folded, const QStringList& open)
{
    m_model->setFolds(folded, open);
}

bool OutlineTree::isOpen(int index) const
{
    return m_model->rows().has(index) && m_model->rows().isOpen(index);
}

void OutlineTree::setOpen(int index, bool open)
{
    const int current = currentRow();
    if (!open && current > index && m_model->rows().has(index) &&
        current < m_model->rows().end(index)) {
        setCurrentIndex(m_model->indexOf(index)); // nobody sees the one that goes
    }
    m_model->setOpen(index, open);
}

void OutlineTree::foldTo(int level)
{
    m_model->foldTo(level);
}

void OutlineTree::setFilter(const QString& text)
{
    const OutlineRows& rows = m_model->rows();
    const int chosen = currentRow();
    if (!rows.isFiltered()) {
        m_currentUnfiltered = row(chosen).key;
        m_firstUnfiltered = row(firstVisibleRow()).key;
    }
    const bool wasFiltered = rows.isFiltered();
    m_model->setFilter(text);
    if (!wasFiltered || rows.isFiltered()) {
        return;
    }
    const int before = m_currentUnfiltered.isEmpty() ? -1 : find(m_currentUnfiltered);
    setFirstVisibleRow(m_firstUnfiltered.isEmpty() ? 0 : find(m_firstUnfiltered));
    const int current = chosen >= 0 ? chosen : before;
    if (current >= 0 && current == before) {
        choose({current, -1, {current}});
    } else if (current >= 0) {
        setCurrentRow(current); // chosen in what the filter had opened
    }
}

int OutlineTree::filterHits() const
{
    return m_model->filterHits();
}

/// Puts what was chosen back, as far as it is still to be seen.
void OutlineTree::choose(const Choice& choice)
{
    const OutlineRows& rows = m_model->rows();
    QItemSelection selection;
    int first = -1;
    int last = -2;
    const auto take = [&] {
        if (first >= 0) {
            selection.select(m_model->index(first, 0), m_model->index(last, 0));
        }
    };
    for (const int row : choice.selected) {
        const int line = rows.has(row) ? rows.lineOf(row) : -1;
        if (line >= 0 && line != last + 1) {
            take();
            first = line;
        }
        last = line >= 0 ? line : last;
    }
    take();
    // What is folded away goes over to the row that it is folded into; the filter just hides.
    const bool isKnown = rows.has(choice.current);
    const int current = !isKnown            ? -1
                        : rows.isFiltered() ? rows.lineOf(choice.current)
                                            : rows.nearestLine(choice.current);
    if (current < 0) {
        selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
        return;
    }
    const QModelIndex index = m_model->index(current, 0);
    if (selection.isEmpty()) {
        selection.select(index, index);
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
}

void OutlineTree::afterReset()
{
    fitImages();
    updateNote();
    if (m_forgets) {
        return;
    }
    choose(m_kept);
    setFirstVisibleRow(m_kept.first);
    if (!m_model->rows().isFiltered() && currentIndex().isValid()) {
        scrollTo(currentIndex());
    }
}

/// Rows with an image are as high as it is.
void OutlineTree::fitImages()
{
    const std::vector<int>& images = m_model->imageRows();
    setVerticalScrollMode(images.empty() ? ScrollPerItem : ScrollPerPixel);
    for (const int image : images) {
        const QModelIndex line = m_model->indexOf(image);
        if (line.isValid() && rowHeight(line.row()) != m_painter->heightOf(image)) {
            setRowHeight(line.row(), m_painter->heightOf(image));
        }
    }
}

int OutlineTree::firstVisibleRow() const
{
    return m_model->rowOf(indexAt(QPoint(0, 0)));
}

void OutlineTree::setFirstVisibleRow(int index)
{
    if (!m_model->rows().has(index)) {
        return;
    }
    const int line = m_model->rows().nearestLine(index);
    if (line >= 0) {
        updateGeometries(); // the bar knows how many lines there are
        scrollTo(m_model->index(line, 0), PositionAtTop);
    }
}

void OutlineTree::focus()
{
    setFocus(Qt::OtherFocusReason);
}

QRect OutlineTree::placeOf(int index) const
{
    const QModelIndex line = m_model->indexOf(index);
    QRect place = line.isValid() ? visualRect(line) : QRect();
    if (place.isValid()) {
        place.setLeft(m_painter->placesOf(place, index).picture.left());
    }
    return place;
}

QRect OutlineTree::tickPlaceOf(int index) const
{
    const QModelIndex line = m_model->indexOf(index);
    return line.isValid() ? m_painter->placesOf(visualRect(line), index).tick : QRect();
}

void OutlineTree::setDropTarget(DropTarget& target)
{
    m_drags->setDropTarget(target);
}

void OutlineTree::setDragSource(std::function<DragContent(const std::vector<int>& rows)> source)
{
    m_drags->setDragSource(std::move(source));
    m_model->setAllDraggable();
}

void OutlineTree::setTickTip(std::function<QString(int row)> tip)
{
    m_painter->setTickTip(std::move(tip));
}

void OutlineTree::setWords(const OutlineWords& words)
{
    m_model->setWords(words);
}

std::unique_ptr<QMimeData> OutlineTree::cargo(int index) const
{
    return m_drags->cargo(index);
}

} // namespace melovane
