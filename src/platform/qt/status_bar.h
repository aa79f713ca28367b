#pragma once

#include "platform/controls/status_line.h"

#include <QHash>
#include <QWidget>

class QHBoxLayout;
class QLabel;

namespace melovane {

/// The line at the foot of the main window, `StatusBar1`. Panels without a text take no room.
class StatusBar : public QWidget, public StatusLine
{
    Q_OBJECT

public:
    explicit StatusBar(QWidget* parent = nullptr);

    void setPanel(StatusPanel panel, const QString& text) override;
    [[nodiscard]] QString panel(StatusPanel panel) const override;

    /// A control of somebody else, which the line owns from now on.
    void addInFront(StatusPanel panel, QWidget* control);
    /// The same at the right end, behind a line of its own when it is the first one there.
    void addAtEnd(QWidget* control);

private:
    void addPanel(StatusPanel panel, const QString& name, int figures);
    QWidget* addDivider();

    QHBoxLayout* m_row;
    QHash<int, QLabel*> m_labels;
    QString m_message;               ///< the last one, whole, as its tool tip shows it
    QHash<int, QWidget*> m_dividers; ///< left of a panel
    bool m_hasEnd = false;           ///< there are controls at the right end
};

} // namespace melovane
