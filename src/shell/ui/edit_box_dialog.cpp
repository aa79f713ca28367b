#include "shell/ui/edit_box_dialog.h"

#include "platform/qt/dialog_frame.h"
#include "platform/system/trim_blanks.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Width of the line in letters.
constexpr int kWidth = 44;

/// Letters that a name may have: the width of the columns that hold names.
constexpr int kLongest = 255;

} // namespace

std::optional<QString> EditBoxDialog::ask(const InputView& view)
{
    DialogFrame dialog(u"frmEditBox"_s);
    dialog.setWindowTitle(view.caption);
    auto* label = new QLabel(view.label, &dialog);
    label->setObjectName(u"sklInfo"_s);
    label->setTextFormat(Qt::PlainText);
    auto* edit = new QLineEdit(view.text, &dialog);
    edit->setObjectName(u"txtEdit"_s);
    edit->setAccessibleName(view.label);
    edit->setMaxLength(kLongest);
    edit->setMinimumWidth(dialog.fontMetrics().averageCharWidth() * kWidth);
    edit->selectAll();
    dialog.column()->addWidget(label);
    dialog.column()->addWidget(edit);

    QPushButton* ok = dialog.addButton(u"cmdOk"_s, view.okCaption, QDialog::Accepted);
    QPushButton* cancel = dialog.addButton(u"cmdExit"_s, view.cancelCaption, QDialog::Rejected);
    dialog.setKeys(ok, cancel);
    const auto check = [ok](const QString& text) { ok->setEnabled(!trimBlanks(text).isEmpty()); };
    QObject::connect(edit, &QLineEdit::textChanged, ok, check);
    check(view.text);
    edit->setFocus();
    if (dialog.ask(QDialog::Rejected) != QDialog::Accepted) {
        return std::nullopt;
    }
    return trimBlanks(edit->text());
}

} // namespace melovane
