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

private:
    void addPanel(StatusPanel panel, const QString& name, int figures);

    QHBoxLayout* m_row;
    QHash<int, QLabel*> m_labels;
    QHash<int, QWidget*> m_dividers; ///< left of a panel
};

} // namespace melovane
