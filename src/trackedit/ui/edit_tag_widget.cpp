#include "trackedit/ui/edit_tag_widget.h"

#include "config/config_objects.h"
#include "platform/qt/icon_set.h"
#include "trackedit/edit_tag.h"
#include "trackedit/ui/cover_frame.h"
#include "trackedit/ui/fact_lines.h"
#include "trackedit/ui/panel_measures.h"
#include "trackedit/ui/rating_group.h"

#include <QComboBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QScrollArea>
#include <QToolButton>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

using P = PanelField;

/// Facts that stand in a line of their own: file and folder.
constexpr size_t kPlaceFacts = 2;

/// What a field of a position has room for, beside its borders.
const QString kPosition = u"00:00:00"_s;

} // namespace

EditTagWidget::EditTagWidget(const Skin& skin, const IconSet& icons, QWidget* parent)
    : Panel(skin, parent)
    , m_icons(icons)
    , m_head(icons, *toolRow(), *this)
    , m_message(new QLabel)
    , m_scroll(new QScrollArea)
    , m_form(new QWidget)
    , m_cover(new CoverFrame)
    , m_rating(new RatingGroup(skin))
    , m_line(new QFrame)
    , m_facts(new FactLines(skin))
    , m_layout(*m_form, *m_cover, *m_line, *m_facts)
{
    setObjectName(u"EditTag1"_s);
    buildMessage();
    buildFields();
    buildForm();
    auto* view = new QWidget(this);
    auto* column = new QVBoxLayout(view);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_message);
    column->addWidget(m_scroll, 1);
    setView(view);
    hide();
}

void EditTagWidget::buildMessage()
{
    m_head.unwritten()->installEventFilter(this);
    m_message->setObjectName(u"TagMessage"_s);
    m_message->setProperty("second", true);
    m_message->setWordWrap(true);
    m_message->setContentsMargins(kMargin, kRowGap, kMargin, kRowGap);
    m_message->hide();
}

void EditTagWidget::addField(QGridLayout& column, PanelField field)
{
    QWidget* const whole = m_fields.make(field, *this);
    const int row = column.rowCount();
    column.addWidget(m_fields.at(field).label, row, 0);
    column.addWidget(whole, row, 1);
}

QLineEdit* EditTagWidget::makeShownText(const QString& name)
{
    auto* text = new QLineEdit;
    text->setObjectName(name);
    text->setReadOnly(true);
    text->setAlignment(Qt::AlignRight);
    text->setMinimumWidth(fontMetrics().horizontalAdvance(kPosition) + kBorders);
    text->installEventFilter(this);
    return text;
}

QToolButton* EditTagWidget::makeTool(const QString& name, const QString& icon)
{
    auto* tool = new QToolButton;
    tool->setObjectName(name);
    tool->setIcon(m_icons.icon(icon));
    tool->setFocusPolicy(Qt::StrongFocus);
    // As high as the field beside it.
    const int side = fontMetrics().height();
    tool->setIconSize({side, side});
    tool->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    tool->installEventFilter(this);
    return tool;
}

void EditTagWidget::buildFields()
{
    buildFirstColumn();
    buildSecondColumn();
    buildThirdColumn();
}

void EditTagWidget::buildFirstColumn()
{
    QGridLayout& column = m_layout.make(0);
    for (const PanelField field : {P::Titel, P::Interpret, P::Album, P::Kommentar}) {
        addField(column, field);
    }
    auto* numbers = new QHBoxLayout;
    numbers->setSpacing(kLabelGap);
    numbers->addWidget(m_fields.make(P::Jahr, *this), 1);
    for (const PanelField field : {P::Track, P::BPM}) {
        QWidget* const whole = m_fields.make(field, *this);
        numbers->addWidget(m_fields.at(field).label);
        numbers->addWidget(whole, 1);
    }
    for (const PanelField field : {P::Jahr, P::Track, P::BPM}) {
        m_fields.at(field).edit->setAlignment(Qt::AlignRight);
    }
    m_fields.at(P::Track).edit->setValidator(
        new QRegularExpressionValidator(QRegularExpression(u"[0-9/ ]*"_s), this));
    m_fields.at(P::BPM).edit->setValidator(
        new QRegularExpressionValidator(QRegularExpression(u"[0-9]*[.,]?[0-9]*"_s), this));
    int row = column.rowCount();
    column.addWidget(m_fields.at(P::Jahr).label, row, 0);
    column.addLayout(numbers, row, 1);
    auto* genre = new QHBoxLayout;
    genre->setSpacing(kRowGap);
    genre->addWidget(m_fields.make(P::Genre, *this), 1);
    QToolButton* const add = makeTool(u"cmdNewGenre"_s, u"add"_s);
    genre->addWidget(add);
    ++row;
    column.addWidget(m_fields.at(P::Genre).label, row, 0);
    column.addLayout(genre, row, 1);
    m_shownLabels[0] = makeFieldLabel(m_rating);
    column.addWidget(m_shownLabels[0], ++row, 0);
    column.addWidget(m_rating, row, 1);
    column.setRowStretch(++row, 1);
    column.setColumnStretch(1, 1);
}

