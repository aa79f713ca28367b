#pragma once

#include "platform/controls/grid_control.h"
#include "platform/qt/dialog_frame.h"

class QLineEdit;
class QListWidget;

namespace melovane {

class ConfigObjects;
class DataControl;
class DataGrid;
class frmEditGrid;
class IconSet;
class LayoutFiles;
class Skin;

/// The form of frmEditGrid: the grid to arrange above, all columns below.
class EditGridDialog : public DialogFrame
{
    Q_OBJECT

public:
    /// \param captionKey "EditGrid-db" or "EditGrid-pl"
    EditGridDialog(const Skin& skin,
                   const IconSet& icons,
                   const ConfigObjects& texts,
                   const QString& captionKey);

    /// The grid, `TDBGrid1`, over rows that outlive the dialog.
    DataGrid&
    setRows(const DataControl& rows, const GridLook& look, std::vector<GridColumn> columns);

    /// Shows it over its logic and waits. True when the layout was written.
    [[nodiscard]] bool choose(frmEditGrid& logic);

protected:
    void changeEvent(QEvent* event) override;

private:
    void buildChoices(const ConfigObjects& texts);
    void fillChoices();
    void switchColumn();
    void rename();

    const IconSet& m_icons;
    DataGrid* m_grid;
    QListWidget* m_list;
    QLineEdit* m_heading;
    frmEditGrid* m_logic = nullptr;
};

} // namespace melovane
