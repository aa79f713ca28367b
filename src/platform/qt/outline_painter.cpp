#include "platform/qt/outline_painter.h"

#include "platform/qt/icon_set.h"
#include "platform/qt/outline_model.h"
#include "platform/qt/skin.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QItemSelectionModel>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <QTextDocument>
#include <QToolTip>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Units added to the height of a line of text.
constexpr int kRowSpacing = 8;

/// Units between picture and text, and between text and border.
constexpr int kGap = 7;

/// Between the mark that folds and the picture.
constexpr int kMarkGap = 4;

/// Above and below an image.
constexpr int kImageMargin = 6;

/// Longest text that is laid out; nothing behind it would fit.
constexpr qsizetype kLongestPainted = 500;

QFont fontOf(const TreeRow& row, QFont font)
{
    font.setBold(row.bold || row.heading || font.bold());
    return font;
}

/// A text and the count behind it, as far as both could fit.
std::pair<QString, QString> partsOf(const TreeRow& row)
{
    const qsizetype name =
        std::clamp<qsizetype>(row.text.size() - row.countLetters, 0, row.text.size());
    const QString line = row.text.left(std::min(name, kLongestPainted)).section(u'\n', 0, 0);
    return {line, row.text.mid(name, kLongestPainted)};
}

/// For QToolTip, which takes what looks like markup for it.
QString tipOf(const QString& text)
{
    constexpr qsizetype kLongest = 1000;
    constexpr qsizetype kOneLine = 80;
    if (text.size() <= kOneLine && !Qt::mightBeRichText(text)) {
        return text;
    }
    return u"<qt>%1</qt>"_s.arg(text.left(kLongest).toHtmlEscaped());
}

} // namespace

OutlinePainter::OutlinePainter(const Skin& skin,
                               const IconSet& icons,
                               const OutlineModel& model,
                               QAbstractItemView& view)
    : QStyledItemDelegate(&view)
    , m_skin(skin)
    , m_icons(icons)
    , m_model(model)
    , m_view(view)
{
    connect(&skin, &Skin::changed, this, [this] { m_iconsMade.clear(); });
}

OutlinePlaces OutlinePainter::placesOf(const QRect& line, int row) const
{
    const TreeRow& shown = m_model.rows().row(row);
    const int side = m_view.fontMetrics().height();
    const auto square = [&](int left, int size) {
        return QRect(left, line.top() + (line.height() - size) / 2, size, size);
    };
    OutlinePlaces places;
    const int left = line.left() + kGap + shown.level * side * 7 / 8;
    if (m_model.rows().isParent(row) || shown.fillable) {
        places.mark = square(left, side);
    }
    int right = line.right() + 1 - kGap;
    if (shown.tick != RowTick::None) {
        const int box = side - 2;
        places.tick = square(right - 3 - box, box);
        right = places.tick.left() - kGap;
    }
    places.picture = square(left + side + kMarkGap, side);
    const int text = places.picture.right() + 1 + kGap;
    places.text = QRect(text, line.top(), std::max(0, right - text), line.height());
    return places;
}

int OutlinePainter::lineHeight() const
{
    return m_view.fontMetrics().height() + kRowSpacing + m_spacing;
}

int OutlinePainter::heightOf(int row) const
{
    const TreeRow& shown = m_model.rows().row(row);
    const QPixmap image = shown.image.isEmpty() ? QPixmap() : imageOf(shown);
    const int height = int(image.height() / image.devicePixelRatio()) + 2 * kImageMargin;
    return image.isNull() ? lineHeight() : std::max(lineHeight(), height);
}

QPixmap OutlinePainter::imageOf(const TreeRow& row) const
{
    // Whether the scroll bar is there or not: it must not come and go with the height of the image.
    const int bar = m_view.verticalScrollBar()->sizeHint().width();
    const int room = m_view.width() - 2 * m_view.frameWidth() - bar - 2 * kGap;
    return m_images.picture(row.image, room, m_view.devicePixelRatioF());
}

