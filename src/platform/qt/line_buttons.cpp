#include "platform/qt/line_buttons.h"

#include <QAction>
#include <QLineEdit>

namespace melovane {

void nameLineButtons(QLineEdit& line, const QString& purpose, const QString& clear)
{
    for (QAction* const action : line.actions()) {
        // The second one is the tool kit's own, see QLineEdit::setClearButtonEnabled.
        const bool isClear = action->objectName() == QLatin1String("clear") ||
                             action->objectName() == QLatin1String("_q_qlineeditclearaction");
        action->setText(isClear ? clear : purpose);
    }
}

} // namespace melovane
