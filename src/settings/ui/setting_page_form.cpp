#include "settings/ui/setting_page_form.h"

#include "config/config_objects.h"
#include "platform/qt/dialog_frame.h"
#include "platform/qt/icon_set.h"
#include "settings/ui/setting_editor.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Width of the column with the words of a row, in letters.
constexpr int kWordsWidth = 30;

/// Kinds whose control says its words itself.
bool saysItsWords(SettingKind kind)
{
    return isTick(kind);
}

QString noteOf(const ConfigObjects& texts, const SettingEntry& entry)
{
    const bool isChoice = entry.kind == SettingKind::Choice;
    return isChoice ? QString() : texts.textEx(entry.text);
}

} // namespace

void addPageHead(QVBoxLayout& column, const ConfigObjects& texts, SettingPage page, QWidget* parent)
{
    auto* title = new QLabel(texts.text(pageText(page)), parent);
    title->setObjectName(u"lblPage"_s);
    title->setFont(titleFont(title->font()));
    auto* sentence = new QLabel(texts.textEx(pageText(page)), parent);
    sentence->setProperty("second", true);
    sentence->setWordWrap(true);
    auto* line = new QFrame(parent);
    line->setObjectName(u"StatusLine"_s);
    line->setFixedHeight(1);
    column.addWidget(title);
    column.addWidget(sentence);
    column.addSpacing(12);
    column.addWidget(line);
    column.addSpacing(8);
}

SettingPageForm::SettingPageForm(const SettingsDesk& desk, SettingPage page, QWidget* parent)
    : QScrollArea(parent)
    , m_desk(desk)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    // A control that takes the keyboard is brought into sight; the page itself needs none.
    setFocusPolicy(Qt::NoFocus);
    auto* inside = new QWidget(this);
    auto* column = new QVBoxLayout(inside);
    column->setContentsMargins(28, 20, 28, 20);
    column->setSpacing(6);
    addPageHead(*column, desk.texts, page, inside);
    setWidget(inside);
    QStringView group;
    QLabel* heading = nullptr;
    for (const SettingEntry& entry : settingEntries()) {
        if (entry.page != page) {
            continue;
        }
        if (entry.group != group) {
            if (heading != nullptr) {
                column->addSpacing(10);
            }
            group = entry.group;
            heading = new QLabel(desk.texts.text(group), inside);
            QFont bold = heading->font();
            bold.setBold(true);
            heading->setFont(bold);
            column->addWidget(heading);
        }
        addRow(*column, entry, heading);
    }
    column->addStretch(1);
    refresh();
}

void SettingPageForm::addRow(QVBoxLayout& column, const SettingEntry& entry, QLabel* heading)
{
    auto* box = new QWidget(widget());
    auto* line = new QHBoxLayout(box);
    line->setContentsMargins(0, 2, 0, 2);
    line->setSpacing(8);
    auto* words =
        new QLabel(saysItsWords(entry.kind) ? QString() : m_desk.texts.text(entry.text), box);
    words->setFixedWidth(fontMetrics().averageCharWidth() * kWordsWidth);
    words->setWordWrap(true);
    // On a line with what stands in the field beside it; a choice has no frame around its words.
    const int frame = entry.kind == SettingKind::Choice ? 0 : fontMetrics().height() / 2 - 1;
    words->setContentsMargins(0, frame, 0, 0);
    line->addWidget(words, 0, Qt::AlignTop);
    auto* right = new QVBoxLayout;
    right->setSpacing(3);
    line->addLayout(right, 1);
    const SettingEditor editor =
        makeSettingEditor(m_desk, entry, box, [this, &entry](const QString& value) {
            m_desk.values.set(entry, value);
            refresh();
            emit edited();
        });
    words->setBuddy(editor.widget);
    right->addWidget(editor.widget);
    if (const QString note = noteOf(m_desk.texts, entry); !note.isEmpty()) {
        auto* second = new QLabel(note, box);
        second->setProperty("second", true);
        second->setTextFormat(Qt::PlainText);
        second->setWordWrap(true);
        right->addWidget(second);
    }
    auto* reset = new QToolButton(box);
    reset->setObjectName(u"reset."_s + entry.key.toString());
    reset->setAutoRaise(true);
    reset->setIcon(m_desk.icons.icon(u"undo"_s, ThemeRole::Accent));
    const QString tip = m_desk.texts.text(u"settings.default"_s, m_desk.values.defaultWords(entry));
    reset->setToolTip(tip);
    reset->setAccessibleName(tip);
    QSizePolicy kept = reset->sizePolicy();
    kept.setRetainSizeWhenHidden(true);
    reset->setSizePolicy(kept);
    line->addWidget(reset, 0, Qt::AlignTop);
    connect(reset, &QToolButton::clicked, this, [this, &entry] {
        m_desk.values.reset(entry);
        refresh();
        emit edited();
    });
    column.addWidget(box);
    m_rows.push_back({&entry, box, heading, editor.widget, editor.show, reset});
}

void SettingPageForm::refresh()
{
    for (const Row& row : m_rows) {
        row.show();
        row.reset->setVisible(!m_desk.values.isDefault(*row.entry));
    }
}

int SettingPageForm::filter(const QString& text)
{
    int found = 0;
    for (const Row& row : m_rows) {
        row.heading->setVisible(false);
    }
    for (const Row& row : m_rows) {
        const bool isFound = m_desk.search.finds(text, *row.entry);
        row.box->setVisible(isFound);
        if (isFound) {
            row.heading->setVisible(true);
            ++found;
        }
    }
    return found;
}

void SettingPageForm::enter()
{
    for (const Row& row : m_rows) {
        if (!row.box->isHidden()) {
            row.editor->setFocus(Qt::TabFocusReason);
            ensureWidgetVisible(row.box);
            return;
        }
    }
}

} // namespace melovane
