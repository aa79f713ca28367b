#include "care/ui/backups_dialog.h"

#include "care/backup_desk.h"
#include "care/ui/care_parts.h"
#include "config/config_objects.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/skin.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

enum Column
{
    kDate,
    kSize,
    kTracks,
    kLists,
    kOccasion,
    kState
};

/// Caption of each column and its width in letters.
struct ColumnLook
{
    QStringView caption;
    int letters;
};

constexpr std::array kColumns{
    ColumnLook{u"backup.col.date", 20},     ColumnLook{u"backup.col.size", 11},
    ColumnLook{u"backup.col.tracks", 9},    ColumnLook{u"backup.col.lists", 9},
    ColumnLook{u"backup.col.occasion", 26}, ColumnLook{u"backup.col.state", 18},
};

/// Rows that are seen at once.
constexpr int kRows = 8;
constexpr int kPicture = 16;

QString countText(int count)
{
    return count < 0 ? u"–"_s : QString::number(count);
}

/// State is never told by colour alone: each has a sign of its own.
QString iconOf(BackupState state)
{
    switch (state) {
    case BackupState::Good:
        return u"shield"_s;
    case BackupState::Damaged:
        return u"warning"_s;
    case BackupState::Unchecked:
        return u"clock"_s;
    }
    return {};
}

QLabel* makeLabel(QWidget& parent, const QString& name, bool second = false)
{
    auto* label = new QLabel(&parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    if (second) {
        label->setProperty("second", true);
    }
    return label;
}

} // namespace

BackupsDialog::BackupsDialog(BackupDesk& desk, const Skin& skin, const IconSet& icons)
    : DialogFrame(u"frmBackups"_s)
    , m_desk(desk)
    , m_skin(skin)
    , m_icons(icons)
    , m_list(new QTreeWidget(this))
    , m_picture(makeLabel(*this, u"picState"_s))
    , m_state(makeLabel(*this, u"lblState"_s))
    , m_file(makeLabel(*this, u"lblFile"_s, true))
    , m_free(makeLabel(*this, u"lblFree"_s))
    , m_sum(makeLabel(*this, u"lblSum"_s, true))
    , m_settings(new QCheckBox(desk.texts().text(u"backup.settings"), this))
{
    setWindowTitle(desk.texts().text(u"backup.title"));
    QLabel* intro = makeLabel(*this, u"lblIntro"_s);
    intro->setText(desk.texts().text(u"backup.intro"));
    makeList();
    m_settings->setObjectName(u"chkSettings"_s);
    m_settings->setToolTip(desk.texts().text(u"backup.settings.tip"));
    column()->addWidget(intro);
    column()->addWidget(m_list, 1);
    column()->addLayout(makeFacts());
    column()->addWidget(m_settings);
    makeCommands();
    // A large window shows more rows.
    layout()->setSizeConstraint(QLayout::SetMinimumSize);
    fill({});
}

