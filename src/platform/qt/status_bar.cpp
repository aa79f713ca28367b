#include "platform/qt/status_bar.h"

#include "platform/qt/figures.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Room behind the controls at the right end.
constexpr int kEndGap = 6;

} // namespace

StatusBar::StatusBar(QWidget* parent)
    : QWidget(parent)
    , m_row(new QHBoxLayout(this))
{
    setObjectName(u"StatusBar1"_s);
    setAttribute(Qt::WA_StyledBackground);
    setFixedHeight(fontMetrics().height() + 10);
    m_row->setContentsMargins(0, 1, 0, 0);
    m_row->setSpacing(0);
    addPanel(StatusPanel::Message, u"StatusMessage"_s, 0);
    addPanel(StatusPanel::Node, u"StatusNode"_s, 28);
    addPanel(StatusPanel::Elapsed, u"StatusElapsed"_s, 8);
    addPanel(StatusPanel::Remaining, u"StatusRemaining"_s, 9);
    addPanel(StatusPanel::Progress, u"StatusProgress"_s, 18);
}

QWidget* StatusBar::addDivider()
{
    auto* line = new QFrame(this);
    line->setObjectName(u"StatusLine"_s);
    line->setFixedWidth(1);
    m_row->addWidget(line);
    return line;
}

void StatusBar::addInFront(StatusPanel panel, QWidget* control)
{
    m_row->insertWidget(m_row->indexOf(m_labels.value(static_cast<int>(panel))), control);
}

void StatusBar::addAtEnd(QWidget* control)
{
    if (!std::exchange(m_hasEnd, true)) {
        addDivider();
        m_row->setContentsMargins(0, 1, kEndGap, 0);
    }
    m_row->addWidget(control);
}

void StatusBar::addPanel(StatusPanel panel, const QString& name, int figures)
{
    // Elapsed and remaining time belong together.
    if (m_row->count() > 0 && panel != StatusPanel::Remaining) {
        QWidget* line = addDivider();
        m_dividers.insert(static_cast<int>(panel), line);
        line->hide();
    }
    auto* label = new QLabel(this);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    if (figures == 0) {
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        m_row->addWidget(label, 1);
    } else {
        label->setFixedWidth(figures * figureWidth(fontMetrics()) + 24);
        m_row->addWidget(label);
        label->hide();
    }
    m_labels.insert(static_cast<int>(panel), label);
}

void StatusBar::setPanel(StatusPanel panel, const QString& text)
{
    const int key = static_cast<int>(panel);
    m_labels.value(key)->setText(text);
    if (panel != StatusPanel::Message) {
        m_labels.value(key)->setVisible(!text.isEmpty());
    } else if (text.isEmpty() || !m_message.endsWith(text)) {
        // Else it is the message that runs off letter by letter.
        m_message = text;
        const QString tip = u"<qt>%1</qt>"_s.arg(text.toHtmlEscaped());
        m_labels.value(key)->setToolTip(text.isEmpty() ? QString() : tip);
    }
    if (QWidget* divider = m_dividers.value(key)) {
        divider->setVisible(!text.isEmpty());
    }
}

QString StatusBar::panel(StatusPanel panel) const
{
    return m_labels.value(static_cast<int>(panel))->text();
}

} // namespace melovane
