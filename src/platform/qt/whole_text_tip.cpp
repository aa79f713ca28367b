#include "platform/qt/whole_text_tip.h"

#include <QHelpEvent>
#include <QToolTip>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

void showWholeText(const QHelpEvent& event, QWidget* view, const QString& text, bool fits)
{
    if (event.type() != QEvent::ToolTip || fits) {
        QToolTip::hideText();
        return;
    }
    constexpr int kLongest = 1000;
    const QString shown = u"<qt>%1</qt>"_s.arg(text.left(kLongest).toHtmlEscaped());
    QToolTip::showText(event.globalPos(), shown, view);
}

} // namespace melovane
