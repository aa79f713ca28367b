#include "care/ui/doubles_window.h"

#include "care/ui/care_parts.h"
#include "config/config_objects.h"
#include "config/counted_text.h"
#include "platform/db/db_error.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/panel.h"
#include "platform/system/timers.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Size of the window in letters and lines, at first.
constexpr int kWidth = 190;
constexpr int kHeight = 36;

/// How often the progress of the other thread is shown.
constexpr std::chrono::milliseconds kProgress{100};

QCheckBox* makeBox(const QString& name, const QString& caption, QWidget* parent)
{
    auto* box = new QCheckBox(caption, parent);
    box->setObjectName(name);
    return box;
}

} // namespace

DoublesWindow::DoublesWindow(const Skin& skin,
                             const IconSet& icons,
                             Doubles& doubles,
                             const ConfigObjects& texts,
                             MessageLoop& loop,
                             QWidget* parent)
    : QDialog(parent)
    , m_doubles(doubles)
    , m_texts(texts)
    , m_loop(loop)
    , m_rows(doubles, texts)
    , m_timer(loop.makeTimer(kProgress, [this] { showProgress(); }))
{
    setObjectName(u"DoublesWindow"_s);
    setWindowFlags(Qt::Window);
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(texts.text(u"double.title"_s));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    buildHead(*column, icons);
    auto* panel = new Panel(skin, this);
    m_grid =
        careparts::makeGrid(u"TDBGridDoubles"_s, texts.text(u"double.title"_s), skin, icons, panel);
    m_grid->setSource(m_rows, m_rows, m_rows.columns());
    panel->setView(m_grid);
    column->addWidget(panel, 1);
    buildFooter(*column);
    connect(m_grid, &DataGrid::spacePressed, this, [this] { choose(m_grid->currentRow()); });
    connect(m_grid, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
        if (index.column() == DoubleRows::kState) {
            choose(index.row());
        }
    });
    doubles.changed = [this] { showGroups(); };
    const QSize wanted(fontMetrics().averageCharWidth() * kWidth,
                       fontMetrics().lineSpacing() * kHeight);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
    m_search->setFocus();
    showGroups();
}

DoublesWindow::~DoublesWindow()
{
    m_doubles.changed = {};
}

void DoublesWindow::buildHead(QVBoxLayout& column, const IconSet& icons)
{
    auto* row = new QHBoxLayout;
    const int line = fontMetrics().height();
    row->setContentsMargins(line, line * 2 / 3, line, line * 2 / 3);
    row->setSpacing(line * 2 / 3);
    m_sentence = careparts::makeLabel(u"lblSentence"_s, this);
    m_sound = makeBox(u"checkSound"_s, m_texts.text(u"double.search.audio"_s), this);
    m_names = makeBox(u"checkNames"_s, m_texts.text(u"double.search.names"_s), this);
    m_sound->setChecked(true);
    m_names->setChecked(true);
    m_search = careparts::makeButton(u"cmdSearch"_s, m_texts.text(u"double.search"_s), this);
    m_search->setIcon(icons.icon(u"search"_s));
    row->addWidget(m_sentence, 1);
    for (QWidget* const widget : std::initializer_list<QWidget*>{m_sound, m_names, m_search}) {
        row->addWidget(widget);
    }
    column.addLayout(row);
    connect(m_search, &QPushButton::clicked, this, &DoublesWindow::search);
    connect(m_sound, &QCheckBox::toggled, this, &DoublesWindow::showState);
    connect(m_names, &QCheckBox::toggled, this, &DoublesWindow::showState);
}

void DoublesWindow::buildFooter(QVBoxLayout& column)
{
    auto* footer = new QWidget(this);
    footer->setObjectName(u"StatusBar1"_s);
    footer->setAttribute(Qt::WA_StyledBackground);
    auto* row = new QHBoxLayout(footer);
    row->setContentsMargins(14, 8, 14, 8);
    m_recycle = makeBox(u"checkRecycle"_s, m_texts.text(u"double.recycle"_s), footer);
    m_recycle->setToolTip(m_texts.text(u"double.recycle.tip"_s));
    m_told = careparts::makeLabel(u"lblTold"_s, footer, true);
    m_told->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_progress = careparts::makeProgress(footer);
    m_cancel = careparts::makeButton(u"cmdAbbruch"_s, m_texts.text(u"find.close"_s), footer);
    m_merge = careparts::makeButton(u"cmdMerge"_s, m_texts.text(u"double.merge"_s), footer);
    row->addWidget(m_recycle);
    row->addSpacing(12);
    row->addWidget(m_told, 1);
    row->addWidget(m_progress);
    row->addSpacing(12);
    row->addWidget(m_cancel);
    row->addWidget(m_merge);
    column.addWidget(footer);
    connect(m_cancel, &QPushButton::clicked, this, &DoublesWindow::reject);
    connect(m_merge, &QPushButton::clicked, this, &DoublesWindow::merge);
}

