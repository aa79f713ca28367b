#include "library/ui/mp3db_widget.h"

#include "bus/message_names.h"
#include "config/config_objects.h"
#include "config/tool_tip_text.h"
#include "library/library_columns.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/desktop_texts.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/line_buttons.h"
#include "platform/qt/search_line.h"
#include "store/track_fields.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QShortcut>
#include <QToolButton>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The buttons of the search history, which decides about them.
const QString kBack = u"all.db.zur"_s;
const QString kForward = u"all.db.vor"_s;

const QString kTagPanel = u"all.tagpanel"_s;

/// Least width of the search line in letters.
constexpr int kSearchLetters = 32;

} // namespace

namespace {

/// Letters of a view's name that stand beside the number of its tracks.
constexpr int kNameLetters = 32;

} // namespace

Mp3dbWidget::Mp3dbWidget(const Skin& skin, const IconSet& icons, QWidget* parent)
    : Panel(skin, parent)
    , m_icons(icons)
    , m_search(new SearchLine(icons, this))
    , m_grid(new DataGrid(skin, icons, this))
    , m_count(new QLabel(this))
{
    setObjectName(u"ctl_MP3DB1"_s);
    m_search->setObjectName(u"Text1"_s);
    // Wide enough to read what was typed; tools for which that leaves no room go into their menu.
    m_search->setMinimumWidth(fontMetrics().averageCharWidth() * kSearchLetters);
    m_grid->setObjectName(u"TDBGrid1"_s);
    m_count->setObjectName(u"MatchCount"_s);
    // A folder may look like markup.
    m_count->setTextFormat(Qt::PlainText);
    toolRow()->addWidget(m_search, 1);
    toolRow()->addSpacing(6);
    m_count->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    toolRow()->addWidget(m_count);
    toolRow()->addSpacing(10);
    setView(m_grid);
    setTabOrder(m_search, m_grid);
    buildKeys();
}

void Mp3dbWidget::setTexts(const ConfigObjects& texts)
{
    const QString hint = texts.text(u"library.search.hint"_s);
    m_search->lineEdit()->setPlaceholderText(hint);
    // The hint is read whole, too, beside the lens, the arrow of the list and their room.
    const QFontMetrics metrics = m_search->fontMetrics();
    m_search->setMinimumWidth(std::max(metrics.averageCharWidth() * kSearchLetters,
                                       metrics.horizontalAdvance(hint) + 5 * metrics.height()));
    m_search->setAccessibleName(texts.text(u"library.search.name"_s));
    // The keyboard is in the field, not in the box around it.
    m_search->lineEdit()->setAccessibleName(texts.text(u"library.search.name"_s));
    m_search->setToolTip(texts.text(u"library.search.tip"_s));
    m_search->setClearTip(texts.text(u"library.search.clear"_s));
    nameLineButtons(*m_search->lineEdit(), texts.text(u"library.search.name"_s),
                    texts.text(u"library.search.clear"_s));
    m_grid->setAccessibleName(texts.text(u"library.grid.name"_s));
    // Room for a million, so that the search line keeps its width while the user types.
    const QString widest = texts.text(u"library.count"_s, groupedNumber(1'000'000));
    m_count->setMinimumWidth(fontMetrics().horizontalAdvance(widest));
}

QToolButton* Mp3dbWidget::addButton(const QString& key,
                                    const QString& icon,
                                    const QString& textKey,
                                    const ConfigObjects& texts)
{
    QToolButton* button = addTool(key, m_icons.icon(icon), buttonTip(texts, textKey));
    m_tips.insert(button, textKey);
    return button;
}

void Mp3dbWidget::renewToolTips(const ctl_MP3DB& logic, const ConfigObjects& texts)
{
    setTexts(texts);
    setHeadings(texts);
    judgeTools(logic, texts);
}

void Mp3dbWidget::setHeadings(const ConfigObjects& texts)
{
    for (const GridColumn& column : libraryColumns()) {
        const QString key = headingKey(column.field);
        const int section = m_grid->columnOf(column.field);
        QAbstractItemModel* const model = m_grid->model();
        model->setHeaderData(section, Qt::Horizontal, texts.text(key), Qt::DisplayRole);
        model->setHeaderData(section, Qt::Horizontal, texts.text(key + u".tip"_s), Qt::ToolTipRole);
    }
}

/// What each button does, its key, and why it is grey.
void Mp3dbWidget::judgeTools(const ctl_MP3DB& logic, const ConfigObjects& texts)
{
    for (auto tip = m_tips.cbegin(); tip != m_tips.cend(); ++tip) {
        const QString key = tip.key()->objectName();
        const bool isWay = key == kBack || key == kForward;
        const QString noWay =
            tip.key()->isEnabled() ? QString() : texts.text(u"library.history.end"_s);
        tellTool(*tip.key(), buttonTip(texts, tip.value()), nativeKeys(logic.keyOf(key)),
                 isWay ? noWay : logic.whyNot(key));
    }
}

