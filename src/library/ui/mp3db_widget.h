#pragma once

#include "library/mp3db.h"
#include "platform/qt/panel.h"
#include "platform/qt/qt_clipboard.h"
#include "platform/qt/qt_pointer.h"

#include <QHash>

class QLabel;
class QToolButton;

namespace melovane {

class ConfigObjects;
class DataGrid;
class IconSet;
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
    void attach(ctl_MP3DB& logic, const ConfigObjects& texts);

    /// Where the last context menu was asked for, on the screen.
    [[nodiscard]] QPoint contextPlace() const { return m_contextPlace; }

    /// Presses the button of the tag panel, or lets it go.
    void setTagPanelShown(bool shown);

signals:
    void importWanted();
    /// F5.
    void reloadWanted();
    /// Another row is the current one.
    void currentTrackChanged();

private:
    void buildKeys();
    void setTexts(const ConfigObjects& texts);
    void setHeadings(const ConfigObjects& texts);
    void renewToolTips(const ctl_MP3DB& logic, const ConfigObjects& texts);
    void judgeTools(const ctl_MP3DB& logic, const ConfigObjects& texts);
    [[nodiscard]] QToolButton* addButton(const QString& key,
                                         const QString& icon,
                                         const QString& textKey,
                                         const ConfigObjects& texts);
    void createHistoryButtons(ctl_MP3DB& logic, const ConfigObjects& texts);
    void createToolBar(ctl_MP3DB& logic, const ConfigObjects& texts);
    bool showHistory(bool back, bool forward);
    void showCount(qint64 count, const QString& name, const ConfigObjects& texts);
    void showColumnMenu(const QPoint& place);

    const IconSet& m_icons;
    SearchLine* m_search;
    DataGrid* m_grid;
    QLabel* m_count;
    QtPointer m_pointer;
    QtClipboard m_clipboard;
    QPoint m_contextPlace;
    bool m_tagPanelShown = false;
    QHash<QToolButton*, QString> m_tips; ///< text keys
};

} // namespace melovane
