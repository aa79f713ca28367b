#include "platform/qt/painted_face.h"

#include <QAccessibleWidget>
#include <QWidget>

#include <utility>

namespace melovane {

namespace {

/// What is kept with a control, as long as it lives.
class PaintedFace : public QObject
{
public:
    PaintedFace(QWidget& control, QAccessible::Role role, std::function<void()> press)
        : QObject(&control)
        , m_role(role)
        , m_press(std::move(press))
    {}

    [[nodiscard]] QAccessible::Role role() const { return m_role; }

    [[nodiscard]] const std::function<void()>& press() const { return m_press; }

private:
    QAccessible::Role m_role;
    std::function<void()> m_press;
};

const PaintedFace* faceOf(const QObject& control)
{
    for (const QObject* const child : control.children()) {
        if (const auto* const face = dynamic_cast<const PaintedFace*>(child)) {
            return face;
        }
    }
    return nullptr;
}

class PaintedInterface : public QAccessibleWidget
{
public:
    PaintedInterface(QWidget& control, const PaintedFace& face)
        : QAccessibleWidget(&control, face.role())
        , m_face(face)
    {}

    [[nodiscard]] QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (m_face.press()) {
            names.prepend(pressAction());
        }
        return names;
    }

    void doAction(const QString& name) override
    {
        if (name == pressAction() && m_face.press()) {
            m_face.press()();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

private:
    const PaintedFace& m_face;
};

QAccessibleInterface* makeInterface(const QString&, QObject* object)
{
    if (object == nullptr || !object->isWidgetType()) {
        return nullptr;
    }
    const PaintedFace* const face = faceOf(*object);
    return face == nullptr ? nullptr : new PaintedInterface(*static_cast<QWidget*>(object), *face);
}

} // namespace

void setPaintedFace(QWidget& control, QAccessible::Role role, std::function<void()> press)
{
    // Once for the whole program; a second call with the same function would be another factory.
    static const bool isInstalled = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
    Q_UNUSED(isInstalled)
    new PaintedFace(control, role, std::move(press));
}

} // namespace melovane
