#include "platform/qt/panel.h"

#include "platform/qt/skin.h"
#include "platform/qt/tool_row.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPainterPath>
#include <QTextDocument>
#include <QToolButton>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kRadius = 5;

/// The rounded border of a panel. It lies above the view and covers its corners with the colour of
/// the gaps; between the corners it is one unit thin and catches no click.
class FrameOverlay : public QWidget
{
public:
    FrameOverlay(const Skin& skin, QWidget* parent)
        : QWidget(parent)
        , m_skin(skin)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_NoSystemBackground);
        setFocusPolicy(Qt::NoFocus);
    }

protected:
    void resizeEvent(QResizeEvent*) override
    {
        // Only border and corners, so that scrolling in the view stays a move of pixels.
        QRegion inner(rect().adjusted(1, kRadius, -1, -kRadius));
        inner += rect().adjusted(kRadius, 1, -kRadius, -1);
        setMask(QRegion(rect()) - inner);
    }

    void paintEvent(QPaintEvent*) override
    {
        const QRectF border = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
        QPainterPath rounded;
        rounded.addRoundedRect(border, kRadius, kRadius);
        QPainterPath outside;
        outside.addRect(rect());
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(outside - rounded, m_skin.theme().qcolor(ThemeRole::BackColorSizer));
        painter.setPen(m_skin.theme().qcolor(ThemeRole::Hairline));
        painter.drawPath(rounded);
    }

private:
    const Skin& m_skin;
};

} // namespace

Panel::Panel(const Skin& skin, QWidget* parent)
    : QWidget(parent)
    , m_skin(skin)
    , m_row(new ToolRow(this))
    , m_column(new QVBoxLayout(this))
    , m_frame(new FrameOverlay(skin, this))
{
    m_row->setObjectName(u"ToolRow"_s);
    m_row->setAttribute(Qt::WA_StyledBackground);
    m_row->hide();
    m_column->setContentsMargins(1, 1, 1, 1);
    m_column->setSpacing(0);
    m_column->addWidget(m_row);
    connect(&skin, &Skin::changed, this, qOverload<>(&QWidget::update));
    connect(&skin, &Skin::changed, m_frame, qOverload<>(&QWidget::update));
}

QHBoxLayout* Panel::toolRow()
{
    m_row->show();
    return m_row->row();
}

QToolButton* Panel::addTool(const QString& name, const QIcon& icon, const QString& tip)
{
    auto* button = new QToolButton(m_row);
    // The grid of the icons is a little higher than a line of text.
    const int side = fontMetrics().height() * 8 / 7;
    button->setObjectName(name);
    button->setIcon(icon);
    button->setIconSize({side, side});
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    button->setFocusPolicy(Qt::TabFocus);
    m_row->show();
    m_row->add(button);
    return button;
}

void Panel::setTightTools()
{
    m_row->setTight();
}

void Panel::tellTool(QToolButton& button,
                     const QString& text,
                     const QString& key,
                     const QString& whyNot)
{
    QString tip = key.isEmpty() ? text : text + u" ("_s + key + u')';
    if (!whyNot.isEmpty() && whyNot != text) {
        tip += u'\n' + whyNot;
    }
    button.setEnabled(whyNot.isEmpty());
    // Names of lists may hold what looks like a mark of a rich text.
    button.setToolTip(Qt::mightBeRichText(tip) ? tip.toHtmlEscaped().replace(u'\n', u"<br>"_s)
                                               : tip);
    button.setAccessibleName(text);
    button.setAccessibleDescription(whyNot == text ? QString() : whyNot);
}

void Panel::setView(QWidget* view)
{
    m_column->addWidget(view, 1);
    m_frame->raise();
}

int Panel::ToolBarHeight() const
{
    return m_row->isHidden() ? 0 : m_row->height();
}

WId Panel::ToolBarHWND() const
{
    return m_row->effectiveWinId();
}

void Panel::RemoveToolbarButton(const QString& key)
{
    m_row->remove(key);
}

void Panel::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_frame->setGeometry(rect());
}

void Panel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_skin.theme().qcolor(ThemeRole::Panel));
}

} // namespace melovane
