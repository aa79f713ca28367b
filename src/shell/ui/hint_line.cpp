#include "shell/ui/hint_line.h"

#include "config/config_objects.h"
#include "platform/qt/icon_set.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

HintLine::HintLine(const IconSet& icons, QWidget* parent)
    : QFrame(parent)
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
    auto* const sign = new QLabel(this);
    const int size = fontMetrics().height();
    sign->setPixmap(icons.icon(u"info"_s).pixmap(size));
    auto* const row = new QHBoxLayout(this);
    row->addWidget(sign);
    row->addWidget(m_words, 1);
    row->addWidget(m_button);
    connect(m_button, &QToolButton::clicked, this, &HintLine::putAway);
    hide();
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
