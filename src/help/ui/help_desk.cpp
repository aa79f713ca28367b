#include "help/ui/help_desk.h"

#include "config/config_objects.h"
#include "help/control_tips.h"
#include "help/help_places.h"
#include "help/ui/help_window.h"
#include "platform/qt/desktop_texts.h"
#include "platform/qt/key_taker.h"

#include <QApplication>
#include <QKeyEvent>

namespace melovane {

namespace {

QStringList namesFrom(const QWidget* control)
{
    QStringList names;
    for (const QWidget* at = control; at != nullptr; at = at->parentWidget()) {
        names.append(at->objectName());
        // A dialog explains itself, not the window behind it.
        if (at->isWindow()) {
            break;
        }
    }
    return names;
}

HelpPages::Parts withNativeKeys(HelpPages::Parts parts)
{
    parts.nativeKeys = nativeKeys;
    return parts;
}

} // namespace

HelpDesk::HelpDesk(QApplication& application, HelpPages::Parts parts, const IconSet& icons)
    : m_pages(withNativeKeys(std::move(parts)))
    , m_icons(icons)
{
    application.installEventFilter(this);
}

HelpDesk::~HelpDesk()
{
    delete m_window;
}

bool HelpDesk::show(const QString& place)
{
    if (!m_pages.areThere()) {
        return false;
    }
    // A dialog that waits for an answer lets the user work in its own children only.
    QWidget* const waiting = QApplication::activeModalWidget();
    if (m_window && m_window->parentWidget() != waiting && waiting != m_window) {
        delete m_window;
    }
    if (!m_window) {
        m_window = new HelpWindow(m_pages, m_icons, waiting);
        // A program ends with its own windows, not with its help.
        m_window->setAttribute(Qt::WA_QuitOnClose, false);
    }
    m_window->showPlace(place);
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
    return true;
}

bool HelpDesk::showFor(const QWidget* control)
{
    return show(helpPlaceOf(namesFrom(control)));
}

void HelpDesk::giveTips(const QWidget& window) const
{
    for (QWidget* const control : window.findChildren<QWidget*>()) {
        if (control->toolTip().isEmpty() && !control->objectName().isEmpty()) {
            const QString key = controlTipOf(namesFrom(control));
            control->setToolTip(key.isEmpty() ? QString() : m_pages.texts().text(key));
        }
    }
}

bool HelpDesk::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        const auto* const shown = static_cast<const QWidget*>(watched);
        if (shown->isWindow()) {
            giveTips(*shown);
        }
    }
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) {
        return QObject::eventFilter(watched, event);
    }
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const auto* const control = static_cast<const QWidget*>(watched);
    const bool isHelp = key.key() == Qt::Key_F1 && key.modifiers() == Qt::NoModifier;
    if (!isHelp || control->property(kTakesAllKeys).toBool() || control->window() == m_window) {
        return QObject::eventFilter(watched, event);
    }
    return showFor(control);
}

} // namespace melovane
