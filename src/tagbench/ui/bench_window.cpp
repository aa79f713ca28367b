#include "tagbench/ui/bench_window.h"

#include "config/config_objects.h"
#include "config/counted_text.h"
#include "platform/db/db_error.h"
#include "platform/qt/file_dialogs.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/split_panel.h"
#include "platform/system/timers.h"
#include "tagbench/ui/bench_grid_panel.h"
#include "tagbench/ui/bench_pages.h"
#include "tagbench/ui/common_form.h"
#include "tagbench/ui/cover_row.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Size of the window in letters and lines, at first.
constexpr int kWidth = 190;
constexpr int kHeight = 56;

/// A window that is narrower, in pixels, has the form under the grid.
constexpr int kNarrow = 1100;

/// Of the grid beside the form, in thousandths.
constexpr int kGridShare = 740;

/// Lines of a report that a message shows.
constexpr int kShownLines = 12;

QPushButton* makeButton(const QString& name, const QString& caption, QWidget* parent)
{
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

} // namespace

BenchWindow::BenchWindow(const Skin& skin,
                         const IconSet& icons,
                         BenchSession& session,
                         MessageLoop& loop,
                         const NoteColours& colours)
    : m_session(session)
    , m_loop(loop)
    , m_content(new QWidget(this))
{
    setObjectName(u"BenchWindow"_s);
    setWindowFlags(Qt::Window);
    setWindowTitle(session.title());
    m_grid = new BenchGridPanel(skin, icons, session, colours, m_content);
    m_form = new CommonForm(skin, icons, session, m_content);
    m_pages = new BenchPages(
        skin, icons, session, [this] { return m_grid->chosen(); }, m_content);
    m_above = new SplitPanel(Qt::Horizontal, m_content);
    m_above->addWidget(m_grid);
    m_above->addWidget(m_form);
    m_above->setPosition(kGridShare);
    auto* all = new SplitPanel(Qt::Vertical, m_content);
    all->addWidget(m_above);
    all->addWidget(m_pages);
    all->setPosition(640);
    auto* inside = new QVBoxLayout(m_content);
    inside->setContentsMargins(5, 5, 5, 5);
    inside->addWidget(all);
    m_content->setObjectName(u"Frame"_s);
    m_content->setAttribute(Qt::WA_StyledBackground);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_content, 1);
    buildDialogs();
    buildFooter(*column, icons);
    const QSize wanted(fontMetrics().averageCharWidth() * kWidth,
                       fontMetrics().lineSpacing() * kHeight);
    const QRect area = screen()->availableGeometry();
    resize(wanted.boundedTo(area.size() * 9 / 10));
    // The place of a dialog by itself knows no title bar: on a low screen that lay above the edge.
    constexpr int kShareAbove = 4;
    move(area.center().x() - width() / 2, area.top() + (area.height() - height()) / kShareAbove);
    connect(&session.tracks(), &BenchTracks::changed, this, &BenchWindow::showState);
    connect(m_grid, &BenchGridPanel::chosenChanged, this, [this] {
        m_form->setChosen(m_grid->chosen());
        m_pages->refresh();
    });
    connect(m_grid, &BenchGridPanel::folderWanted, this, [this] {
        const QString folder = chooseFolder(this);
        addPlaces(folder.isEmpty() ? QStringList() : QStringList{folder});
    });
    connect(m_grid, &BenchGridPanel::told, this,
            [this](const QString& text) { m_progressText->setText(text); });
    connect(m_grid, &BenchGridPanel::filesWanted, this, [this] { addPlaces(chooseFiles(this)); });
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto* apply = new QShortcut(QKeySequence(Qt::CTRL | key), this);
        connect(apply, &QShortcut::activated, this, &BenchWindow::apply);
    }
    showState();
}

