#include "library/ui/mp3db_widget.h"

#include "library/library_columns.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/search_line.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QShortcut>
#include <QToolButton>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

Mp3dbWidget::Mp3dbWidget(const Skin& skin, const IconSet& icons, QWidget* parent)
    : Panel(skin, parent)
    , m_search(new SearchLine(icons, this))
    , m_grid(new DataGrid(skin, icons, this))
    , m_count(new QLabel(this))
{
    setObjectName(u"ctl_MP3DB1"_s);
    m_search->setObjectName(u"Text1"_s);
    m_search->lineEdit()->setPlaceholderText(u"Titel oder Interpret suchen"_s);
    m_search->setAccessibleName(u"Suche in der Bibliothek"_s);
    m_grid->setObjectName(u"TDBGrid1"_s);
    m_grid->setAccessibleName(u"Titel der Bibliothek"_s);
    m_count->setObjectName(u"MatchCount"_s);
    buildTools(icons);
    setView(m_grid);
    setTabOrder(m_search, m_grid);
    buildKeys();
}

void Mp3dbWidget::buildTools(const IconSet& icons)
{
    toolRow()->addWidget(m_search, 1);
    toolRow()->addSpacing(6);
    // Room for a million, so that the search line keeps its width while the user types.
    m_count->setMinimumWidth(fontMetrics().horizontalAdvance(u"1 000 000 Titel"_s));
    m_count->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    toolRow()->addWidget(m_count);
    toolRow()->addSpacing(10);
    QToolButton* import = addTool(u"all.import"_s, icons.icon(u"import"_s), u"MP3s importieren"_s);
    connect(import, &QToolButton::clicked, this, &Mp3dbWidget::importWanted);
    QToolButton* columns =
        addTool(u"all.columns"_s, icons.icon(u"columns"_s), u"Spalten ein- und ausblenden"_s);
    connect(columns, &QToolButton::clicked, this, [this, columns] {
        showColumnMenu(columns->mapToGlobal(QPoint(0, columns->height())));
    });
}

void Mp3dbWidget::buildKeys()
{
    auto* find = new QShortcut(QKeySequence::Find, this);
    find->setContext(Qt::WindowShortcut);
    connect(find, &QShortcut::activated, m_search, [this] { m_search->focus(); });
    connect(m_search, &SearchLine::downPressed, m_grid, qOverload<>(&QWidget::setFocus));
    connect(m_grid, &DataGrid::escapePressed, m_search, [this] { m_search->focus(); });
}

Mp3dbControls Mp3dbWidget::controls()
{
    return {*m_grid, *m_search, m_pointer};
}

void Mp3dbWidget::attach(ctl_MP3DB& logic)
{
    m_grid->setSource(logic.Data1(), logic.look(), libraryColumns());
    connect(m_search, &SearchLine::textChanged, &logic, &ctl_MP3DB::searchTextChanged);
    connect(m_search, &SearchLine::entered, &logic, &ctl_MP3DB::search);
    connect(m_grid, &DataGrid::headerClicked, &logic, &ctl_MP3DB::headerClicked);
    connect(m_grid, &DataGrid::headMenuWanted, this, &Mp3dbWidget::showColumnMenu);
    connect(m_grid, &DataGrid::emptyButtonClicked, &logic, &ctl_MP3DB::emptyButtonPressed);
    connect(&logic, &ctl_MP3DB::countChanged, this, &Mp3dbWidget::showCount);
}

void Mp3dbWidget::showCount(qint64 count)
{
    m_count->setText(u"%1 Titel"_s.arg(groupedNumber(count)));
}

void Mp3dbWidget::showColumnMenu(const QPoint& place)
{
    QMenu menu(this);
    m_grid->fillColumnMenu(menu);
    menu.exec(place);
}

} // namespace melovane
