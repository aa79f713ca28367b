#include "settings/ui/hints_page.h"

#include "config/config_objects.h"
#include "settings/ui/setting_page_form.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

QPushButton* makeButton(const QString& name, const QString& caption, QWidget* parent)
{
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

} // namespace

HintsPage::HintsPage(const SettingsDesk& desk, QWidget* parent)
    : QWidget(parent)
    , m_desk(desk)
    , m_list(new QListWidget(this))
    , m_none(new QLabel(desk.texts.text(u"hints.none"), this))
    , m_show(makeButton(u"cmdShowHint"_s, desk.texts.text(u"hints.show"), this))
    , m_showAll(makeButton(u"cmdShowAllHints"_s, desk.texts.text(u"hints.showall"), this))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(28, 20, 28, 20);
    column->setSpacing(6);
    addPageHead(*column, desk.texts, SettingPage::Hints, this);
    m_list->setObjectName(u"lstHints"_s);
    m_list->setAccessibleName(desk.texts.textEx(pageText(SettingPage::Hints)));
    m_none->setObjectName(u"lblNoHints"_s);
    column->addWidget(m_none);
    column->addWidget(m_list, 1);
    auto* line = new QHBoxLayout;
    line->addWidget(m_show);
    line->addWidget(m_showAll);
    line->addStretch(1);
    column->addLayout(line);
    column->addStretch(0);
    connect(m_list, &QListWidget::currentRowChanged, this,
            [this](int row) { m_show->setEnabled(row >= 0); });
    connect(m_show, &QPushButton::clicked, this, [this] {
        m_desk.hints.show(m_list->currentItem()->data(Qt::UserRole).toString());
        refresh();
        emit edited();
    });
    connect(m_showAll, &QPushButton::clicked, this, [this] {
        m_desk.hints.showAll();
        refresh();
        emit edited();
    });
    refresh();
}

void HintsPage::refresh()
{
    const int row = m_list->currentRow();
    m_list->clear();
    for (const HiddenHint& hint : m_desk.hints.rows()) {
        auto* item = new QListWidgetItem(hint.words, m_list);
        item->setToolTip(hint.program);
        item->setData(Qt::UserRole, hint.key);
    }
    const int count = m_list->count();
    m_list->setCurrentRow(std::min(std::max(row, 0), count - 1));
    m_list->setVisible(count > 0);
    m_none->setVisible(count == 0);
    m_show->setEnabled(count > 0);
    m_showAll->setEnabled(count > 0);
}

void HintsPage::enter()
{
    m_list->setFocus(Qt::TabFocusReason);
}

} // namespace melovane
