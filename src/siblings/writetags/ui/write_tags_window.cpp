#include "siblings/writetags/ui/write_tags_window.h"

#include "config/config_objects.h"
#include "platform/system/readable_name.h"
#include "siblings/writetags/write_report.h"
#include "siblings/writetags/write_tags.h"
#include "trackedit/unwritten_tags.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Files between two looks at keyboard and mouse: few enough that the window feels alive when each
/// of them has to be copied.
constexpr int kFilesPerStep = 8;
/// Letters of a path in a row.
constexpr qsizetype kMaxShown = 400;

/// \param key the name of its caption; with ".tip" behind it that of its tool tip
QPushButton*
makeButton(const ConfigObjects& texts, QWidget* parent, const QString& name, const QString& key)
{
    auto* button = new QPushButton(texts.text(key), parent);
    button->setObjectName(name);
    button->setToolTip(texts.text(key + u".tip"_s));
    return button;
}

} // namespace

WriteTagsWindow::WriteTagsWindow(WriteTags& work,
                                 const ConfigObjects& texts,
                                 QString database,
                                 QWidget* parent)
    : QDialog(parent)
    , m_work(work)
    , m_texts(texts)
    , m_database(std::move(database))
    , m_progress(new QProgressBar(this))
    , m_progressText(new QLabel(this))
    , m_file(new QLabel(this))
    , m_summary(new QLabel(this))
    , m_report(new QTreeWidget(this))
    , m_cancel(makeButton(texts, this, u"cmdCancel"_s, u"writetags.cancel"_s))
    , m_close(makeButton(texts, this, u"cmdClose"_s, u"writetags.close"_s))
{
    setObjectName(u"WriteTagsWindow"_s);
    setWindowTitle(texts.text(u"writetags.title"));
    build();
    arrange();
    m_worker.setInterval(0);
    connect(&m_worker, &QTimer::timeout, this, &WriteTagsWindow::work);
    connect(m_cancel, &QPushButton::clicked, this, &WriteTagsWindow::cancel);
    connect(m_close, &QPushButton::clicked, this, &WriteTagsWindow::close);
}

void WriteTagsWindow::build()
{
    m_progress->setObjectName(u"ProgressBar1"_s);
    m_progress->setAccessibleName(m_texts.text(u"writetags.progressbar"));
    m_progress->setTextVisible(false);
    m_progressText->setObjectName(u"lblProgress"_s);
    m_file->setObjectName(u"lblFile"_s);
    m_file->setTextFormat(Qt::PlainText);
    m_file->setForegroundRole(QPalette::PlaceholderText);
    // A long name must not widen the window.
    m_file->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    m_summary->setObjectName(u"lblSummary"_s);
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setWordWrap(true);
    m_summary->hide();
    m_report->setObjectName(u"lstReport"_s);
    m_report->setAccessibleName(m_texts.text(u"writetags.report"));
    m_report->setToolTip(m_texts.text(u"writetags.report.tip"));
    m_report->setHeaderLabels(
        {m_texts.text(u"writetags.report.file"), m_texts.text(u"writetags.report.reason")});
    m_report->setRootIsDecorated(false);
    m_report->setUniformRowHeights(true);
    m_report->setAlternatingRowColors(true);
    m_report->setTextElideMode(Qt::ElideMiddle);
    m_report->header()->setStretchLastSection(false);
    m_report->header()->setSectionResizeMode(QHeaderView::Stretch);
    m_report->hide();
    m_cancel->setDefault(true);
    m_close->hide();
}

void WriteTagsWindow::arrange()
{
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_cancel);
    buttons->addWidget(m_close);

    auto* all = new QVBoxLayout(this);
    all->addWidget(m_progress);
    all->addWidget(m_progressText);
    all->addWidget(m_file);
    all->addWidget(m_summary);
    all->addWidget(m_report, 1);
    // Takes the room that the list leaves while it is hidden.
    all->addStretch();
    all->addLayout(buttons);

    const QFontMetrics metrics(font());
    resize(metrics.averageCharWidth() * 80, metrics.height() * 10);
}

void WriteTagsWindow::start()
{
    m_worker.start();
    showProgress();
}

void WriteTagsWindow::work()
{
    if (m_work.step(kFilesPerStep)) {
        showProgress();
        return;
    }
    m_worker.stop();
    m_over = true;
    showProgress();
    if (whenOver) {
        whenOver();
    }
    // Started out of sight, it has nobody to read a report.
    if (m_work.report().isComplete() || isHidden()) {
        close();
    } else {
        showReport();
    }
}

void WriteTagsWindow::cancel()
{
    m_work.cancel();
}

void WriteTagsWindow::reject()
{
    if (m_over) {
        QDialog::reject();
    } else {
        cancel();
    }
}

void WriteTagsWindow::showProgress()
{
    m_progress->setRange(0, int(m_work.total()));
    m_progress->setValue(int(m_work.done()));
    m_progressText->setText(m_texts.text(u"writetags.progress", m_work.done(), m_work.total()));
    m_file->setText(m_file->fontMetrics().elidedText(
        readableName(shortened(m_work.file(), kMaxShown)), Qt::ElideMiddle, m_file->width()));
}

void WriteTagsWindow::showReport()
{
    const WriteTagsReport& report = m_work.report();
    m_summary->setText(summary(m_texts, report, m_database));
    QList<QTreeWidgetItem*> rows;
    for (const UnwrittenFile& file : report.failures) {
        const QString path = readableName(shortened(file.path, kMaxShown));
        auto* row = new QTreeWidgetItem({path, unwrittenReason(m_texts, file.fault, file.detail)});
        row->setToolTip(0, path.toHtmlEscaped());
        row->setToolTip(1, row->text(1).toHtmlEscaped());
        rows.append(row);
    }
    m_report->addTopLevelItems(rows);
    m_progress->hide();
    m_progressText->hide();
    m_file->hide();
    m_cancel->hide();
    m_summary->show();
    m_report->setVisible(!rows.isEmpty());
    m_close->show();
    m_close->setDefault(true);
    m_close->setFocus();
    const QFontMetrics metrics(font());
    resize(width(), metrics.height() * (rows.isEmpty() ? 10 : 24));
    // It was started minimised, and there is something to be read now.
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

} // namespace melovane
