#include "playlistview/ui/playlist_widget.h"

#include "bus/message_names.h"
#include "config/config_objects.h"
#include "config/counted_text.h"
#include "config/tool_tip_text.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/desktop_texts.h"
#include "platform/qt/elided_label.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/qt_popup.h"
#include "playlistview/playlist_look.h"
#include "store/milli_sec_to_min.h"
#include "store/track_fields.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include <limits>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

struct Tool
{
    QString key;
    QString icon;
    QString text; ///< key of the tool tip
};

/// The tool bar from left to right; a gap stands between the groups.
const std::vector<std::vector<Tool>>& toolGroups()
{
    static const std::vector<std::vector<Tool>> kGroups = {
        {{u"all.undo"_s, u"undo"_s, u"history.undo.nothing"_s},
         {u"all.redo"_s, u"redo"_s, u"history.redo.nothing"_s}},
        {{u"play.start"_s, u"play"_s, u"ToolTipPlayerPlay"_s},
         {u"play.center"_s, u"playcenter"_s, u"ToolTipPlayerPlayCenter"_s},
         {u"play.stop"_s, u"stop"_s, u"ToolTipPlayerStop"_s},
         {u"play.zur"_s, u"rewind"_s, u"ToolTipPlayerRemain"_s},
         {u"play.vor"_s, u"fastforward"_s, u"ToolTipPlayerForward"_s},
         {bus::kAllVolume.toString(), u"volume"_s, u"playlist.volume"_s}},
        {{u"all.book"_s, u"edit"_s, u"ToolTipAllTableDetail"_s},
         {u"all.data.select"_s, u"selectall"_s, u"ToolTipAllTableSel"_s},
         {u"all.copy"_s, u"copy"_s, u"ToolTipAllTableCopy"_s},
         {u"all.clip.insert"_s, u"insert"_s, u"ToolTipPlaylistTableInsert"_s},
         {u"all.clip.append"_s, u"append"_s, u"ToolTipPlaylistTableAppend"_s},
         {u"all.sample"_s, u"sampler"_s, u"ToolTipKIV"_s}},
        {{bus::kPlaylistJingleLoop.toString(), u"loop"_s, u"playlist.loop"_s},
         {u"all.refresh"_s, u"reload"_s, u"ToolTipRefresh"_s},
         {u"all.delete"_s, u"delete"_s, u"ToolTipPlaylistTableDel"_s}}};
    return kGroups;
}

} // namespace

PlaylistWidget::PlaylistWidget(const Skin& skin, const IconSet& icons, QWidget* parent)
    : Panel(skin, parent)
    , m_icons(icons)
    , m_grid(new DataGrid(skin, icons, this))
    , m_lock(new QLabel(this))
    , m_name(new ElidedLabel(this))
    , m_length(new ElidedLabel(this))
{
    setObjectName(u"ctl_Playlist1"_s);
    m_grid->setObjectName(u"PlaylistGrid1"_s);
    m_lock->setObjectName(u"ListLock"_s);
    m_name->setObjectName(u"ListName"_s);
    m_length->setObjectName(u"ListLength"_s);
    QFont bold = m_name->font();
    bold.setBold(true);
    m_name->setFont(bold);
    m_lock->hide();
    setView(m_grid);
}

PlaylistControls PlaylistWidget::controls(Warnings& warnings)
{
    return {*m_grid, m_pointer, m_clipboard, warnings};
}

void PlaylistWidget::SetTBGridFocus()
{
    m_grid->setFocus(Qt::OtherFocusReason);
}

