#include "settings/ui/settings_window.h"

#include "config/config_objects.h"
#include "config/counted_text.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/line_buttons.h"
#include "platform/qt/skin.h"
#include "settings/ui/hints_page.h"
#include "settings/ui/keys_page.h"
#include "settings/ui/setting_page_form.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The least size, in units of the screen.
constexpr QSize kLeast{760, 520};
/// Below this width the categories are icons.
constexpr int kNarrow = 860;
/// Width of the categories, in letters.
constexpr int kSideWidth = 28;

/// Whether a page has changes.
constexpr int kChangedRole = Qt::UserRole;

/// A category: a dot at its right end says that something on it is not at its default.
class CategoryDelegate : public QStyledItemDelegate
{
public:
    CategoryDelegate(const Skin& skin, QObject* parent)
        : QStyledItemDelegate(parent)
        , m_skin(skin)
    {}

    void paint(QPainter* painter,
               const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        if (!index.data(kChangedRole).toBool()) {
            return;
        }
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(m_skin.theme().qcolor(ThemeRole::Accent));
        const QPointF place(option.rect.right() - 9.0, option.rect.center().y() + 0.5);
        painter->drawEllipse(place, 3.0, 3.0);
        painter->restore();
    }

private:
    const Skin& m_skin;
};

QPushButton* makeButton(const QString& name, const QString& caption, QWidget* parent)
{
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

} // namespace

SettingsWindow::SettingsWindow(const SettingsDesk& desk, std::function<bool()> apply)
    : m_desk(desk)
    , m_apply(std::move(apply))
    , m_column(new QVBoxLayout(this))
{
    setObjectName(u"SettingsWindow"_s);
    setWindowFlags(Qt::Window);
    setMinimumSize(kLeast);
    m_column->setContentsMargins(0, 0, 0, 0);
    resize(QSize(fontMetrics().averageCharWidth() * 150, fontMetrics().lineSpacing() * 42)
               .expandedTo(kLeast)
               .boundedTo(screen()->availableSize() * 9 / 10)
               .expandedTo(kLeast));
    // The place of a dialog by itself knows no title bar: on a low screen that lay above the edge.
    constexpr int kShareAbove = 4;
    const QRect area = screen()->availableGeometry();
    move(area.center().x() - width() / 2,
         area.top() + std::max(0, area.height() - height()) / kShareAbove);
    rebuild();
    auto* find = new QShortcut(QKeySequence::Find, this);
    connect(find, &QShortcut::activated, this, [this] {
        m_find->setFocus();
        m_find->selectAll();
    });
}