Colour OutlinePainter::ground(const QStyleOptionViewItem& option) const
{
    const Theme& theme = m_skin.theme();
    if (!option.state.testFlag(QStyle::State_Selected)) {
        return theme.colour(ThemeRole::GridColor);
    }
    return theme.colour(m_view.hasFocus() ? ThemeRole::GridColorSelGotFocus
                                          : ThemeRole::GridColorSelLostFocus);
}

void OutlinePainter::paintIcon(QPainter& painter,
                               const QRect& place,
                               const QString& name,
                               ThemeRole role) const
{
    if (name.isEmpty()) {
        return;
    }
    // Drawn anew for each row, the pictures would cost more than all texts.
    const double scale = m_view.devicePixelRatioF();
    const QString key = u"%1|%2|%3|%4"_s.arg(name).arg(int(role)).arg(place.width()).arg(scale);
    auto made = m_iconsMade.find(key);
    if (made == m_iconsMade.end()) {
        const QIcon icon = m_icons.icon(name.toLower(), role);
        made = m_iconsMade.insert(key, icon.pixmap(place.size(), scale));
    }
    painter.drawPixmap(place.topLeft(), *made);
}

void OutlinePainter::paintText(QPainter& painter,
                               const QRect& room,
                               const TreeRow& row,
                               const Colour& ground,
                               bool selected) const
{
    const Theme& theme = m_skin.theme();
    const auto [name, count] = partsOf(row);
    const ThemeRole second = selected ? ThemeRole::TextSecondSelected : ThemeRole::TextSecond;
    const auto ink = [&](ThemeRole role) {
        painter.setPen(toQColor(readableOn(theme.colour(role), ground)));
    };
    painter.setFont(fontOf(row, m_view.font()));
    const QFontMetrics metrics = painter.fontMetrics();
    constexpr int kFlags = Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine;
    const int countWidth = count.isEmpty() ? 0 : metrics.horizontalAdvance(count);
    const QString shown =
        metrics.elidedText(name, Qt::ElideRight, std::max(0, room.width() - countWidth));
    ink(row.dimmed ? second : ThemeRole::Text);
    painter.drawText(room, kFlags, shown);
    if (!count.isEmpty()) {
        ink(second);
        const QRect behind = room.adjusted(metrics.horizontalAdvance(shown), 0, 0, 0);
        painter.drawText(behind, kFlags, metrics.elidedText(count, Qt::ElideRight, behind.width()));
    }
}