void PlaylistWidget::createToolBar(ctl_Playlist& logic, const ConfigObjects& texts)
{
    if (findChild<QToolButton*>(u"all.undo"_s)) {
        judgeTools(logic, texts);
        return;
    }
    for (const std::vector<Tool>& group : toolGroups()) {
        for (const Tool& tool : group) {
            QToolButton* button =
                addTool(tool.key, m_icons.icon(tool.icon), buttonTip(texts, tool.text));
            connect(button, &QToolButton::clicked, &logic,
                    [&logic, key = tool.key] { logic.toolPressed(key); });
        }
        toolRow()->addSpacing(6);
    }
    for (const QString& key : {u"play.zur"_s, u"play.vor"_s}) {
        findChild<QToolButton*>(key)->setAutoRepeat(true);
    }
    toolRow()->addStretch(1);
    toolRow()->addWidget(m_lock);
    toolRow()->addWidget(m_name);
    toolRow()->addWidget(m_length);
    toolRow()->addSpacing(4);
    judgeTools(logic, texts);
}

/// What each button does, its key, and why it is grey.
void PlaylistWidget::judgeTools(const ctl_Playlist& logic, const ConfigObjects& texts)
{
    for (const std::vector<Tool>& group : toolGroups()) {
        for (const Tool& tool : group) {
            if (auto* button = findChild<QToolButton*>(tool.key)) {
                tellTool(*button, m_steps.value(tool.key, buttonTip(texts, tool.text)),
                         nativeKeys(logic.keyOf(tool.key)), logic.whyNot(tool.key));
            }
        }
    }
}

void PlaylistWidget::showHistory(const QString& undo, const QString& redo)
{
    m_steps = {{u"all.undo"_s, undo}, {u"all.redo"_s, redo}};
}

void PlaylistWidget::showSummary(const PlaylistSummary& summary, const ConfigObjects& texts)
{
    const bool shown = !summary.name.isEmpty() || summary.entries > 0;
    const int side = fontMetrics().height();
    m_lock->setPixmap(m_icons.icon(u"lock"_s).pixmap(side, side));
    m_lock->setToolTip(texts.text(u"playlist.locked"_s));
    m_lock->setVisible(shown && summary.locked);
    m_name->setText(summary.name);
    // Where room is short, the length gives way before the name does.
    constexpr int kNameLetters = 16;
    m_name->setMinimumWidth(0); // a label never asks for less than it already has as its least
    m_name->setMinimumWidth(std::min(m_name->sizeHint().width(),
                                     m_name->fontMetrics().averageCharWidth() * kNameLetters));
    const qint64 max = std::numeric_limits<int>::max();
    const QString time =
        Mod_MilliSecToMin::MilliSecToMin(int(std::clamp<qint64>(summary.milliseconds, 0, max)), 4);
    m_length->setText(shown ? u"  ·  %1  ·  %2"_s.arg(
                                  countedText(texts, u"playlist.summary"_s, summary.entries), time)
                            : QString());
}

/// The menu of the cell with the play action: the actions that fit the list, and the cues.
void PlaylistWidget::chooseAktion(ctl_Playlist& logic, const ConfigObjects& texts)
{
    const int present = logic.currentAktion();
    if (present < 0) {
        return;
    }
    const QModelIndex cell =
        m_grid->model()->index(int(m_grid->currentRow()), m_grid->columnOf(u"Aktion"_s));
    QtPopup menu(m_icons);
    menu.setPlace([this, cell] {
        return m_grid->viewport()->mapToGlobal(m_grid->visualRect(cell).bottomLeft());
    });
    menu.Create();
    // Entries are numbered from 1; actions begin at 0.
    for (const int aktion : logic.aktionChoices()) {
        const AktionLook* const look = aktionLook(aktion);
        menu.Append({aktion + 1, texts.text(look->key), !logic.isLocked(), aktion == present});
    }
    constexpr int kCue = 100;
    menu.AppendSeparator();
    menu.Append({kCue, texts.text(u"playlist.cue"_s), !logic.isLocked()});
    const int chosen = menu.Show();
    if (chosen == kCue) {
        logic.AutocueTitel();
    } else if (chosen > 0) {
        logic.setAktion(chosen - 1);
    }
}

