#include "shell/ui/info_dialog.h"

#include "platform/qt/dialog_frame.h"
#include "platform/qt/text_view.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

// Widths of the text in letters.
constexpr int kLeastWidth = 40;
constexpr int kGreatestWidth = 72;

QLabel* makeLabel(DialogFrame& dialog, const QString& name, const QString& text)
{
    auto* label = new QLabel(text, &dialog);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

void InfoDialog::show(const InfoView& view)
{
    DialogFrame dialog(u"frmInfo"_s);
    dialog.setWindowTitle(view.caption);
    const QFontMetrics metrics = dialog.fontMetrics();
    QLabel* picture = makeLabel(dialog, u"Logo"_s, {});
    picture->setPixmap(
        QIcon(u":/suite/melovane.svg"_s).pixmap(QSize(metrics.height() * 4, metrics.height() * 4)));
    QLabel* title = makeLabel(dialog, u"SkinLabel1"_s, view.title);
    title->setFont(titleFont(dialog.font()));
    QLabel* purpose = makeLabel(dialog, u"SkinLabel2"_s, view.purpose);
    auto* facts = new TextView(&dialog);
    facts->setObjectName(u"Facts"_s);
    facts->setAccessibleName(view.title);
    const int letter = metrics.averageCharWidth();
    facts->setText(view.facts.join(u'\n'), letter * kLeastWidth, letter * kGreatestWidth,
                   metrics.height() * 12);

    auto* words = new QVBoxLayout;
    words->setSpacing(metrics.height() / 3);
    words->addWidget(title);
    words->addWidget(purpose);
    words->addSpacing(metrics.height() / 2);
    words->addWidget(facts);
    auto* row = new QHBoxLayout;
    row->setSpacing(metrics.height());
    row->addWidget(picture, 0, Qt::AlignTop);
    row->addLayout(words);
    dialog.column()->addLayout(row);

    QPushButton* ok = dialog.addButton(u"cmdOk"_s, view.okCaption, QDialog::Accepted);
    dialog.setKeys(ok, ok);
    ok->setFocus();
    static_cast<void>(dialog.ask(QDialog::Rejected));
}

} // namespace melovane