/// In front of the search line, as people know them.
void Mp3dbWidget::createHistoryButtons(ctl_MP3DB& logic, const ConfigObjects& texts)
{
    const auto add = [&](int place, const QString& key, const QString& icon, const QString& text) {
        QToolButton* button = addButton(key, icon, text, texts);
        toolRow()->removeWidget(button);
        toolRow()->insertWidget(place, button);
        connect(button, &QToolButton::clicked, &logic, [&logic, key] { logic.toolPressed(key); });
        return button;
    };
    QToolButton* back = add(0, kBack, u"back"_s, u"ToolTipHistoryRemain"_s);
    QToolButton* forward = add(1, kForward, u"forward"_s, u"ToolTipHistoryForward"_s);
    toolRow()->insertSpacing(2, 6);
    setTabOrder(back, forward);
    setTabOrder(forward, m_search);
}

void Mp3dbWidget::createToolBar(ctl_MP3DB& logic, const ConfigObjects& texts)
{
    if (findChild<QToolButton*>(kTagPanel) != nullptr) {
        judgeTools(logic, texts);
        return;
    }

    struct Tool
    {
        QString key;
        QString icon;
        QString text;
    };

    const std::vector<std::vector<Tool>> groups = {
        {{u"play.start"_s, u"play"_s, u"ToolTipPlayerPlay"_s},
         {u"play.center"_s, u"playcenter"_s, u"ToolTipPlayerPlayCenter"_s},
         {u"play.stop"_s, u"stop"_s, u"ToolTipPlayerStop"_s},
         {bus::kAllVolume.toString(), u"volume"_s, u"playlist.volume"_s}},
        {{u"all.book"_s, u"edit"_s, u"ToolTipAllTableDetail"_s},
         {u"open_dir"_s, u"folder"_s, u"mnuPOPDBGRID_7"_s},
         {u"all.data.select"_s, u"selectall"_s, u"ToolTipAllTableSel"_s},
         {u"all.copy"_s, u"copy"_s, u"ToolTipAllTableCopy"_s},
         {bus::kAllDbInsert.toString(), u"insert"_s, u"ToolTipAllTableInsert"_s},
         {bus::kAllDbAppend.toString(), u"append"_s, u"ToolTipAllTableAppend"_s},
         {u"all.sample"_s, u"sampler"_s, u"ToolTipKIV"_s},
         {u"all.delete"_s, u"delete"_s, u"ToolTipDBTableDel"_s}}};
    createHistoryButtons(logic, texts);
    for (const std::vector<Tool>& group : groups) {
        for (const Tool& tool : group) {
            QToolButton* button = addButton(tool.key, tool.icon, tool.text, texts);
            connect(button, &QToolButton::clicked, &logic,
                    [&logic, key = tool.key] { logic.toolPressed(key); });
        }
        toolRow()->addSpacing(6);
    }
    QToolButton* import = addButton(u"all.import"_s, u"import"_s, u"library.import"_s, texts);
    connect(import, &QToolButton::clicked, this, &Mp3dbWidget::importWanted);
    QToolButton* columns = addButton(u"all.columns"_s, u"columns"_s, u"library.columns"_s, texts);
    connect(columns, &QToolButton::clicked, this, [this, columns] {
        showColumnMenu(columns->mapToGlobal(QPoint(0, columns->height())));
    });
    QToolButton* panel = addButton(kTagPanel, u"panel"_s, u"library.tagpanel"_s, texts);
    panel->setCheckable(true);
    connect(panel, &QToolButton::clicked, &logic, [this, &logic, panel] {
        // It shows how the panel is, not how often it was pressed.
        panel->setChecked(m_tagPanelShown);
        logic.toolPressed(kTagPanel);
    });
    judgeTools(logic, texts);
}

void Mp3dbWidget::setTagPanelShown(bool shown)
{
    m_tagPanelShown = shown;
    if (auto* button = findChild<QToolButton*>(kTagPanel)) {
        button->setChecked(shown);
    }
}

/// True when one of the two ways was opened or closed.
bool Mp3dbWidget::showHistory(bool back, bool forward)
{
    bool isOther = false;
    for (const auto& [key, on] : {std::pair{kBack, back}, {kForward, forward}}) {
        auto* button = findChild<QToolButton*>(key);
        if (button != nullptr && button->isEnabled() != on) {
            button->setEnabled(on);
            isOther = true;
        }
    }
    return isOther;
}