void SettingsWindow::rebuild()
{
    const int present = m_categories == nullptr ? 0 : m_categories->currentRow();
    delete std::exchange(m_content, nullptr);
    setWindowTitle(m_desk.texts.text(u"confApp"));
    m_content = new QWidget(this);
    m_column->addWidget(m_content);
    auto* column = new QVBoxLayout(m_content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    auto* row = new QHBoxLayout;
    row->setSpacing(0);
    column->addLayout(row, 1);
    m_side = new QWidget(m_content);
    m_side->setObjectName(u"SettingsSide"_s);
    m_side->setAttribute(Qt::WA_StyledBackground);
    m_stack = new QStackedWidget(m_content);
    row->addWidget(m_side);
    row->addWidget(m_stack, 1);
    auto* footer = new QWidget(m_content);
    footer->setObjectName(u"StatusBar1"_s);
    footer->setAttribute(Qt::WA_StyledBackground);
    column->addWidget(footer);
    buildSide(*m_side);
    buildPages();
    buildFooter(*footer);
    m_categories->setCurrentRow(present);
    narrowSide();
    showState();
}

void SettingsWindow::buildSide(QWidget& side)
{
    auto* column = new QVBoxLayout(&side);
    column->setContentsMargins(8, 12, 8, 8);
    column->setSpacing(10);
    m_find = new QLineEdit(&side);
    m_find->setObjectName(u"txtFind"_s);
    m_find->setPlaceholderText(m_desk.texts.text(u"settings.find"));
    m_find->setAccessibleName(m_find->placeholderText());
    m_find->setClearButtonEnabled(true);
    m_find->addAction(m_desk.icons.icon(u"search"_s, ThemeRole::TextSecond),
                      QLineEdit::LeadingPosition);
    nameLineButtons(*m_find, m_find->placeholderText(), m_desk.texts.text(u"line.clear"));
    m_categories = new QListWidget(&side);
    m_categories->setObjectName(u"lstCategories"_s);
    m_categories->setAccessibleName(m_desk.texts.text(u"settings.categories"));
    m_categories->setItemDelegate(new CategoryDelegate(m_desk.skin, m_categories));
    m_categories->setIconSize({fontMetrics().height(), fontMetrics().height()});
    m_categories->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    for (int page = 0; page < kSettingPages; ++page) {
        auto* item =
            new QListWidgetItem(m_desk.icons.icon(pageIcon(SettingPage(page))),
                                m_desk.texts.text(pageText(SettingPage(page))), m_categories);
        item->setToolTip(item->text());
        item->setSizeHint({0, fontMetrics().height() * 2});
    }
    column->addWidget(m_find);
    column->addWidget(m_categories, 1);
    connect(m_find, &QLineEdit::textChanged, this, &SettingsWindow::filter);
    connect(m_find, &QLineEdit::returnPressed, this, [this] {
        if (SettingPageForm* const form = m_forms[size_t(page())]) {
            form->enter();
        } else {
            // No proxy of the page: Tab would pass over what stands in front of it.
            const QString list = page() == SettingPage::Keys ? u"tblKeys"_s : u"lstHints"_s;
            m_stack->currentWidget()->findChild<QWidget*>(list)->setFocus();
        }
    });
    connect(m_categories, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0 && row < m_stack->count()) {
            m_stack->setCurrentIndex(row);
            showState();
        }
    });
}

void SettingsWindow::buildPages()
{
    m_forms.assign(kSettingPages, nullptr);
    for (int index = 0; index < kSettingPages; ++index) {
        const auto page = SettingPage(index);
        if (page == SettingPage::Keys) {
            m_keys = new KeysPage(m_desk, m_stack);
            m_stack->addWidget(m_keys);
            connect(m_keys, &KeysPage::edited, this, &SettingsWindow::showState);
        } else if (page == SettingPage::Hints) {
            m_hints = new HintsPage(m_desk, m_stack);
            m_stack->addWidget(m_hints);
            connect(m_hints, &HintsPage::edited, this, &SettingsWindow::showState);
        } else {
            m_forms[size_t(index)] = new SettingPageForm(m_desk, page, m_stack);
            m_stack->addWidget(m_forms[size_t(index)]);
            connect(m_forms[size_t(index)], &SettingPageForm::edited, this,
                    &SettingsWindow::showState);
        }
    }
}

void SettingsWindow::buildFooter(QWidget& footer)
{
    auto* row = new QHBoxLayout(&footer);
    row->setContentsMargins(14, 8, 14, 8);
    m_reset = makeButton(u"cmdReset"_s, m_desk.texts.text(u"settings.reset"), &footer);
    m_reset->setIcon(m_desk.icons.icon(u"undo"_s));
    m_reset->setToolTip(m_desk.texts.textEx(u"settings.reset"));
    m_state = new QLabel(&footer);
    m_state->setObjectName(u"lblChanges"_s);
    m_state->setTextFormat(Qt::PlainText);
    m_state->setWordWrap(true);
    auto* cancel = makeButton(u"cmdCancel"_s, m_desk.texts.text(u"Abbruch"), &footer);
    m_applyButton = makeButton(u"cmdApply"_s, m_desk.texts.text(u"uebernehmen"), &footer);
    auto* okay = makeButton(u"cmdOk"_s, m_desk.texts.text(u"ok"), &footer);
    okay->setDefault(true);
    row->addWidget(m_reset);
    row->addWidget(m_state, 1);
    row->addWidget(cancel);
    row->addWidget(m_applyButton);
    row->addWidget(okay);
    connect(m_reset, &QPushButton::clicked, this, &SettingsWindow::resetPage);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_applyButton, &QPushButton::clicked, this, &SettingsWindow::apply);
    connect(okay, &QPushButton::clicked, this, [this] {
        if (apply()) {
            accept();
        }
    });
}

