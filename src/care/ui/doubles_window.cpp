#include "care/ui/doubles_window.h"

#include "care/ui/care_parts.h"
#include "config/config_objects.h"
#include "config/counted_text.h"
#include "platform/db/db_error.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/panel.h"
#include "platform/system/io_error.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Height of the window in lines, at first.
constexpr int kHeight = 36;

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
    : CareWindow(u"DoublesWindow"_s, texts.text(u"double.title"_s), kHeight, texts, loop, parent)
    , m_doubles(doubles)
    , m_rows(doubles, texts)
{
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
    m_recycle = makeBox(u"checkRecycle"_s, texts.text(u"double.recycle"_s), this);
    m_recycle->setToolTip(texts.text(u"double.recycle.tip"_s));
    m_merge = careparts::makeButton(u"cmdMerge"_s, texts.text(u"double.merge"_s), this);
    buildFooter(*column, m_recycle, m_merge, [this] { merge(); });
    connect(m_grid, &DataGrid::escapePressed, this, &DoublesWindow::reject);
    connect(m_grid, &DataGrid::spacePressed, this, [this] { choose(m_grid->currentRow()); });
    connect(m_grid, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
        if (index.column() == DoubleRows::kState) {
            choose(index.row());
        }
    });
    doubles.changed = [this] { showGroups(); };
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
    m_sound = makeBox(u"checkSound"_s, texts().text(u"double.search.audio"_s), this);
    m_names = makeBox(u"checkNames"_s, texts().text(u"double.search.names"_s), this);
    m_sound->setChecked(true);
    m_names->setChecked(true);
    m_search = careparts::makeButton(u"cmdSearch"_s, texts().text(u"double.search"_s), this);
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
    followWork(m_doubles.isWorking());
    if (!m_doubles.isWorking()) {
        m_rows.show();
    }
    showState();
    if (!m_doubles.isWorking() && m_rows.rowCount() > 0) {
        m_grid->goToRow(0, 0);
        m_grid->focus(); // it was off while something went on
    }
}

QString DoublesWindow::sentence() const
{
    if (!m_doubles.failure().isEmpty()) {
        return texts().text(u"find.failed"_s, m_doubles.failure());
    }
    const qint64 groups = qint64(m_doubles.groups().size());
    if (groups > 0) {
        return countedText(texts(), u"double.groups"_s, groups, m_doubles.spareCount());
    }
    const bool isSearched = m_hasSearched && !m_doubles.isWorking();
    return texts().text(isSearched ? u"double.none"_s : u"double.hint"_s);
}

void DoublesWindow::showState()
{
    const bool isReady = !m_doubles.isWorking() && !isWriting();
    const int going = m_doubles.goingCount();
    m_sentence->setText(sentence());
    if (isReady) {
        tell(!m_outcome.isEmpty() ? m_outcome
             : going > 0          ? countedText(texts(), u"double.chosen"_s, going)
                                  : QString());
    }
    m_search->setEnabled(isReady && (m_sound->isChecked() || m_names->isChecked()));
    m_sound->setEnabled(isReady);
    m_names->setEnabled(isReady);
    m_grid->setEnabled(isReady);
    m_recycle->setEnabled(isReady);
    m_merge->setEnabled(isReady && going > 0);
    (m_merge->isEnabled() ? m_merge : m_search)->setDefault(true);
    showReady(isReady);
}

void DoublesWindow::showProgress()
{
    const auto [done, size] = m_doubles.progress();
    setProgress(done, size);
    tell(size > 0 ? texts().text(u"double.searching"_s, done, size) : QString());
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

void DoublesWindow::merge()
{
    m_outcome.clear();
    if (!beginWriting()) {
        return;
    }
    int removed = 0;
    try {
        const MergeResult result = m_doubles.merge(
            m_recycle->isChecked(), [this](int done, int size) { return goOn(done, size); });
        removed = result.removed;
        if (!result.isCancelled) {
            m_outcome = result.left == 0
                            ? countedText(texts(), u"double.done"_s, removed)
                            : texts().text(u"double.done.left"_s, removed, result.left);
        }
    } catch (const DbError& error) {
        m_outcome = texts().text(u"find.failed"_s, error.text());
    } catch (const IoError& error) {
        m_outcome = texts().text(u"find.failed"_s, error.path() + u": "_s + error.reason());
    }
    endWriting();
    if (removed > 0 && whenWritten) {
        whenWritten();
    }
    showState();
}

bool DoublesWindow::endWork()
{
    const bool isWorking = m_doubles.isWorking();
    m_doubles.cancel();
    return isWorking;
}

} // namespace melovane