void EditTagWidget::buildSecondColumn()
{
    QGridLayout& column = m_layout.make(1);
    for (const PanelField field : {P::Kategorie, P::Stimmung, P::Situation, P::Tempo}) {
        addField(column, field);
    }
    int row = column.rowCount();
    const auto addShown = [&](size_t label, const QString& text, const QString& tool) {
        QLineEdit* const shown = makeShownText(text);
        m_shownLabels[label] = makeFieldLabel(shown);
        column.addWidget(m_shownLabels[label], row, 0);
        auto* line = new QHBoxLayout;
        line->setSpacing(kRowGap);
        line->addWidget(shown, 1);
        if (!tool.isEmpty()) {
            line->addWidget(makeTool(tool, u"play"_s));
        }
        column.addLayout(line, row++, 1);
    };
    addShown(1, u"txtStart"_s, u"cmdStart"_s);
    addShown(2, u"txtStop"_s, u"cmdStop"_s);
    addShown(3, u"txtLevel"_s, {});
    column.setRowStretch(row, 1);
    column.setColumnStretch(1, 1);
}

void EditTagWidget::buildThirdColumn()
{
    QGridLayout& column = m_layout.make(2);
    for (const PanelField field : {P::User1, P::User2, P::User3, P::User4, P::User5}) {
        addField(column, field);
    }
    column.setRowStretch(column.rowCount(), 1);
    column.setColumnStretch(1, 1);
}

void EditTagWidget::buildForm()
{
    m_cover->installEventFilter(this);
    m_line->setObjectName(u"StatusLine"_s);
    m_line->setFixedHeight(1);
    m_facts->setObjectName(u"TagFacts"_s);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_scroll->setWidget(m_form);
    m_scroll->viewport()->setAutoFillBackground(false);
    m_form->setAutoFillBackground(false);
    m_scroll->viewport()->installEventFilter(this);
    m_layout.reflow(m_scroll->width());
}

// ---- what the logic wants

void EditTagWidget::attach(EditTag& panel, const ConfigObjects& texts)
{
    m_logic = &panel;
    createToolBar(texts);
    setTabs();
    for (const PanelFieldRow& row : panelFields()) {
        connectField(row.field);
    }
    const auto press = [this](const QString& name, void (EditTag::*work)()) {
        connect(findChild<QToolButton*>(name), &QToolButton::clicked, this,
                [this, work] { tell([&](EditTag& logic) { (logic.*work)(); }); });
    };
    press(u"cmdNewGenre"_s, &EditTag::cmdNewGenre);
    press(u"cmdStart"_s, &EditTag::cmdStart);
    press(u"cmdStop"_s, &EditTag::cmdStop);
    press(u"TagUnwritten"_s, &EditTag::unwrittenPressed);
    connect(m_cover, &CoverFrame::picturePressed, this,
            [this] { tell([](EditTag& logic) { logic.Mp3Image(); }); });
    connect(m_rating, &RatingGroup::optionChosen, this,
            [this](int option) { tell([&](EditTag& logic) { logic.rate(option); }); });
}

void EditTagWidget::detach()
{
    m_logic = nullptr;
}

void EditTagWidget::tell(const std::function<void(EditTag& logic)>& what)
{
    if (m_logic != nullptr) {
        what(*m_logic);
    }
}

void EditTagWidget::connectField(PanelField field)
{
    connect(m_fields.at(field).edit, &QLineEdit::textEdited, this,
            [this, field](const QString& text) {
                tell([&](EditTag& logic) { logic.typed(field, text); });
            });
    if (QComboBox* const box = m_fields.at(field).box) {
        connect(box, &QComboBox::activated, this, [this, field, box] {
            tell([&](EditTag& logic) { logic.chosen(field, box->currentText()); });
        });
    }
}

