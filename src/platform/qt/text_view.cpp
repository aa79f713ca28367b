#include "platform/qt/text_view.h"

#include <QScrollBar>
#include <QTextDocument>

#include <cmath>

namespace melovane {

TextView::TextView(QWidget* parent)
    : QTextEdit(parent)
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFrameShape(QFrame::NoFrame);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    document()->setDocumentMargin(0);
}

int TextView::heightOf(const QString& text, int width) const
{
    // The view's own document follows the size that the view has now.
    QTextDocument copy;
    copy.setDefaultFont(font());
    copy.setDocumentMargin(0);
    copy.setDefaultTextOption(document()->defaultTextOption());
    copy.setPlainText(text);
    copy.setTextWidth(width);
    return static_cast<int>(std::ceil(copy.size().height()));
}

void TextView::setText(const QString& text, int leastWidth, int greatestWidth, int greatestHeight)
{
    setPlainText(text);
    const int natural = fontMetrics().size(0, text).width() + 1;
    const int width = qBound(leastWidth, natural, greatestWidth);
    const int height = heightOf(text, width);
    const bool scrolls = height > greatestHeight;
    setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    const int bar = scrolls ? verticalScrollBar()->sizeHint().width() : 0;
    setFixedSize(width + bar, qMin(height, greatestHeight));
}

} // namespace melovane
