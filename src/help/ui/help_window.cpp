#include "help/ui/help_window.h"

#include "config/config_objects.h"
#include "help/help_places.h"
#include "help/ui/help_browser.h"
#include "platform/qt/icon_set.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Size of the window, and what stands free beside its contents, in letters and lines.
constexpr int kWidth = 130;
constexpr int kHeight = 42;
constexpr int kMargin = 3;

constexpr int kPageRole = Qt::UserRole;

} // namespace

HelpWindow::HelpWindow(const HelpPages& pages, const IconSet& icons, QWidget* parent)
    : QDialog(parent, Qt::Window)
    , m_pages(pages)
    , m_icons(icons)
    , m_contents(new QListWidget(this))
    , m_search(new QLineEdit(this))
    , m_browser(new HelpBrowser(pages, this))
    , m_back(addTool(u"cmdBack"_s, u"back"_s, QKeySequence(Qt::ALT | Qt::Key_Left)))
    , m_forward(addTool(u"cmdForward"_s, u"forward"_s, QKeySequence(Qt::ALT | Qt::Key_Right)))
{
    setObjectName(u"HelpWindow"_s);
    m_contents->setObjectName(u"lstContents"_s);
    m_search->setObjectName(u"txtSearch"_s);
    m_search->setClearButtonEnabled(true);
    for (const QStringView page : kHelpPages) {
        auto* const entry = new QListWidgetItem(m_contents);
        entry->setData(kPageRole, page.toString());
    }
    layOut();
    translate();
    connect(m_back, &QToolButton::clicked, m_browser, &HelpBrowser::backward);
    connect(m_forward, &QToolButton::clicked, m_browser, &HelpBrowser::forward);
    connect(m_browser, &HelpBrowser::backwardAvailable, m_back, &QToolButton::setEnabled);
    connect(m_browser, &HelpBrowser::forwardAvailable, m_forward, &QToolButton::setEnabled);
    connect(m_browser, &HelpBrowser::sourceChanged, this, &HelpWindow::follow);
    connect(m_search, &QLineEdit::textChanged, this, &HelpWindow::search);
    connect(m_contents, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* entry) {
        if (entry != nullptr && !m_isFollowing) {
            m_browser->showPlace(entry->data(kPageRole).toString());
        }
    });
    auto* const find = new QShortcut(QKeySequence::Find, this);
    connect(find, &QShortcut::activated, m_search, [this] {
        m_search->setFocus();
        m_search->selectAll();
    });
    m_browser->setFocus();
}

QToolButton* HelpWindow::addTool(const QString& name, const QString& icon, const QKeySequence& keys)
{
    auto* const button = new QToolButton(this);
    button->setObjectName(name);
    button->setIcon(m_icons.icon(icon));
    button->setShortcut(keys);
    button->setFocusPolicy(Qt::TabFocus);
    button->setEnabled(false);
    return button;
}

void HelpWindow::layOut()
{
    const int letter = fontMetrics().averageCharWidth();
    const QSize wanted(letter * kWidth, fontMetrics().lineSpacing() * kHeight);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
    auto* const tools = new QHBoxLayout;
    tools->addWidget(m_back);
    tools->addWidget(m_forward);
    tools->addWidget(m_search, 1);
    auto* const left = new QVBoxLayout;
    left->addLayout(tools);
    left->addWidget(m_contents, 1);
    auto* const row = new QHBoxLayout(this);
    row->addLayout(left);
    row->addWidget(m_browser, 1);
    setTabOrder(m_back, m_forward);
    setTabOrder(m_forward, m_search);
    setTabOrder(m_search, m_contents);
    setTabOrder(m_contents, m_browser);
}

void HelpWindow::translate()
{
    const ConfigObjects& texts = m_pages.texts();
    setWindowTitle(texts.text(u"help.title"));
    m_contents->setAccessibleName(texts.text(u"help.contents"));
    m_contents->setToolTip(texts.text(u"help.contents.tip"));
    m_search->setPlaceholderText(texts.text(u"help.search"));
    m_search->setAccessibleName(m_search->placeholderText());
    m_search->setToolTip(texts.text(u"help.search.tip"));
    m_browser->setAccessibleName(texts.text(u"help.page"));
    for (QToolButton* const button : {m_back, m_forward}) {
        const QString words = texts.text(button == m_back ? u"help.back" : u"help.forward");
        button->setAccessibleName(words);
        button->setToolTip(words + u" ("_s + button->shortcut().toString(QKeySequence::NativeText) +
                           u')');
    }
    for (int row = 0; row < m_contents->count(); ++row) {
        QListWidgetItem* const entry = m_contents->item(row);
        entry->setText(m_pages.title(entry->data(kPageRole).toString()));
    }
    // As wide as its longest line.
    const int width = m_contents->sizeHintForColumn(0) + 2 * m_contents->frameWidth() +
                      fontMetrics().averageCharWidth() * kMargin;
    m_contents->setFixedWidth(width);
    m_search->setMaximumWidth(width);
}

void HelpWindow::showPlace(const QString& place)
{
    m_browser->showPlace(place);
}

/// The contents show which page is read, whatever has led to it.
void HelpWindow::follow(const QUrl& source)
{
    const QString page = HelpBrowser::pageOf(source);
    QListWidgetItem* present = nullptr;
    for (int row = 0; row < m_contents->count(); ++row) {
        if (m_contents->item(row)->data(kPageRole).toString() == page) {
            present = m_contents->item(row);
        }
    }
    m_isFollowing = true;
    m_contents->setCurrentItem(present);
    m_isFollowing = false;
}

void HelpWindow::search()
{
    const QString words = m_search->text().simplified();
    if (!words.isEmpty()) {
        m_browser->showHits(words);
    }
}

void HelpWindow::changeEvent(QEvent* event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        translate();
        m_browser->showAgain();
    }
}

} // namespace melovane