void EditTagWidget::createToolBar(const ConfigObjects& texts)
{
    const auto add = [&](const QString& name, const QString& icon) {
        QToolButton* const button = addTool(name, m_icons.icon(icon), QString());
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        return button;
    };
    connect(add(u"ButtonShowDir"_s, u"folder"_s), &QToolButton::clicked, this,
            [this] { tell([](EditTag& logic) { logic.ButtonShowDir(); }); });
    connect(add(u"ButtonClose"_s, u"clear"_s), &QToolButton::clicked, this,
            [this] { tell([](EditTag& logic) { logic.closePressed(); }); });
    translate(texts);
}

void EditTagWidget::translate(const ConfigObjects& texts)
{
    setTexts(texts);
    const auto name = [&](const QString& tool, QStringView text, QStringView tip) {
        auto* const button = findChild<QToolButton*>(tool);
        button->setText(texts.text(text));
        button->setToolTip(texts.text(tip));
        button->setAccessibleName(texts.text(tip));
    };
    name(u"ButtonShowDir"_s, u"edittag.show.dir", u"Button.Show.Dir");
    name(u"ButtonClose"_s, u"schliessen", u"Button.Close");
}

void EditTagWidget::setTexts(const ConfigObjects& texts)
{
    setAccessibleName(texts.text(u"edittag.name"));
    m_fields.setCaptions(texts);
    const auto name = [this, &texts](const QString& control, QStringView tip) {
        auto* const widget = findChild<QWidget*>(control);
        widget->setToolTip(texts.text(tip));
        widget->setAccessibleName(texts.text(tip));
    };
    name(u"cmdNewGenre"_s, u"edittag.newgenre.tip");
    name(u"cmdStart"_s, u"edittag.start.play");
    name(u"cmdStop"_s, u"edittag.stop.play");
    name(u"txtStart"_s, u"edittag.start.tip");
    name(u"txtStop"_s, u"edittag.stop.tip");
    name(u"txtLevel"_s, u"edittag.level.tip");
    m_shownLabels[0]->setText(texts.text(u"column.Note"));
    m_shownLabels[1]->setText(texts.text(u"column.FrameStart"));
    m_shownLabels[2]->setText(texts.text(u"column.FrameStop"));
    m_shownLabels[3]->setText(texts.text(u"edittag.level"));
    m_facts->setAccessibleName(texts.text(u"edittag.facts"));
    m_head.setTexts(texts);
    m_rating->setTexts(texts);
    m_cover->setToolTip(texts.text(u"edittag.image.tip"));
    m_cover->setAccessibleName(texts.text(u"edittag.image.name"));
}

/// By eye: down the first column, down the second, down the third, the cover, the buttons above.
void EditTagWidget::setTabs()
{
    std::vector<QWidget*> order;
    for (const PanelField field :
         {P::Titel, P::Interpret, P::Album, P::Kommentar, P::Jahr, P::Track, P::BPM, P::Genre}) {
        order.push_back(m_fields.at(field).whole());
    }
    order.push_back(findChild<QWidget*>(u"cmdNewGenre"_s));
    for (int option = 0; option < 6; ++option) {
        order.push_back(findChild<QWidget*>(u"opNote_%1"_s.arg(option)));
    }
    for (const PanelField field : {P::Kategorie, P::Stimmung, P::Situation, P::Tempo}) {
        order.push_back(m_fields.at(field).box);
    }
    for (const QString& name :
         {u"txtStart"_s, u"cmdStart"_s, u"txtStop"_s, u"cmdStop"_s, u"txtLevel"_s}) {
        order.push_back(findChild<QWidget*>(name));
    }
    for (const PanelField field : {P::User1, P::User2, P::User3, P::User4, P::User5}) {
        order.push_back(m_fields.at(field).edit);
    }
    order.push_back(m_cover);
    order.push_back(m_head.unwritten());
    order.push_back(findChild<QWidget*>(u"ButtonShowDir"_s));
    order.push_back(findChild<QWidget*>(u"ButtonClose"_s));
    for (size_t index = 1; index < order.size(); ++index) {
        setTabOrder(order[index - 1], order[index]);
    }
}

