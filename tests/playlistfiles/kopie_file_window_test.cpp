#include "platform/qt/icon_set.h"
#include "platform/qt/qt_message_loop.h"
#include "platform/qt/skin.h"
#include "playlistfiles/export_fixture.h"
#include "playlistfiles/ui/kopie_file_dialog.h"
#include "support/answer_queue.h"
#include "support/text_catalogue.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The real window over real files; the user acts from a timer while it is open.
class KopieFileWindowTest : public test::ExportFixture
{
protected:
    KopieFileWindowTest()
    {
        catalogue.fill();
        addList({addTrack({.Titel = u"Licht"_s, .Genre = u"House"_s}, QByteArray(3 << 20, 'x')),
                 addTrack({.Titel = u"Meer"_s, .Genre = u"Pop"_s})});
        settings->WriteKeyValue(u"Global"_s, u"SavePlaylistFilesPath"_s, target);
    }

    ~KopieFileWindowTest() override
    {
        skin.clear();
        qApp->setStyleSheet({});
    }

    /// Shows the window; `user` finds it open, and it is closed behind him if he has not done so.
    void show(const std::function<void()>& user)
    {
        QTimer::singleShot(0, qApp, [&] {
            user();
            if (QWidget* left = QApplication::activeModalWidget()) {
                left->close();
            }
        });
        logic.SetPNID(list);
        logic.Show();
    }

    template <typename Control> [[nodiscard]] Control& control(const QString& name) const
    {
        auto* found = QApplication::activeModalWidget()->findChild<Control*>(name);
        Q_ASSERT(found);
        return *found;
    }

    test::TextCatalogue catalogue;
    test::AnswerQueue answers;
    Skin skin{*qApp};
    IconSet icons{skin};
    QtMessageLoop turning;
    KopieFileDialog form{icons, catalogue.texts};
    frmKopieFile logic{{{*suite.engine, *settings, files, locator, turning},
                        *settings,
                        catalogue.texts,
                        answers,
                        form,
                        [](const std::vector<ExportFault>&) { return QString(); }}};
};

TEST_F(KopieFileWindowTest, TypingATemplateRenewsThePreviewAndDropsForbiddenSigns)
{
    show([this] {
        auto& text = control<QLineEdit>(u"Text1"_s);
        text.selectAll();
        QTest::keyClicks(&text, u"%G:/%N?"_s);
        EXPECT_EQ(text.text(), u"%G/%N"_s);
        EXPECT_EQ(control<QLabel>(u"sklBeispiel"_s).text(), u"Beispiel: Genre/Titel.mp3"_s);
        text.setCursorPosition(2);
        QTest::keyClicks(&text, u"*a"_s);
        EXPECT_EQ(text.text(), u"%Ga/%N"_s) << "what is dropped does not move the cursor";
    });
}

TEST_F(KopieFileWindowTest, AClickInTheListAndAnOptionSetTheTemplate)
{
    show([this] {
        auto& offered = control<QListWidget>(u"List1"_s);
        QTest::mouseClick(offered.viewport(), Qt::LeftButton, {},
                          offered.visualItemRect(offered.item(4)).center());
        auto& text = control<QLineEdit>(u"Text1"_s);
        EXPECT_EQ(text.text(), u"%G/%A/%O"_s);
        EXPECT_TRUE(control<QRadioButton>(u"opExpDir_2"_s).isChecked());
        EXPECT_TRUE(control<QRadioButton>(u"opExpFile_0"_s).isChecked());
        control<QRadioButton>(u"opExpFile_2"_s).click();
        EXPECT_EQ(text.text(), u"%G/%A/%I - %N"_s);
        EXPECT_EQ(offered.currentItem(), nullptr) << "that one is not offered";
        QTest::mouseClick(offered.viewport(), Qt::LeftButton, {},
                          offered.visualItemRect(offered.item(0)).center());
        EXPECT_EQ(text.text(), u"%O"_s);
        text.selectAll();
        QTest::keyClicks(&text, u"%TP"_s);
        EXPECT_FALSE(control<QRadioButton>(u"opExpFile_0"_s).isChecked());
        EXPECT_FALSE(control<QRadioButton>(u"opExpDir_3"_s).isChecked());
    });
}

