#include "platform/qt/qt_pointer.h"

#include <QGuiApplication>

namespace melovane {

void QtPointer::push(PointerShape shape)
{
    QGuiApplication::setOverrideCursor(shape == PointerShape::Wait ? Qt::WaitCursor
                                                                   : Qt::BusyCursor);
}

void QtPointer::pop()
{
    QGuiApplication::restoreOverrideCursor();
}

} // namespace melovane
