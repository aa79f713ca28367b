#include "tagbench/ui/common_form.h"

#include "config/config_objects.h"
#include "config/counted_text.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/skin.h"
#include "tagbench/bench_session.h"
#include "tagbench/ui/cover_row.h"

#include <QAction>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Beginning of the names of the buttons that rate.
const QString kRating = u"cmdNote"_s;

bool hasChoices(TrackField field)
{
    switch (field) {
    case TrackField::Genre:
    case TrackField::Kategorie:
    case TrackField::Stimmung:
    case TrackField::Situation:
    case TrackField::Tempo:
        return true;
    default:
        return false;
    }
}

/// The frame of a field that holds what is not stored yet.
void showPending(QLineEdit& edit, bool on)
{
    auto* const box = qobject_cast<QComboBox*>(edit.parentWidget());
    QWidget* const framed = box ? static_cast<QWidget*>(box) : &edit;
    if (framed->property("pending").toBool() != on) {
        framed->setProperty("pending", on);
        framed->style()->unpolish(framed);
        framed->style()->polish(framed);
    }
}

/// A list that the wheel does not change: it lies in a form that scrolls.
class ChoiceBox : public QComboBox
{
public:
    using QComboBox::QComboBox;

protected:
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }
};

} // namespace

CommonForm::CommonForm(const Skin& skin,
                       const IconSet& icons,
                       BenchSession& session,
                       QWidget* parent)
    : Panel(skin, parent)
    , m_skin(skin)
    , m_icons(icons)
    , m_session(session)
    , m_fold(new QToolButton(this))
    , m_for(new QLabel(this))
    , m_cover(new CoverRow(icons, session, this))
    , m_scroll(new QScrollArea(this))
{
    setObjectName(u"CommonForm"_s);
    auto* title = new QLabel(session.texts().text(u"bench.form"), this);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    m_for->setObjectName(u"MatchCount"_s);
    m_fold->setObjectName(u"cmdFold"_s);
    m_fold->setAutoRaise(true);
    m_fold->setCheckable(true);
    m_fold->setToolTip(session.texts().text(u"bench.fold.tip"));
    m_fold->setAccessibleName(m_fold->toolTip());
    m_fold->hide();
    connect(m_fold, &QToolButton::toggled, this, &CommonForm::fold);
    toolRow()->addSpacing(8);
    toolRow()->addWidget(m_fold);
    toolRow()->addWidget(title, 1);
    toolRow()->addWidget(m_for);
    toolRow()->addSpacing(8);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setWidgetResizable(true);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    auto* inside = new QWidget(m_scroll);
    auto* column = new QVBoxLayout(inside);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_cover);
    auto* rows = new QFormLayout;
    column->addLayout(rows);
    column->addStretch(1);
    rows->setContentsMargins(14, 12, 14, 12);
    rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    for (const TrackField field : benchFields()) {
        addField(*rows, icons, field);
    }
    m_scroll->setWidget(inside);
    setView(m_scroll);
    connect(&session.tracks(), &BenchTracks::changed, this, &CommonForm::showAll);
    connect(&skin, &Skin::changed, this, &CommonForm::showAll);
    showAll();
}

/// No narrower than its widest line beside the scroll bar: it scrolls up and down only.
void CommonForm::showEvent(QShowEvent* event)
{
    Panel::showEvent(event);
    m_scroll->setMinimumWidth(m_scroll->widget()->minimumSizeHint().width() +
                              m_scroll->verticalScrollBar()->sizeHint().width());
}

void CommonForm::setFolding(bool on)
{
    m_fold->setVisible(on);
    m_fold->setChecked(false);
    fold();
}

void CommonForm::fold()
{
    const bool isIn = m_fold->isVisibleTo(this) && !m_fold->isChecked();
    m_fold->setIcon(m_icons.icon(isIn ? u"tree.collaps.open"_s : u"tree.collaps.close"_s));
    m_scroll->setVisible(!isIn);
    setMaximumHeight(isIn ? sizeHint().height() : QWIDGETSIZE_MAX);
}