void EditTagWidget::setPanelShown(bool shown)
{
    if (isVisibleTo(parentWidget()) != shown) {
        setVisible(shown);
        emit shownChanged(shown);
    }
}

bool EditTagWidget::isPanelShown() const
{
    return isVisibleTo(parentWidget());
}

int EditTagWidget::panelHeight() const
{
    return height();
}

void EditTagWidget::setPanelHeight(int height)
{
    const int wanted = toolRow()->parentWidget()->sizeHint().height() +
                       m_form->sizeHint().height() + m_facts->sizeHint().height();
    emit heightWanted(height > 0 ? height : wanted);
}

void EditTagWidget::focusFirst()
{
    m_fields.at(P::Titel).edit->setFocus(Qt::OtherFocusReason);
    m_fields.at(P::Titel).edit->selectAll();
}

void EditTagWidget::setText(PanelField field, const QString& text)
{
    m_fields.setText(field, text);
}

void EditTagWidget::setChoices(PanelField field, const QStringList& texts)
{
    m_fields.setChoices(field, texts);
}

void EditTagWidget::setRating(int option)
{
    m_rating->setOption(option);
}

void EditTagWidget::setRatingColours(const NoteColours& colours)
{
    m_rating->setColours(colours);
}

void EditTagWidget::setTrack(const PanelTrack& track)
{
    m_head.setTrack(track);
    findChild<QLineEdit*>(u"txtStart"_s)->setText(track.start);
    findChild<QLineEdit*>(u"txtStop"_s)->setText(track.stop);
    findChild<QLineEdit*>(u"txtLevel"_s)->setText(track.level);
    m_facts->setFacts(track.facts, kPlaceFacts);
}

void EditTagWidget::setUse(PanelUse use, const QString& why)
{
    m_message->setText(why);
    m_message->setVisible(use != PanelUse::Editing);
    m_fields.setUse(use != PanelUse::Empty, use == PanelUse::Editing);
    m_rating->setEnabled(use == PanelUse::Editing);
    m_cover->setEnabled(use == PanelUse::Editing);
    for (const QString& name : {u"cmdNewGenre"_s, u"cmdStart"_s, u"cmdStop"_s}) {
        const bool isHeard = name != "cmdNewGenre"_L1 && use != PanelUse::Empty;
        findChild<QWidget*>(name)->setEnabled(use == PanelUse::Editing || isHeard);
    }
    findChild<QWidget*>(u"ButtonShowDir"_s)->setEnabled(use != PanelUse::Empty);
}

void EditTagWidget::setWaiting(qint64 tracks)
{
    m_head.setWaiting(tracks);
}

void EditTagWidget::setCover(const QByteArray& picture)
{
    m_cover->setPicture(picture);
}

// ---- what the user does

bool EditTagWidget::keyInField(PanelField field, int key)
{
    if (key == Qt::Key_Escape) {
        m_logic->escapePressed(field);
        return true;
    }
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        m_logic->enterPressed(field);
        return true;
    }
    return false;
}

/// Who comes back to the window comes back from the program that writes tags, too.
void EditTagWidget::changeEvent(QEvent* event)
{
    Panel::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && isVisible()) {
        tell([](EditTag& logic) { logic.renewTrack(); });
    }
}

bool EditTagWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_scroll->viewport()) {
        if (event->type() == QEvent::Resize) {
            m_layout.reflow(m_scroll->viewport()->width());
        }
        return false;
    }
    if (event->type() == QEvent::Wheel && qobject_cast<QComboBox*>(watched)) {
        // Who scrolls the form does not want another genre.
        event->ignore();
        return true;
    }
    if (m_logic == nullptr) {
        return Panel::eventFilter(watched, event);
    }
    const bool isKey = event->type() == QEvent::KeyPress;
    const int key = isKey ? static_cast<QKeyEvent*>(event)->key() : 0;
    const auto field = m_fields.fieldOf(watched);
    if (!field) {
        if (key == Qt::Key_Escape) {
            m_logic->leave();
            return true;
        }
        return Panel::eventFilter(watched, event);
    }
    if (isKey) {
        return keyInField(*field, key) || Panel::eventFilter(watched, event);
    }
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        const bool isAside =
            reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason;
        if (event->type() == QEvent::FocusOut) {
            m_logic->fieldLeft(*field);
        } else if (!isAside) {
            m_logic->fieldEntered(*field);
        }
    }
    return Panel::eventFilter(watched, event);
}

} // namespace melovane
