#include "trackedit/ui/panel_head.h"

#include "config/config_objects.h"
#include "platform/qt/elided_label.h"
#include "platform/qt/icon_set.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

PanelHead::PanelHead(const IconSet& icons, QHBoxLayout& row, const QWidget& panel)
    : m_title(new ElidedLabel)
    , m_artist(new ElidedLabel)
    , m_mark(new QLabel)
    , m_unwritten(new QToolButton)
{
    auto* pencil = new QLabel;
    const int side = panel.fontMetrics().height();
    pencil->setPixmap(icons.icon(u"edit"_s, ThemeRole::Accent).pixmap(side, side));
    QFont bold = panel.font();
    bold.setBold(true);
    m_title->setObjectName(u"TagTitle"_s);
    m_title->setFont(bold);
    m_artist->setObjectName(u"TagArtist"_s);
    m_artist->setProperty("second", true);
    m_mark->setObjectName(u"TagMark"_s);
    m_mark->setProperty("second", true);
    m_mark->setTextFormat(Qt::PlainText);
    row.addSpacing(6);
    row.addWidget(pencil);
    row.addSpacing(4);
    row.addWidget(m_title);
    row.addSpacing(4);
    row.addWidget(m_artist);
    row.addStretch(1);
    row.addWidget(m_mark);
    m_unwritten->setObjectName(u"TagUnwritten"_s);
    m_unwritten->setProperty("warns", true);
    m_unwritten->setAutoRaise(true);
    m_unwritten->setFocusPolicy(Qt::StrongFocus);
    row.addWidget(m_unwritten);
    row.addSpacing(10);
    m_mark->hide();
    m_unwritten->hide();
}

void PanelHead::setTexts(const ConfigObjects& texts)
{
    m_mark->setToolTip(texts.text(u"edittag.waiting.tip"));
    m_unwritten->setToolTip(texts.text(u"edittag.unwritten.tip"));
    m_unwritten->setAccessibleName(texts.text(u"edittag.unwritten.tip"));
    m_waitingText = texts.text(u"edittag.waiting", u"%1"_s);
}

void PanelHead::setTrack(const PanelTrack& track)
{
    m_title->setText(track.title);
    m_artist->setText(track.artist);
    m_warning = track.warning;
    m_unwritten->setText(u"⚠ "_s + track.unwritten);
    m_unwritten->setVisible(!track.unwritten.isEmpty() && m_warning.isEmpty());
    showMark();
}

void PanelHead::setWaiting(qint64 tracks)
{
    m_waiting = tracks;
    showMark();
}

void PanelHead::showMark()
{
    m_mark->setText(m_warning.isEmpty() ? m_waitingText.arg(m_waiting) : u"⚠ "_s + m_warning);
    m_mark->setVisible(!m_warning.isEmpty() || (m_waiting > 0 && m_unwritten->isHidden()));
}

} // namespace melovane