/// What does not come with the rows, in the language of now.
void PlaylistWidget::setTexts(const ConfigObjects& texts)
{
    m_grid->setAccessibleName(texts.text(u"playlist.grid.name"_s));
    for (const GridColumn& column : playlistColumns()) {
        const QString key = headingKey(column.field);
        const int section = m_grid->columnOf(column.field);
        QAbstractItemModel* const model = m_grid->model();
        model->setHeaderData(section, Qt::Horizontal, texts.text(key), Qt::DisplayRole);
        model->setHeaderData(section, Qt::Horizontal, texts.text(key + u".tip"_s), Qt::ToolTipRole);
    }
}

void PlaylistWidget::attach(ctl_Playlist& logic, const ConfigObjects& texts)
{
    m_grid->setAccessibleName(texts.text(u"playlist.grid.name"_s));
    std::vector<GridColumn> columns = playlistColumns();
    for (GridColumn& column : columns) {
        column.heading = texts.text(headingKey(column.field));
        column.headingTip = texts.text(headingKey(column.field) + u".tip"_s);
    }
    m_grid->setSource(logic.Data1(), logic.look(), std::move(columns));
    m_grid->setDragSource([&logic] { return logic.dragContent(); });
    m_grid->setDropTarget(logic);
    m_grid->setDeleteAtPress();
    connect(m_grid, &DataGrid::rowActivated, &logic, &ctl_Playlist::rowActivated);
    connect(m_grid, &DataGrid::digitPressed, &logic, &ctl_Playlist::digitPressed);
    connect(m_grid, &DataGrid::deletePressed, &logic, &ctl_Playlist::deletePressed);
    connect(m_grid, &DataGrid::spacePressed, this,
            [this, &logic, &texts] { chooseAktion(logic, texts); });
    connect(m_grid, &DataGrid::clicked, this, [this, &logic, &texts](const QModelIndex& cell) {
        const auto held =
            QApplication::keyboardModifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
        if (cell.column() == m_grid->columnOf(u"Aktion"_s) && !held) {
            chooseAktion(logic, texts);
        }
    });
    connect(m_grid, &DataGrid::moveRowWanted, &logic, &ctl_Playlist::moveRow);
    connect(m_grid, &DataGrid::currentRowChanged, &logic, &ctl_Playlist::rowChanged);
    connect(m_grid, &DataGrid::selectedRowsChanged, &logic, &ctl_Playlist::selectionChanged);
    connect(m_grid, &DataGrid::headMenuWanted, &logic, &ctl_Playlist::headMenuWanted);
    connect(m_grid, &DataGrid::rowMenuWanted, &logic, [this, &logic](qint64, const QPoint& place) {
        m_contextPlace = place;
        logic.contextMenuWanted();
    });
    connect(&logic, &ctl_Playlist::toolBarWanted, this,
            [this, &logic, &texts] { createToolBar(logic, texts); });
    connect(
        &logic, &ctl_Playlist::historyChanged, this,
        [this](const QString& undo, bool, const QString& redo, bool) { showHistory(undo, redo); });
    const auto judge = [this, &logic, &texts] { judgeTools(logic, texts); };
    connect(&logic, &ctl_Playlist::toolTipsWanted, this, [this, judge, &texts] {
        setTexts(texts);
        judge();
    });
    connect(&logic, &ctl_Playlist::commandsChanged, this, judge);
    connect(m_grid, &DataGrid::emptyButtonClicked, &logic, &ctl_Playlist::emptyButtonPressed);
    connect(&logic, &ctl_Playlist::summaryChanged, this,
            [this, &texts](const PlaylistSummary& summary) { showSummary(summary, texts); });
    connect(&logic, &ctl_Playlist::volumeIconChanged, this, [this](const QString& picture) {
        if (auto* button = findChild<QToolButton*>(bus::kAllVolume.toString())) {
            button->setIcon(m_icons.icon(picture));
        }
    });
    connect(&logic, &ctl_Playlist::jingleModeChanged, this, [this](bool on) {
        if (auto* button = findChild<QToolButton*>(bus::kPlaylistJingleLoop.toString())) {
            button->setVisible(on);
        }
    });
}

} // namespace melovane
