#include "platform/qt/retell.h"

#include <QAbstractButton>
#include <QAbstractItemModel>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>

namespace melovane {

namespace {

using Retold = std::function<QString(const QString& text)>;

/// Writes only what is another text: a control that was given its own text again loses its state.
template <typename Read, typename Write>
void change(const Retold& retold, const Read& read, const Write& write)
{
    const QString before = read();
    const QString now = before.isEmpty() ? before : retold(before);
    if (now != before) {
        write(now);
    }
}

/// A caption that may carry the mark of an accelerator, which the new one chooses anew.
QString withoutMark(QString caption)
{
    return caption.remove(u'&');
}

void retellHeader(const QHeaderView& header, const Retold& retold)
{
    QAbstractItemModel* const model = header.model();
    for (int section = 0; model != nullptr && section < header.count(); ++section) {
        for (const int role : {Qt::DisplayRole, Qt::ToolTipRole}) {
            change(
                retold,
                [&] { return model->headerData(section, header.orientation(), role).toString(); },
                [&](const QString& text) {
                    model->setHeaderData(section, header.orientation(), text, role);
                });
        }
    }
}

void retellKind(QWidget& control, const Retold& retold)
{
    if (auto* const label = qobject_cast<QLabel*>(&control)) {
        change(
            retold, [&] { return label->text(); },
            [&](const QString& text) { label->setText(text); });
    } else if (auto* const button = qobject_cast<QAbstractButton*>(&control)) {
        change(
            retold, [&] { return withoutMark(button->text()); },
            [&](const QString& text) { button->setText(text); });
    } else if (auto* const group = qobject_cast<QGroupBox*>(&control)) {
        change(
            retold, [&] { return group->title(); },
            [&](const QString& text) { group->setTitle(text); });
    } else if (auto* const line = qobject_cast<QLineEdit*>(&control)) {
        change(
            retold, [&] { return line->placeholderText(); },
            [&](const QString& text) { line->setPlaceholderText(text); });
    } else if (auto* const header = qobject_cast<QHeaderView*>(&control)) {
        retellHeader(*header, retold);
    } else if (auto* const box = qobject_cast<QComboBox*>(&control); box && !box->isEditable()) {
        for (int i = 0; i < box->count(); ++i) {
            change(
                retold, [&] { return box->itemText(i); },
                [&](const QString& text) { box->setItemText(i, text); });
        }
    } else if (auto* const tabs = qobject_cast<QTabWidget*>(&control)) {
        for (int i = 0; i < tabs->count(); ++i) {
            change(
                retold, [&] { return withoutMark(tabs->tabText(i)); },
                [&](const QString& text) { tabs->setTabText(i, text); });
        }
    }
}

void retellOne(QWidget& control, const Retold& retold)
{
    change(
        retold, [&] { return control.windowTitle(); },
        [&](const QString& text) { control.setWindowTitle(text); });
    change(
        retold, [&] { return control.toolTip(); },
        [&](const QString& text) { control.setToolTip(text); });
    change(
        retold, [&] { return control.accessibleName(); },
        [&](const QString& text) { control.setAccessibleName(text); });
    retellKind(control, retold);
    for (QAction* const action : control.actions()) {
        change(
            retold, [&] { return withoutMark(action->text()); },
            [&](const QString& text) { action->setText(text); });
    }
}

} // namespace

void retell(QWidget& window, const Retold& retold)
{
    retellOne(window, retold);
    for (QWidget* const control : window.findChildren<QWidget*>()) {
        retellOne(*control, retold);
    }
}

void retellAll(const Retold& retold)
{
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        retell(*window, retold);
    }
}

void announceLanguage()
{
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        QEvent spoken(QEvent::LanguageChange);
        QCoreApplication::sendEvent(window, &spoken);
    }
}

} // namespace melovane
