#include "views/ui/edit_grid_dialog.h"

#include "config/config_objects.h"
#include "platform/db/data_control.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/icon_set.h"
#include "views/edit_grid.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Size of the dialog in letters and lines.
constexpr int kWidth = 120;
constexpr int kGridLines = 9;
constexpr int kListLines = 12;

} // namespace

EditGridDialog::EditGridDialog(const Skin& skin,
                               const IconSet& icons,
                               const ConfigObjects& texts,
                               const QString& captionKey)
    : DialogFrame(u"frmEditGrid"_s)
    , m_icons(icons)
    , m_grid(new DataGrid(skin, icons, this))
    , m_list(new QListWidget(this))
    , m_heading(new QLineEdit(this))
{
    setWindowTitle(texts.text(captionKey));
    m_grid->setObjectName(u"TDBGrid1"_s);
    m_grid->setAccessibleName(texts.text(captionKey));
    m_grid->setMinimumWidth(fontMetrics().averageCharWidth() * kWidth);
    m_grid->setMinimumHeight(fontMetrics().lineSpacing() * kGridLines);
    auto* hint = new QLabel(texts.text(u"EditGridChGross"_s), this);
    hint->setWordWrap(true);
    column()->addWidget(m_grid, 1);
    column()->addWidget(hint);
    buildChoices(texts);
    QPushButton* ok = addButton(u"cmdOk"_s, texts.text(u"uebernehmen"_s), Accepted);
    QPushButton* cancel = addButton(u"cmdAbbruch"_s, texts.text(u"Abbruch"_s), Rejected);
    setKeys(ok, cancel);
}

void EditGridDialog::buildChoices(const ConfigObjects& texts)
{
    m_list->setObjectName(u"VSFlexGrid2"_s);
    m_list->setAccessibleName(texts.text(u"layout.columns"_s));
    m_list->setMinimumHeight(fontMetrics().lineSpacing() * kListLines);
    auto* add = new QPushButton(texts.text(u"layout.add"_s), this);
    add->setObjectName(u"cmdAddCol"_s);
    auto* remove = new QPushButton(texts.text(u"layout.remove"_s), this);
    remove->setObjectName(u"cmdRemoveCol"_s);
    add->setAutoDefault(false);
    remove->setAutoDefault(false);
    m_heading->setObjectName(u"txtHeading"_s);
    auto* headingLabel = new QLabel(texts.text(u"layout.heading"_s), this);
    headingLabel->setBuddy(m_heading);
    auto* buttons = new QVBoxLayout;
    buttons->addWidget(add);
    buttons->addWidget(remove);
    buttons->addSpacing(fontMetrics().lineSpacing());
    buttons->addWidget(headingLabel);
    buttons->addWidget(m_heading);
    buttons->addStretch();
    auto* row = new QHBoxLayout;
    row->addWidget(m_list, 1);
    row->addLayout(buttons);
    column()->addLayout(row, 1);
    const auto field = [this] {
        return m_list->currentItem() ? m_list->currentItem()->data(Qt::UserRole).toString()
                                     : QString();
    };
    connect(add, &QPushButton::clicked, this, [this, field] {
        m_logic->addColumn(field());
        fillChoices();
    });
    connect(remove, &QPushButton::clicked, this, [this, field] {
        m_logic->removeColumn(field());
        fillChoices();
    });
    connect(m_list, &QListWidget::itemDoubleClicked, this, &EditGridDialog::switchColumn);
    connect(m_heading, &QLineEdit::textEdited, this, &EditGridDialog::rename);
    connect(m_list, &QListWidget::currentItemChanged, this, [=, this](QListWidgetItem* item) {
        const bool chosen = item && item->data(Qt::UserRole + 1).toBool();
        m_heading->setEnabled(chosen);
        m_heading->setText(item ? item->text() : QString());
        add->setEnabled(item && !chosen);
        remove->setEnabled(item && chosen);
    });
}

DataGrid& EditGridDialog::setRows(const DataControl& rows,
                                  const GridLook& look,
                                  std::vector<GridColumn> columns)
{
    m_grid->setSource(rows, look, std::move(columns));
    return *m_grid;
}

void EditGridDialog::fillChoices()
{
    const int row = std::max(0, m_list->currentRow());
    m_list->clear();
    for (const ColumnChoice& choice : m_logic->choices()) {
        auto* item = new QListWidgetItem(choice.heading, m_list);
        item->setData(Qt::UserRole, choice.field);
        item->setData(Qt::UserRole + 1, choice.chosen);
        item->setIcon(m_icons.icon(choice.chosen ? u"ticked"_s : u"unticked"_s, ThemeRole::Accent));
        QFont font = item->font();
        font.setBold(choice.chosen);
        item->setFont(font);
    }
    m_list->setCurrentRow(std::min(row, m_list->count() - 1));
}

/// The headings speak the other language already; the list of them follows.
void EditGridDialog::changeEvent(QEvent* event)
{
    DialogFrame::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && m_logic != nullptr) {
        fillChoices();
    }
}

void EditGridDialog::rename()
{
    QListWidgetItem* item = m_list->currentItem();
    m_logic->setHeading(item->data(Qt::UserRole).toString(), m_heading->text());
    item->setText(m_heading->text());
}

void EditGridDialog::switchColumn()
{
    const QListWidgetItem* item = m_list->currentItem();
    const QString field = item->data(Qt::UserRole).toString();
    if (item->data(Qt::UserRole + 1).toBool()) {
        m_logic->removeColumn(field);
    } else {
        m_logic->addColumn(field);
    }
    fillChoices();
}

bool EditGridDialog::choose(frmEditGrid& logic)
{
    m_logic = &logic;
    fillChoices();
    m_list->setFocus();
    return ask(Rejected) == Accepted && logic.save();
}

} // namespace melovane
