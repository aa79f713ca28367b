#pragma once

#include <QTextEdit>

namespace melovane {

/// A text to read: wrapped, also in the middle of a long path; as high as it is, up to a limit
/// beyond which it scrolls. The user may mark and copy parts of it, with the keyboard too.
class TextView : public QTextEdit
{
    Q_OBJECT

public:
    explicit TextView(QWidget* parent = nullptr);

    /// Fixes the size for a text between a least and a greatest width.
    void setText(const QString& text, int leastWidth, int greatestWidth, int greatestHeight);

private:
    [[nodiscard]] int heightOf(const QString& text, int width) const;
};

} // namespace melovane
