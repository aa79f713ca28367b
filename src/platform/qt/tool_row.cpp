#include "platform/qt/tool_row.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QToolButton>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kMargin = 7;
constexpr int kMarginAbove = 5;
constexpr int kSpacing = 3;

/// Units that a button of a tight row is wider than its icon.
constexpr int kTight = 6;

} // namespace

ToolRow::ToolRow(QWidget* parent)
    : QWidget(parent)
    , m_row(new QHBoxLayout(this))
    , m_more(new QToolButton(this))
{
    m_row->setContentsMargins(kMargin, kMarginAbove, kMargin, kMarginAbove);
    m_row->setSpacing(kSpacing);
    auto* menu = new QMenu(m_more);
    connect(menu, &QMenu::aboutToShow, this, [this] { fillMenu(); });
    m_more->setObjectName(u"MoreTools"_s);
    m_more->setText(u"»"_s);
    m_more->setMenu(menu);
    m_more->setPopupMode(QToolButton::InstantPopup);
    m_more->setStyleSheet(u"QToolButton::menu-indicator { image: none; }"_s);
    m_more->setFocusPolicy(Qt::NoFocus);
    m_more->hide();
}

void ToolRow::add(QToolButton* button)
{
    m_tools.push_back(button);
    m_row->addWidget(button);
    setTabOrder(button, m_more);
}

void ToolRow::setTight()
{
    m_isTight = true;
    m_row->setSpacing(0);
    for (QToolButton* const tool : m_tools) {
        // The padding of other buttons would leave too little for the icon.
        tool->setStyleSheet(u"QToolButton { padding: 4px 2px; }"_s);
        tool->setFixedWidth(widthOf(tool));
    }
    fit();
}

int ToolRow::widthOf(const QToolButton* tool) const
{
    return m_isTight ? tool->iconSize().width() + kTight : tool->sizeHint().width();
}

void ToolRow::remove(const QString& name)
{
    const auto found = std::ranges::find(m_tools, name, &QToolButton::objectName);
    if (found != m_tools.end()) {
        QToolButton* const button = *found;
        m_tools.erase(found);
        std::erase(m_hidden, button);
        delete button;
        fit();
    }
}

QSize ToolRow::minimumSizeHint() const
{
    return {0, QWidget::minimumSizeHint().height()};
}

bool ToolRow::event(QEvent* event)
{
    const bool done = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest) {
        fit();
    }
    return done;
}

void ToolRow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    fit();
}

void ToolRow::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    fit();
}

/// What the row needs besides its buttons.
int ToolRow::widthOfOthers() const
{
    int width = 2 * kMargin;
    for (int i = 0; i < m_row->count(); ++i) {
        QLayoutItem* const item = m_row->itemAt(i);
        const bool isTool =
            std::find(m_tools.begin(), m_tools.end(), item->widget()) != m_tools.end();
        if (!isTool && !item->isEmpty()) {
            width += item->minimumSize().width() + kSpacing;
        } else if (!isTool && item->spacerItem() != nullptr) {
            width += item->minimumSize().width();
        }
    }
    return width;
}

void ToolRow::fit()
{
    if (!isVisible()) {
        return; // the width is not yet the true one
    }
    std::vector<QToolButton*> shown;
    for (QToolButton* const tool : m_tools) {
        if (!tool->isHidden()) {
            shown.push_back(tool);
        }
    }
    const int spacing = m_row->spacing();
    int needed = widthOfOthers();
    for (const QToolButton* const tool : shown) {
        needed += widthOf(tool) + spacing;
    }
    std::vector<QToolButton*> hidden;
    const int more = m_more->sizeHint().width();
    const int room = needed <= width() ? width() : width() - more;
    // The space between the buttons that are gone stays.
    while (needed > room && !shown.empty()) {
        needed -= widthOf(shown.back());
        hidden.insert(hidden.begin(), shown.back());
        shown.pop_back();
    }
    m_more->setVisible(!hidden.empty());
    m_more->setFocusPolicy(hidden.empty() ? Qt::NoFocus : Qt::TabFocus);
    m_more->setGeometry(width() - more - 2, kMarginAbove, more, height() - 2 * kMarginAbove);
    if (hidden == m_hidden) {
        return;
    }
    m_hidden = std::move(hidden);
    // Not hide(): whether a button is there at all is the business of others.
    for (QToolButton* const tool : m_tools) {
        const bool inMenu = std::find(m_hidden.begin(), m_hidden.end(), tool) != m_hidden.end();
        tool->setMinimumWidth(0);
        tool->setMaximumWidth(inMenu ? 0 : m_isTight ? widthOf(tool) : QWIDGETSIZE_MAX);
        tool->setMinimumWidth(inMenu ? 0 : widthOf(tool));
        tool->setFocusPolicy(inMenu ? Qt::NoFocus : Qt::TabFocus);
    }
    QStringList names;
    for (const QToolButton* const tool : m_hidden) {
        names.append(tool->accessibleName());
    }
    m_more->setToolTip(names.join(u'\n').toHtmlEscaped().replace(u'\n', u"<br>"_s));
    m_more->setAccessibleName(names.join(u", "_s));
    m_row->setContentsMargins(kMargin, kMarginAbove, m_hidden.empty() ? kMargin : more + 4,
                              kMarginAbove);
}

void ToolRow::fillMenu()
{
    QMenu* const menu = m_more->menu();
    menu->clear();
    for (QToolButton* const tool : m_hidden) {
        QAction* const entry = menu->addAction(tool->icon(), tool->accessibleName());
        entry->setEnabled(tool->isEnabled());
        entry->setCheckable(tool->isCheckable());
        entry->setChecked(tool->isChecked());
        connect(entry, &QAction::triggered, tool, [tool] { tool->click(); });
    }
}

} // namespace melovane
