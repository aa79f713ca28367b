#include "platform/qt/data_grid_painter.h"

#include "platform/qt/data_grid_model.h"
#include "platform/qt/figures.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/skin.h"
#include "platform/qt/whole_text_tip.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPainter>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// How strongly a tint colours the ground.
constexpr double kTint = 0.16;

/// How strongly the accent colours the ground of a cell that is not stored yet.
constexpr double kPending = 0.18;

/// Width of the bar in front of such a cell.
constexpr int kPendingBar = 2;

/// Between a picture and the text behind it.
constexpr int kIconGap = 5;

/// The least between the border of a cell, a picture that has little room, and the number behind
/// it.
constexpr int kTightGap = 2;

/// Side of the smallest picture that still says something.
constexpr int kLeastIcon = 6;

/// The picture that is amber, as the text beside it is.
const QString kWarning = u"warning"_s;

/// Longest text that is laid out; nothing behind it would fit a cell.
constexpr int kLongestPainted = 500;

/// The first line of a text, as far as it could fit.
QString paintedPart(const QString& text)
{
    return text.left(kLongestPainted).section(u'\n', 0, 0);
}

/// Where the picture of a cell stands: alone in the middle, else in front of the text.
QRect iconPlace(const QRect& room, int side, bool alone)
{
    QRect place(room.left(), 0, side, side);
    place.moveCenter({alone ? room.center().x() : room.left() + side / 2, room.center().y()});
    return place;
}

/// The same beside a number, which is never cut: the picture moves into the padding, then shrinks,
/// and goes when there is no room at all.
QRect besideNumber(const QRect& place, int border, int number)
{
    const int wanted = std::min(place.left(), number - kIconGap - place.width());
    const int left = std::max(border + kTightGap, wanted);
    const int side = std::min(place.width(), number - kTightGap - left);
    if (side < kLeastIcon) {
        return {};
    }
    QRect result(left, 0, side, side);
    result.moveCenter({left + side / 2, place.center().y()});
    return result;
}

void paintBadge(QPainter& painter,
                const QFontMetrics& metrics,
                const QRect& cell,
                const CellStyle& style,
                const QString& text)
{
    const int height = metrics.height() + 1;
    const int width = std::max(height, figureTextWidth(metrics, text) + 10);
    QRect field(0, 0, width, height);
    field.moveCenter(cell.center());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(toQColor(*style.badge));
    painter.drawRoundedRect(field, 3, 3);
    painter.setPen(toQColor(readableOn(style.badgeText.value_or(Colour()), *style.badge)));
    painter.drawText(field, Qt::AlignCenter, text);
}

/// What is typed stands where the cell showed it.
void placeText(QLineEdit& line, const QModelIndex& index)
{
    // The line keeps two units free by itself, the theme draws a frame of one.
    constexpr int kSides = DataGridPainter::kPadding - 3;
    line.setTextMargins(kSides, 0, kSides, 0);
    line.setAlignment(Qt::Alignment(index.data(Qt::TextAlignmentRole).toInt()));
}

} // namespace

DataGridPainter::DataGridPainter(const Skin& skin, const IconSet& icons, QObject* parent)
    : QStyledItemDelegate(parent)
    , m_skin(skin)
    , m_icons(icons)
    , m_finish([this](QWidget* editor) {
        emit commitData(editor);
        emit closeEditor(editor);
    })
{}

Colour
DataGridPainter::ground(const QStyleOptionViewItem& option, int row, const CellStyle& style) const
{
    const Theme& theme = m_skin.theme();
    switch (style.ground) {
    case CellGround::Plain:
    case CellGround::Favourite:
        break;
    case CellGround::Playing:
        return theme.colour(ThemeRole::GridColorAktivePlay);
    case CellGround::Next:
        return theme.colour(ThemeRole::GridColorNextPlay);
    case CellGround::Heard:
        return theme.colour(ThemeRole::GridColorAktiveFid);
    }
    if (option.state & QStyle::State_Selected) {
        const bool focus = option.widget && option.widget->hasFocus();
        return theme.colour(focus ? ThemeRole::GridColorSelGotFocus
                                  : ThemeRole::GridColorSelLostFocus);
    }
    if (style.ground == CellGround::Favourite) {
        return theme.colour(ThemeRole::GridColorFavorit);
    }
    return theme.colour(row % 2 == 0 ? ThemeRole::GridColor : ThemeRole::GridColorAlternating);
}

void DataGridPainter::paintIcon(QPainter& painter, const QRect& place, const CellStyle& style) const
{
    const ThemeRole usual =
        style.ground == CellGround::Plain ? ThemeRole::TextSecond : ThemeRole::Text;
    const bool isWarning = style.icon == kWarning;
    m_icons.icon(style.icon, isWarning ? ThemeRole::VuMeterColorPeek : usual)
        .paint(&painter, place);
}

