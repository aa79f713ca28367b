#include "settings/ui/keys_page.h"

#include "config/config_objects.h"
#include "config/key_names.h"
#include "platform/qt/desktop_texts.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/key_taker.h"
#include "platform/qt/line_buttons.h"
#include "platform/qt/qt_keyboard.h"
#include "platform/qt/skin.h"
#include "settings/ui/setting_page_form.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

enum Column
{
    Command,
    Keys,
    Hint,
    Reset
};

constexpr int kIdRole = Qt::UserRole;
constexpr int kCapsRole = Qt::UserRole + 1;

/// Codes of shift, control and alt: keep, bindings are spelled by them.
constexpr int kShift = 16;
constexpr int kControl = 17;
constexpr int kAlt = 18;

/// Between a cap and the edge of its row, and between a cap and what stands beside it.
constexpr int kMargin = 3;
constexpr int kGap = 6;
const QString kPlus = u"+"_s;

/// Keys as caps: "Strg" "+" "N".
class CapsDelegate : public QStyledItemDelegate
{
public:
    CapsDelegate(const Skin& skin, QObject* parent)
        : QStyledItemDelegate(parent)
        , m_skin(skin)
    {}

    void paint(QPainter* painter,
               const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        const QStringList caps = index.data(kCapsRole).toStringList();
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        QRect place = option.rect.adjusted(6, kMargin, 0, -kMargin);
        for (const QString& cap : caps) {
            if (place.left() > option.rect.left() + 6) {
                painter->setPen(m_skin.theme().qcolor(ThemeRole::TextSecond));
                place.setWidth(option.fontMetrics.horizontalAdvance(kPlus));
                painter->drawText(place, Qt::AlignCenter, kPlus);
                place.moveLeft(place.right() + kGap);
            }
            place.setWidth(option.fontMetrics.horizontalAdvance(cap) + 14);
            painter->setPen(m_skin.theme().qcolor(ThemeRole::TextDisabled));
            painter->setBrush(m_skin.theme().qcolor(ThemeRole::GridHeadColor));
            painter->drawRoundedRect(place.toRectF().adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
            painter->setPen(m_skin.theme().qcolor(ThemeRole::Text));
            painter->drawText(place, Qt::AlignCenter, cap);
            place.moveLeft(place.right() + kGap);
        }
        painter->restore();
    }

    /// Of a cap with the room around it: all rows are as high.
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override
    {
        const QSize size = QStyledItemDelegate::sizeHint(option, index);
        return {size.width(), std::max(size.height(), option.fontMetrics.height() + 4 * kMargin)};
    }

private:
    const Skin& m_skin;
};

/// What stands on the caps; a combination that the desktop has no words for is spelled out.
QStringList capsOf(const QString& keys)
{
    const QString native = nativeKeys(portableKeys(keys));
    return native.isEmpty() ? keys.split(u" + "_s, Qt::SkipEmptyParts)
                            : native.split(u'+', Qt::SkipEmptyParts);
}

} // namespace

QString combinationOf(const QKeyEvent& event)
{
    const int code = keyCodeOf(event);
    if (code == kShift || code == kControl || code == kAlt || keyName(code).isEmpty()) {
        return {};
    }
    std::set<int> codes = {code};
    const Qt::KeyboardModifiers held = event.modifiers();
    if (held.testFlag(Qt::ShiftModifier)) {
        codes.insert(kShift);
    }
    if (held.testFlag(Qt::ControlModifier)) {
        codes.insert(kControl);
    }
    if (held.testFlag(Qt::AltModifier)) {
        codes.insert(kAlt);
    }
    QStringList names;
    for (const int each : codes) {
        names.append(keyName(each));
    }
    return names.join(u" + "_s);
}

KeysPage::KeysPage(const SettingsDesk& desk, QWidget* parent)
    : QWidget(parent)
    , m_desk(desk)
    , m_find(new QLineEdit(this))
    , m_groups(new QComboBox(this))
    , m_table(new QTreeWidget(this))
    , m_conflict(new QWidget(this))
    , m_conflictText(new QLabel(m_conflict))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(28, 20, 28, 20);
    column->setSpacing(6);
    addPageHead(*column, desk.texts, SettingPage::Keys, this);
    auto* line = new QHBoxLayout;
    m_find->setObjectName(u"txtFindKey"_s);
    m_find->setPlaceholderText(desk.texts.text(u"keys.find"));
    m_find->setAccessibleName(m_find->placeholderText());
    m_find->setClearButtonEnabled(true);
    nameLineButtons(*m_find, m_find->placeholderText(), desk.texts.text(u"line.clear"));
    m_groups->setObjectName(u"cmbKeyGroup"_s);
    line->addWidget(m_find, 1);
    line->addWidget(m_groups);
    column->addLayout(line);
    buildTable();
    column->addWidget(m_table, 1);
    buildConflictLine();
    column->addWidget(m_conflict);
    connect(m_find, &QLineEdit::textChanged, this, &KeysPage::filter);
    connect(m_groups, &QComboBox::activated, this, &KeysPage::filter);
    refresh();
}

