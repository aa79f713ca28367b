// Every control of the console says under the pointer what it is for: those of the window, and
// those of each dialog that a menu opens.
#include "shell/application_fixture.h"
#include "support/tool_tips.h"

#include <QAction>
#include <QDialog>
#include <QMenu>
#include <QMenuBar>

#include <gtest/gtest.h>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Looks at each dialog when it is shown, and closes it.
class DialogLook : public QObject
{
public:
    DialogLook() { qApp->installEventFilter(this); }

    QStringList without; ///< "dialog control"
    QStringList seen;
    int controls = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        auto* const dialog = qobject_cast<QDialog*>(watched);
        if (event->type() == QEvent::Show && dialog != nullptr && dialog->isModal()) {
            QMetaObject::invokeMethod(
                dialog, [this, dialog] { look(*dialog); }, Qt::QueuedConnection);
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void look(QDialog& dialog)
    {
        int count = 0;
        // The desktop's own dialogs say what they like.
        if (!dialog.inherits("QFileDialog") && !dialog.inherits("QFontDialog")) {
            for (const QString& name : controlsWithoutToolTip(dialog, count)) {
                without.append(dialog.objectName() + u' ' + name);
            }
            controls += count;
            seen.append(dialog.objectName());
        }
        dialog.close();
    }
};

class ToolTips : public ApplicationTest
{};

TEST_F(ToolTips, OfEveryControlOfTheWindowSayWhatItIsFor)
{
    suite.library.add({.Titel = u"Brandung"_s});
    run([](QMainWindow& window) {
        int count = 0;
        const QStringList without = controlsWithoutToolTip(window, count);
        EXPECT_GE(count, 70);
        EXPECT_EQ(without.join(u' ').toStdString(), "");
    });
}

TEST_F(ToolTips, OfEveryControlOfADialogSayWhatItIsFor)
{
    suite.library.add({.Titel = u"Brandung"_s});
    DialogLook look;
    run([](QMainWindow& window) {
        for (const QString& name :
             {u"mnuDatenbereinigung"_s, u"mnuRecycler"_s, u"mnuBackups"_s, u"mnuNoExistFind"_s,
              u"mnuDoubles"_s, u"mnuPlaylist"_s, u"mnuDatenbank"_s, u"mnuQuickOpen"_s,
              u"mnuHealth"_s, u"mnuUeber"_s}) {
            window.findChild<QAction*>(name)->trigger();
        }
    });
    EXPECT_GE(look.seen.size(), 10) << look.seen.join(u' ').toStdString();
    EXPECT_EQ(look.without.join(u'\n').toStdString(), "");
    EXPECT_GE(look.controls, 40);
}

} // namespace
} // namespace melovane::test
