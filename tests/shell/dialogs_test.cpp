#include "platform/qt/icon_set.h"
#include "platform/qt/qt_popup.h"
#include "platform/qt/skin.h"
#include "platform/qt/text_view.h"
#include "shell/ui/edit_box_dialog.h"
#include "shell/ui/info_dialog.h"
#include "shell/ui/msg_dialog.h"
#include "support/wait_for.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTimer>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Runs `act` on the dialog once it is there.
void whenOpen(const std::function<void(QDialog&)>& act)
{
    QTimer::singleShot(0, qApp, [act] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog, test::kLongWaitMs));
        act(*dialog);
        if (dialog->isVisible()) {
            ADD_FAILURE() << "the dialog is still open";
            dialog->close();
        }
    });
}

template <typename Control> Control* control(QDialog& dialog, const QString& name)
{
    auto* found = dialog.findChild<Control*>(name);
    EXPECT_NE(found, nullptr) << name.toStdString();
    return found;
}

MessageView question()
{
    MessageView view;
    view.caption = u"Melovane 3.4 build(150)"_s;
    view.title = u"Achtung !"_s;
    view.text = u"Soll die Playliste ''Hauptset'' wirklich gelöscht werden ?"_s;
    view.question = true;
    view.okCaption = u"OK"_s;
    view.yesCaption = u"Ja"_s;
    view.noCaption = u"Nein"_s;
    return view;
}

MessageView note()
{
    MessageView view = question();
    view.question = false;
    return view;
}

struct Dialogs : testing::Test
{
    ~Dialogs() override
    {
        skin.clear();
        qApp->setStyleSheet({});
    }

    WarningAnswer answer(const MessageView& view, const std::function<void(QDialog&)>& act)
    {
        whenOpen(act);
        return MsgDialog(icons).ask(view);
    }

    Skin skin{*qApp};
    IconSet icons{skin};
};

TEST_F(Dialogs, AMessageShowsItsTitleTextAndTheButtonsOfItsMode)
{
    EXPECT_EQ(answer(question(),
                     [](QDialog& dialog) {
                         EXPECT_EQ(dialog.objectName(), u"frmMsg"_s);
                         EXPECT_EQ(dialog.windowTitle(), u"Melovane 3.4 build(150)"_s);
                         EXPECT_EQ(control<QLabel>(dialog, u"SkinLabel1"_s)->text(),
                                   u"Achtung !"_s);
                         EXPECT_EQ(control<TextView>(dialog, u"SkinLabel2"_s)->toPlainText(),
                                   question().text);
                         EXPECT_EQ(dialog.findChild<QPushButton*>(u"cmdOk"_s), nullptr);
                         EXPECT_EQ(dialog.findChild<QCheckBox*>(u"Check1"_s), nullptr);
                         EXPECT_EQ(control<QPushButton>(dialog, u"cmdNein"_s)->text(), u"Nein"_s);
                         control<QPushButton>(dialog, u"cmdJa"_s)->click();
                     }),
              WarningAnswer::Yes);
    EXPECT_EQ(answer(note(),
                     [](QDialog& dialog) {
                         EXPECT_EQ(dialog.findChild<QPushButton*>(u"cmdJa"_s), nullptr);
                         control<QPushButton>(dialog, u"cmdOk"_s)->click();
                     }),
              WarningAnswer::Ok);
}

TEST_F(Dialogs, EnterSaysYesEscapeSaysNoAndTheCloseBoxLeaves)
{
    EXPECT_EQ(answer(question(), [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); }),
              WarningAnswer::Yes);
    EXPECT_EQ(answer(question(), [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }),
              WarningAnswer::No);
    EXPECT_EQ(answer(question(), [](QDialog& dialog) { dialog.close(); }), WarningAnswer::Left);
}

TEST_F(Dialogs, EnterAndEscapeBothEndANote)
{
    EXPECT_EQ(answer(note(), [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Enter); }),
              WarningAnswer::Ok);
    EXPECT_EQ(answer(note(), [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }),
              WarningAnswer::Ok);
}

