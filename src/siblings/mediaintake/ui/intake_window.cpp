#include "siblings/mediaintake/ui/intake_window.h"

#include "config/config_objects.h"
#include "intake/intake_session.h"
#include "platform/qt/file_dialogs.h"
#include "platform/system/readable_name.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QStandardPaths>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <chrono>

namespace melovane {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Work between two looks at keyboard and mouse: short enough that the window feels alive.
constexpr auto kStep = 40ms;

/// Letters of a path or reason in a row and its tool tip: a wrong path may have a million.
constexpr qsizetype kMaxShown = 400;

/// \param key the name of its caption; with ".tip" behind it that of its tool tip
QPushButton*
makeButton(const ConfigObjects& texts, QWidget* parent, const QString& name, const QString& key)
{
    auto* button = new QPushButton(texts.text(key), parent);
    button->setObjectName(name);
    button->setToolTip(texts.text(key + u".tip"_s));
    button->setAutoDefault(false);
    return button;
}

} // namespace

IntakeWindow::IntakeWindow(IntakeSession& session, QWidget* parent)
    : QDialog(parent)
    , chooseFolder([this](QWidget* owner, const QString& from) {
        return askFolder(owner, m_texts.text(u"intake.choose"), from);
    })
    , m_session(session)
    , m_texts(session.texts())
    , m_folderPanel(new QWidget(this))
    , m_folders(new QListWidget(m_folderPanel))
    , m_noFolder(new QLabel(m_folders->viewport()))
    , m_found(new QLabel(this))
    , m_progress(new QProgressBar(this))
    , m_progressText(new QLabel(this))
    , m_file(new QLabel(this))
    , m_summary(new QLabel(this))
    , m_report(new QTreeWidget(this))
{
    setObjectName(u"IntakeWindow"_s);
    setWindowTitle(session.title());
    buildFolders();
    buildProgress();
    buildReport();
    buildButtons();
    arrange();
    m_worker.setInterval(0);
    connect(&m_worker, &QTimer::timeout, this, &IntakeWindow::work);
    m_looker.setInterval(0);
    connect(&m_looker, &QTimer::timeout, this, &IntakeWindow::look);
    showFolders();
    showState();
}

void IntakeWindow::buildFolders()
{
    m_folders->setObjectName(u"lstFolders"_s);
    m_folders->setAccessibleName(m_texts.text(u"intake.folders"));
    m_folders->setToolTip(m_texts.text(u"intake.folders.tip"));
    m_folders->setTextElideMode(Qt::ElideMiddle);
    m_noFolder->setObjectName(u"lblNoFolder"_s);
    m_noFolder->setText(m_texts.text(u"intake.folders.none"));
    m_noFolder->setAlignment(Qt::AlignCenter);
    m_noFolder->setWordWrap(true);
    m_noFolder->setForegroundRole(QPalette::PlaceholderText);
    m_noFolder->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_found->setObjectName(u"lblFound"_s);
    m_found->setTextFormat(Qt::PlainText);
    m_found->setWordWrap(true);
    auto* inside = new QVBoxLayout(m_folders->viewport());
    inside->addWidget(m_noFolder);
    m_add = makeButton(m_texts, m_folderPanel, u"cmdAddFolder"_s, u"intake.add"_s);
    m_remove = makeButton(m_texts, m_folderPanel, u"cmdRemoveFolder"_s, u"intake.remove"_s);
    connect(m_add, &QPushButton::clicked, this, &IntakeWindow::addFolder);
    connect(m_remove, &QPushButton::clicked, this, &IntakeWindow::removeFolder);
    connect(m_folders, &QListWidget::currentRowChanged, this, &IntakeWindow::showState);
}

void IntakeWindow::buildProgress()
{
    m_progress->setObjectName(u"ProgressBar1"_s);
    m_progress->setAccessibleName(m_texts.text(u"intake.progress"));
    m_progress->setTextVisible(false);
    m_progressText->setObjectName(u"lblProgress"_s);
    m_file->setObjectName(u"lblFile"_s);
    m_file->setTextFormat(Qt::PlainText);
    m_file->setForegroundRole(QPalette::PlaceholderText);
    // A long name must not widen the window.
    m_file->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void IntakeWindow::buildReport()
{
    m_summary->setObjectName(u"lblSummary"_s);
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setWordWrap(true);
    m_report->setObjectName(u"lstReport"_s);
    m_report->setAccessibleName(m_texts.text(u"intake.report"));
    m_report->setToolTip(m_texts.text(u"intake.report.tip"));
    m_report->setHeaderLabels(
        {m_texts.text(u"intake.report.file"), m_texts.text(u"intake.report.reason")});
    m_report->setRootIsDecorated(false);
    m_report->setUniformRowHeights(true);
    m_report->setAlternatingRowColors(true);
    m_report->setTextElideMode(Qt::ElideMiddle);
    m_report->header()->setStretchLastSection(false);
    // As wide as their texts, one of them would push the other out of the window.
    m_report->header()->setSectionResizeMode(QHeaderView::Stretch);
}

void IntakeWindow::buildButtons()
{
    m_start = makeButton(m_texts, this, u"cmdStart"_s, u"intake.start"_s);
    m_cancel = makeButton(m_texts, this, u"cmdCancel"_s, u"intake.cancel"_s);
    m_close = makeButton(m_texts, this, u"cmdClose"_s, u"intake.close"_s);
    connect(m_start, &QPushButton::clicked, this, &IntakeWindow::start);
    connect(m_cancel, &QPushButton::clicked, this, &IntakeWindow::cancel);
    connect(m_close, &QPushButton::clicked, this, &IntakeWindow::close);
}

void IntakeWindow::arrange()
{
    auto* hint = new QLabel(m_session.hint(), this);
    hint->setObjectName(u"lblHint"_s);
    hint->setWordWrap(true);

    auto* folderButtons = new QVBoxLayout;
    folderButtons->addWidget(m_add);
    folderButtons->addWidget(m_remove);
    folderButtons->addStretch();
    auto* folderRow = new QHBoxLayout(m_folderPanel);
    folderRow->setContentsMargins(0, 0, 0, 0);
    folderRow->addWidget(m_folders, 1);
    folderRow->addLayout(folderButtons);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_start);
    buttons->addWidget(m_cancel);
    buttons->addWidget(m_close);

    auto* all = new QVBoxLayout(this);
    all->addWidget(hint);
    all->addWidget(m_folderPanel, 1);
    all->addWidget(m_found);
    all->addWidget(m_progress);
    all->addWidget(m_progressText);
    all->addWidget(m_file);
    all->addWidget(m_summary);
    all->addWidget(m_report, 2);
    // Takes the room that the two lists leave while they are hidden.
    all->addStretch();
    all->addLayout(buttons);

    const QFontMetrics metrics(font());
    resize(metrics.averageCharWidth() * 100, metrics.height() * 26);
}

