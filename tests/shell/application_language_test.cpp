#include "platform/linux/ini_profile.h"
#include "shell/application_fixture.h"
#include "support/text_catalogue.h"
#include "support/wait_for.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QDialog>
#include <QHeaderView>
#include <QProcess>
#include <QSet>

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The mark of a track whose file is missing.
constexpr int kMissing = 2;

/// Rows of a view that are looked at: headings stand on top.
constexpr int kRows = 60;

QString plain(QString text)
{
    return text.remove(u'&');
}

QStringList textsOf(const QAbstractItemView& view)
{
    QStringList found;
    const QAbstractItemModel* const model = view.model();
    for (int row = 0; model != nullptr && row < std::min(model->rowCount(), kRows); ++row) {
        for (int column = 0; column < model->columnCount(); ++column) {
            found.append(model->index(row, column).data().toString());
        }
    }
    for (int section = 0; model != nullptr && section < model->columnCount(); ++section) {
        found.append(model->headerData(section, Qt::Horizontal).toString());
        found.append(model->headerData(section, Qt::Horizontal, Qt::ToolTipRole).toString());
    }
    return found;
}

/// All that a window says, seen or not.
QStringList textsOf(const QWidget& window)
{
    QStringList found;
    QList<const QWidget*> controls{&window};
    for (const QWidget* control : window.findChildren<QWidget*>()) {
        controls.append(control);
    }
    for (const QWidget* control : controls) {
        found << control->windowTitle() << control->toolTip() << control->accessibleName();
        if (const auto* label = qobject_cast<const QLabel*>(control)) {
            found.append(label->text());
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(control)) {
            found.append(plain(button->text()));
        } else if (const auto* line = qobject_cast<const QLineEdit*>(control)) {
            found.append(line->placeholderText());
        } else if (const auto* view = qobject_cast<const QAbstractItemView*>(control);
                   view != nullptr && qobject_cast<const QHeaderView*>(control) == nullptr) {
            found.append(textsOf(*view));
        }
        for (const QAction* action : control->actions()) {
            found << plain(action->text()) << action->toolTip();
        }
    }
    return found;
}