TEST_F(Dialogs, KeysWorkWhileTheTextHasTheFocus)
{
    const auto press = [](Qt::Key key) {
        return [key](QDialog& dialog) {
            auto* text = control<TextView>(dialog, u"SkinLabel2"_s);
            text->setFocus();
            QTest::keyClick(text, key);
        };
    };
    EXPECT_EQ(answer(question(), press(Qt::Key_Return)), WarningAnswer::Yes);
    EXPECT_EQ(answer(question(), press(Qt::Key_Escape)), WarningAnswer::No);
}

TEST_F(Dialogs, EachClickOnTheCheckBoxIsToldAtOnce)
{
    std::vector<bool> clicks;
    MessageView view = question();
    view.suppressCaption = u"Diese Meldung nicht mehr anzeigen"_s;
    view.suppressClicked = [&clicks](bool on) { clicks.push_back(on); };
    answer(view, [&](QDialog& dialog) {
        auto* box = control<QCheckBox>(dialog, u"Check1"_s);
        EXPECT_EQ(box->text(), view.suppressCaption);
        box->click();
        EXPECT_EQ(clicks, std::vector<bool>{true});
        box->click();
        dialog.close();
    });
    EXPECT_EQ(clicks, (std::vector<bool>{true, false}));
}

TEST_F(Dialogs, ALongTextIsWrappedAlsoInsideAPathAndAVeryLongOneScrolls)
{
    MessageView view = note();
    view.text = u"Die Datei:\n/"_s + u"ein_sehr_langer_ordner_ohne_blank"_s.repeated(20);
    answer(view, [](QDialog& dialog) {
        EXPECT_LT(dialog.width(), dialog.screen()->availableSize().width());
        auto* text = control<TextView>(dialog, u"SkinLabel2"_s);
        EXPECT_EQ(text->horizontalScrollBar()->maximum(), 0);
        EXPECT_EQ(text->verticalScrollBar()->maximum(), 0);
        dialog.close();
    });
    view.text = u"Eine Zeile von vielen.\n"_s.repeated(500);
    answer(view, [](QDialog& dialog) {
        EXPECT_LT(dialog.height(), dialog.screen()->availableSize().height());
        auto* text = control<TextView>(dialog, u"SkinLabel2"_s);
        EXPECT_GT(text->verticalScrollBar()->maximum(), 0);
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
}

TEST_F(Dialogs, ADialogIsAsHighAsItsText)
{
    const auto heightOf = [&](const QString& text) {
        int height = 0;
        MessageView view = note();
        view.text = text;
        answer(view, [&](QDialog& dialog) {
            height = control<TextView>(dialog, u"SkinLabel2"_s)->height();
            dialog.close();
        });
        return height;
    };
    const int one = heightOf(u"Fertig"_s);
    const int line = QFontMetrics(qApp->font()).height();
    EXPECT_LT(one, line * 2);
    EXPECT_NEAR(heightOf(u"Fertig\nFertig\nFertig"_s), one * 3, line);
}

TEST_F(Dialogs, ATextWithMarkupIsShownAsItStands)
{
    MessageView view = note();
    view.title = u"<b>Titel</b>"_s;
    view.text = u"<img src=x> & <a href=y>"_s;
    answer(view, [&](QDialog& dialog) {
        EXPECT_EQ(control<QLabel>(dialog, u"SkinLabel1"_s)->textFormat(), Qt::PlainText);
        EXPECT_EQ(control<TextView>(dialog, u"SkinLabel2"_s)->toPlainText(), view.text);
        dialog.close();
    });
}

InputView newGenre()
{
    return {u"Neues Genre"_s, u"Name des neuen Genres"_s, {}, u"OK"_s, u"Abbrechen"_s};
}

TEST(EditBoxDialogTest, TypesAtOnceAndEnterTakesTheTrimmedText)
{
    whenOpen([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), u"frmEditBox"_s);
        EXPECT_EQ(control<QLabel>(dialog, u"sklInfo"_s)->text(), u"Name des neuen Genres"_s);
        auto* edit = control<QLineEdit>(dialog, u"txtEdit"_s);
        EXPECT_TRUE(edit->hasFocus());
        QTest::keyClicks(edit, u"  Trance "_s);
        QTest::keyClick(edit, Qt::Key_Return);
    });
    EXPECT_EQ(EditBoxDialog().ask(newGenre()), u"Trance"_s);
}

