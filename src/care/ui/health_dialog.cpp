#include "care/ui/health_dialog.h"

#include "config/config_objects.h"
#include "platform/qt/icon_set.h"

#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Size in letters and lines.
constexpr int kWidth = 100;
constexpr int kHeight = 22;

QTreeWidgetItem* itemOf(const HealthLine& line, const IconSet& icons)
{
    auto* item = new QTreeWidgetItem({line.what, line.value});
    item->setToolTip(1, line.value);
    if (line.value.isEmpty()) {
        item->setFirstColumnSpanned(true);
        item->setToolTip(0, line.what);
    }
    if (line.isAlarming) {
        item->setIcon(0, icons.icon(u"warning"_s, ThemeRole::VuMeterColorPeek));
    }
    return item;
}

} // namespace

HealthDialog::HealthDialog(const ConfigObjects& texts,
                           const IconSet& icons,
                           std::function<std::vector<HealthSection>()> look)
    : DialogFrame(u"frmHealth"_s)
    , m_texts(texts)
    , m_icons(icons)
    , m_look(std::move(look))
    , m_list(new QTreeWidget(this))
    , m_note(new QLabel(this))
    , m_again(addCommand(u"cmdAgain"_s, {}))
    , m_copy(addCommand(u"cmdCopy"_s, {}))
    , m_close(addButton(u"cmdClose"_s, {}, QDialog::Accepted))
{
    m_note->setObjectName(u"lblNote"_s);
    m_note->setWordWrap(true);
    m_note->setProperty("second", true);
    m_list->setObjectName(u"lstHealth"_s);
    m_list->setColumnCount(2);
    m_list->setHeaderHidden(true);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    m_list->header()->setStretchLastSection(true);
    column()->addWidget(m_note);
    column()->addWidget(m_list, 1);
    setKeys(m_close, m_close);
    connect(m_again, &QPushButton::clicked, this, &HealthDialog::lookAgain);
    connect(m_copy, &QPushButton::clicked, this, &HealthDialog::copy);
    const QFontMetrics letters = fontMetrics();
    m_list->setMinimumSize(letters.averageCharWidth() * kWidth, letters.lineSpacing() * kHeight);
    translate();
}

void HealthDialog::run()
{
    m_list->setFocus();
    (void)ask(QDialog::Accepted);
}

void HealthDialog::translate()
{
    setWindowTitle(m_texts.text(u"health.title"));
    m_note->setText(m_texts.text(u"health.intro"));
    m_list->setAccessibleName(windowTitle());
    m_again->setText(m_texts.text(u"health.again"));
    m_copy->setText(m_texts.text(u"health.copy"));
    m_close->setText(m_texts.text(u"schliessen"));
    lookAgain();
}

void HealthDialog::lookAgain()
{
    m_sections = m_look();
    m_list->clear();
    for (const HealthSection& section : m_sections) {
        auto* const heading = new QTreeWidgetItem(m_list, {section.title});
        heading->setFirstColumnSpanned(true);
        QFont bold = font();
        bold.setBold(true);
        heading->setFont(0, bold);
        for (const HealthLine& line : section.lines) {
            auto* const item = itemOf(line, m_icons);
            heading->addChild(item);
            item->setFirstColumnSpanned(line.value.isEmpty());
        }
    }
    m_list->expandAll();
    m_list->setCurrentItem(m_list->topLevelItem(0));
}

void HealthDialog::copy()
{
    QGuiApplication::clipboard()->setText(healthText(m_sections));
}

void HealthDialog::changeEvent(QEvent* event)
{
    DialogFrame::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        translate();
    }
}

} // namespace melovane