/// The whole console, whose language another process changes.
class LanguageTest : public test::ApplicationTest
{
protected:
    LanguageTest()
    {
        // Twice the same, and one without its file: doubles, and something to find again.
        for (const QString& name : {u"a.mp3"_s, u"b.mp3"_s}) {
            tracks.append(suite.library.add({.Titel = u"Licht"_s,
                                             .Interpret = u"Mara"_s,
                                             .Path = u"/music/"_s,
                                             .DName = name,
                                             .DTimeMsec = 60'000}));
        }
        suite.library.add({.Titel = u"Fort"_s, .Path = u"/music/"_s, .DEL = kMissing});
        suite.library.addPlaylist({.Name = u"Abend"_s,
                                   .GRID = suite.library.addGroup(u"Samstag"_s),
                                   .tracks = tracks,
                                   .IsPlay = true});
        german.fill();
        chooseEnglish();
        english.folders.install(u"lang_English.ini"_s, suite.read(u"lang_English.ini"_s));
        english.folders.install(u"melovane.ini"_s, "[Value]\nSprach.Datei=lang_English.ini\n");
        english.fill();
        suite.write(u"melovane.ini"_s, "[Global]\nLiveSuche=1\n");
    }

    /// Writes as the settings program does, and tells the console from another process.
    void speak(const QString& file)
    {
        ASSERT_TRUE(
            IniProfile(suite.files)
                .writeAll(suite.file(u"melovane.ini"_s), {{u"Value"_s, u"Sprach.Datei"_s, file}}));
        const auto settings = suite.folders.makeSettings();
        QProcess other;
        other.start(QString::fromUtf8(MLV_SUITE_SENDER),
                    {suite.folders.environment().runtimeFolder(),
                     QString::number(settings->MessageHandleDB()), u"number"_s, u"1039"_s, u"0"_s,
                     u"0"_s});
        ASSERT_TRUE(test::waitFor([&other] { return other.state() == QProcess::NotRunning; }));
    }

    /// Texts of one language that are none of the other.
    static QSet<QString> only(const ConfigObjects& language, const ConfigObjects& other)
    {
        QSet<QString> found;
        QSet<QString> shared;
        for (const ConfigObject* item : language.AllObjects()) {
            found << item->Description << item->DescriptionEx;
        }
        for (const ConfigObject* item : other.AllObjects()) {
            shared << item->Description << item->DescriptionEx;
        }
        found.subtract(shared);
        // A field of a list's rows without words of its own: it has its name in each language.
        found.remove(u"Command"_s);
        return found;
    }

    static QStringList left(const QWidget& window, const QSet<QString>& language)
    {
        QStringList found;
        for (const QString& text : textsOf(window)) {
            if (language.contains(text)) {
                found.append(text);
            }
        }
        found.removeDuplicates();
        return found;
    }

    /// Opens a dialog by its entry of the menus and acts in it. False when none has come.
    static bool inDialog(QMainWindow& window,
                         const QString& entry,
                         const std::function<void(QDialog& dialog)>& act)
    {
        bool isOpen = false;
        QTimer hand;
        QObject::connect(&hand, &QTimer::timeout, &window, [&] {
            auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog != nullptr && !isOpen) {
                isOpen = true;
                act(*dialog);
                dialog->reject();
            }
        });
        hand.start(std::chrono::milliseconds(5));
        window.findChild<QAction*>(entry)->trigger();
        return isOpen;
    }

    /// German to English and back; each time no window, open or not, says anything of the former.
    void expectWholeChange()
    {
        const QSet<QString> ofGerman = only(german.texts, english.texts);
        const QSet<QString> ofEnglish = only(english.texts, german.texts);
        const auto rest = [&](const QSet<QString>& language) {
            QStringList found;
            for (const QWidget* window : QApplication::topLevelWidgets()) {
                found += left(*window, language);
            }
            return found.join(u" | "_s).toStdString();
        };
        EXPECT_NE(rest(ofGerman), "");
        EXPECT_EQ(rest(ofEnglish), "");
        speak(u"lang_English.ini"_s);
        EXPECT_EQ(rest(ofGerman), "");
        EXPECT_NE(rest(ofEnglish), "");
        speak(u"lang_Deutsch.ini"_s);
        EXPECT_EQ(rest(ofEnglish), "");
    }

    test::TextCatalogue german;
    test::TextCatalogue english;
    QStringList tracks;
};

TEST_F(LanguageTest, TheWholeWindowSpeaksTheOtherLanguageAtOnceAndTheFirstOneAgain)
{
    int looks = 0;
    run([&](QMainWindow&) {
        ++looks;
        expectWholeChange();
    });
    EXPECT_EQ(looks, 1);
}

class DialogLanguageTest : public LanguageTest, public testing::WithParamInterface<const char*>
{};

TEST_P(DialogLanguageTest, SpeaksTheOtherLanguageWhileItIsOpen)
{
    int looks = 0;
    run([&](QMainWindow& window) {
        EXPECT_TRUE(inDialog(window, QString::fromUtf8(GetParam()), [&](QDialog&) {
            ++looks;
            expectWholeChange();
        }));
    });
    EXPECT_EQ(looks, 1);
}

INSTANTIATE_TEST_SUITE_P(Menus,
                         DialogLanguageTest,
                         testing::Values("mnuBackups",
                                         "mnuCheckLibrary",
                                         "mnuDatenbereinigung",
                                         "mnuRecycler",
                                         "mnuNoExistFind",
                                         "mnuDoubles",
                                         "mnuAktivePlaystFiles",
                                         "mnuPlaylist",
                                         "mnuDatenbank",
                                         "mnuHealth",
                                         "mnuFont",
                                         "mnuUeber"),
                         [](const auto& menu) { return std::string(menu.param); });

} // namespace
} // namespace melovane
