#pragma once

#include <QApplication>
#include <QEvent>
#include <QMenu>
#include <QPointer>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <utility>

namespace melovane::test {

/// A user who closes each dialog and each menu that waits for an answer as soon as it is seen, as
/// long as this lives. A closed dialog has been answered with its way out.
class ClosedDialogs : public QObject
{
public:
    ClosedDialogs() { qApp->installEventFilter(this); }

    /// What this user does with the next menu instead of closing it.
    std::function<void(QMenu&)> onMenu;

    /// What was closed since the last call: the object's name, or its class for one without.
    [[nodiscard]] QStringList take() { return std::exchange(m_seen, {}); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Show && watched->isWidgetType()) {
            auto* const widget = static_cast<QWidget*>(watched);
            const auto* const menu = qobject_cast<QMenu*>(widget);
            if (widget->isWindow() && (widget->isModal() || menu != nullptr)) {
                const QString name = widget->objectName();
                m_seen.append(
                    name.isEmpty() ? QString::fromLatin1(widget->metaObject()->className()) : name);
                // Behind the call that shows it, which waits from then on.
                QMetaObject::invokeMethod(
                    this,
                    [this, shown = QPointer<QWidget>(widget)] {
                        auto* const open = qobject_cast<QMenu*>(shown);
                        if (open != nullptr && onMenu) {
                            onMenu(*open);
                        } else if (shown) {
                            shown->close();
                        }
                    },
                    Qt::QueuedConnection);
            }
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QStringList m_seen;
};

} // namespace melovane::test
