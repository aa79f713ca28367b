#include "shell/ui/hint_line.h"

#include "config/config_objects.h"
#include "platform/qt/icon_set.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

HintLine::HintLine(const IconSet& icons, QWidget* parent)
    : QFrame(parent)
    , m_icons(icons)
    , m_sign(new QLabel(this))
    , m_words(new QLabel(this))
    , m_button(new QToolButton(this))
{
    setObjectName(u"HintLine"_s);
    m_words->setObjectName(u"lblHint"_s);
    m_words->setTextFormat(Qt::PlainText);
    m_words->setWordWrap(true);
    m_button->setObjectName(u"cmdPutAway"_s);
    m_button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_button->setIcon(icons.icon(u"ticked"_s));
    m_button->setFocusPolicy(Qt::TabFocus);
    m_sign->setObjectName(u"lblSign"_s);
    showSign();
    auto* const row = new QHBoxLayout(this);
    row->addWidget(m_sign);
    row->addWidget(m_words, 1);
    row->addWidget(m_button);
    connect(m_button, &QToolButton::clicked, this, &HintLine::putAway);
    hide();
}

/// The colours of the theme are read when a picture is made.
void HintLine::showSign()
{
    m_sign->setPixmap(m_icons.icon(u"info"_s, ThemeRole::Accent).pixmap(fontMetrics().height()));
}

void HintLine::changeEvent(QEvent* event)
{
    QFrame::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        showSign();
    }
}

void HintLine::setHint(const QString& hint)
{
    m_words->setText(hint);
    setVisible(!hint.isEmpty());
}

void HintLine::translate(const ConfigObjects& texts)
{
    m_button->setText(texts.text(u"firsthour.read"));
    m_button->setToolTip(texts.text(u"firsthour.read.tip"));
}

} // namespace melovane
