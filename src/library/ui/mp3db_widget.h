#pragma once

#include "library/mp3db.h"
#include "platform/qt/panel.h"
#include "platform/qt/qt_pointer.h"

class QLabel;

namespace melovane {

class DataGrid;
class SearchLine;

/// The form of the library view: search line, count, grid.
class Mp3dbWidget : public Panel
{
    Q_OBJECT

public:
    Mp3dbWidget(const Skin& skin, const IconSet& icons, QWidget* parent = nullptr);

    /// What the logic of the view is made with.
    [[nodiscard]] Mp3dbControls controls();

    /// Connects the form with its logic, which outlives the last event of the form.
    void attach(ctl_MP3DB& logic);

signals:
    void importWanted();

private:
    void buildTools(const IconSet& icons);
    void buildKeys();
    void showCount(qint64 count);
    void showColumnMenu(const QPoint& place);

    SearchLine* m_search;
    DataGrid* m_grid;
    QLabel* m_count;
    QtPointer m_pointer;
};

} // namespace melovane