void OutlinePainter::paintTick(QPainter& painter,
                               const QRect& box,
                               bool on,
                               const Colour& ground) const
{
    const Theme& theme = m_skin.theme();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(box).adjusted(0.5, 0.5, -0.5, -0.5);
    if (!on) {
        // A frame needs less contrast than a text.
        constexpr double kFrameContrast = 3;
        const Colour line = theme.colour(ThemeRole::TextDisabled);
        painter.setPen(toQColor(readableOn(line, ground, kFrameContrast)));
        painter.setBrush(theme.qcolor(ThemeRole::TextField));
        painter.drawRoundedRect(frame, 3, 3);
    } else {
        const Colour accent = theme.colour(ThemeRole::Accent);
        painter.setPen(Qt::NoPen);
        painter.setBrush(toQColor(accent));
        painter.drawRoundedRect(frame, 3, 3);
        const double unit = frame.width() / 13;
        QPainterPath hook(frame.topLeft() + QPointF(3.2, 6.8) * unit);
        hook.lineTo(frame.topLeft() + QPointF(5.6, 9.2) * unit);
        hook.lineTo(frame.topLeft() + QPointF(10, 4.2) * unit);
        const Colour ink = readableOn(theme.colour(ThemeRole::TextField), accent);
        painter.setPen(QPen(toQColor(ink), 1.6 * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(hook);
    }
    painter.restore();
}

/// Whether the ground alone does not say that it is the current row.
bool OutlinePainter::isOneOfSeveral(const QModelIndex& index) const
{
    const QItemSelection selection = m_view.selectionModel()->selection();
    return selection.size() > 1 || (selection.size() == 1 && selection.first().height() > 1) ||
           !m_view.selectionModel()->isSelected(index);
}

void OutlinePainter::paint(QPainter* painter,
                           const QStyleOptionViewItem& option,
                           const QModelIndex& index) const
{
    const int row = m_model.rowOf(index);
    const TreeRow& shown = m_model.rows().row(row);
    const Colour colour = ground(option);
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    painter->save();
    painter->fillRect(option.rect, toQColor(colour));
    if (option.state.testFlag(QStyle::State_HasFocus) && isOneOfSeveral(index)) {
        painter->setPen(m_skin.theme().qcolor(ThemeRole::Accent));
        painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    }
    const QPixmap image = shown.image.isEmpty() ? QPixmap() : imageOf(shown);
    if (!image.isNull()) {
        QRectF place(QPointF(), image.deviceIndependentSize());
        place.moveCenter(QRectF(option.rect).center());
        painter->drawPixmap(place.topLeft().toPoint(), image);
        painter->restore();
        return;
    }
    const OutlinePlaces places = placesOf(option.rect, row);
    const ThemeRole second = selected ? ThemeRole::TextSecondSelected : ThemeRole::TextSecond;
    if (!places.mark.isEmpty()) {
        const QString mark = m_model.rows().isOpen(row) ? u"tree.open"_s : u"tree.close"_s;
        paintIcon(*painter, places.mark, mark, second);
    }
    const ThemeRole picture = shown.heading  ? ThemeRole::Accent
                              : shown.dimmed ? ThemeRole::TextDisabled
                                             : second;
    paintIcon(*painter, places.picture, shown.picture, picture);
    paintText(*painter, places.text, shown, colour, selected);
    if (shown.tick != RowTick::None) {
        paintTick(*painter, places.tick, shown.tick == RowTick::On, colour);
    }
    painter->restore();
}

QSize OutlinePainter::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    Q_UNUSED(option)
    const int row = m_model.rowOf(index);
    const TreeRow& shown = m_model.rows().row(row);
    const int text = QFontMetrics(fontOf(shown, m_view.font())).horizontalAdvance(shown.text);
    return {placesOf(QRect(), row).text.left() + text + kGap, lineHeight()};
}

void OutlinePainter::updateEditorGeometry(QWidget* editor,
                                          const QStyleOptionViewItem& option,
                                          const QModelIndex& index) const
{
    const QRect text = placesOf(option.rect, m_model.rowOf(index)).text;
    editor->setGeometry(text.adjusted(-3, 0, kGap, 0));
}

QString OutlinePainter::tipAt(const QPoint& place, const QRect& line, int row) const
{
    const OutlinePlaces places = placesOf(line, row);
    if (places.tick.contains(place)) {
        return m_tickTip ? m_tickTip(row) : QString();
    }
    const TreeRow& shown = m_model.rows().row(row);
    const QFontMetrics metrics(fontOf(shown, m_view.font()));
    const bool fits = metrics.horizontalAdvance(shown.text) <= places.text.width();
    if (fits || !shown.image.isEmpty()) {
        return shown.toolTip;
    }
    const QString whole = u' ' + shown.text + u' ';
    return shown.toolTip.isEmpty() ? whole : whole + u'\n' + shown.toolTip;
}

bool OutlinePainter::helpEvent(QHelpEvent* event,
                               QAbstractItemView* view,
                               const QStyleOptionViewItem& option,
                               const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid()) {
        QToolTip::hideText();
        return true;
    }
    const QString tip = tipAt(event->pos(), option.rect, m_model.rowOf(index));
    if (tip.isEmpty()) {
        QToolTip::hideText();
    } else {
        QToolTip::showText(event->globalPos(), tipOf(tip), view);
    }
    return true;
}

bool OutlinePainter::editorEvent(QEvent* event,
                                 QAbstractItemModel* model,
                                 const QStyleOptionViewItem& option,
                                 const QModelIndex& index)
{
    Q_UNUSED(event)
    Q_UNUSED(model)
    Q_UNUSED(option)
    Q_UNUSED(index)
    return false;
}

} // namespace melovane