void Mp3dbWidget::buildKeys()
{
    auto* find = new QShortcut(QKeySequence::Find, this);
    find->setContext(Qt::WindowShortcut);
    connect(find, &QShortcut::activated, m_search, [this] { m_search->focus(); });
    connect(m_search, &SearchLine::downPressed, m_grid, qOverload<>(&QWidget::setFocus));
    auto* reload = new QShortcut(QKeySequence::Refresh, this);
    reload->setContext(Qt::WindowShortcut);
    connect(reload, &QShortcut::activated, this, &Mp3dbWidget::reloadWanted);
    connect(m_grid, &DataGrid::escapePressed, m_search, [this] { m_search->focus(); });
}

Mp3dbControls Mp3dbWidget::controls()
{
    return {*m_grid, *m_search, m_pointer, m_clipboard};
}

void Mp3dbWidget::attach(ctl_MP3DB& logic, const ConfigObjects& texts)
{
    setTexts(texts);
    std::vector<GridColumn> columns = libraryColumns();
    for (GridColumn& column : columns) {
        column.heading = texts.text(headingKey(column.field));
        column.headingTip = texts.text(headingKey(column.field) + u".tip"_s);
    }
    m_grid->setSource(logic.Data1(), logic.look(), std::move(columns));
    m_grid->setEditing(&logic.editing());
    m_grid->setDragSource([&logic] { return logic.dragContent(); });
    connect(m_search, &SearchLine::textChanged, &logic, &ctl_MP3DB::searchTextChanged);
    connect(m_search, &SearchLine::entered, &logic, &ctl_MP3DB::searchEntered);
    connect(m_grid, &DataGrid::headerClicked, &logic, &ctl_MP3DB::headerClicked);
    connect(m_grid, &DataGrid::headMenuWanted, &logic, &ctl_MP3DB::headMenuWanted);
    connect(m_grid, &DataGrid::rowActivated, &logic, &ctl_MP3DB::rowActivated);
    connect(m_grid, &DataGrid::currentRowChanged, this, &Mp3dbWidget::currentTrackChanged);
    connect(m_grid, &DataGrid::digitPressed, &logic, &ctl_MP3DB::digitPressed);
    connect(m_grid, &DataGrid::deletePressed, &logic, &ctl_MP3DB::deletePressed);
    connect(m_grid, &DataGrid::emptyButtonClicked, &logic, &ctl_MP3DB::emptyButtonPressed);
    connect(m_grid, &DataGrid::rowMenuWanted, &logic, [this, &logic](qint64, const QPoint& place) {
        m_contextPlace = place;
        logic.contextMenuWanted();
    });
    connect(&logic, &ctl_MP3DB::countChanged, this,
            [this, &texts](qint64 count, const QString& name) { showCount(count, name, texts); });
    connect(this, &Mp3dbWidget::reloadWanted, &logic, &ctl_MP3DB::Refresh);
    connect(&logic, &ctl_MP3DB::historyChanged, this,
            [this, &logic, &texts](bool back, bool forward) {
                if (showHistory(back, forward)) {
                    judgeTools(logic, texts);
                }
            });
    connect(&logic, &ctl_MP3DB::toolTipsWanted, this,
            [this, &logic, &texts] { renewToolTips(logic, texts); });
    connect(&logic, &ctl_MP3DB::commandsChanged, this,
            [this, &logic, &texts] { judgeTools(logic, texts); });
    connect(&logic, &ctl_MP3DB::volumeIconChanged, this, [this](const QString& picture) {
        if (auto* button = findChild<QToolButton*>(bus::kAllVolume.toString())) {
            button->setIcon(m_icons.icon(picture));
        }
    });
    connect(&logic, &ctl_MP3DB::toolBarWanted, this,
            [this, &logic, &texts] { createToolBar(logic, texts); });
}

void Mp3dbWidget::showCount(qint64 count, const QString& name, const ConfigObjects& texts)
{
    m_count->setToolTip(name.toHtmlEscaped());
    if (count < 0) {
        m_count->clear();
        return;
    }
    const QString key = count == 1 ? u"library.count.one"_s : u"library.count"_s;
    const QString number = texts.text(key, groupedNumber(count));
    const int room = kNameLetters * fontMetrics().averageCharWidth();
    const QString shown = fontMetrics().elidedText(name, Qt::ElideMiddle, room);
    m_count->setText(name.isEmpty() ? number : shown + u"  ·  "_s + number);
}

void Mp3dbWidget::showColumnMenu(const QPoint& place)
{
    QMenu menu(this);
    m_grid->fillColumnMenu(menu);
    menu.exec(place);
}

} // namespace melovane
