#include "care/ui/find_again_window.h"

#include "care/ui/care_parts.h"
#include "config/config_objects.h"
#include "config/counted_text.h"
#include "platform/db/db_error.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/file_dialogs.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/panel.h"
#include "platform/qt/split_panel.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;
using careparts::makeButton;
using careparts::makeGrid;
using careparts::makeLabel;

namespace {

/// Height of the window in lines, at first.
constexpr int kHeight = 34;

QLabel* makeHeading(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    QFont font = label->font();
    font.setWeight(QFont::DemiBold);
    label->setFont(font);
    return label;
}

} // namespace

FindAgainWindow::FindAgainWindow(const Skin& skin,
                                 const IconSet& icons,
                                 FindAgain& find,
                                 const ConfigObjects& texts,
                                 MessageLoop& loop,
                                 QWidget* parent)
    : CareWindow(u"FindAgainWindow"_s, texts.text(u"find.title"_s), kHeight, texts, loop, parent)
    , m_find(find)
    , m_ruleRows(find, texts)
    , m_trackRows(find, texts)
{
    chooseFolder = [&texts](QWidget* owner) {
        return askFolder(owner, texts.text(u"find.search"_s));
    };
    chooseFile = [&texts](QWidget* owner) {
        return askFile(owner, texts.text(u"find.show"_s), {},
                       texts.text(u"find.files.kind"_s) + u" (*.mp3 *.MP3)"_s);
    };
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    buildHead(*column, icons);
    buildGrids(*column, skin, icons);
    m_remember = new QCheckBox(texts.text(u"find.remember"_s), this);
    m_remember->setObjectName(u"checkRemember"_s);
    m_remember->setToolTip(texts.text(u"find.remember.tip"_s));
    m_remember->setChecked(true);
    m_apply = makeButton(u"cmdApply"_s, texts.text(u"find.apply"_s), this);
    buildFooter(*column, m_remember, m_apply, [this] { apply(); });
    connectGrids();
    find.changed = [this] { showRules(); };
    for (const DataGrid* const grid : {m_rules, m_tracks}) {
        connect(grid, &DataGrid::escapePressed, this, &FindAgainWindow::reject);
    }
    m_search->setFocus();
    showRules();
}

FindAgainWindow::~FindAgainWindow()
{
    m_find.changed = {};
}

void FindAgainWindow::buildHead(QVBoxLayout& column, const IconSet& icons)
{
    auto* row = new QHBoxLayout;
    const int line = fontMetrics().height();
    row->setContentsMargins(line, line * 2 / 3, line, line * 2 / 3);
    row->setSpacing(line * 2 / 3);
    m_sentence = makeLabel(u"lblSentence"_s, this);
    m_show = makeButton(u"cmdShow"_s, texts().text(u"find.show"_s), this);
    m_show->setToolTip(texts().text(u"find.show.tip"_s));
    m_search = makeButton(u"cmdSearch"_s, texts().text(u"find.search"_s), this);
    m_search->setIcon(icons.icon(u"folder"_s));
    row->addWidget(m_sentence, 1);
    row->addWidget(m_show);
    row->addWidget(m_search);
    column.addLayout(row);
    connect(m_search, &QPushButton::clicked, this, [this] {
        if (const QString folder = chooseFolder(this); !folder.isEmpty()) {
            m_find.search(folder);
        }
    });
    connect(m_show, &QPushButton::clicked, this, &FindAgainWindow::showFile);
}