bool SettingsWindow::apply()
{
    // A number that is being typed is a value by its end only.
    if (QWidget* const field = focusWidget(); field != nullptr && field != m_find) {
        setFocus();
        field->setFocus();
    }
    m_isUnwritten = !m_apply();
    showState();
    return !m_isUnwritten;
}

void SettingsWindow::resetPage()
{
    switch (page()) {
    case SettingPage::Keys:
        m_desk.keys.resetAll();
        break;
    case SettingPage::Hints:
        m_desk.hints.showAll();
        break;
    default:
        m_desk.values.resetPage(page());
        break;
    }
    refresh();
}

SettingPage SettingsWindow::page() const
{
    return SettingPage(std::max(0, m_categories->currentRow()));
}

void SettingsWindow::showSetting(const SettingEntry& entry)
{
    showPage(entry.page);
    QWidget* const control = m_stack->currentWidget()->findChild<QWidget*>(entry.key.toString());
    if (control != nullptr) {
        control->setFocus();
    }
}

void SettingsWindow::showPage(SettingPage page)
{
    m_find->clear();
    m_categories->setCurrentRow(int(page));
}

int SettingsWindow::changed(SettingPage page) const
{
    switch (page) {
    case SettingPage::Keys:
        return m_keys->changed();
    case SettingPage::Hints:
        return int(m_desk.hints.rows().size());
    default:
        return m_desk.values.changed(page);
    }
}

void SettingsWindow::refresh()
{
    for (SettingPageForm* const form : m_forms) {
        if (form != nullptr) {
            form->refresh();
        }
    }
    m_keys->refresh();
    m_hints->refresh();
    showState();
}

void SettingsWindow::showState()
{
    for (int index = 0; index < kSettingPages; ++index) {
        const auto each = SettingPage(index);
        m_categories->item(index)->setData(kChangedRole,
                                           each != SettingPage::Hints && changed(each) > 0);
    }
    const int count = changed(page());
    m_reset->setEnabled(count > 0);
    m_applyButton->setEnabled(!m_desk.draft.isEmpty());
    const ConfigObjects& texts = m_desk.texts;
    if (m_isUnwritten && !m_desk.draft.isEmpty()) {
        m_state->setText(texts.text(u"settings.unwritten"_s, m_desk.draft.file()));
    } else if (page() == SettingPage::Keys) {
        m_state->setText(texts.text(u"keys.summary"_s, count, m_keys->doubled()));
    } else if (page() == SettingPage::Hints) {
        m_state->clear();
    } else {
        m_state->setText(count == 0 ? texts.text(u"settings.changed.none")
                                    : countedText(texts, u"settings.changed"_s, count));
    }
}

void SettingsWindow::filter()
{
    const QString text = m_find->text();
    int first = -1;
    for (int index = 0; index < kSettingPages; ++index) {
        SettingPageForm* const form = m_forms[size_t(index)];
        const bool isFound = form != nullptr ? form->filter(text) > 0
                                             : m_desk.search.findsPage(text, SettingPage(index));
        m_categories->item(index)->setHidden(!isFound);
        if (isFound && first < 0) {
            first = index;
        }
    }
    if (first >= 0 && m_categories->currentItem()->isHidden()) {
        m_categories->setCurrentRow(first);
    }
    m_stack->setVisible(first >= 0);
    showState();
    if (first < 0) {
        m_state->setText(m_desk.texts.text(u"settings.find.none"));
    }
}

void SettingsWindow::narrowSide()
{
    const bool isNarrow = width() < kNarrow;
    const int wide = fontMetrics().averageCharWidth() * kSideWidth + 16;
    m_side->setFixedWidth(isNarrow ? fontMetrics().height() * 2 + 36 : wide);
    m_find->setVisible(!isNarrow);
    for (int index = 0; index < kSettingPages; ++index) {
        QListWidgetItem* const item = m_categories->item(index);
        item->setText(isNarrow ? QString() : item->toolTip());
        item->setData(Qt::AccessibleTextRole, item->toolTip());
    }
}

void SettingsWindow::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    narrowSide();
}

void SettingsWindow::changeEvent(QEvent* event)
{
    // Another program may have written the file meanwhile.
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && m_content != nullptr) {
        refresh();
    }
    QDialog::changeEvent(event);
}

} // namespace melovane
