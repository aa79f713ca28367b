#include "playlistview/ui/list_figures_dialog.h"

#include "config/config_objects.h"
#include "platform/qt/dialog_frame.h"
#include "platform/qt/elided_label.h"

#include <QFormLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Width and height of the note in letters and lines.
constexpr int kNoteWidth = 48;
constexpr int kNoteLines = 6;

} // namespace

ListFiguresDialog::ListFiguresDialog(const ConfigObjects& texts)
    : m_texts(texts)
{}

QString ListFiguresDialog::ask(const PlaylistDetails& details)
{
    DialogFrame dialog(u"frmDetailPlaylist"_s);
    dialog.setWindowTitle(m_texts.text(u"detail.title"_s));
    auto* form = new QFormLayout;
    int index = 0;
    for (const auto& [key, value] : {std::pair{u"detail.name"_s, details.name},
                                     {u"detail.group"_s, details.group},
                                     {u"detail.count"_s, details.count},
                                     {u"detail.time"_s, details.totalTime},
                                     {u"detail.created"_s, details.createTime},
                                     {u"detail.updated"_s, details.updateTime},
                                     {u"detail.mp3"_s, details.mp3Space},
                                     {u"detail.audio"_s, details.audioSpace},
                                     {u"detail.first"_s, details.playFirst},
                                     {u"detail.last"_s, details.playLast}}) {
        auto* label = new ElidedLabel(&dialog);
        label->setText(value);
        label->setObjectName(u"SkinLabel2_%1"_s.arg(index++));
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        // The note gives the dialog its width; a long name does not.
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        form->addRow(m_texts.text(key), label);
    }
    auto* note = new QPlainTextEdit(details.info, &dialog);
    note->setObjectName(u"txtInfo"_s);
    note->setAccessibleName(m_texts.text(u"detail.note"_s));
    note->setTabChangesFocus(true);
    note->setMinimumSize(note->fontMetrics().averageCharWidth() * kNoteWidth,
                         note->fontMetrics().lineSpacing() * kNoteLines);
    dialog.column()->addLayout(form);
    dialog.column()->addWidget(note);
    QPushButton* ok = dialog.addButton(u"cmdOk"_s, m_texts.text(u"ok"_s), QDialog::Accepted);
    QPushButton* cancel =
        dialog.addButton(u"cmdExit"_s, m_texts.text(u"Abbruch"_s), QDialog::Rejected);
    dialog.setKeys(ok, cancel);
    note->setFocus();
    if (dialog.ask(QDialog::Rejected) != QDialog::Accepted) {
        return {};
    }
    // Never null: an emptied note is a change, too.
    return u""_s + note->toPlainText();
}

} // namespace melovane