void IntakeWindow::greet(QWidget* panel)
{
    static_cast<QVBoxLayout*>(layout())->insertWidget(0, panel);
    setTabOrder(panel, m_folders);
}

void IntakeWindow::addFolder()
{
    const QString known = m_session.suggestedFolder();
    const QString from =
        known.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::MusicLocation) : known;
    const QString folder = chooseFolder(this, from);
    if (m_session.addFolder(folder)) {
        m_summary->clear(); // the report was about other folders
        showFolders();
        m_folders->setCurrentRow(m_folders->count() - 1);
        m_start->setFocus();
    }
}

void IntakeWindow::removeFolder()
{
    m_session.removeFolder(m_folders->currentRow());
    showFolders();
}

/// Names alone are read: a user sees whether he has chosen the right folders before he starts.
void IntakeWindow::look()
{
    if (!m_session.look(kStep)) {
        m_looker.stop();
    }
    m_found->setText(m_session.lookText());
}

void IntakeWindow::start()
{
    m_looker.stop();
    m_summary->clear();
    m_report->clear();
    m_session.start();
    if (m_session.isRunning()) {
        m_worker.start();
    }
    showState();
    showProgress();
}

void IntakeWindow::work()
{
    if (!m_session.step(kStep)) {
        m_worker.stop();
        showReport();
        showState();
    }
    showProgress();
}

void IntakeWindow::cancel()
{
    m_session.cancel();
    work();
}

void IntakeWindow::reject()
{
    if (m_session.isRunning()) {
        cancel();
    } else {
        QDialog::reject();
    }
}

void IntakeWindow::showFolders()
{
    m_folders->clear();
    m_folders->addItems(m_session.folders());
    m_folders->setCurrentRow(m_folders->count() - 1);
    m_found->clear();
    if (m_session.mode() == IntakeMode::NewFiles && m_folders->count() > 0) {
        m_looker.start();
    }
    showState();
}

void IntakeWindow::showState()
{
    const bool running = m_session.isRunning();
    const bool over = !running && !m_summary->text().isEmpty();
    m_folderPanel->setVisible(m_session.mode() == IntakeMode::NewFiles);
    m_folderPanel->setEnabled(!running);
    m_remove->setEnabled(m_folders->currentRow() >= 0);
    m_noFolder->setVisible(m_folders->count() == 0);
    m_found->setVisible(!running && !over);
    m_progress->setVisible(running || over);
    m_progressText->setVisible(running);
    m_file->setVisible(running);
    m_summary->setVisible(over);
    m_report->setVisible(over && m_report->topLevelItemCount() > 0);
    m_start->setEnabled(m_session.canStart());
    m_start->setVisible(!running);
    m_cancel->setVisible(running);
    m_close->setEnabled(!running);
    nextButton()->setDefault(true);
}

QPushButton* IntakeWindow::nextButton() const
{
    if (m_session.isRunning()) {
        return m_cancel;
    }
    if (!m_summary->text().isEmpty()) {
        return m_close;
    }
    return m_session.canStart() ? m_start : m_add;
}

void IntakeWindow::showProgress()
{
    const int percent = m_session.percent();
    m_progress->setRange(0, percent < 0 ? 0 : 100);
    m_progress->setValue(percent);
    m_progressText->setText(m_session.progressText());
    m_file->setText(m_file->fontMetrics().elidedText(
        readableName(shortened(m_session.currentFile(), kMaxShown)), Qt::ElideMiddle,
        m_file->width()));
}

void IntakeWindow::showReport()
{
    const IntakeReport& report = m_session.report();
    m_summary->setText(report.failure.isEmpty()
                           ? summary(m_texts, report)
                           : report.failure + u'\n' + summary(m_texts, report));
    QList<QTreeWidgetItem*> rows;
    for (const auto* list : {&report.skipped.refused, &report.duplicates}) {
        for (const Refusal& refusal : *list) {
            const QString reason = reasonText(m_texts, refusal);
            const QString path = readableName(shortened(refusal.path, kMaxShown));
            auto* row = new QTreeWidgetItem({path, shortened(reason, kMaxShown)});
            row->setToolTip(0, path.toHtmlEscaped());
            row->setToolTip(1, row->text(1).toHtmlEscaped());
            rows.append(row);
        }
    }
    m_report->clear();
    m_report->addTopLevelItems(rows);
}

} // namespace melovane
