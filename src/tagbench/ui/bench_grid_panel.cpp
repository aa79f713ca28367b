#include "tagbench/ui/bench_grid_panel.h"

#include "config/config_objects.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/line_buttons.h"
#include "platform/qt/search_line.h"
#include "tagbench/bench_session.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QShortcut>
#include <QToolButton>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

BenchGridPanel::BenchGridPanel(const Skin& skin,
                               const IconSet& icons,
                               BenchSession& session,
                               const NoteColours& colours,
                               QWidget* parent)
    : Panel(skin, parent)
    , m_session(session)
    , m_look(session.tracks(), session.texts(), colours)
    , m_editing(session.tracks())
    , m_grid(new DataGrid(skin, icons, this))
    , m_filter(new SearchLine(icons, this))
    , m_count(new QLabel(this))
{
    setObjectName(u"BenchGrid"_s);
    buildTools(icons);
    buildGrid();
    setView(m_grid);
    connect(&session.tracks(), &BenchTracks::changed, this, &BenchGridPanel::showState);
    connect(m_grid, &DataGrid::selectedRowsChanged, this, [this] {
        showState();
        emit chosenChanged();
    });
    showState();
}

void BenchGridPanel::buildTools(const IconSet& icons)
{
    const ConfigObjects& texts = m_session.texts();
    BenchTracks& tracks = m_session.tracks();
    const auto add = [&](const QString& name, const QString& icon, const QString& key) {
        return addTool(name, icons.icon(icon), texts.text(u"bench."_s + key));
    };
    if (m_session.mode() == BenchMode::Import) {
        connect(add(u"cmdFolder"_s, u"folder"_s, u"addfolder"_s), &QToolButton::clicked, this,
                &BenchGridPanel::folderWanted);
        connect(add(u"cmdFiles"_s, u"import"_s, u"addfiles"_s), &QToolButton::clicked, this,
                &BenchGridPanel::filesWanted);
    }
    m_undo = add(u"cmdUndo"_s, u"undo"_s, u"undo"_s);
    connect(new QShortcut(QKeySequence::Undo, this), &QShortcut::activated, &tracks,
            &BenchTracks::undo);
    connect(m_undo, &QToolButton::clicked, &tracks, &BenchTracks::undo);
    m_redo = add(u"cmdRedo"_s, u"redo"_s, u"redo"_s);
    connect(new QShortcut(QKeySequence::Redo, this), &QShortcut::activated, &tracks,
            &BenchTracks::redo);
    connect(m_redo, &QToolButton::clicked, &tracks, &BenchTracks::redo);
    buildPlayer(icons);
    connect(add(u"cmdAll"_s, u"selectall"_s, u"all"_s), &QToolButton::clicked, this,
            &BenchGridPanel::selectAll);
    QToolButton* columns = add(u"cmdColumns"_s, u"columns"_s, u"columns"_s);
    connect(columns, &QToolButton::clicked, this, [this, columns] {
        QMenu menu;
        m_grid->fillColumnMenu(menu);
        menu.exec(columns->mapToGlobal(QPoint(0, columns->height())));
    });
    m_filter->setObjectName(u"Text1"_s);
    m_filter->lineEdit()->setPlaceholderText(texts.text(u"bench.filter"));
    m_filter->lineEdit()->setAccessibleName(texts.text(u"bench.filter"));
    m_filter->setAccessibleName(texts.text(u"bench.filter"));
    m_filter->setClearTip(texts.text(u"bench.filter.clear"));
    nameLineButtons(*m_filter->lineEdit(), texts.text(u"bench.filter"),
                    texts.text(u"bench.filter.clear"));
    m_count->setObjectName(u"MatchCount"_s);
    m_count->setTextFormat(Qt::PlainText);
    toolRow()->addSpacing(6);
    toolRow()->addWidget(m_filter, 1);
    toolRow()->addSpacing(8);
    toolRow()->addWidget(m_count);
    toolRow()->addSpacing(8);
    connect(m_filter, &SearchLine::textChanged, &tracks, &BenchTracks::setFilter);
    connect(m_filter, &SearchLine::downPressed, this, &BenchGridPanel::focusRows);
    auto* find = new QShortcut(QKeySequence::Find, this);
    connect(find, &QShortcut::activated, m_filter, [this] { m_filter->focus(); });
}