void BackupsDialog::makeList()
{
    m_list->setObjectName(u"lstBackups"_s);
    careparts::setGridHeads(*m_list, m_skin);
    m_list->setAccessibleName(windowTitle());
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAlternatingRowColors(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setIconSize(QSize(kPicture, kPicture));
    QStringList captions;
    for (const ColumnLook& look : kColumns) {
        captions.append(m_desk.texts().text(look.caption));
    }
    m_list->setHeaderLabels(captions);
    int width = 0;
    const int letter = fontMetrics().averageCharWidth();
    for (int index = 0; index < int(kColumns.size()); ++index) {
        m_list->setColumnWidth(index, kColumns[size_t(index)].letters * letter);
        width += kColumns[size_t(index)].letters * letter;
    }
    for (const int index : {kSize, kTracks, kLists}) {
        m_list->headerItem()->setData(index, Qt::TextAlignmentRole,
                                      int(Qt::AlignRight | Qt::AlignVCenter));
    }
    m_list->setMinimumWidth(width + fontMetrics().height() * 2);
    m_list->setMinimumHeight(fontMetrics().height() * (kRows + 2) * 3 / 2);
    connect(m_list, &QTreeWidget::currentItemChanged, this, [this] { showChosen(); });
}

QLayout* BackupsDialog::makeFacts()
{
    QFont strong = m_state->font();
    strong.setWeight(QFont::DemiBold);
    m_state->setFont(strong);
    m_file->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(fontMetrics().height());
    grid->addWidget(m_picture, 0, 0, 2, 1);
    grid->addWidget(m_state, 0, 1);
    grid->addWidget(m_file, 1, 1);
    grid->addWidget(m_free, 0, 2, Qt::AlignRight);
    grid->addWidget(m_sum, 1, 2, Qt::AlignRight);
    grid->setColumnStretch(1, 1);
    return grid;
}

void BackupsDialog::makeCommands()
{
    const ConfigObjects& texts = m_desk.texts();
    const auto add = [&](const QString& name, QStringView caption, const QString& icon) {
        QPushButton* button = addCommand(name, texts.text(caption));
        button->setIcon(m_icons.icon(icon));
        return button;
    };
    QPushButton* now = add(u"cmdNow"_s, u"backup.now", u"backup"_s);
    m_check = add(u"cmdCheck"_s, u"backup.check", u"shield"_s);
    m_restore = add(u"cmdRestore"_s, u"backup.restore", u"restore"_s);
    QPushButton* close = addButton(u"cmdClose"_s, texts.text(u"schliessen"), QDialog::Rejected);
    connect(now, &QPushButton::clicked, this, [this] { makeNow(); });
    connect(m_check, &QPushButton::clicked, this, [this] { check(); });
    connect(m_restore, &QPushButton::clicked, this, [this] { restore(); });
    setKeys(close, close);
}

void BackupsDialog::run()
{
    m_list->setFocus();
    (void)ask(QDialog::Rejected);
}

/// \param chosen name of the backup that is current again; the newest when it is gone
void BackupsDialog::fill(const QString& chosen)
{
    {
        const QSignalBlocker quiet(m_list);
        m_backups = m_desk.list();
        m_list->clear();
        for (const Backup& backup : m_backups) {
            addRow(backup);
        }
        const auto row = std::find_if(m_backups.begin(), m_backups.end(),
                                      [&](const Backup& b) { return b.name == chosen; });
        if (!m_backups.empty()) {
            m_list->setCurrentItem(
                m_list->topLevelItem(row == m_backups.end() ? 0 : int(row - m_backups.begin())));
        }
    }
    qint64 bytes = 0;
    for (const Backup& backup : m_backups) {
        bytes += backup.bytes;
    }
    m_free->setText(m_desk.freeText());
    m_sum->setText(m_desk.texts().text(u"backup.all", m_desk.sizeText(bytes)));
    showChosen();
}

void BackupsDialog::addRow(const Backup& backup)
{
    auto* item = new QTreeWidgetItem(m_list);
    item->setText(kDate, m_desk.dateText(backup.made));
    item->setText(kSize, m_desk.sizeText(backup.bytes));
    item->setText(kTracks, countText(backup.tracks));
    item->setText(kLists, countText(backup.lists));
    item->setText(kOccasion, m_desk.occasionText(backup));
    item->setText(kState, m_desk.stateText(backup));
    item->setIcon(kState, m_icons.icon(iconOf(backup.state), backup.state == BackupState::Good
                                                                 ? ThemeRole::Accent
                                                                 : ThemeRole::Text));
    for (const int index : {kSize, kTracks, kLists}) {
        item->setTextAlignment(index, Qt::AlignRight | Qt::AlignVCenter);
    }
    const bool isBeforeWork = backup.occasion != BackupOccasion::Daily &&
                              backup.occasion != BackupOccasion::ByHand &&
                              backup.occasion != BackupOccasion::Upgrade;
    if (!isBeforeWork) {
        item->setForeground(kOccasion, m_skin.theme().qcolor(ThemeRole::TextSecond));
    }
}

const Backup* BackupsDialog::chosen() const
{
    const int row = m_list->indexOfTopLevelItem(m_list->currentItem());
    return row < 0 ? nullptr : &m_backups[size_t(row)];
}

void BackupsDialog::showChosen()
{
    const Backup* backup = chosen();
    m_check->setEnabled(backup != nullptr);
    m_restore->setEnabled(backup != nullptr && backup->state != BackupState::Damaged);
    m_settings->setEnabled(m_restore->isEnabled() && !backup->isPlain());
    if (backup == nullptr) {
        m_picture->clear();
        m_state->setText(m_desk.texts().text(u"backup.none"));
        m_file->clear();
        return;
    }
    m_picture->setPixmap(
        m_icons.icon(iconOf(backup->state)).pixmap(QSize(kPicture, kPicture), devicePixelRatioF()));
    m_state->setText(m_desk.checkText(*backup));
    m_file->setText(backup->name);
}

void BackupsDialog::makeNow()
{
    if (m_desk.makeNow()) {
        fill({});
    }
}

void BackupsDialog::check()
{
    if (const Backup* backup = chosen()) {
        const QString name = backup->name;
        m_desk.check(*backup);
        fill(name);
    }
}

void BackupsDialog::restore()
{
    if (const Backup* backup = chosen()) {
        const Backup wanted = *backup;
        const bool withSettings = m_settings->isEnabled() && m_settings->isChecked();
        (void)m_desk.restore(wanted, withSettings);
        fill(wanted.name);
    }
}

} // namespace melovane
