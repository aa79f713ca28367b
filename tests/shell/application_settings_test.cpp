#include "platform/linux/ini_profile.h"
#include "platform/qt/data_grid.h"
#include "shell/application_fixture.h"
#include "support/wait_for.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QProcess>
#include <QToolButton>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The whole console while another process has changed the settings.
class ChangedSettingsTest : public test::ApplicationTest
{
protected:
    ChangedSettingsTest()
    {
        suite.library.add({.Titel = u"Licht"_s});
        suite.library.add({.Titel = u"Schatten"_s});
        chooseEnglish();
        suite.write(u"melovane.ini"_s, "[Global]\nLiveSuche=1\n");
    }

    /// Writes into the settings file as the settings program does, and tells the console from
    /// another process, whose end is waited for.
    void change(const std::vector<ProfileEntry>& entries)
    {
        const QString file = suite.file(u"melovane.ini"_s);
        ASSERT_TRUE(IniProfile(suite.files).writeAll(file, entries));
        const auto settings = suite.folders.makeSettings();
        QProcess other;
        other.start(QString::fromUtf8(MLV_SUITE_SENDER),
                    {suite.folders.environment().runtimeFolder(),
                     QString::number(settings->MessageHandleDB()), u"number"_s, u"1039"_s, u"0"_s,
                     u"0"_s});
        ASSERT_TRUE(test::waitFor([&other] { return other.state() == QProcess::NotRunning; }));
    }

    void speak(const QString& file) { change({{u"Value"_s, u"Sprach.Datei"_s, file}}); }

    template <typename Control> static Control& control(QMainWindow& window, const QString& name)
    {
        auto* const found = window.findChild<Control*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return *found;
    }

    /// All tracks are found, and the keyboard is in their table.
    static DataGrid& listed(QMainWindow& window)
    {
        QTest::keyClicks(control<QComboBox>(window, u"Text1"_s).lineEdit(), u"*"_s);
        auto& library = control<DataGrid>(window, u"TDBGrid1"_s);
        EXPECT_TRUE(test::waitFor([&library] { return library.model()->rowCount() == 2; }));
        window.activateWindow();
        library.setFocus();
        return library;
    }

    /// Words of each corner of the window.
    static QStringList words(QMainWindow& window)
    {
        auto& library = control<DataGrid>(window, u"TDBGrid1"_s);
        const auto heading = [&library](const QString& field) {
            return library.model()
                ->headerData(library.columnOf(field), Qt::Horizontal, Qt::DisplayRole)
                .toString();
        };
        return {control<QAction>(window, u"mnuExit"_s).text().remove(u'&'),
                heading(u"Kommentar"_s),
                control<QLabel>(window, u"MatchCount"_s).text(),
                control<QLineEdit>(window, u"TreeFilter"_s).placeholderText(),
                control<QToolButton>(window, u"ButtonShowDir"_s).text(),
                control<QToolButton>(window, u"all.refresh"_s).toolTip(),
                control<QWidget>(window, u"PlaylistTree"_s).accessibleName()};
    }
};

TEST_F(ChangedSettingsTest, TheWindowSpeaksAnotherLanguageAtOnceAndTheFirstOneAgain)
{
    int looks = 0;
    run([&](QMainWindow& window) {
        ++looks;
        listed(window);
        const QStringList german = words(window);
        EXPECT_EQ(german.first(), u"Beenden"_s);
        speak(u"lang_English.ini"_s);
        const QStringList english = words(window);
        ASSERT_EQ(english.size(), german.size());
        EXPECT_EQ(english.first(), u"Quit"_s);
        EXPECT_EQ(english[1], u"Comment"_s);
        for (qsizetype i = 0; i < german.size(); ++i) {
            EXPECT_NE(english[i], german[i]) << german[i].toStdString();
        }
        speak(u"lang_Deutsch.ini"_s);
        EXPECT_EQ(words(window), german);
    });
    EXPECT_EQ(looks, 1);
}

TEST_F(ChangedSettingsTest, AHeadingOfTheUsersOwnStaysInEveryLanguage)
{
    run([&](QMainWindow& window) {
        auto& library = control<DataGrid>(window, u"TDBGrid1"_s);
        std::vector<GridColumn> columns = library.columns();
        for (GridColumn& column : columns) {
            column.heading = column.field == u"Titel" ? u"Mein Lied"_s : column.heading;
        }
        library.arrange(columns);
        speak(u"lang_English.ini"_s);
        EXPECT_EQ(library.model()->headerData(library.columnOf(u"Titel"_s), Qt::Horizontal,
                                              Qt::DisplayRole),
                  u"Mein Lied"_s);
    });
}

TEST_F(ChangedSettingsTest, AKeyThatWasReboundActsAtOnceAndTheOldOneNoMore)
{
    run([&](QMainWindow& window) {
        DataGrid& library = listed(window);
        change({{u"Tastatur"_s, u"tooltip.all.data.select"_s, u"F8-TASTE"_s}});
        QTest::keyClick(&library, Qt::Key_F8);
        EXPECT_EQ(library.selectionModel()->selectedRows().size(), 2);
    });
}

TEST_F(ChangedSettingsTest, FontColoursAndThemeAreThoseOfTheSettingsAtOnce)
{
    QDir(suite.dataFolder()).mkdir(u"Skin"_s);
    suite.write(u"Skin/night.skn"_s, "Name=Nacht\nText=#0a0b0c\n");
    run([&](QMainWindow& window) {
        auto& library = control<DataGrid>(window, u"TDBGrid1"_s);
        const int before = library.font().pointSize();
        change({{u"Color"_s, u"FontSize"_s, u"17"_s},
                {u"Global"_s, u"SkinFileName"_s, u"night.skn"_s}});
        EXPECT_NE(before, 17);
        EXPECT_EQ(library.font().pointSize(), 17);
        EXPECT_EQ(window.palette().color(QPalette::WindowText), QColor(0x0a, 0x0b, 0x0c));
    });
}

} // namespace
} // namespace melovane