void DoublesWindow::search()
{
    const unsigned kinds = (m_sound->isChecked() ? unsigned(DoubleKind::Sound) : 0U) |
                           (m_names->isChecked() ? unsigned(DoubleKind::Names) : 0U);
    m_outcome.clear();
    m_hasSearched = true;
    m_doubles.search(kinds);
}

/// The groups are others, or something goes on.
void DoublesWindow::showGroups()
{
    if (m_doubles.isWorking()) {
        m_timer->start();
    } else {
        m_timer->stop();
        m_rows.show();
        if (m_rows.rowCount() > 0) {
            m_grid->goToRow(0, 0);
            m_grid->focus();
        }
    }
    showState();
}

QString DoublesWindow::sentence() const
{
    if (!m_doubles.failure().isEmpty()) {
        return m_texts.text(u"find.failed"_s, m_doubles.failure());
    }
    const qint64 groups = qint64(m_doubles.groups().size());
    if (groups > 0) {
        return countedText(m_texts, u"double.groups"_s, groups, m_doubles.spareCount());
    }
    const bool isSearched = m_hasSearched && !m_doubles.isWorking();
    return m_texts.text(isSearched ? u"double.none"_s : u"double.hint"_s);
}

void DoublesWindow::showState()
{
    const bool isReady = !m_doubles.isWorking() && !m_isWriting;
    const int going = m_doubles.goingCount();
    m_sentence->setText(sentence());
    if (isReady) {
        m_told->setText(!m_outcome.isEmpty() ? m_outcome
                        : going > 0          ? countedText(m_texts, u"double.chosen"_s, going)
                                             : QString());
    }
    m_search->setEnabled(isReady && (m_sound->isChecked() || m_names->isChecked()));
    m_sound->setEnabled(isReady);
    m_names->setEnabled(isReady);
    m_grid->setEnabled(isReady);
    m_recycle->setEnabled(isReady);
    m_merge->setEnabled(isReady && going > 0);
    m_progress->setVisible(!isReady);
    m_cancel->setText(m_texts.text(isReady ? u"find.close"_s : u"find.cancel"_s));
}

void DoublesWindow::showProgress()
{
    const auto [done, size] = m_doubles.progress();
    m_progress->setRange(0, size);
    m_progress->setValue(done);
    m_told->setText(size > 0 ? m_texts.text(u"double.searching"_s, done, size) : QString());
}

/// The row stays and the others of its group go; once more on the one that stays, and the group is
/// left as it is.
void DoublesWindow::choose(qint64 row)
{
    const auto place = m_rows.at(row);
    if (!place || m_doubles.isWorking()) {
        return;
    }
    const DoubleGroup& group = m_doubles.groups()[size_t(place->group)];
    const bool isKept = group.kept == place->track;
    m_doubles.choose(place->group, !(isKept && group.isChosen));
    m_doubles.keep(place->group, place->track);
    m_outcome.clear();
    m_rows.showChoice();
    showState();
}

bool DoublesWindow::goOn(int done, int size)
{
    m_progress->setRange(0, size);
    m_progress->setValue(done);
    m_loop.turn();
    return !m_isCancelled;
}

void DoublesWindow::merge()
{
    m_outcome = whyNotNow ? whyNotNow() : QString();
    if (!m_outcome.isEmpty()) {
        showState();
        return;
    }
    m_isWriting = true;
    m_isCancelled = false;
    showState();
    int removed = 0;
    try {
        const MergeResult result = m_doubles.merge(
            m_recycle->isChecked(), [this](int done, int size) { return goOn(done, size); });
        removed = result.removed;
        if (!result.isCancelled) {
            m_outcome = result.left == 0
                            ? countedText(m_texts, u"double.done"_s, removed)
                            : m_texts.text(u"double.done.left"_s, removed, result.left);
        }
    } catch (const DbError& error) {
        m_outcome = m_texts.text(u"find.failed"_s, error.text());
    }
    m_isWriting = false;
    if (removed > 0 && whenWritten) {
        whenWritten();
    }
    showState();
}

void DoublesWindow::reject()
{
    if (m_isWriting) {
        m_isCancelled = true;
    } else if (m_doubles.isWorking()) {
        m_doubles.cancel();
    } else {
        QDialog::reject();
    }
}

} // namespace melovane
