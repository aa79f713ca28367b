#include "shell/ui/quick_open_dialog.h"

#include "config/config_objects.h"
#include "platform/qt/line_buttons.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Size in letters and lines.
constexpr int kWidth = 84;
constexpr int kHeight = 24;

/// Height of a row in lines of text.
constexpr double kRowLines = 1.7;

/// Entries that are listed: nobody reads on.
constexpr size_t kMax = 200;

enum Column
{
    kTitle,
    kKind,
    kKey,
    kColumns
};

QLabel* makeNote(QWidget* parent)
{
    auto* note = new QLabel(parent);
    note->setObjectName(u"lblQuick"_s);
    note->setProperty("second", true);
    note->setTextFormat(Qt::PlainText);
    note->setWordWrap(true);
    return note;
}

} // namespace

QuickOpenDialog::QuickOpenDialog(const ConfigObjects& texts,
                                 Entries entries,
                                 FindMore findMore,
                                 QWidget* parent)
    : QDialog(parent)
    , m_entries(std::move(entries))
    , m_findMore(std::move(findMore))
    , m_nothing(texts.text(u"quick.none"))
    , m_line(new QLineEdit(this))
    , m_list(new QTreeWidget(this))
    , m_note(makeNote(this))
{
    setObjectName(u"QuickOpen"_s);
    setWindowTitle(texts.text(u"quick.title"));
    m_line->setObjectName(u"txtQuick"_s);
    m_line->setPlaceholderText(texts.text(u"quick.hint"));
    m_line->setAccessibleName(m_line->placeholderText());
    m_line->setClearButtonEnabled(true);
    nameLineButtons(*m_line, m_line->placeholderText(), texts.text(u"line.clear"));
    m_line->installEventFilter(this);
    buildList();
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_line);
    column->addWidget(m_list, 1);
    column->addWidget(m_note);
    const QFontMetrics letters = fontMetrics();
    resize(letters.averageCharWidth() * kWidth, letters.lineSpacing() * kHeight);
    connect(m_line, &QLineEdit::textChanged, this, &QuickOpenDialog::find);
    find();
}

void QuickOpenDialog::buildList()
{
    m_list->setObjectName(u"lstQuick"_s);
    m_list->setAccessibleName(windowTitle());
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setHeaderHidden(true);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setColumnCount(kColumns);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(kTitle, QHeaderView::Stretch);
    m_list->header()->setSectionResizeMode(kKind, QHeaderView::ResizeToContents);
    m_list->header()->setSectionResizeMode(kKey, QHeaderView::ResizeToContents);
    connect(m_list, &QTreeWidget::itemClicked, this, &QuickOpenDialog::choose);
    connect(m_list, &QTreeWidget::currentItemChanged, this, &QuickOpenDialog::showNote);
}

void QuickOpenDialog::find()
{
    const QString typed = m_line->text();
    m_more.clear();
    list(typed);
    m_findMore(typed, [self = QPointer(this), typed](Entries found) {
        if (self && self->m_line->text() == typed) {
            self->takeMore(typed, std::move(found));
        }
    });
}

void QuickOpenDialog::takeMore(const QString& typed, Entries found)
{
    const int row = m_list->indexOfTopLevelItem(m_list->currentItem());
    const QuickEntry* const former = row > 0 ? current() : nullptr;
    m_more = std::move(found);
    list(typed);
    // What the user has gone to by an arrow key stays the one that Enter takes.
    const auto at = std::ranges::find(m_shown, former);
    if (former != nullptr && at != m_shown.end()) {
        m_list->setCurrentItem(m_list->topLevelItem(int(at - m_shown.begin())));
    }
}

void QuickOpenDialog::list(const QString& typed)
{
    std::vector<std::pair<NameMatch::Rank, const QuickEntry*>> found;
    for (const Entries* entries : {&m_entries, &m_more}) {
        for (const QuickMatch& match : quickMatches(*entries, typed)) {
            found.emplace_back(match.rank, &(*entries)[match.place]);
        }
    }
    // Of those that fit alike, what can be done stands first.
    std::ranges::stable_sort(found, {}, [](const auto& entry) {
        return std::pair(entry.first, !entry.second->whyNot.isEmpty());
    });
    found.resize(std::min(found.size(), kMax));
    m_shown.clear();
    QList<QTreeWidgetItem*> items;
    const QColor second = palette().color(QPalette::PlaceholderText);
    const QColor grey = palette().color(QPalette::Disabled, QPalette::Text);
    const QSize height(0, int(fontMetrics().lineSpacing() * kRowLines));
    for (const auto& [rank, entry] : found) {
        m_shown.push_back(entry);
        items.append(new QTreeWidgetItem({entry->title, entry->kind, entry->key}));
        QTreeWidgetItem& item = *items.last();
        item.setToolTip(kTitle, entry->whyNot);
        item.setSizeHint(kTitle, height);
        for (int column = kTitle; column < kColumns; ++column) {
            if (!entry->whyNot.isEmpty()) {
                item.setForeground(column, grey);
            } else if (column != kTitle) {
                item.setForeground(column, second);
            }
        }
    }
    m_list->clear();
    m_list->addTopLevelItems(items);
    m_list->setCurrentItem(m_list->topLevelItem(0));
    showNote();
}

const QuickEntry* QuickOpenDialog::current() const
{
    const int row = m_list->indexOfTopLevelItem(m_list->currentItem());
    return row < 0 || size_t(row) >= m_shown.size() ? nullptr : m_shown[size_t(row)];
}

void QuickOpenDialog::showNote()
{
    const QuickEntry* const entry = current();
    m_note->setText(entry == nullptr ? m_nothing : entry->whyNot);
}

void QuickOpenDialog::choose()
{
    const QuickEntry* const entry = current();
    if (entry != nullptr && entry->whyNot.isEmpty()) {
        m_chosen = *entry;
        accept();
    }
}

/// The entries are made of texts of the former language.
void QuickOpenDialog::changeEvent(QEvent* event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        reject();
    }
}

bool QuickOpenDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress) {
        return QDialog::eventFilter(watched, event);
    }
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        QCoreApplication::sendEvent(m_list, event);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        choose();
        return true;
    default:
        return QDialog::eventFilter(watched, event);
    }
}

} // namespace melovane