void KeysPage::buildTable()
{
    const ConfigObjects& texts = m_desk.texts;
    m_table->setObjectName(u"tblKeys"_s);
    m_table->setAccessibleName(texts.text(pageText(SettingPage::Keys)));
    m_table->setHeaderLabels({texts.text(u"keys.command"), texts.text(u"keys.key"),
                              texts.text(u"keys.hint"), QString()});
    m_table->setUniformRowHeights(true);
    m_table->setAlternatingRowColors(true);
    m_table->setItemDelegateForColumn(Keys, new CapsDelegate(m_desk.skin, m_table));
    const int letter = fontMetrics().averageCharWidth();
    m_table->header()->setStretchLastSection(false);
    m_table->setColumnWidth(Command, letter * 42);
    m_table->setColumnWidth(Keys, letter * 26);
    m_table->header()->setSectionResizeMode(Hint, QHeaderView::Stretch);
    m_table->header()->setSectionResizeMode(Reset, QHeaderView::Fixed);
    m_table->setColumnWidth(Reset, fontMetrics().height() * 2);
    m_table->header()->setMinimumSectionSize(fontMetrics().height() * 2);
    m_groups->addItem(texts.text(u"keys.allgroups"), QString());
    m_rows = m_desk.keys.rows();
    QTreeWidgetItem* group = nullptr;
    for (const KeyRow& row : m_rows) {
        const int known = m_groups->findData(row.group);
        if (known < 0) {
            const QString words = texts.text(u"keys.group."_s + row.group);
            m_groups->addItem(words, row.group);
            group = new QTreeWidgetItem(m_table, {words});
            group->setFirstColumnSpanned(true);
            group->setExpanded(true);
            QFont bold = font();
            bold.setBold(true);
            group->setFont(Command, bold);
        } else {
            group = m_table->topLevelItem(known - 1);
        }
        auto* item = new QTreeWidgetItem(group, {row.label});
        item->setData(Command, kIdRole, row.id);
    }
    m_table->installEventFilter(this);
    connect(m_table, &QTreeWidget::itemDoubleClicked, this, &KeysPage::begin);
    connect(m_table, &QTreeWidget::currentItemChanged, this, [this] {
        giveUp();
        showConflict();
    });
}

void KeysPage::buildConflictLine()
{
    m_conflict->setObjectName(u"KeyConflict"_s);
    auto* line = new QHBoxLayout(m_conflict);
    line->setContentsMargins(12, 6, 6, 6);
    auto* sign = new QLabel(m_conflict);
    const int size = fontMetrics().height();
    sign->setPixmap(m_desk.icons.icon(u"warning"_s).pixmap(size, size));
    m_conflictText->setObjectName(u"lblConflict"_s);
    m_conflictText->setTextFormat(Qt::PlainText);
    m_conflictText->setWordWrap(true);
    auto* other = new QPushButton(m_desk.texts.text(u"keys.other"), m_conflict);
    other->setObjectName(u"cmdOther"_s);
    other->setAutoDefault(false);
    line->addWidget(sign);
    line->addWidget(m_conflictText, 1);
    line->addWidget(other);
    connect(other, &QPushButton::clicked, this, &KeysPage::goToOther);
}

QTreeWidgetItem* KeysPage::itemOf(const QString& id) const
{
    for (QTreeWidgetItemIterator it(m_table); *it != nullptr; ++it) {
        if ((*it)->data(Command, kIdRole).toString() == id) {
            return *it;
        }
    }
    return nullptr;
}

QString KeysPage::currentId() const
{
    const QTreeWidgetItem* const item = m_table->currentItem();
    return item == nullptr ? QString() : item->data(Command, kIdRole).toString();
}

void KeysPage::refresh()
{
    m_table->setProperty(kTakesAllKeys, !m_taking.isEmpty());
    m_rows = m_desk.keys.rows();
    m_changed = int(
        std::count_if(m_rows.begin(), m_rows.end(), [](const KeyRow& row) { return row.changed; }));
    m_doubled = int(std::count_if(m_rows.begin(), m_rows.end(), [](const KeyRow& row) {
        return !row.otherId.isEmpty() && !row.acts;
    }));
    for (const KeyRow& row : m_rows) {
        showRow(*itemOf(row.id), row);
    }
    showConflict();
}