TEST_F(KopieFileWindowTest, EnterStartsTheExportAndTheLogShowsEachFile)
{
    show([this] {
        QTest::keyClick(&control<QLineEdit>(u"txtDir"_s), Qt::Key_Return);
        EXPECT_EQ(control<QPlainTextEdit>(u"txProgress"_s).toPlainText().section(u'\n', 0, 1),
                  u"Copy: ( 1 / 2 ) --> Licht\nCopy: ( 2 / 2 ) --> Meer"_s);
        EXPECT_EQ(control<QLabel>(u"sklErgebnis"_s).text(), u"2 von 2 Titeln kopiert."_s);
        EXPECT_TRUE(control<QPushButton>(u"cmdStart"_s).isEnabled());
    });
    EXPECT_EQ(copies(), (QStringList{u"Licht.mp3"_s, u"Meer.mp3"_s}));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(KopieFileWindowTest, TheWindowLivesDuringTheCopyAndEscapeEndsIt)
{
    bool pressed = false;
    show([&] {
        auto& cancel = control<QPushButton>(u"cmdAbbruch"_s);
        auto& start = control<QPushButton>(u"cmdStart"_s);
        QTimer::singleShot(0, &cancel, [&] {
            pressed = true;
            EXPECT_FALSE(start.isEnabled());
            EXPECT_EQ(cancel.text(), u"Abbrechen"_s);
            QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
        });
        start.click();
        EXPECT_TRUE(control<QPlainTextEdit>(u"txProgress"_s)
                        .toPlainText()
                        .contains(u"Vorgang abgebrochen"_s));
        EXPECT_TRUE(start.isEnabled());
    });
    EXPECT_TRUE(pressed);
    EXPECT_TRUE(copies().isEmpty());
}

TEST_F(KopieFileWindowTest, TheCloseBoxDuringTheCopyStopsItAndTheWindowGoes)
{
    show([this] {
        QTimer::singleShot(0, qApp, [] { QApplication::activeModalWidget()->close(); });
        control<QPushButton>(u"cmdStart"_s).click();
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    });
    EXPECT_TRUE(copies().isEmpty());
}

TEST_F(KopieFileWindowTest, ANameThatLooksLikeMarkupStaysAsItIs)
{
    addList({addTrack({.Titel = u"x"_s})}, u"<b>fett</b> & \"so\""_s);
    show([this] {
        EXPECT_EQ(control<QLabel>(u"sklInfo"_s).textFormat(), Qt::PlainText);
        EXPECT_TRUE(control<QLabel>(u"sklInfo"_s).text().contains(u"<b>fett</b> & \"so\""_s));
    });
}

TEST_F(KopieFileWindowTest, EveryControlThatTakesTheKeyboardHasAName)
{
    show([] {
        for (const QWidget* control : QApplication::activeModalWidget()->findChildren<QWidget*>()) {
            if ((control->focusPolicy() & Qt::TabFocus) != 0 && control->isVisible()) {
                const auto* button = qobject_cast<const QAbstractButton*>(control);
                EXPECT_FALSE(control->accessibleName().isEmpty() &&
                             (button == nullptr || button->text().isEmpty()))
                    << control->objectName().toStdString();
            }
        }
    });
}

class KopieFileLook : public KopieFileWindowTest, public testing::WithParamInterface<const char*>
{};

TEST_P(KopieFileLook, FitsOnAScreenAndShowsWholeTexts)
{
    QFile theme(u"%1/themes/%2.skn"_s.arg(QString::fromUtf8(MLV_RESOURCE_FOLDER),
                                          QString::fromUtf8(GetParam())));
    ASSERT_TRUE(theme.open(QIODevice::ReadOnly));
    ASSERT_TRUE(skin.load(QString::fromUtf8(theme.readAll())));
    show([this] {
        control<QListWidget>(u"List1"_s).setCurrentRow(2);
        control<QPushButton>(u"cmdStart"_s).click();
        QWidget* window = QApplication::activeModalWidget();
        EXPECT_LE(window->width(), 1000);
        EXPECT_LE(window->height(), 760);
        for (const auto* button : window->findChildren<QAbstractButton*>()) {
            EXPECT_GE(button->width(), button->sizeHint().width()) << button->text().toStdString();
        }
        // Where the screen has 600 lines the window manager leaves some 540 of them.
        window->resize(1, 1);
        EXPECT_LE(window->height(), 540);
        const auto& start = control<QPushButton>(u"cmdStart"_s);
        EXPECT_TRUE(window->rect().contains(start.geometry()));
        for (const auto* button : window->findChildren<QAbstractButton*>()) {
            EXPECT_GE(button->height(), button->sizeHint().height())
                << button->text().toStdString();
        }
        EXPECT_GT(control<QListWidget>(u"List1"_s).viewport()->height(), 0);
        const QString folder = qEnvironmentVariable("MLV_PICTURES");
        if (!folder.isEmpty()) {
            EXPECT_TRUE(window->grab().save(
                u"%1/export-%2.png"_s.arg(folder, QString::fromUtf8(GetParam()))));
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Themes, KopieFileLook, testing::Values("melovane-dark", "melovane-light"));

} // namespace

} // namespace melovane
