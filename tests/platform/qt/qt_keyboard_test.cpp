#include "platform/qt/qt_keyboard.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

QKeyEvent keyAt(int key, quint32 place, Qt::KeyboardModifiers modifiers = {})
{
    return {QEvent::KeyPress, key, modifiers, place, 0, 0};
}

TEST(KeyCodes, ADigitKeepsItsCodeUnderShiftByItsPlace)
{
    EXPECT_EQ(keyCodeOf(keyAt(Qt::Key_Exclam, 10, Qt::ShiftModifier)), '1');
    EXPECT_EQ(keyCodeOf(keyAt(Qt::Key_Equal, 19, Qt::ShiftModifier)), '0');
    EXPECT_EQ(keyCodeOf(keyAt(Qt::Key_7, 0)), '7');
}

TEST(KeyCodes, LettersFunctionKeysAndNumpadHaveTheirCodes)
{
    EXPECT_EQ(keyCodeOf(keyAt(Qt::Key_C, 54)), 'C');
    EXPECT_EQ(keyCodeOf(keyAt(Qt::Key_F12, 96)), 123);
    EXPECT_EQ(keyCodeOf(keyAt(Qt::Key_5, 84, Qt::KeypadModifier)), 101);
    EXPECT_EQ(keyCodeOf(keyAt(Qt::Key_Delete, 119)), 46);
    EXPECT_EQ(keyCodeOf(keyAt(Qt::Key_Enter, 104, Qt::KeypadModifier)), 13);
    EXPECT_EQ(keyCodeOf(keyAt(Qt::Key_Udiaeresis, 0)), 186);
    EXPECT_EQ(keyCodeOf(keyAt(Qt::Key_unknown, 0)), 0);
}

class KeyboardTest : public testing::Test
{
protected:
    KeyboardTest()
    {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(&line);
        keyboard.setHandler(&window, [this] {
            ++asked;
            return takes;
        });
        window.show();
        line.setFocus();
    }

    void send(QEvent::Type type, int key, Qt::KeyboardModifiers modifiers, bool repeat = false)
    {
        QKeyEvent event(type, key, modifiers, QString(QChar(key)), repeat);
        event.setAccepted(false);
        QApplication::sendEvent(&line, &event);
    }

    QWidget window;
    QLineEdit line;
    QtKeyboard keyboard;
    int asked = 0;
    bool takes = false;
};

TEST_F(KeyboardTest, AKeyIsDownFromItsPressToItsRelease)
{
    QTest::keyPress(&line, Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(keyboard.isDown('C'));
    EXPECT_TRUE(keyboard.isDown(17));
    EXPECT_FALSE(keyboard.isDown(16));
    QTest::keyRelease(&line, Qt::Key_C, Qt::NoModifier);
    EXPECT_FALSE(keyboard.isDown('C'));
    EXPECT_FALSE(keyboard.isDown(17));
}

TEST_F(KeyboardTest, OnePressIsAskedForOnceThoughItArrivesSeveralTimes)
{
    send(QEvent::ShortcutOverride, Qt::Key_X, {});
    send(QEvent::KeyPress, Qt::Key_X, {});
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(line.text(), u"X"_s);
    send(QEvent::KeyRelease, Qt::Key_X, {});
    send(QEvent::KeyPress, Qt::Key_X, {});
    EXPECT_EQ(asked, 2);
}

TEST_F(KeyboardTest, ATakenKeyReachesNeitherShortcutNorControl)
{
    QAction action;
    action.setShortcut(Qt::CTRL | Qt::Key_K);
    window.addAction(&action);
    int triggered = 0;
    QObject::connect(&action, &QAction::triggered, &window, [&triggered] { ++triggered; });
    takes = true;
    QTest::keyClick(&line, Qt::Key_K, Qt::ControlModifier);
    QTest::keyClick(&line, Qt::Key_X);
    EXPECT_EQ(triggered, 0);
    EXPECT_EQ(line.text(), QString());
}

TEST_F(KeyboardTest, AHeldKeyIsAskedForAtEachRepeatAndStaysTaken)
{
    takes = true;
    send(QEvent::KeyPress, Qt::Key_X, {});
    takes = false;
    send(QEvent::KeyPress, Qt::Key_X, {}, true);
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(line.text(), QString()) << "the repeats belong to whom the press went to";
    send(QEvent::KeyRelease, Qt::Key_X, {}, true);
    EXPECT_TRUE(keyboard.isDown('X')) << "a repeat's release is none";
}

TEST_F(KeyboardTest, KeysOfOtherWindowsChangeTheStateAlone)
{
    takes = true;
    QLineEdit other;
    other.show();
    QTest::keyPress(&other, Qt::Key_X);
    EXPECT_TRUE(keyboard.isDown('X'));
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(other.text(), u"x"_s);
}

TEST_F(KeyboardTest, MouseButtonsCountAsKeys)
{
    QTest::mousePress(&line, Qt::LeftButton, Qt::ControlModifier);
    EXPECT_TRUE(keyboard.isDown(1));
    EXPECT_TRUE(keyboard.isDown(17));
    QTest::mouseRelease(&line, Qt::LeftButton);
    EXPECT_FALSE(keyboard.isDown(1));
}

TEST_F(KeyboardTest, NoKeyStaysDownWhenTheProgramLosesTheKeyboard)
{
    QTest::keyPress(&line, Qt::Key_C, Qt::ControlModifier);
    QEvent away(QEvent::ApplicationDeactivate);
    QApplication::sendEvent(qApp, &away);
    EXPECT_FALSE(keyboard.isDown('C'));
    EXPECT_FALSE(keyboard.isDown(17));
}

} // namespace
} // namespace melovane
