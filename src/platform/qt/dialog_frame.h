#pragma once

#include <QDialog>

class QDialogButtonBox;
class QPushButton;
class QVBoxLayout;

namespace melovane {

/// A dialog of the program: its content in a column, its buttons at the bottom right in the
/// desktop's order. Stands in front of the program's window.
class DialogFrame : public QDialog
{
    Q_OBJECT

public:
    explicit DialogFrame(const QString& name);

    /// Where the content goes.
    [[nodiscard]] QVBoxLayout* column() { return m_column; }

    /// A button that ends the dialog with a result.
    QPushButton* addButton(const QString& name, const QString& caption, int result);

    /// A button that does something and leaves the dialog open; the first button of all is the one
    /// that the desktop's order takes for the chief one.
    QPushButton* addCommand(const QString& name, const QString& caption);

    /// Enter presses the first of these, Escape the second.
    void setKeys(QPushButton* enter, QPushButton* escape);

    /// Shows it and waits; the result of the button, or `left` when the window was closed.
    [[nodiscard]] int ask(int left);

private:
    QVBoxLayout* m_column;
    QDialogButtonBox* m_buttons;
};

/// The letters of a title, larger than those of a text.
[[nodiscard]] QFont titleFont(const QFont& text);

} // namespace melovane
