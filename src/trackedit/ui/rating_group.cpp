#include "trackedit/ui/rating_group.h"

#include "config/config_objects.h"
#include "platform/qt/skin.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kGap = 4;
constexpr double kRadius = 4;

/// The mark of an option: 1 is the best.
int markOf(int option)
{
    return option == 0 ? 0 : 6 - option;
}

} // namespace

RatingButton::RatingButton(const Skin& skin, int mark, QWidget* parent)
    : QRadioButton(parent)
    , m_skin(skin)
    , m_mark(mark)
{
    setFocusPolicy(Qt::StrongFocus);
}

void RatingButton::setColours(const NoteColours& colours)
{
    m_colours = colours;
    update();
}

QSize RatingButton::sizeHint() const
{
    const int side = fontMetrics().height() + 8;
    return {side, side};
}

bool RatingButton::hitButton(const QPoint& place) const
{
    return rect().contains(place);
}

void RatingButton::paintEvent(QPaintEvent*)
{
    const Theme& theme = m_skin.theme();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QRectF box = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    if (hasFocus()) {
        painter.setPen(QPen(theme.qcolor(ThemeRole::Accent), 2));
        painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), kRadius + 1, kRadius + 1);
    }
    box.adjust(2, 2, -2, -2);
    const bool isFilled = isChecked() && m_mark > 0;
    QColor text = theme.qcolor(!isEnabled()  ? ThemeRole::TextDisabled
                               : isChecked() ? ThemeRole::Text
                                             : ThemeRole::TextSecond);
    if (isFilled) {
        const QColor ground = toQColor(m_colours.note[size_t(m_mark - 1)]);
        painter.setPen(Qt::NoPen);
        painter.setBrush(ground);
        // Its own text colour, unless that cannot be read on the ground of the mark.
        text = toQColor(m_colours.noteText);
        if (std::abs(qGray(text.rgb()) - qGray(ground.rgb())) < 90) {
            text = qGray(ground.rgb()) > 127 ? Qt::black : Qt::white;
        }
    } else {
        painter.setPen(theme.qcolor(isChecked() ? ThemeRole::Accent : ThemeRole::Hairline));
        painter.setBrush(theme.qcolor(ThemeRole::TextField));
    }
    painter.drawRoundedRect(box, kRadius, kRadius);
    QFont face = font();
    face.setBold(isFilled && m_colours.noteTextBold);
    painter.setFont(face);
    painter.setPen(text);
    painter.drawText(box, Qt::AlignCenter,
                     m_mark == 0 ? QString(QChar(0x2212)) : QString::number(m_mark));
}

RatingGroup::RatingGroup(const Skin& skin, QWidget* parent)
    : QWidget(parent)
{
    setObjectName(u"opNote"_s);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kGap);
    for (int option = 0; option < int(m_buttons.size()); ++option) {
        auto* button = new RatingButton(skin, markOf(option), this);
        button->setObjectName(u"opNote_%1"_s.arg(option));
        button->installEventFilter(this);
        connect(button, &QRadioButton::clicked, this,
                [this, option] { emit optionChosen(option); });
        row->addWidget(button);
        m_buttons[size_t(option)] = button;
    }
    row->addStretch(1);
    m_buttons.front()->setChecked(true);
}

void RatingGroup::setTexts(const ConfigObjects& texts)
{
    for (int option = 0; option < int(m_buttons.size()); ++option) {
        const QString text = option == 0 ? texts.text(u"edittag.rating.none")
                                         : texts.text(u"edittag.rating", markOf(option));
        m_buttons[size_t(option)]->setToolTip(text);
        m_buttons[size_t(option)]->setAccessibleName(text);
    }
    setAccessibleName(texts.text(u"column.Note"));
}

void RatingGroup::setColours(const NoteColours& colours)
{
    for (RatingButton* button : m_buttons) {
        button->setColours(colours);
    }
}

void RatingGroup::setOption(int option)
{
    m_buttons[size_t(std::clamp(option, 0, int(m_buttons.size()) - 1))]->setChecked(true);
    // The keyboard comes to the one that is chosen.
    for (RatingButton* button : m_buttons) {
        button->setFocusPolicy(button->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

RatingButton& RatingGroup::chosen() const
{
    const auto found = std::ranges::find_if(m_buttons, &QRadioButton::isChecked);
    return found == m_buttons.end() ? *m_buttons.front() : **found;
}

void RatingGroup::choose(int option)
{
    setOption(option);
    m_buttons[size_t(option)]->setFocus(Qt::OtherFocusReason);
    m_buttons[size_t(option)]->click();
}

bool RatingGroup::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress) {
        return QWidget::eventFilter(watched, event);
    }
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const auto at = std::ranges::find(m_buttons, watched);
    const int option = int(at - m_buttons.begin());
    const bool plain = (key.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (plain && key.key() >= Qt::Key_0 && key.key() <= Qt::Key_5) {
        choose(markOf(key.key() - Qt::Key_0));
        return true;
    }
    if (plain && (key.key() == Qt::Key_Right || key.key() == Qt::Key_Down)) {
        choose(std::min(option + 1, int(m_buttons.size()) - 1));
        return true;
    }
    if (plain && (key.key() == Qt::Key_Left || key.key() == Qt::Key_Up)) {
        choose(std::max(option - 1, 0));
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace melovane