TEST(EditBoxDialogTest, WithoutATextThereIsNothingToTake)
{
    whenOpen([](QDialog& dialog) {
        auto* ok = control<QPushButton>(dialog, u"cmdOk"_s);
        auto* edit = control<QLineEdit>(dialog, u"txtEdit"_s);
        EXPECT_FALSE(ok->isEnabled());
        QTest::keyClicks(edit, u"   "_s);
        EXPECT_FALSE(ok->isEnabled());
        QTest::keyClick(edit, Qt::Key_Return);
        EXPECT_TRUE(dialog.isVisible());
        QTest::keyClicks(edit, u"x"_s);
        EXPECT_TRUE(ok->isEnabled());
        control<QPushButton>(dialog, u"cmdExit"_s)->click();
    });
    EXPECT_EQ(EditBoxDialog().ask(newGenre()), std::nullopt);
}

TEST(EditBoxDialogTest, EscapeCancelsAndAGivenTextIsSelected)
{
    InputView view = newGenre();
    view.text = u"House"_s;
    whenOpen([](QDialog& dialog) {
        auto* edit = control<QLineEdit>(dialog, u"txtEdit"_s);
        EXPECT_EQ(edit->selectedText(), u"House"_s);
        QTest::keyClick(edit, Qt::Key_Escape);
    });
    EXPECT_EQ(EditBoxDialog().ask(view), std::nullopt);
}

TEST(InfoDialogTest, ItsFactsCanBeCopied)
{
    whenOpen([](QDialog& dialog) {
        EXPECT_EQ(dialog.objectName(), u"frmInfo"_s);
        EXPECT_EQ(dialog.windowTitle(), u"Über Melovane DB"_s);
        auto* facts = control<TextView>(dialog, u"Facts"_s);
        facts->selectAll();
        facts->copy();
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    InfoDialog().show({u"Über Melovane DB"_s,
                       u"Melovane DB"_s,
                       u"Musikdatenbank"_s,
                       {u"Datenbank: /a/b.mdb"_s, u"Einstellungen: /a/b.ini"_s},
                       u"OK"_s});
    EXPECT_EQ(QApplication::clipboard()->text(), u"Datenbank: /a/b.mdb\nEinstellungen: /a/b.ini"_s);
}

struct Popup : Dialogs
{
    /// Shows the entries and runs `act` on the menu.
    int show(const std::function<void(QMenu&)>& act)
    {
        popup.Create();
        popup.Append({1001, u"Rock & Roll"_s, true, false, {}});
        popup.AppendSeparator();
        popup.Append({1004, u"Sortieren nach Namen"_s, true, true, u"all"_s});
        popup.Append({1005, u"Sortieren nach Datum"_s, false, false, {}});
        QTimer::singleShot(0, qApp, [act] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            act(*menu);
            menu->close();
        });
        return popup.Show();
    }

    QtPopup popup{icons};
};

TEST_F(Popup, GivesTheNumberOfTheChosenEntry)
{
    const int chosen = show([](QMenu& menu) {
        ASSERT_EQ(menu.actions().size(), 4);
        EXPECT_EQ(menu.actions()[0]->text(), u"Rock && Roll"_s);
        EXPECT_TRUE(menu.actions()[1]->isSeparator());
        EXPECT_TRUE(menu.actions()[2]->isChecked());
        EXPECT_FALSE(menu.actions()[3]->isEnabled());
        QTest::keyClick(&menu, Qt::Key_Down);
        QTest::keyClick(&menu, Qt::Key_Down);
        QTest::keyClick(&menu, Qt::Key_Return);
    });
    EXPECT_EQ(chosen, 1004);
}

TEST_F(Popup, LeftWithoutAChoiceItGivesNothingAndForgetsItsEntries)
{
    EXPECT_EQ(show([](QMenu& menu) { QTest::keyClick(&menu, Qt::Key_Escape); }), 0);
    EXPECT_EQ(popup.Show(), 0) << "an empty menu is not shown";
}

} // namespace
} // namespace melovane
