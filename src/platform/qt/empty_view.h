#pragma once

#include "platform/controls/grid_control.h"

#include <QWidget>

class QLabel;
class QPushButton;

namespace melovane {

class IconSet;

/// What stands in a view that has nothing to show: a picture (where there is room), a title, a
/// sentence, a button.
class EmptyView : public QWidget
{
    Q_OBJECT

public:
    EmptyView(const IconSet& icons, const QString& icon, QWidget* parent);

    /// For a view that has nothing to say yet: its title steps back.
    void setQuiet();

    void setNote(const EmptyNote& note);

    [[nodiscard]] const EmptyNote& note() const { return m_note; }

signals:
    void buttonClicked();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    /// What the height has room for: first the picture goes, then the sentence.
    void fit();

    EmptyNote m_note;
    QWidget* m_picture;
    QLabel* m_title;
    QLabel* m_text;
    QPushButton* m_button;
};

} // namespace melovane
