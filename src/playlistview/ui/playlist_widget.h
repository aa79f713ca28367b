#pragma once

#include "platform/qt/panel.h"
#include "platform/qt/qt_clipboard.h"
#include "platform/qt/qt_pointer.h"
#include "playlistview/playlist.h"

#include <QHash>

class QLabel;

namespace melovane {

class DataGrid;
class ElidedLabel;
class IconSet;

/// The form of the playlist view: tool bar, name and length of the list, grid.
class PlaylistWidget : public Panel
{
    Q_OBJECT

public:
    PlaylistWidget(const Skin& skin, const IconSet& icons, QWidget* parent = nullptr);

    /// What the logic of the view is made with.
    [[nodiscard]] PlaylistControls controls(Warnings& warnings);

    /// Connects the form with its logic, which outlives the last event of the form.
    void attach(ctl_Playlist& logic, const ConfigObjects& texts);

    /// The keyboard goes to the grid. For the player, whose window hosts the same view.
    void SetTBGridFocus();

    /// Where the last context menu was asked for, on the screen.
    [[nodiscard]] QPoint contextPlace() const { return m_contextPlace; }

private:
    void createToolBar(ctl_Playlist& logic, const ConfigObjects& texts);
    void setTexts(const ConfigObjects& texts);
    void judgeTools(const ctl_Playlist& logic, const ConfigObjects& texts);
    void showSummary(const PlaylistSummary& summary, const ConfigObjects& texts);
    void chooseAktion(ctl_Playlist& logic, const ConfigObjects& texts);
    void showHistory(const QString& undo, const QString& redo);

    const IconSet& m_icons;
    DataGrid* m_grid;
    QLabel* m_lock;
    ElidedLabel* m_name;
    ElidedLabel* m_length;
    QtPointer m_pointer;
    QtClipboard m_clipboard;
    QPoint m_contextPlace;
    QHash<QString, QString> m_steps; ///< what the buttons of the history would do, by key
};

} // namespace melovane
