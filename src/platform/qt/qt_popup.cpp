#include "platform/qt/qt_popup.h"

#include "platform/qt/icon_set.h"

#include <QApplication>
#include <QCursor>
#include <QMenu>

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

QtPopup::QtPopup(const IconSet& icons)
    : m_icons(icons)
{}

void QtPopup::Create()
{
    m_entries.clear();
}

void QtPopup::Append(const PopupEntry& entry)
{
    m_entries.push_back(entry);
}

int QtPopup::Show()
{
    QMenu menu(QApplication::activeWindow());
    menu.setObjectName(u"myPopup"_s);
    menu.setToolTipsVisible(true);
    for (const PopupEntry& entry : std::exchange(m_entries, {})) {
        if (entry.caption.isEmpty()) {
            menu.addSeparator();
            continue;
        }
        // Captions hold names of the user's; "&" is no mark of a key in them.
        QAction* action =
            menu.addAction(m_icons.icon(entry.icon), QString(entry.caption).replace(u'&', u"&&"_s));
        action->setData(entry.id);
        action->setEnabled(entry.enabled);
        action->setToolTip(entry.tip);
        action->setCheckable(entry.checked);
        action->setChecked(entry.checked);
    }
    const QPoint place = m_place ? m_place() : QCursor::pos();
    const QAction* chosen = menu.isEmpty() ? nullptr : menu.exec(place);
    return chosen ? chosen->data().toInt() : 0;
}

} // namespace melovane
