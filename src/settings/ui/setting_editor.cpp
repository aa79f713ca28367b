#include "settings/ui/setting_editor.h"

#include "config/config_objects.h"
#include "platform/controls/colour.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/theme.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFileInfo>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

using Edited = std::function<void(const QString& value)>;

/// Letters of a value in the file: readers cut what is longer.
constexpr int kLongestValue = 259;

/// Of a page of the volume slider: a twentieth of the loudest.
constexpr int kVolumePage = 500;

/// A wheel over a page scrolls it: it turns no control that was not chosen before.
class CalmWheel : public QObject
{
public:
    explicit CalmWheel(QWidget* control)
        : QObject(control)
        , m_control(control)
    {
        control->setFocusPolicy(Qt::StrongFocus);
        control->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Wheel && !m_control->hasFocus()) {
            event->ignore();
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QWidget* m_control;
};

/// What the makers of controls need.
struct Maker
{
    const SettingsDesk& desk;
    const SettingEntry& entry;
    QWidget* parent;
    Edited edited;

    [[nodiscard]] QString value() const { return desk.values.value(entry); }

    [[nodiscard]] QString key() const { return entry.key.toString(); }

    [[nodiscard]] QString words() const { return desk.texts.text(entry.text); }

    void name(QWidget* control) const
    {
        control->setObjectName(entry.key.toString());
        control->setAccessibleName(words());
    }
};

QHBoxLayout* rowOf(QWidget* box)
{
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    return row;
}

QLabel* secondLabel(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setProperty("second", true);
    return label;
}

SettingEditor makeTick(const Maker& maker)
{
    auto* box = new QCheckBox(maker.words(), maker.parent);
    maker.name(box);
    QObject::connect(box, &QCheckBox::toggled, box,
                     [edited = maker.edited](bool on) { edited(on ? u"1"_s : QString()); });
    return {box, [maker, box] {
                const QSignalBlocker quiet(box);
                box->setChecked(!maker.value().isEmpty());
            }};
}

QSpinBox* makeSpin(const Maker& maker, QWidget* parent)
{
    auto* spin = new QSpinBox(parent);
    spin->setRange(maker.entry.least, maker.entry.most);
    spin->setAlignment(Qt::AlignRight);
    spin->setMinimumWidth(spin->fontMetrics().averageCharWidth() * 12);
    spin->setKeyboardTracking(false);
    new CalmWheel(spin);
    maker.name(spin);
    return spin;
}

SettingEditor makeNumber(const Maker& maker)
{
    auto* box = new QWidget(maker.parent);
    auto* row = rowOf(box);
    auto* spin = makeSpin(maker, box);
    box->setFocusProxy(spin);
    row->addWidget(spin);
    row->addStretch(1);
    QObject::connect(spin, &QSpinBox::valueChanged, box,
                     [edited = maker.edited](int value) { edited(QString::number(value)); });
    return {box, [maker, spin] {
                const QSignalBlocker quiet(spin);
                spin->setValue(maker.value().toInt());
            }};
}

SettingEditor makeVolume(const Maker& maker)
{
    auto* box = new QWidget(maker.parent);
    auto* row = rowOf(box);
    // Tab goes by the order in which they are made: by eye.
    auto* slider = new QSlider(Qt::Horizontal, box);
    auto* spin = makeSpin(maker, box);
    slider->setRange(maker.entry.least, maker.entry.most);
    slider->setPageStep(kVolumePage);
    slider->setSingleStep(kVolumePage / 5);
    slider->setObjectName(u"slider."_s + maker.key());
    slider->setAccessibleName(maker.words());
    new CalmWheel(slider);
    box->setFocusProxy(slider);
    row->addWidget(slider, 1);
    row->addWidget(spin);
    row->addWidget(secondLabel(maker.desk.texts.text(u"settings.of"_s, maker.entry.most), box));
    QObject::connect(slider, &QSlider::valueChanged, spin, &QSpinBox::setValue);
    QObject::connect(spin, &QSpinBox::valueChanged, box,
                     [edited = maker.edited](int value) { edited(QString::number(value)); });
    return {box, [maker, spin, slider] {
                const QSignalBlocker quietSpin(spin);
                const QSignalBlocker quietSlider(slider);
                spin->setValue(maker.value().toInt());
                slider->setValue(maker.value().toInt());
            }};
}

QLineEdit* makeLine(const Maker& maker, QWidget* parent)
{
    auto* line = new QLineEdit(parent);
    line->setMaxLength(kLongestValue);
    maker.name(line);
    QObject::connect(line, &QLineEdit::textEdited, line, maker.edited);
    return line;
}

/// Shows the value unless it is just what was typed: the place of writing stays.
void showLine(QLineEdit* line, const QString& value)
{
    if (line->text() != value && !(line->hasFocus() && line->text().isEmpty())) {
        line->setText(value);
    }
}

SettingEditor makeText(const Maker& maker)
{
    auto* line = makeLine(maker, maker.parent);
    return {line, [maker, line] { showLine(line, maker.value()); }};
}

SettingEditor makeNameFormat(const Maker& maker)
{
    auto* box = new QWidget(maker.parent);
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    auto* line = makeLine(maker, box);
    box->setFocusProxy(line);
    auto* example = secondLabel({}, box);
    example->setObjectName(u"example."_s + maker.key());
    column->addWidget(line);
    column->addWidget(example);
    return {box, [maker, line, example] {
                showLine(line, maker.value());
                example->setText(maker.desk.texts.text(u"settings.nameformat"_s,
                                                       maker.desk.nameExample(maker.value())));
                example->setToolTip(maker.desk.texts.textEx(u"settings.nameformat"));
            }};
}

SettingEditor makePath(const Maker& maker)
{
    auto* box = new QWidget(maker.parent);
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    column->addLayout(row);
    auto* line = makeLine(maker, box);
    box->setFocusProxy(line);
    auto* choose = new QPushButton(maker.desk.texts.text(u"settings.choose"), box);
    choose->setObjectName(u"choose."_s + maker.key());
    choose->setAutoDefault(false);
    auto* missing = secondLabel({}, box);
    missing->setObjectName(u"missing."_s + maker.key());
    missing->setWordWrap(true);
    row->addWidget(line, 1);
    row->addWidget(choose);
    column->addWidget(missing);
    const bool isFolder = maker.entry.kind == SettingKind::Folder;
    QObject::connect(choose, &QPushButton::clicked, box, [maker, isFolder, box] {
        const auto& ask = isFolder ? maker.desk.chooseFolder : maker.desk.chooseLibrary;
        const QString chosen = ask(box, maker.words(), maker.value());
        if (!chosen.isEmpty()) {
            maker.edited(chosen);
        }
    });
    return {box, [maker, line, missing, isFolder] {
                showLine(line, maker.value());
                line->setToolTip(maker.value());
                const QFileInfo place(maker.value());
                const bool isThere = isFolder ? place.isDir() : place.isFile();
                missing->setVisible(!isThere && !maker.value().isEmpty());
                missing->setText(maker.desk.texts.text(u"settings.missing"_s, maker.value()));
            }};
}

SettingEditor makeChoice(const Maker& maker)
{
    auto* box = new QWidget(maker.parent);
    box->setAccessibleName(maker.words());
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    auto* group = new QButtonGroup(box);
    for (const auto& [value, label] : maker.desk.values.choices(maker.entry)) {
        auto* button = new QRadioButton(label, box);
        button->setObjectName(maker.key() + u'.' + value);
        group->addButton(button);
        if (box->focusProxy() == nullptr) {
            box->setFocusProxy(button);
        }
        column->addWidget(button);
        QObject::connect(button, &QRadioButton::clicked, box,
                         [edited = maker.edited, value = value] { edited(value); });
    }
    return {box, [maker, group] {
                const QString wanted = maker.key() + u'.' + maker.value();
                for (QAbstractButton* const button : group->buttons()) {
                    button->setChecked(button->objectName().compare(wanted, Qt::CaseInsensitive) ==
                                       0);
                }
            }};
}

/// A picture of nothing but a colour.
QIcon swatch(const QColor& colour, const QColor& frame, int size)
{
    QPixmap picture(size * 2, size);
    picture.fill(colour);
    QPainter painter(&picture);
    painter.setPen(frame);
    painter.drawRect(0, 0, picture.width() - 1, picture.height() - 1);
    return QIcon(picture);
}

SettingEditor makeColour(const Maker& maker)
{
    auto* box = new QWidget(maker.parent);
    auto* row = rowOf(box);
    auto* button = new QPushButton(box);
    button->setAutoDefault(false);
    maker.name(button);
    const int size = button->fontMetrics().height();
    button->setIconSize({size * 2, size});
    box->setFocusProxy(button);
    row->addWidget(button);
    row->addStretch(1);
    QObject::connect(button, &QPushButton::clicked, box, [maker, box] {
        const QColor present = toQColor(Colour::fromBgr(maker.value().toInt()));
        const QColor chosen =
            maker.desk.chooseColour(box, maker.desk.texts.text(u"settings.colour"), present);
        if (chosen.isValid()) {
            // The highest of three bytes is blue.
            maker.edited(
                QString::number(chosen.blue() * 0x10000 + chosen.green() * 0x100 + chosen.red()));
        }
    });
    return {box, [maker, button, size] {
                const Colour colour = Colour::fromBgr(maker.value().toInt());
                button->setIcon(
                    swatch(toQColor(colour), button->palette().color(QPalette::Mid), size));
                button->setText(colour.toText());
            }};
}

/// A drop-down list of values with their words; what is not among them shows `other`.
SettingEditor makeList(const Maker& maker,
                       const std::vector<SettingValues::Choice>& choices,
                       const std::function<QString(const QString& value)>& other)
{
    auto* combo = new QComboBox(maker.parent);
    maker.name(combo);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    combo->setMinimumContentsLength(24);
    new CalmWheel(combo);
    for (const auto& [value, label] : choices) {
        combo->addItem(label, value);
    }
    QObject::connect(combo, &QComboBox::activated, combo,
                     [edited = maker.edited, combo] { edited(combo->currentData().toString()); });
    return {combo, [maker, combo, other] {
                const QSignalBlocker quiet(combo);
                int row = combo->findData(maker.value(), Qt::UserRole, Qt::MatchFixedString);
                if (row < 0) {
                    const QString words = other(maker.value());
                    row = words.isEmpty() ? 0 : combo->count();
                    if (!words.isEmpty()) {
                        combo->addItem(words, maker.value());
                    }
                }
                combo->setCurrentIndex(row);
            }};
}

SettingEditor makeCard(const Maker& maker)
{
    auto* box = new QWidget(maker.parent);
    auto* row = rowOf(box);
    const ConfigObjects& texts = maker.desk.texts;
    std::vector<SettingValues::Choice> cards = {{{}, texts.text(u"settings.card.system")}};
    for (const QString& card : maker.desk.cards()) {
        cards.emplace_back(card, card);
    }
    Maker inside = maker;
    inside.parent = box;
    const SettingEditor list = makeList(inside, cards, [&texts](const QString& card) {
        return texts.text(u"settings.card.missing"_s, card);
    });
    box->setFocusProxy(list.widget);
    row->addWidget(list.widget, 1);
    auto* tone =
        new QPushButton(maker.desk.icons.icon(u"play"_s), texts.text(u"settings.testtone"), box);
    tone->setObjectName(u"testtone."_s + maker.key());
    tone->setAutoDefault(false);
    row->addWidget(tone);
    QObject::connect(tone, &QPushButton::clicked, box, [maker, tone] {
        const bool isMonitor = maker.entry.page == SettingPage::Monitor;
        const SettingEntry* const volume =
            findEntry(section::kGlobal, isMonitor ? u"Volume.Monitor" : u"DefaultVolume");
        const bool isHeard =
            maker.desk.testTone(maker.value(), maker.desk.values.value(*volume).toInt());
        tone->setToolTip(isHeard ? QString() : maker.desk.texts.text(u"settings.testtone.failed"));
        tone->setIcon(maker.desk.icons.icon(isHeard ? u"play"_s : u"warning"_s));
    });
    return {box, list.show};
}

std::vector<SettingValues::Choice> fontFamilies()
{
    std::vector<SettingValues::Choice> result;
    for (const QString& family : QFontDatabase::families()) {
        if (!QFontDatabase::isPrivateFamily(family)) {
            result.emplace_back(family, family);
        }
    }
    return result;
}

} // namespace

