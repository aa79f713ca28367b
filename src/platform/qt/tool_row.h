#pragma once

#include <QWidget>

#include <vector>

class QHBoxLayout;
class QToolButton;

namespace melovane {

/// A row of tool buttons and other controls. Where it is too narrow the last buttons go into a menu
/// at its end, and come back when there is room.
class ToolRow : public QWidget
{
public:
    explicit ToolRow(QWidget* parent = nullptr);

    [[nodiscard]] QHBoxLayout* row() { return m_row; }

    /// Adds a button at the end.
    void add(QToolButton* button);

    /// Leaves the buttons no more room than their icons need, so that a row of many fits.
    void setTight();

    /// Deletes the button of that name, in the menu or not; none of that name is no failure.
    void remove(const QString& name);

    /// As narrow as one likes.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    [[nodiscard]] int widthOfOthers() const;
    [[nodiscard]] int widthOf(const QToolButton* tool) const;
    void fit();
    void fillMenu();

    QHBoxLayout* m_row;
    QToolButton* m_more;
    std::vector<QToolButton*> m_tools;
    std::vector<QToolButton*> m_hidden; ///< those in the menu, in their order
    bool m_isTight = false;
};

} // namespace melovane
