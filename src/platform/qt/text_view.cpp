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
    setFocusPolicy(Qt::ClickFocus);
    setFrameShape(QFrame::NoFrame);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    document()->setDocumentMargin(0);
}

void TextView::setText(const QString& text, int leastWidth, int greatestWidth, int greatestHeight)
{
    setPlainText(text);
    document()->setTextWidth(-1);
    const int natural = static_cast<int>(std::ceil(document()->idealWidth()));
    const int width = qBound(leastWidth, natural, greatestWidth);
    document()->setTextWidth(width);
    const int height = static_cast<int>(std::ceil(document()->size().height()));
    const bool scrolls = height > greatestHeight;
    setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    // The keyboard scrolls, too.
    setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::ClickFocus);
    const int bar = scrolls ? verticalScrollBar()->sizeHint().width() : 0;
    setFixedSize(width + bar, qMin(height, greatestHeight));
}

} // namespace melovane