SettingEditor makeSettingEditor(const SettingsDesk& desk,
                                const SettingEntry& entry,
                                QWidget* parent,
                                std::function<void(const QString& value)> edited)
{
    const Maker maker{desk, entry, parent, std::move(edited)};
    const auto asItIs = [](const QString& value) { return value; };
    const auto theFirst = [](const QString&) { return QString(); };
    switch (entry.kind) {
    case SettingKind::Check:
    case SettingKind::Switch:
    case SettingKind::Flag:
        return makeTick(maker);
    case SettingKind::Number:
        return makeNumber(maker);
    case SettingKind::Volume:
        return makeVolume(maker);
    case SettingKind::Text:
        return makeText(maker);
    case SettingKind::NameFormat:
        return makeNameFormat(maker);
    case SettingKind::Choice:
        return makeChoice(maker);
    case SettingKind::Folder:
    case SettingKind::Library:
        return makePath(maker);
    case SettingKind::Colour:
        return makeColour(maker);
    case SettingKind::Font:
        return makeList(maker, fontFamilies(), asItIs);
    case SettingKind::Card:
        return makeCard(maker);
    case SettingKind::Theme:
        return makeList(maker, desk.themes(), theFirst);
    case SettingKind::Language:
        return makeList(maker, desk.languages(), theFirst);
    }
    return {};
}

} // namespace melovane
