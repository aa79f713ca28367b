#include "shell/ui/msg_dialog.h"

#include "platform/qt/dialog_frame.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/text_view.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

// Widths of the text in letters.
constexpr int kLeastWidth = 36;
constexpr int kGreatestWidth = 64;

QLayout* makeContent(DialogFrame& dialog, const MessageView& view, const QIcon& icon)
{
    const QFontMetrics metrics = dialog.fontMetrics();
    auto* picture = new QLabel(&dialog);
    picture->setPixmap(icon.pixmap(QSize(metrics.height() * 2, metrics.height() * 2)));

    auto* title = new QLabel(view.title, &dialog);
    title->setObjectName(u"SkinLabel1"_s);
    title->setTextFormat(Qt::PlainText);
    title->setFont(titleFont(dialog.font()));
    const int widest = metrics.averageCharWidth() * kGreatestWidth;
    if (title->sizeHint().width() > widest) {
        title->setWordWrap(true);
        title->setFixedSize(widest, title->heightForWidth(widest));
    }

    auto* text = new TextView(&dialog);
    text->setObjectName(u"SkinLabel2"_s);
    text->setAccessibleName(view.title);
    text->setText(view.text, metrics.averageCharWidth() * kLeastWidth, widest,
                  dialog.screen()->availableSize().height() / 2);

    auto* words = new QVBoxLayout;
    words->setSpacing(metrics.height() / 2);
    words->addWidget(title);
    words->addWidget(text);
    if (!view.suppressCaption.isEmpty()) {
        auto* box = new QCheckBox(view.suppressCaption, &dialog);
        box->setObjectName(u"Check1"_s);
        QObject::connect(box, &QCheckBox::clicked, &dialog, view.suppressClicked);
        words->addSpacing(metrics.height() / 2);
        words->addWidget(box);
    }
    auto* row = new QHBoxLayout;
    row->setSpacing(metrics.height());
    row->addWidget(picture, 0, Qt::AlignTop);
    row->addLayout(words);
    return row;
}

} // namespace

MsgDialog::MsgDialog(const IconSet& icons)
    : m_icons(icons)
{}

WarningAnswer MsgDialog::ask(const MessageView& view)
{
    DialogFrame dialog(u"frmMsg"_s);
    dialog.setWindowTitle(view.caption);
    dialog.column()->addLayout(makeContent(
        dialog, view, m_icons.icon(view.question ? u"question"_s : u"info"_s, ThemeRole::Accent)));
    const auto button = [&](const QString& name, const QString& caption, WarningAnswer answer) {
        return dialog.addButton(name, caption, static_cast<int>(answer));
    };
    QPushButton* enter = nullptr;
    QPushButton* escape = nullptr;
    if (view.question) {
        enter = button(u"cmdJa"_s, view.yesCaption, WarningAnswer::Yes);
        escape = button(u"cmdNein"_s, view.noCaption, WarningAnswer::No);
    } else {
        enter = escape = button(u"cmdOk"_s, view.okCaption, WarningAnswer::Ok);
    }
    dialog.setKeys(enter, escape);
    // Where the keyboard is a screen reader begins: it reads what the button answers.
    enter->setAccessibleDescription(view.text);
    enter->setFocus();
    return static_cast<WarningAnswer>(dialog.ask(static_cast<int>(WarningAnswer::Left)));
}

} // namespace melovane