void CommonForm::addField(QFormLayout& rows, const IconSet& icons, TrackField field)
{
    const ConfigObjects& texts = m_session.texts();
    const QString name = columnOf(field).toString();
    auto* label = new QLabel(texts.text(headingKey(columnOf(field))), this);
    QLineEdit* edit = nullptr;
    if (hasChoices(field)) {
        auto* box = new ChoiceBox(this);
        box->setEditable(true);
        box->setInsertPolicy(QComboBox::NoInsert);
        box->setObjectName(u"cmb"_s + name);
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(8);
        edit = box->lineEdit();
        connect(box, &QComboBox::textActivated, this,
                [this, field](const QString& text) { typed(field, text); });
        rows.addRow(label, box);
    } else if (field == TrackField::Note) {
        edit = new QLineEdit(this);
        QWidget* const buttons = ratingRow();
        buttons->layout()->addWidget(edit);
        rows.addRow(label, buttons);
    } else {
        edit = new QLineEdit(this);
        rows.addRow(label, edit);
    }
    edit->setObjectName(u"txt"_s + name);
    edit->setAccessibleName(label->text());
    if (const int width = rowOf(field).type.width; width > 0) {
        edit->setMaxLength(width);
    }
    connect(edit, &QLineEdit::textEdited, this,
            [this, field](const QString& text) { typed(field, text); });
    QAction* const revert =
        edit->addAction(icons.icon(u"undo"_s, ThemeRole::Accent), QLineEdit::TrailingPosition);
    revert->setToolTip(texts.text(u"bench.revert"));
    connect(revert, &QAction::triggered, this,
            [this, field] { m_session.tracks().revert(m_chosen, field); });
    m_lines.push_back({field, label, edit, revert});
}

QWidget* CommonForm::ratingRow()
{
    auto* row = new QWidget(this);
    row->setObjectName(u"BenchChoices"_s);
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(3);
    for (const QString& mark : {u""_s, u"5"_s, u"4"_s, u"3"_s, u"2"_s, u"1"_s}) {
        auto* button = new QToolButton(row);
        button->setCheckable(true);
        button->setText(mark.isEmpty() ? u"–"_s : mark);
        button->setObjectName(kRating + mark);
        button->setToolTip(mark.isEmpty() ? m_session.texts().text(u"bench.note.none")
                                          : m_session.texts().text(u"bench.note.set"_s, mark));
        button->setAccessibleName(button->toolTip());
        connect(button, &QToolButton::clicked, this,
                [this, mark] { typed(TrackField::Note, mark); });
        line->addWidget(button);
    }
    return row;
}

void CommonForm::loadChoices()
{
    for (const Line& line : m_lines) {
        auto* box = qobject_cast<QComboBox*>(line.edit->parentWidget());
        if (box) {
            const QSignalBlocker quiet(box);
            box->clear();
            box->addItems(line.field == TrackField::Genre ? m_session.genres()
                                                          : m_session.choices(line.field));
            box->setCurrentIndex(-1);
        }
    }
    showAll();
}

void CommonForm::typed(TrackField field, const QString& text)
{
    if (!m_chosen.empty()) {
        m_session.tracks().type(m_chosen, field, text);
    }
}

void CommonForm::setChosen(const std::vector<int>& tracks)
{
    m_chosen = tracks;
    m_cover->setChosen(tracks);
    showAll();
}

void CommonForm::showAll()
{
    std::erase_if(m_chosen, [this](int track) { return track >= m_session.tracks().count(); });
    m_for->setText(m_chosen.empty() ? m_session.texts().text(u"bench.form.none")
                                    : countedText(m_session.texts(), u"bench.form.for"_s,
                                                  qint64(m_chosen.size())));
    for (const Line& line : m_lines) {
        showLine(line);
    }
}

void CommonForm::showLine(const Line& line)
{
    const BenchTracks& tracks = m_session.tracks();
    const std::optional<QString> common = tracks.common(m_chosen, line.field);
    const bool isChanged = std::ranges::any_of(
        m_chosen, [&](int track) { return tracks.isChanged(track, line.field); });
    const QString shown = common.value_or(QString()).replace(u'\n', u' ');
    // What the user is typing stays as he types it: "128." is on the way to "128.5".
    if (line.edit->text() != shown &&
        !(line.edit->hasFocus() && line.edit->isModified() && common &&
          benchText(line.field, line.edit->text()) == common)) {
        const QSignalBlocker quiet(line.edit);
        line.edit->setText(shown);
    }
    if (line.field == TrackField::Note) {
        for (QToolButton* button : line.edit->parentWidget()->findChildren<QToolButton*>()) {
            const QString mark = button->objectName().mid(kRating.size());
            button->setChecked(common && *common == mark);
            button->setEnabled(!m_chosen.empty());
        }
    }
    const bool differ = !common && !m_chosen.empty();
    const QString several = differ ? m_session.texts().text(u"bench.several") : QString();
    // Beside its buttons the rating has room for a mark and no more.
    const bool isNarrow = differ && line.field == TrackField::Note;
    line.edit->setPlaceholderText(isNarrow ? u"…"_s : several);
    line.edit->setToolTip(isNarrow ? several : QString());
    line.edit->setEnabled(!m_chosen.empty());
    line.revert->setVisible(isChanged);
    showPending(*line.edit, isChanged);
    QFont font = line.label->font();
    font.setBold(isChanged);
    line.label->setFont(font);
    QPalette colours = line.label->palette();
    colours.setColor(QPalette::WindowText,
                     m_skin.theme().qcolor(isChanged ? ThemeRole::Accent : ThemeRole::TextSecond));
    line.label->setPalette(colours);
}

} // namespace melovane
