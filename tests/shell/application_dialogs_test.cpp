// What the dialogs of the console look like, opened from its menus.
#include "shell/application_fixture.h"

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QDialog>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QToolButton>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct ApplicationDialogs : test::ApplicationTest
{
    ~ApplicationDialogs() override { qApp->setFont(normal); }

    /// Names of buttons whose text is cut off.
    static QStringList cutOff(const QWidget& dialog)
    {
        QStringList result;
        for (const auto* button : dialog.findChildren<QAbstractButton*>()) {
            const bool hasText = button->isVisible() && !button->text().isEmpty();
            const auto kind = qobject_cast<const QPushButton*>(button)
                                  ? QStyle::SE_PushButtonContents
                                  : QStyle::SE_CheckBoxContents;
            if (!hasText || qobject_cast<const QToolButton*>(button)) {
                continue;
            }
            QStyleOptionButton option;
            option.initFrom(button);
            option.text = button->text();
            const int room = button->style()->subElementRect(kind, &option, button).width();
            const int needed =
                button->fontMetrics().size(Qt::TextShowMnemonic, button->text()).width();
            if (needed > room) {
                result.append(
                    u"%1: \"%2\" needs %3 of %4"_s.arg(button->objectName(), button->text())
                        .arg(needed)
                        .arg(room));
            }
        }
        return result;
    }

    /// Looks at the dialog that an entry opens, and leaves it.
    void look(QMainWindow& window, const QString& entry)
    {
        auto* action = window.findChild<QAction*>(entry);
        ASSERT_NE(action, nullptr) << entry.toStdString();
        QTimer user;
        bool seen = false;
        QObject::connect(&user, &QTimer::timeout, qApp, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr || !dialog->isVisible()) {
                return;
            }
            seen = true;
            EXPECT_EQ(cutOff(*dialog), QStringList()) << entry.toStdString();
            dialog->close();
        });
        user.start(std::chrono::milliseconds(5));
        action->trigger();
        EXPECT_TRUE(seen) << entry.toStdString();
    }

    void lookAtAll()
    {
        QFont font = normal;
        font.setPointSizeF(normal.pointSizeF() * scale);
        qApp->setFont(font);
        EXPECT_EQ(run([this](QMainWindow& window) {
                      for (const QString& entry :
                           {u"mnuUeber"_s, u"mnuFont"_s, u"mnuDatenbank"_s, u"mnuPlaylist"_s,
                            u"mnuDatenbereinigung"_s, u"mnuRecycler"_s, u"mnuAktivePlaystFiles"_s,
                            u"mnuRepairGridLayout"_s}) {
                          look(window, entry);
                      }
                  }),
                  0);
    }

    void addList()
    {
        const QString track = suite.library.add({.Titel = u"Brandung"_s});
        const int group = suite.library.addGroup(u"Freitag"_s);
        suite.library.addPlaylist(
            {.Name = u"Hauptset"_s, .GRID = group, .tracks = {track, track}, .IsPlay = true});
    }

    QFont normal = qApp->font();
    double scale = 1;
};

TEST_F(ApplicationDialogs, ShowTheWholeTextOfTheirButtonsInGermanAlsoInALargeFont)
{
    addList();
    lookAtAll();
    scale = 1.5;
    lookAtAll();
}

TEST_F(ApplicationDialogs, ShowTheWholeTextOfTheirButtonsInEnglishAlsoInALargeFont)
{
    addList();
    chooseEnglish();
    lookAtAll();
    scale = 1.5;
    lookAtAll();
}

} // namespace
} // namespace melovane
