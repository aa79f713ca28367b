#include "care/ui/recycler_dialog.h"

#include "care/ui/care_parts.h"
#include "config/config_objects.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Width of the list in letters, its height in lines.
constexpr int kWidth = 120;
constexpr int kLines = 14;

enum Column
{
    kTitle,
    kFile,
    kMoment,
    kNote
};

/// Widths of the columns in letters; the last one takes the rest.
constexpr int kWidths[] = {34, 44, 24};

} // namespace

RecyclerDialog::RecyclerDialog(const ConfigObjects& texts, const Skin& skin)
    : DialogFrame(u"frmRecycler"_s)
    , m_list(new QTreeWidget(this))
    , m_step(new QLabel(this))
    , m_bar(new QProgressBar(this))
    , m_one(addCommand(u"cmdOne"_s, texts.text(u"care.recycler.one"_s)))
    , m_all(addCommand(u"cmdAll"_s, texts.text(u"care.recycler.all"_s)))
    , m_cancel(addCommand(u"cmdAbbruch"_s, texts.text(u"schliessen"_s)))
{
    setWindowTitle(texts.text(u"mnuRecycler"_s).remove(u" ..."_s));
    column()->addWidget(new QLabel(texts.text(u"care.recycler.lead"_s), this));
    careparts::setGridHeads(*m_list, skin);
    makeList(texts);
    makeProgress();
    setKeys(m_cancel, m_cancel);
    m_list->setFocus();
    judge();
}

void RecyclerDialog::makeList(const ConfigObjects& texts)
{
    m_list->setObjectName(u"lstFiles"_s);
    m_list->setAccessibleName(windowTitle());
    m_list->setHeaderLabels(
        {texts.text(u"care.recycler.title"_s), texts.text(u"care.recycler.file"_s),
         texts.text(u"care.recycler.moment"_s), texts.text(u"care.recycler.note"_s)});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    const int letter = fontMetrics().averageCharWidth();
    for (int i = 0; i < int(std::size(kWidths)); ++i) {
        m_list->setColumnWidth(i, kWidths[i] * letter);
    }
    m_list->setMinimumSize(kWidth * letter, kLines * 2 * fontMetrics().height());
    connect(m_list, &QTreeWidget::itemSelectionChanged, this, &RecyclerDialog::judge);
    column()->addWidget(m_list);
}

void RecyclerDialog::makeProgress()
{
    m_step->setObjectName(u"lblStep"_s);
    m_step->setTextFormat(Qt::PlainText);
    m_step->setProperty("second", true);
    m_bar->setObjectName(u"ProgressBar1"_s);
    m_bar->setAccessibleName(windowTitle());
    m_bar->setRange(0, 100);
    m_bar->setTextVisible(false);
    column()->addWidget(m_step);
    column()->addWidget(m_bar);
}

void RecyclerDialog::attach(Recycler& logic)
{
    m_logic = &logic;
    connect(m_one, &QPushButton::clicked, this, [this, &logic] { logic.putBack(chosen()); });
    connect(m_all, &QPushButton::clicked, this, [&logic] { logic.putBackAll(); });
    connect(m_cancel, &QPushButton::clicked, this, [&logic] { logic.cancel(); });
}

std::set<int> RecyclerDialog::chosen() const
{
    std::set<int> rows;
    for (QTreeWidgetItem* item : m_list->selectedItems()) {
        rows.insert(m_list->indexOfTopLevelItem(item));
    }
    return rows;
}

void RecyclerDialog::judge()
{
    m_one->setEnabled(!m_isRunning && !m_list->selectedItems().isEmpty());
    m_all->setEnabled(!m_isRunning && m_list->topLevelItemCount() > 0);
}

void RecyclerDialog::fillList(const std::vector<RecyclerView::Row>& rows)
{
    if (rows == m_rows) {
        return;
    }
    m_rows = rows;
    m_list->clear();
    QList<QTreeWidgetItem*> items;
    const int rowHeight = fontMetrics().height() * 3 / 2;
    for (const RecyclerView::Row& row : rows) {
        auto* item = new QTreeWidgetItem({row.title, row.file, row.moment, row.note});
        item->setToolTip(kTitle, row.title.toHtmlEscaped());
        item->setToolTip(kFile, row.file.toHtmlEscaped());
        item->setToolTip(kNote, row.note.toHtmlEscaped());
        item->setSizeHint(kTitle, {0, rowHeight});
        items.append(item);
    }
    m_list->addTopLevelItems(items);
}

void RecyclerDialog::show(const RecyclerView& view)
{
    m_isRunning = view.isRunning;
    fillList(view.rows);
    m_step->setText(view.step);
    m_bar->setValue(view.percent);
    judge();
}

void RecyclerDialog::close()
{
    done(QDialog::Accepted);
}

void RecyclerDialog::reject()
{
    if (m_logic != nullptr) {
        m_logic->cancel();
    } else {
        DialogFrame::reject();
    }
}

} // namespace melovane