void BenchWindow::buildDialogs()
{
    const ConfigObjects& texts = m_session.texts();
    chooseFolder = [&texts](QWidget* owner) {
        return askFolder(owner, texts.text(u"bench.addfolder"));
    };
    chooseFiles = [&texts](QWidget* owner) {
        return askFiles(owner, texts.text(u"bench.addfiles"), {},
                        texts.text(u"bench.files.kind") + u" (*.mp3 *.MP3)"_s);
    };
    choosePicture = [&texts](QWidget* owner, const QString& folder) {
        return askFile(owner, texts.text(u"edittag.image.title"), folder,
                       texts.text(u"edittag.image.kind") + u" (*.bmp *.jpg *.jpeg *.gif *.png)"_s);
    };
    m_form->cover().choosePicture = [this](const QString& folder) {
        return choosePicture(this, folder);
    };
    connect(&m_form->cover(), &CoverRow::failed, this,
            [this](const QString& text) { m_progressText->setText(text); });
    ask = [this](QWidget* owner, const QString& question) {
        return QMessageBox::question(owner, m_session.title(), question) == QMessageBox::Yes;
    };
    tell = [this](QWidget* owner, const QStringList& lines) {
        QMessageBox box(QMessageBox::Warning, m_session.title(), lines.first(), QMessageBox::Ok,
                        owner);
        box.setTextFormat(Qt::PlainText);
        QStringList shown = lines.mid(1, kShownLines);
        if (lines.size() > kShownLines + 1) {
            shown.append(u"…"_s);
        }
        box.setInformativeText(shown.join(u'\n'));
        box.setDetailedText(lines.mid(1).join(u'\n'));
        box.exec();
    };
}

void BenchWindow::buildFooter(QVBoxLayout& column, const IconSet& icons)
{
    const ConfigObjects& texts = m_session.texts();
    auto* footer = new QWidget(this);
    footer->setObjectName(u"StatusBar1"_s);
    footer->setAttribute(Qt::WA_StyledBackground);
    auto* row = new QHBoxLayout(footer);
    row->setContentsMargins(2, 8, 14, 8);
    m_changes = new QLabel(footer);
    m_changes->setObjectName(u"lblChanges"_s);
    m_changes->setTextFormat(Qt::PlainText);
    m_progressText = new QLabel(footer);
    m_progressText->setObjectName(u"lblProgress"_s);
    m_progressText->setTextFormat(Qt::PlainText);
    m_progress = new QProgressBar(footer);
    m_progress->setObjectName(u"ProgressBar1"_s);
    m_progress->setTextVisible(false);
    m_progress->setFixedWidth(fontMetrics().averageCharWidth() * 24);
    m_progress->hide();
    m_undo = makeButton(u"cmdUndoStep"_s, texts.text(u"bench.undo"), footer);
    m_undo->setIcon(icons.icon(u"undo"_s));
    m_cancel = makeButton(u"cmdCancel"_s, texts.text(u"bench.close"), footer);
    m_apply = makeButton(u"cmdApply"_s, texts.text(u"bench.apply"), footer);
    m_apply->setToolTip(texts.text(u"bench.apply.tip"));
    row->addWidget(m_changes);
    row->addStretch(1);
    row->addWidget(m_progressText);
    row->addWidget(m_progress);
    row->addSpacing(12);
    for (QPushButton* button : {m_undo, m_cancel, m_apply}) {
        row->addWidget(button);
    }
    column.addWidget(footer);
    connect(m_undo, &QPushButton::clicked, &m_session.tracks(), &BenchTracks::undo);
    connect(m_cancel, &QPushButton::clicked, this, &BenchWindow::reject);
    connect(m_apply, &QPushButton::clicked, this, &BenchWindow::apply);
}

QString BenchWindow::unreadText(const DbError& error) const
{
    return m_session.texts().text(u"bench.unread"_s, error.text());
}

void BenchWindow::load()
{
    try {
        m_form->loadChoices();
        m_grid->setGenres(m_session.genres());
        m_session.load();
    } catch (const DbError& error) {
        m_progressText->setText(unreadText(error));
    }
    m_grid->selectAll();
    m_grid->focusRows();
    showState();
}

