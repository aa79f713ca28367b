#pragma once

#include <QString>

class QLabel;
class QProgressBar;
class QPushButton;
class QTreeWidget;
class QWidget;

namespace melovane {

class DataGrid;
class IconSet;
class Skin;

/// Controls that the windows of the care have in common.
namespace careparts {

/// A button that Enter presses while it has the keyboard; elsewhere Enter presses the window's
/// default button, which each window names.
[[nodiscard]] QPushButton* makeButton(const QString& name, const QString& caption, QWidget* parent);

/// A line of plain text that gives up room where others need it.
/// \param isSecond in the colour of second texts
[[nodiscard]] QLabel* makeLabel(const QString& name, QWidget* parent, bool isSecond = false);

[[nodiscard]] QProgressBar* makeProgress(QWidget* parent);

/// A grid that gives nothing to drags and sorts nothing.
[[nodiscard]] DataGrid* makeGrid(const QString& name,
                                 const QString& title,
                                 const Skin& skin,
                                 const IconSet& icons,
                                 QWidget* parent);

/// Gives a list the column heads that grids have. Columns stay where they are, and no click sorts.
void setGridHeads(QTreeWidget& list, const Skin& skin);

} // namespace careparts

} // namespace melovane
