#include "shell/ui/message_box_dialog.h"

#include <QMessageBox>

namespace melovane {

void MessageBoxDialog::show(const QString& title, const QString& text)
{
    QMessageBox box(QMessageBox::Warning, title, text, QMessageBox::Ok);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

} // namespace melovane