void BenchWindow::addPlaces(const QStringList& places)
{
    if (places.isEmpty() || m_isWorking) {
        return;
    }
    setWorking(true);
    QString said;
    try {
        m_session.addFiles(places, [this](int done, int size) {
            const ConfigObjects& texts = m_session.texts();
            return goOn(size == 0 ? texts.text(u"bench.walking")
                                  : texts.text(u"bench.reading"_s, done, size),
                        done, size);
        });
        said = m_session.addedText();
    } catch (const DbError& error) {
        said = unreadText(error);
    }
    setWorking(false);
    m_progressText->setText(said);
    m_grid->selectAll();
}

void BenchWindow::apply()
{
    if (m_isWorking || !m_session.canApply()) {
        return;
    }
    // What is still being typed in a cell belongs to it.
    m_apply->setFocus();
    const QString reason = m_session.whyNotNow ? m_session.whyNotNow() : QString();
    if (!reason.isEmpty()) {
        m_progressText->setText(reason);
        tell(this, {reason});
        return;
    }
    setWorking(true);
    QStringList lines;
    bool isComplete = false;
    try {
        const BenchOutcome outcome =
            m_session.apply(m_pages->removesEmptyFolders(), [this](int done, int size) {
                return goOn(m_session.texts().text(u"bench.progress"_s, done, size), done, size);
            });
        lines = m_session.outcomeLines(outcome);
        isComplete = !outcome.isCancelled && outcome.problems.empty();
    } catch (const DbError& error) {
        lines.append(m_session.texts().text(u"bench.failed"_s, error.text()));
    }
    setWorking(false);
    m_progressText->setText(lines.first());
    if (!isComplete && !m_isCancelled) {
        tell(this, lines);
    }
}

bool BenchWindow::goOn(const QString& text, int done, int size)
{
    m_progressText->setText(text);
    m_progress->setRange(0, size);
    m_progress->setValue(done);
    m_loop.turn();
    return !m_isCancelled;
}

void BenchWindow::setWorking(bool on)
{
    m_isWorking = on;
    if (on) {
        m_isCancelled = false;
    }
    m_content->setEnabled(!on);
    m_progress->setVisible(on);
    showState();
}

void BenchWindow::showState()
{
    const ConfigObjects& texts = m_session.texts();
    const BenchTracks& tracks = m_session.tracks();
    m_changes->setText(countedText(texts, u"bench.changes"_s, tracks.changedCells()) + u' ' +
                       countedText(texts, u"bench.changes.in"_s, tracks.changedTracks()));
    setWindowTitle(m_session.title() + u" – "_s +
                   texts.text(u"bench.form.count"_s, tracks.count()));
    m_undo->setEnabled(!m_isWorking && tracks.canUndo());
    m_apply->setEnabled(!m_isWorking && m_session.canApply());
    m_apply->setDefault(m_apply->isEnabled());
    m_cancel->setText(texts.text(m_isWorking ? u"bench.cancel"_s : u"bench.close"_s));
}

void BenchWindow::reject()
{
    if (m_isWorking) {
        m_isCancelled = true;
        return;
    }
    if (m_session.tracks().changedCells() == 0 ||
        ask(this, m_session.texts().text(u"bench.discard"))) {
        QDialog::reject();
    }
}

void BenchWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QDialog::keyPressEvent(event);
    }
}

/// Beside the grid while there is room, else folded in below it.
void BenchWindow::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    const bool isNarrow = width() < kNarrow;
    if (isNarrow != (m_above->orientation() == Qt::Vertical)) {
        m_above->setOrientation(isNarrow ? Qt::Vertical : Qt::Horizontal);
        m_form->setFolding(isNarrow);
        m_above->setPosition(isNarrow ? 500 : kGridShare);
    }
}

void BenchWindow::closeEvent(QCloseEvent* event)
{
    reject();
    if (isVisible()) {
        event->ignore();
    }
}

} // namespace melovane
