#include "trackedit/ui/panel_inputs.h"

#include "config/config_objects.h"
#include "store/track_fields.h"
#include "trackedit/ui/panel_measures.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// What a field of a number has room for, beside its borders.
const QString kNumber = u"00000"_s;

/// Least letters of a list.
constexpr int kListLetters = 8;

} // namespace

QLabel* makeFieldLabel(QWidget* buddy)
{
    auto* label = new QLabel;
    label->setProperty("second", true);
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(buddy);
    return label;
}

QWidget* PanelInputs::Field::whole() const
{
    return box ? static_cast<QWidget*>(box) : edit;
}

QWidget* PanelInputs::make(PanelField field, QObject& watcher)
{
    const PanelFieldRow& row = rowOf(field);
    Field& made = at(field);
    if (row.isList) {
        made.box = new QComboBox;
        made.box->setEditable(true);
        made.box->setInsertPolicy(QComboBox::NoInsert);
        made.box->setMinimumContentsLength(kListLetters);
        made.box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        // A completer would write letters that nobody has typed.
        made.box->setCompleter(nullptr);
        made.box->installEventFilter(&watcher);
        made.edit = made.box->lineEdit();
        // At the end of typing the box would take a text that stands in its list for a choice.
        QObject::disconnect(made.edit, &QLineEdit::editingFinished, made.box, nullptr);
    } else {
        made.edit = new QLineEdit;
        made.edit->setMinimumWidth(made.edit->fontMetrics().horizontalAdvance(kNumber) + kBorders);
    }
    QWidget* const whole = made.whole();
    whole->setObjectName(row.control.toString());
    made.edit->installEventFilter(&watcher);
    const int width = rowOf(row.column).type.width;
    if (width > 0) {
        made.edit->setMaxLength(width);
    }
    made.label = makeFieldLabel(whole);
    return whole;
}

std::optional<PanelField> PanelInputs::fieldOf(const QObject* watched) const
{
    const auto* const field =
        std::find_if(m_fields.begin(), m_fields.end(),
                     [watched](const Field& one) { return one.whole() == watched; });
    return field == m_fields.end() ? std::nullopt
                                   : std::optional(PanelField(field - m_fields.begin()));
}

void PanelInputs::setText(PanelField field, const QString& text)
{
    QLineEdit& edit = *at(field).edit;
    if (edit.text() != text) {
        edit.setText(text);
        edit.setCursorPosition(edit.hasFocus() ? int(text.size()) : 0);
    }
}

void PanelInputs::setChoices(PanelField field, const QStringList& texts)
{
    QComboBox& box = *at(field).box;
    const QSignalBlocker quiet(&box);
    const QString present = box.currentText();
    box.clear();
    box.addItems(texts);
    box.setCurrentIndex(-1);
    box.setEditText(present);
}

void PanelInputs::setCaptions(const ConfigObjects& texts)
{
    for (const PanelFieldRow& row : panelFields()) {
        const QString caption = texts.text(headingKey(columnOf(row.field)));
        Field& field = at(row.field);
        field.label->setText(caption);
        field.edit->setAccessibleName(caption);
        if (field.box) {
            field.box->setAccessibleName(caption);
        }
    }
}

void PanelInputs::setUse(bool isThere, bool isEditable)
{
    for (Field& field : m_fields) {
        field.whole()->setEnabled(isThere);
        field.edit->setReadOnly(!isEditable);
    }
}

} // namespace melovane
