#include "tagbench/ui/preview_page.h"

#include "config/config_objects.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/icon_set.h"
#include "tagbench/bench_session.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Least width of the left side in letters.
constexpr int kLeft = 48;

/// Least width of a column that takes what is left, in figures.
constexpr double kLeastStretched = 14;

/// A caption without the mark of its key.
QString plain(QString caption)
{
    return caption.remove(u'&');
}

/// Of a column whose texts are whole, in figures: its longest one, its picture and its edges.
double narrowWidth(const Preview& preview, int column)
{
    constexpr qsizetype kLeastLetters = 14;
    constexpr double kAround = 6;
    qsizetype letters = kLeastLetters;
    for (const QString& text : preview.lastTexts) {
        letters = std::max(letters, text.size());
    }
    for (const PreviewRow& row : preview.rows) {
        letters = std::max(letters, row.cells.value(column).size());
    }
    return double(letters) + kAround;
}

} // namespace

PreviewPage::PreviewPage(const Skin& skin,
                         const IconSet& icons,
                         BenchSession& session,
                         const QString& name,
                         bool ticks,
                         QWidget* parent)
    : QWidget(parent)
    , m_skin(skin)
    , m_icons(icons)
    , m_session(session)
    , m_name(name)
    , m_look(m_rows, session.texts(), ticks)
    , m_right(new QWidget(this))
    , m_warning(new QLabel(this))
    , m_take(new QPushButton(session.texts().text(u"bench.take"), this))
    , m_ticks(ticks)
{
    setObjectName(u"Page_"_s + name);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    auto* scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFocusPolicy(Qt::NoFocus);
    auto* left = new QWidget(scroll);
    left->setObjectName(u"BenchChoices"_s);
    m_choices = new QVBoxLayout(left);
    m_choices->setContentsMargins(14, 10, 14, 10);
    m_choices->setSpacing(8);
    scroll->setWidget(left);
    auto* right = new QVBoxLayout(m_right);
    right->setContentsMargins(0, 0, 0, 0);
    row->addWidget(scroll);
    row->addWidget(m_right, 1);
    m_warning->setObjectName(u"lblWarning"_s);
    m_warning->setWordWrap(true);
    m_warning->hide();
    m_take->setObjectName(u"cmdTake"_s);
    m_take->setToolTip(session.texts().text(u"bench.take.tip"));
    m_take->setAutoDefault(false);
    connect(m_take, &QPushButton::clicked, this, &PreviewPage::take);
}

QString PreviewPage::title() const
{
    return m_session.texts().text(u"bench."_s + m_name);
}

QLineEdit* PreviewPage::addLine(const QString& name, const QString& caption)
{
    auto* label = new QLabel(caption, this);
    label->setProperty("second", true);
    auto* line = new QLineEdit(this);
    line->setObjectName(name);
    line->setAccessibleName(plain(caption));
    label->setBuddy(line);
    m_choices->addWidget(label);
    m_choices->addWidget(line);
    connect(line, &QLineEdit::textEdited, this, &PreviewPage::edited);
    connect(line, &QLineEdit::textChanged, this, &PreviewPage::refresh);
    connect(line, &QLineEdit::returnPressed, this, &PreviewPage::take);
    return line;
}

QCheckBox*
PreviewPage::addBox(const QString& name, const QString& caption, bool ticked, bool isPartOfIt)
{
    auto* box = new QCheckBox(caption, this);
    box->setObjectName(name);
    box->setChecked(ticked);
    m_choices->addWidget(box);
    if (isPartOfIt) {
        connect(box, &QCheckBox::toggled, this, &PreviewPage::refresh);
        connect(box, &QCheckBox::clicked, this, &PreviewPage::edited);
    }
    return box;
}

void PreviewPage::addSamples(QLineEdit* line, const QStringList& samples)
{
    auto* row = new QHBoxLayout;
    row->setSpacing(4);
    for (const QString& sample : samples) {
        auto* button = new QToolButton(this);
        button->setText(sample);
        button->setAccessibleName(sample);
        connect(button, &QToolButton::clicked, line, [this, line, sample] {
            line->setText(sample);
            edited();
        });
        row->addWidget(button);
    }
    row->addStretch(1);
    m_choices->addLayout(row);
}

void PreviewPage::finish()
{
    m_choices->addStretch(1);
    m_choices->addWidget(m_warning);
    m_choices->addWidget(m_take);
    fitChoices();
}

/// As wide as its widest line, beside its scroll bar.
void PreviewPage::fitChoices()
{
    QWidget* const left = m_choices->parentWidget();
    auto* const scroll = static_cast<QScrollArea*>(left->parentWidget()->parentWidget());
    const int bar = scroll->verticalScrollBar()->sizeHint().width();
    scroll->setFixedWidth(
        std::max(left->minimumSizeHint().width(), fontMetrics().averageCharWidth() * kLeft) + bar);
}

void PreviewPage::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    fitChoices();
    refresh();
}

void PreviewPage::refresh()
{
    if (isVisible() && make && !m_isFollowing && !m_session.tracks().isDraftOf(this)) {
        m_rows.show(make());
        showPreview();
    }
}

void PreviewPage::showPreview()
{
    if (m_headings != m_rows.preview().headings) {
        arrangeColumns();
    }
    const QString& warning = m_rows.preview().warning;
    m_warning->setText(warning);
    m_warning->setVisible(!warning.isEmpty());
    m_take->setEnabled(!m_rows.preview().cells().empty());
    m_take->setVisible(!m_session.tracks().isDraftOf(this));
    emit refreshed();
}

void PreviewPage::edited()
{
    follow([this] { m_rows.show(make()); });
    showPreview();
}

/// The tracks get what the preview says, seen from where this page began.
void PreviewPage::follow(const std::function<void()>& preview)
{
    m_isFollowing = true;
    m_session.tracks().draft(this, [&] {
        preview();
        return m_rows.preview().cells();
    });
    m_isFollowing = false;
}

void PreviewPage::toggle(qint64 row)
{
    m_rows.toggle(row);
    if (m_session.tracks().isDraftOf(this)) {
        follow([] {});
    }
    m_take->setEnabled(!m_rows.preview().cells().empty());
    m_take->setVisible(!m_session.tracks().isDraftOf(this));
}

/// A grid has its columns for good, so other columns are another grid.
void PreviewPage::arrangeColumns()
{
    m_headings = m_rows.preview().headings;
    delete m_grid;
    m_grid = new DataGrid(m_skin, m_icons, m_right);
    m_grid->setObjectName(u"TDBGrid2"_s);
    m_grid->setAccessibleName(plain(title()));
    std::vector<GridColumn> columns;
    for (int index = 0; index < m_headings.size(); ++index) {
        const bool isNarrow = m_ticks ? index == 1 : index == m_headings.size() - 1;
        columns.push_back(
            {.field = QString::number(index),
             .heading = m_headings[index],
             .width = isNarrow ? narrowWidth(m_rows.preview(), index) : kLeastStretched,
             .stretched = !isNarrow});
    }
    m_grid->setSource(m_rows, m_look, columns);
    m_grid->setDragEnabled(false);
    m_grid->setSortButtons(false);
    m_right->layout()->addWidget(m_grid);
    if (m_ticks) {
        connect(m_grid, &DataGrid::spacePressed, this, [this] { toggle(m_grid->currentRow()); });
        connect(m_grid, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
            if (index.column() == 0) {
                toggle(index.row());
            }
        });
    }
}

void PreviewPage::take()
{
    if (m_session.tracks().change(m_rows.preview().cells())) {
        refresh();
    }
}

} // namespace melovane