void BenchGridPanel::buildPlayer(const IconSet& icons)
{
    const auto add = [&](const QString& name, const QString& icon, const QString& text) {
        m_player.push_back(addTool(name, icons.icon(icon), m_session.texts().text(text)));
        return m_player.back();
    };
    connect(add(u"cmdPlay"_s, u"play"_s, u"ToolTipPlayerPlay"_s), &QToolButton::clicked, this,
            [this] { play(false); });
    connect(add(u"cmdPlayCenter"_s, u"playcenter"_s, u"ToolTipPlayerPlayCenter"_s),
            &QToolButton::clicked, this, [this] { play(true); });
    connect(add(u"cmdStop"_s, u"stop"_s, u"ToolTipPlayerStop"_s), &QToolButton::clicked, this,
            [this] { m_session.stopPlaying(); });
}

void BenchGridPanel::play(bool fromMiddle)
{
    const qint64 row = m_grid->currentRow();
    if (row >= 0 && row < m_session.tracks().rowCount()) {
        const int track = m_session.tracks().track(row);
        emit told(m_session.play(m_session.tracks().at(track).storedPlace(), fromMiddle));
    }
}

void BenchGridPanel::buildGrid()
{
    const ConfigObjects& texts = m_session.texts();
    const bool isEdit = m_session.mode() == BenchMode::Edit;
    m_grid->setObjectName(u"TDBGrid1"_s);
    m_grid->setAccessibleName(texts.text(u"bench.grid"));
    m_grid->setSource(m_session.tracks(), m_look, m_look.columns());
    m_grid->setEditing(&m_editing);
    m_grid->setSortButtons(false);
    m_grid->setDragEnabled(false);
    const QString empty = isEdit ? u"bench.empty.edit"_s : u"bench.empty.import"_s;
    m_grid->setEmptyNote({texts.text(empty + u".title"_s), texts.text(empty + u".text"_s),
                          isEdit ? QString() : texts.text(u"bench.addfolder")});
    connect(m_grid, &DataGrid::emptyButtonClicked, this, &BenchGridPanel::folderWanted);
    connect(m_grid, &DataGrid::rowActivated, this, [this] {
        if (m_grid->currentColumn() > 0) {
            m_grid->editCurrentCell();
        }
    });
    auto* edit = new QShortcut(Qt::Key_F2, m_grid, nullptr, nullptr, Qt::WidgetShortcut);
    connect(edit, &QShortcut::activated, this, [this] { m_grid->editCurrentCell(); });
}

std::vector<int> BenchGridPanel::chosen() const
{
    std::vector<int> result;
    for (const RowRange& range : m_grid->selection()) {
        for (qint64 row = range.first; row <= range.last; ++row) {
            result.push_back(m_session.tracks().track(row));
        }
    }
    return result;
}

void BenchGridPanel::selectAll()
{
    m_grid->selectAll();
}

void BenchGridPanel::focusRows()
{
    m_grid->focus();
}

void BenchGridPanel::showState()
{
    const BenchTracks& tracks = m_session.tracks();
    m_count->setText(
        m_session.texts().text(u"bench.chosen"_s, qint64(chosen().size()), tracks.count()));
    m_undo->setEnabled(tracks.canUndo());
    m_redo->setEnabled(tracks.canRedo());
    const QString whyNot = !m_session.play          ? u"bench.play.nosound"_s
                           : tracks.rowCount() == 0 ? u"bench.play.norow"_s
                                                    : QString();
    for (QToolButton* button : m_player) {
        tellTool(*button, button->accessibleName(), {},
                 whyNot.isEmpty() ? whyNot : m_session.texts().text(whyNot));
    }
}

} // namespace melovane