void FindAgainWindow::buildGrids(QVBoxLayout& column, const Skin& skin, const IconSet& icons)
{
    auto* left = new Panel(skin, this);
    m_found = makeLabel(u"lblFound"_s, left, true);
    m_byHand = makeButton(u"cmdByHand"_s, texts().text(u"find.byhand"_s), left);
    m_byHand->setIcon(icons.icon(u"add"_s));
    m_byHand->setFlat(true);
    m_byHand->setToolTip(texts().text(u"find.byhand.tip"_s));
    left->toolRow()->addWidget(makeHeading(texts().text(u"find.rules"_s), left));
    left->toolRow()->addWidget(m_byHand);
    left->toolRow()->addStretch(1);
    left->toolRow()->addWidget(m_found);
    m_rules = makeGrid(u"TDBGridRules"_s, texts().text(u"find.rules"_s), skin, icons, left);
    m_rules->setSource(m_ruleRows, m_ruleRows, m_ruleRows.columns());
    m_rules->setEmptyNote({texts().text(u"find.none"_s), {}, {}});
    left->setView(m_rules);
    auto* right = new Panel(skin, this);
    m_previewFolder = makeLabel(u"lblPreview"_s, right, true);
    m_previewCount = makeLabel(u"lblTracks"_s, right, true);
    right->toolRow()->addWidget(makeHeading(texts().text(u"find.preview"_s), right));
    right->toolRow()->addWidget(m_previewFolder, 1);
    right->toolRow()->addWidget(m_previewCount);
    m_tracks = makeGrid(u"TDBGridTracks"_s, texts().text(u"find.preview"_s), skin, icons, right);
    m_tracks->setSource(m_trackRows, m_trackRows, m_trackRows.columns());
    m_tracks->setEmptyNote(
        {texts().text(u"find.empty.title"_s), texts().text(u"find.empty.text"_s), {}});
    right->setView(m_tracks);
    auto* both = new SplitPanel(Qt::Horizontal, this);
    both->addWidget(left);
    both->addWidget(right);
    both->setPosition(520);
    column.addWidget(both, 1);
}

void FindAgainWindow::connectGrids()
{
    connect(m_rules, &DataGrid::currentRowChanged, this, &FindAgainWindow::showPreview);
    connect(m_rules, &DataGrid::spacePressed, this, [this] { toggleRule(m_rules->currentRow()); });
    connect(m_rules, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
        if (index.column() == foundcolumn::kTick) {
            toggleRule(index.row());
        }
    });
    connect(m_tracks, &DataGrid::currentRowChanged, this, &FindAgainWindow::showState);
    connect(m_tracks, &DataGrid::spacePressed, this,
            [this] { toggleTrack(m_tracks->currentRow()); });
    connect(m_tracks, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
        if (index.column() == foundcolumn::kTick) {
            toggleTrack(index.row());
        }
    });
    connect(m_byHand, &QPushButton::clicked, this, &FindAgainWindow::addRuleByHand);
}

void FindAgainWindow::load()
{
    m_find.load();
}

/// The rules are others, or another state goes on.
void FindAgainWindow::showRules()
{
    const FindAgain::State state = m_find.state();
    followWork(state != FindAgain::State::Ready);
    if (state == FindAgain::State::Ready) {
        const bool wasRunning = m_shown != FindAgain::State::Ready;
        m_ruleRows.show(false);
        const qint64 row = std::clamp<qint64>(m_rules->currentRow(), 0, m_ruleRows.rowCount());
        if (m_ruleRows.rowCount() > 0) {
            m_rules->goToRow(wasRunning ? 0 : row, 0);
        }
        showPreview(m_rules->currentRow());
        if (wasRunning && m_shown == FindAgain::State::Searching) {
            m_rules->focus();
        }
    } else {
        m_trackRows.show(-1, false);
    }
    const bool isLoaded = state == FindAgain::State::Ready && m_shown == FindAgain::State::Loading;
    m_shown = state;
    showState();
    if (isLoaded && m_search->isEnabled()) {
        m_search->setFocus(); // it was off while the files were counted
    }
}

void FindAgainWindow::showPreview(qint64 rule)
{
    const bool isThere = m_find.state() == FindAgain::State::Ready && rule >= 0 &&
                         rule < qint64(m_find.rules().size());
    m_trackRows.show(isThere ? int(rule) : -1, false);
    const FoundRule* const shown = isThere ? &m_find.rules()[size_t(rule)] : nullptr;
    m_previewFolder->setText(shown ? shown->oldFolder : QString());
    m_previewCount->setText(shown ? texts().text(u"find.tracks"_s, qint64(shown->tracks.size()))
                                  : QString());
    if (shown) {
        m_tracks->goToRow(0, 0);
    }
    showState();
}

