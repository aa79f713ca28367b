#include "platform/qt/qt_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace melovane {

QString QtClipboard::text() const
{
    return QGuiApplication::clipboard()->text();
}

void QtClipboard::setText(const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
}

} // namespace melovane
