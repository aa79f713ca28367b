#pragma once

#include <QLabel>

namespace melovane {

/// A line of plain text that gives up room where others need it: what does not fit ends in an
/// ellipsis, and the tool tip then shows the whole text.
class ElidedLabel : public QLabel
{
public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    /// The width of an ellipsis; the height of the line.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] bool fits() const;
};

} // namespace melovane