void KeysPage::showRow(QTreeWidgetItem& item, const KeyRow& row)
{
    const ConfigObjects& texts = m_desk.texts;
    const bool isTaking = row.id == m_taking;
    const QStringList caps = isTaking ? QStringList() : capsOf(row.keys);
    item.setData(Keys, kCapsRole, caps);
    item.setText(Keys, isTaking             ? texts.text(u"keys.press")
                       : row.keys.isEmpty() ? texts.text(u"keys.none")
                                            : QString());
    item.setData(Keys, Qt::AccessibleTextRole, caps.isEmpty() ? item.text(Keys) : caps.join(u'+'));
    QString hint;
    QIcon sign;
    if (isTaking) {
        hint = texts.text(u"keys.press.hint");
    } else if (!row.otherId.isEmpty()) {
        hint = texts.text(u"keys.also"_s, itemOf(row.otherId)->text(Command));
        sign = m_desk.icons.icon(u"warning"_s, ThemeRole::VuMeterColorPeek);
    } else if (row.changed) {
        hint = texts.text(u"keys.changed");
        sign = m_desk.icons.icon(u"edit"_s, ThemeRole::Accent);
    }
    item.setText(Hint, hint);
    item.setIcon(Hint, sign);
    if (!row.changed) {
        m_table->removeItemWidget(&item, Reset);
    } else if (m_table->itemWidget(&item, Reset) == nullptr) {
        auto* reset = new QToolButton(m_table);
        reset->setObjectName(u"reset."_s + row.id);
        reset->setAutoRaise(true);
        reset->setIcon(m_desk.icons.icon(u"undo"_s, ThemeRole::Accent));
        reset->setToolTip(texts.text(u"settings.reset"));
        reset->setAccessibleName(reset->toolTip());
        connect(
            reset, &QToolButton::clicked, this,
            [this, id = row.id] {
                m_desk.keys.reset(id);
                refresh();
                emit edited();
            },
            Qt::QueuedConnection);
        m_table->setItemWidget(&item, Reset, reset);
    }
}

void KeysPage::filter()
{
    const QString text = m_find->text().trimmed();
    const QString group = m_groups->currentData().toString();
    for (int i = 0; i < m_table->topLevelItemCount(); ++i) {
        m_table->topLevelItem(i)->setHidden(true);
    }
    for (const KeyRow& row : m_rows) {
        QTreeWidgetItem& item = *itemOf(row.id);
        const bool fits = text.isEmpty() || row.label.contains(text, Qt::CaseInsensitive) ||
                          capsOf(row.keys).join(u'+').contains(text, Qt::CaseInsensitive);
        const bool isShown = fits && (group.isEmpty() || row.group == group);
        item.setHidden(!isShown);
        if (isShown) {
            item.parent()->setHidden(false);
        }
    }
}

void KeysPage::enter()
{
    if (currentId().isEmpty()) {
        m_table->setCurrentItem(m_table->topLevelItem(0)->child(0));
    }
    m_table->setFocus(Qt::TabFocusReason);
}

void KeysPage::begin()
{
    if (!currentId().isEmpty()) {
        m_taking = currentId();
        refresh();
    }
}

void KeysPage::giveUp()
{
    if (!m_taking.isEmpty()) {
        m_taking.clear();
        refresh();
    }
}

bool KeysPage::take(const QKeyEvent& event)
{
    if (event.key() == Qt::Key_Escape && event.modifiers() == Qt::NoModifier) {
        giveUp();
        return true;
    }
    const QString keys = combinationOf(event);
    if (!keys.isEmpty()) {
        bind(keys);
    }
    return true;
}

void KeysPage::bind(const QString& keys)
{
    const QString id = currentId();
    m_taking.clear();
    m_desk.keys.bind(id, keys);
    refresh();
    emit edited();
}

bool KeysPage::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusOut) {
        giveUp();
    }
    const bool isPress = event->type() == QEvent::KeyPress;
    if (!isPress && event->type() != QEvent::ShortcutOverride) {
        return QWidget::eventFilter(watched, event);
    }
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (!m_taking.isEmpty()) {
        // Shortcuts of the window are keys like others here.
        event->accept();
        return isPress ? take(key) : true;
    }
    if (!isPress || currentId().isEmpty()) {
        return QWidget::eventFilter(watched, event);
    }
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        begin();
        return true;
    case Qt::Key_Delete:
        bind({});
        return true;
    default:
        return QWidget::eventFilter(watched, event);
    }
}

void KeysPage::showConflict()
{
    const QString id = currentId();
    const auto row = std::find_if(m_rows.begin(), m_rows.end(),
                                  [&id](const KeyRow& each) { return each.id == id; });
    const bool isDouble = row != m_rows.end() && !row->otherId.isEmpty();
    m_conflict->setVisible(isDouble);
    if (isDouble) {
        const QString acting = itemOf(row->acts ? row->id : row->otherId)->text(Command);
        m_conflictText->setText(
            m_desk.texts.text(u"keys.conflict"_s, capsOf(row->keys).join(u" + "_s), acting));
    }
}

void KeysPage::goToOther()
{
    for (const KeyRow& row : m_rows) {
        if (row.id == currentId() && !row.otherId.isEmpty()) {
            m_table->setCurrentItem(itemOf(row.otherId));
            m_table->setFocus();
            return;
        }
    }
}

} // namespace melovane