void DataGridPainter::paint(QPainter* painter,
                            const QStyleOptionViewItem& option,
                            const QModelIndex& index) const
{
    const auto* model = qobject_cast<const DataGridModel*>(index.model());
    if (!model) {
        return;
    }
    const CellStyle style = model->style(index);
    Colour colour = ground(option, index.row(), style);
    if (style.tint && !(option.state & QStyle::State_Selected)) {
        colour = mixed(colour, *style.tint, kTint);
    }
    const Colour accent = m_skin.theme().colour(ThemeRole::Accent);
    if (style.pending) {
        colour = mixed(colour, accent, kPending);
    }
    painter->save();
    painter->fillRect(option.rect, toQColor(colour));
    if (style.pending) {
        const QRect& cell = option.rect;
        painter->fillRect(cell.left(), cell.top() + 2, kPendingBar, cell.height() - 4,
                          toQColor(accent));
    }
    const QString shown = paintedPart(index.data().toString());
    const auto& [font, metrics] =
        m_fonts.of(option.font, style.bold, style.struckOut, painter->device());
    painter->setFont(font);
    QRect inner = option.rect.adjusted(kPadding, 0, -kPadding, 0);
    const bool isNumber = model->column(index.column()).alignment == CellAlignment::Right;
    if (!style.icon.isEmpty()) {
        QRect place = iconPlace(inner, metrics.height(), shown.isEmpty());
        if (isNumber && !shown.isEmpty()) {
            place = besideNumber(place, option.rect.left(),
                                 inner.right() + 1 - figureTextWidth(metrics, shown));
        } else {
            inner.setLeft(inner.left() + place.width() + kIconGap);
        }
        paintIcon(*painter, place, style);
    }
    if (style.badge && !shown.isEmpty()) {
        paintBadge(*painter, metrics, option.rect, style, shown);
    } else if (!shown.isEmpty()) {
        const Colour ink = style.text.value_or(
            m_skin.theme().colour(style.dimmed ? ThemeRole::TextSecond : ThemeRole::Text));
        painter->setPen(toQColor(readableOn(ink, colour)));
        if (isNumber && !figuresAreEqual(metrics)) {
            drawFigures(*painter, metrics, inner,
                        metrics.elidedText(shown, Qt::ElideRight, inner.width()));
        } else {
            const Qt::Alignment side(index.data(Qt::TextAlignmentRole).toInt());
            m_texts.draw(*painter, inner, side & Qt::AlignHorizontal_Mask, shown);
        }
    }
    painter->restore();
}

QWidget* DataGridPainter::createEditor(QWidget* parent,
                                       const QStyleOptionViewItem& option,
                                       const QModelIndex& index) const
{
    const auto* model = qobject_cast<const DataGridModel*>(index.model());
    const QStringList choices = model ? model->choices(index) : QStringList();
    if (choices.isEmpty()) {
        QWidget* const editor = QStyledItemDelegate::createEditor(parent, option, index);
        if (auto* line = qobject_cast<QLineEdit*>(editor)) {
            placeText(*line, index);
        }
        return editor;
    }
    auto* list = new QComboBox(parent);
    list->addItems(choices);
    // A choice is final; nobody wants to press Enter behind it.
    connect(list, &QComboBox::activated, this, [this, list] { m_finish(list); });
    return list;
}

void DataGridPainter::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    // Filled once: whatever is read anew meanwhile, what the user types stays.
    constexpr auto kFilled = "filled";
    if (editor->property(kFilled).toBool()) {
        return;
    }
    editor->setProperty(kFilled, true);
    if (auto* list = qobject_cast<QComboBox*>(editor)) {
        list->setCurrentIndex(list->findText(index.data().toString()));
        return;
    }
    QStyledItemDelegate::setEditorData(editor, index);
}

void DataGridPainter::setModelData(QWidget* editor,
                                   QAbstractItemModel* model,
                                   const QModelIndex& index) const
{
    if (auto* list = qobject_cast<QComboBox*>(editor)) {
        if (list->currentIndex() >= 0 && list->currentText() != index.data().toString()) {
            model->setData(index, list->currentText(), Qt::EditRole);
        }
        return;
    }
    QStyledItemDelegate::setModelData(editor, model, index);
}

/// What paint() needs to show a cell whole.
int DataGridPainter::wholeWidth(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const auto* model = qobject_cast<const DataGridModel*>(index.model());
    const CellStyle style = model ? model->style(index) : CellStyle();
    const QString text = paintedPart(index.data().toString());
    const auto& [font, metrics] =
        m_fonts.of(option.font, style.bold, style.struckOut, option.widget);
    int width = wholeTextWidth(font, text, option.widget);
    if (model && model->column(index.column()).alignment == CellAlignment::Right) {
        width = std::max(width, figureTextWidth(metrics, text));
    }
    const int icon = style.icon.isEmpty() ? 0 : metrics.height() + kIconGap;
    return icon + width + 2 * kPadding;
}

QSize DataGridPainter::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    return {wholeWidth(option, index), option.fontMetrics.height()};
}

bool DataGridPainter::helpEvent(QHelpEvent* event,
                                QAbstractItemView* view,
                                const QStyleOptionViewItem& option,
                                const QModelIndex& index)
{
    QString text = index.data().toString();
    const bool isPicture = text.isEmpty();
    if (isPicture) {
        text = index.data(Qt::AccessibleTextRole).toString();
    }
    const bool fits = !isPicture && wholeWidth(option, index) <= view->visualRect(index).width();
    showWholeText(*event, view, text, fits);
    return true;
}

} // namespace melovane
