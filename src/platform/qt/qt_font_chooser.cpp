#include "platform/qt/qt_font_chooser.h"

#include "platform/qt/dialog_frame.h"
#include "platform/qt/grid_font.h"

#include <QCheckBox>
#include <QFontComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Sizes that a grid can be read and handled with, in points.
constexpr int kSmallest = 6;
constexpr int kLargest = 72;

/// The sample has a place of its own, whatever its size, so the dialog stands still.
constexpr int kSampleLines = 4;

} // namespace

QtFontChooser::QtFontChooser(FontDialogTexts texts)
    : m_texts(std::move(texts))
{}

std::optional<GridFont> QtFontChooser::choose(const GridFont& present)
{
    DialogFrame dialog(u"frmFont"_s);
    dialog.setWindowTitle(m_texts.title);
    auto* name = new QFontComboBox(&dialog);
    name->setObjectName(u"FontName"_s);
    name->setCurrentFont(toQFont(present));
    auto* size = new QSpinBox(&dialog);
    size->setObjectName(u"FontSize"_s);
    size->setRange(kSmallest, kLargest);
    size->setValue(present.size);
    auto* bold = new QCheckBox(m_texts.bold, &dialog);
    bold->setObjectName(u"FontBold"_s);
    bold->setChecked(present.bold);
    auto* sample = new QLabel(m_texts.sample, &dialog);
    sample->setObjectName(u"FontSample"_s);
    sample->setAlignment(Qt::AlignCenter);
    sample->setFixedHeight(dialog.fontMetrics().height() * kSampleLines);
    auto* form = new QFormLayout;
    form->addRow(m_texts.name, name);
    form->addRow(m_texts.size, size);
    form->addRow(QString(), bold);
    dialog.column()->addLayout(form);
    dialog.column()->addWidget(sample);
    QPushButton* ok = dialog.addButton(u"cmdOk"_s, m_texts.ok, QDialog::Accepted);
    dialog.setKeys(ok, dialog.addButton(u"cmdAbbruch"_s, m_texts.cancel, QDialog::Rejected));

    const auto chosen = [&] {
        return GridFont{name->currentFont().family(), size->value(), bold->isChecked(),
                        present.rowSpacing};
    };
    const auto show = [&] { sample->setFont(toQFont(chosen())); };
    QObject::connect(name, &QFontComboBox::currentFontChanged, &dialog, show);
    QObject::connect(size, &QSpinBox::valueChanged, &dialog, show);
    QObject::connect(bold, &QCheckBox::toggled, &dialog, show);
    show();
    if (dialog.ask(QDialog::Rejected) != QDialog::Accepted) {
        return std::nullopt;
    }
    return chosen();
}

} // namespace melovane