void FindAgainWindow::showState()
{
    const bool isReady = m_find.state() == FindAgain::State::Ready && !isWriting();
    const int missing = int(m_find.tracks().size());
    const int chosen = m_find.chosenCount();
    m_sentence->setText(m_find.state() == FindAgain::State::Loading
                            ? texts().text(u"find.loading"_s)
                        : missing == 0 ? texts().text(u"find.none"_s)
                                       : countedText(texts(), u"find.missing"_s, missing));
    m_found->setText(missing == 0 ? QString()
                                  : texts().text(u"find.found"_s, m_find.foundCount(), missing));
    if (isReady && !m_find.failure().isEmpty()) {
        tell(texts().text(u"find.failed"_s, m_find.failure()));
    } else if (isReady && m_find.foundCount() > 0) {
        tell(countedText(texts(), u"find.chosen"_s, chosen, missing - chosen));
    }
    m_search->setEnabled(isReady && missing > 0);
    m_show->setEnabled(isReady && m_trackRows.at(m_tracks->currentRow()) != nullptr);
    m_byHand->setEnabled(isReady && m_trackRows.rule() >= 0);
    m_rules->setEnabled(isReady);
    m_tracks->setEnabled(isReady);
    m_remember->setEnabled(isReady);
    m_apply->setEnabled(isReady && chosen > 0);
    (m_apply->isEnabled() ? m_apply : m_search)->setDefault(true);
    showReady(isReady);
}

void FindAgainWindow::showProgress()
{
    setProgress(0, 0);
    const auto [met, read] = m_find.progress();
    tell(m_find.state() == FindAgain::State::Searching
             ? texts().text(u"find.searching"_s, met, read)
             : QString());
}

void FindAgainWindow::toggleRule(qint64 row)
{
    if (row < 0 || row >= m_ruleRows.rowCount()) {
        return;
    }
    const FoundRule& rule = m_find.rules()[size_t(row)];
    if (!rule.newFolder.isEmpty()) {
        m_find.chooseRule(int(row), !rule.isChosen);
        m_ruleRows.show(true);
        showState();
    }
}

void FindAgainWindow::toggleTrack(qint64 row)
{
    const FoundTrack* const track = m_trackRows.at(row);
    if (track && track->isFound()) {
        m_find.chooseTrack(m_trackRows.rule(), int(row), !track->isChosen);
        m_trackRows.show(m_trackRows.rule(), true);
        m_ruleRows.show(true);
        showState();
    }
}

void FindAgainWindow::addRuleByHand()
{
    const int rule = m_trackRows.rule();
    if (const QString folder = rule < 0 ? QString() : chooseFolder(this); !folder.isEmpty()) {
        m_find.addRule(m_find.rules()[size_t(rule)].oldFolder, folder);
    }
}

void FindAgainWindow::showFile()
{
    const FoundTrack* const track = m_trackRows.at(m_tracks->currentRow());
    const int missing = track ? track->track : -1;
    if (const QString file = missing < 0 ? QString() : chooseFile(this); !file.isEmpty()) {
        m_find.showFile(missing, file);
    }
}

void FindAgainWindow::apply()
{
    if (!beginWriting()) {
        return;
    }
    QString said;
    try {
        const FindAgain::Outcome outcome =
            m_find.apply(m_remember->isChecked(), [this](int done, int size) {
                tell(texts().text(u"find.applying"_s, done, size));
                return goOn(done, size);
            });
        if (!outcome.rows.isCancelled) {
            said = outcome.rows.left == 0
                       ? countedText(texts(), u"find.done"_s, outcome.rows.moved)
                       : texts().text(u"find.done.left"_s, outcome.rows.moved, outcome.rows.left);
            if (!outcome.isRemembered) {
                said += u". "_s + texts().text(u"find.notremembered"_s);
            }
        }
        if (outcome.rows.moved > 0 && whenWritten) {
            whenWritten();
        }
    } catch (const DbError& error) {
        said = texts().text(u"find.failed"_s, error.text());
    }
    endWriting();
    if (!said.isEmpty()) {
        tell(said);
    }
}

bool FindAgainWindow::endWork()
{
    const bool isSearching = m_find.state() == FindAgain::State::Searching;
    m_find.cancel();
    return isSearching;
}

} // namespace melovane
