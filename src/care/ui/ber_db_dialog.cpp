#include "care/ui/ber_db_dialog.h"

#include "config/config_objects.h"
#include "platform/qt/icon_set.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Width of the dialog in letters.
constexpr int kWidth = 96;

/// A line that is lit while its step runs.
class StepLine : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override
    {
        if (property("running").toBool()) {
            QPainter(this).fillRect(rect(), palette().color(QPalette::Highlight));
        }
    }
};

/// Parts the steps from what belongs to two of them.
class Hairline : public QWidget
{
public:
    explicit Hairline(QWidget* parent)
        : QWidget(parent)
    {
        setFixedHeight(1);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter(this).fillRect(rect(), palette().color(QPalette::Mid));
    }
};

QLabel* makeLabel(QWidget& parent, const QString& name, const QString& text = {})
{
    auto* label = new QLabel(text, &parent);
    label->setObjectName(name);
    // Names of files may look like markup.
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

BerDbDialog::BerDbDialog(const ConfigObjects& texts, const IconSet& icons)
    : DialogFrame(u"frmBerDB"_s)
    , m_icons(icons)
    , m_step(makeLabel(*this, u"lblStep"_s))
    , m_percent(makeLabel(*this, u"lblPercent"_s))
    , m_bar(new QProgressBar(this))
    , m_ok(addCommand(u"cmdOk"_s, texts.text(u"ok"_s)))
    , m_cancel(addCommand(u"cmdAbbruch"_s, texts.text(u"Abbruch"_s)))
{
    setWindowTitle(texts.text(u"frmBerDB"_s));
    column()->addWidget(makeLabel(*this, u"lblLead"_s, texts.text(u"care.clean.lead"_s)));
    column()->addSpacing(fontMetrics().height() / 2);
    for (int index = 0; index < kCleaningBoxes; ++index) {
        if (index == int(CleaningBox::Recycle)) {
            column()->addWidget(new Hairline(this));
        }
        m_rows.push_back(makeRow(texts, index));
        column()->addWidget(m_rows.back().line);
    }
    auto* moves = makeLabel(*this, u"lblMoves"_s, texts.text(u"care.clean.moves"_s));
    moves->setProperty("second", true);
    moves->setIndent(m_rows.back().box->iconSize().width() + fontMetrics().height());
    column()->addWidget(moves);
    makeProgress();
    // Pressing Enter must not remove anything by mistake.
    setKeys(m_cancel, m_cancel);
    m_rows.front().box->setFocus();
    m_step->setMinimumWidth(fontMetrics().averageCharWidth() * kWidth);
}

BerDbDialog::Row BerDbDialog::makeRow(const ConfigObjects& texts, int index)
{
    auto* line = new StepLine(this);
    Row row{line, new QCheckBox(texts.text(u"chBerDB-%1"_s.arg(index)), line),
            makeLabel(*line, u"picture_%1"_s.arg(index)),
            makeLabel(*line, u"note_%1"_s.arg(index))};
    row.box->setObjectName(u"checkBer_%1"_s.arg(index));
    auto* layout = new QHBoxLayout(line);
    const int room = fontMetrics().height() / 4;
    layout->setContentsMargins(room, room, room, room);
    layout->addWidget(row.box);
    layout->addStretch();
    layout->addWidget(row.picture);
    layout->addWidget(row.note);
    connect(row.box, &QCheckBox::clicked, this, [this, index](bool isTicked) {
        if (m_logic != nullptr) {
            m_logic->checkBer(index, isTicked);
        }
    });
    return row;
}

void BerDbDialog::makeProgress()
{
    m_step->setProperty("second", true);
    m_bar->setObjectName(u"ProgressBar1"_s);
    m_bar->setAccessibleName(windowTitle());
    m_bar->setRange(0, 100);
    m_bar->setTextVisible(false);
    auto* texts = new QHBoxLayout;
    texts->addWidget(m_step, 1);
    texts->addWidget(m_percent);
    column()->addSpacing(fontMetrics().height() / 2);
    column()->addLayout(texts);
    column()->addWidget(m_bar);
}

void BerDbDialog::attach(frmBerDB& logic)
{
    m_logic = &logic;
    connect(m_ok, &QPushButton::clicked, this, [&logic] { logic.cmdOk(); });
    connect(m_cancel, &QPushButton::clicked, this, [&logic] { logic.cmdAbbruch(); });
}

void BerDbDialog::showRow(const Row& row, const BerDbView::Box& box) const
{
    row.box->setChecked(box.isTicked);
    row.box->setEnabled(box.isEnabled || box.isRunning);
    row.note->setText(box.note);
    row.note->setProperty("second", !box.isDone && !box.isRunning);
    row.note->setEnabled(!box.isDone);
    const int size = fontMetrics().height();
    row.picture->setPixmap(
        box.isDone ? m_icons.icon(u"ticked"_s, ThemeRole::VuMeterColor).pixmap(size, size)
                   : QPixmap());
    row.line->setProperty("running", box.isRunning);
    row.line->update();
}

void BerDbDialog::show(const BerDbView& view)
{
    for (size_t i = 0; i < m_rows.size(); ++i) {
        showRow(m_rows[i], view.boxes[i]);
    }
    m_step->setText(
        m_step->fontMetrics().elidedText(view.step, Qt::ElideMiddle, m_step->minimumWidth()));
    m_percent->setText(view.isRunning ? u"%1 %"_s.arg(view.percent) : QString());
    m_bar->setValue(view.percent);
    m_ok->setEnabled(view.mayRun);
}

void BerDbDialog::close()
{
    done(QDialog::Accepted);
}

void BerDbDialog::reject()
{
    if (m_logic != nullptr) {
        m_logic->cmdAbbruch();
    } else {
        DialogFrame::reject();
    }
}

} // namespace melovane
