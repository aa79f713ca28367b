#pragma once

#include <QWidget>

class QHBoxLayout;
class QToolButton;
class QVBoxLayout;

namespace melovane {

class IconSet;
class Skin;
class ToolRow;

/// One area of the main window: a thin rounded frame, a row of tools, and the view below it.
class Panel : public QWidget
{
    Q_OBJECT

public:
    explicit Panel(const Skin& skin, QWidget* parent = nullptr);

    /// The row above the view, hidden until something is put into it.
    [[nodiscard]] QHBoxLayout* toolRow();

    /// \see ToolRow::setTight
    void setTightTools();

    /// A flat button at the end of the tool row.
    QToolButton* addTool(const QString& name, const QIcon& icon, const QString& tip);

    /// Says what a button does, its key, and why it is grey.
    ///
    /// \param key    in the user's words, or empty
    /// \param whyNot empty for a button that can work
    static void
    tellTool(QToolButton& button, const QString& text, const QString& key, const QString& whyNot);

    void setView(QWidget* view);

    // -- For programs that host a view in a window of their own; nothing here calls it --

    /// In units of the screen; 0 before the tool bar is made.
    [[nodiscard]] int ToolBarHeight() const;
    /// The window of the system that the tool bar is drawn in; 0 before it is on the screen.
    [[nodiscard]] WId ToolBarHWND() const;
    /// Takes a button away, by key; none of that key is no failure.
    void RemoveToolbarButton(const QString& key);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    const Skin& m_skin;
    ToolRow* m_row;
    QVBoxLayout* m_column;
    QWidget* m_frame; ///< drawn over the corners of the view
};

} // namespace melovane
