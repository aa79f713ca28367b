#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/melovane_configuration.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/skin.h"
#include "settings/ui/settings_window.h"
#include "support/accessible_walk.h"
#include "support/text_catalogue.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The settings window over a real settings file; this test is console, disk and sound card.
struct SettingsWindowTest : testing::Test
{
    SettingsWindowTest()
    {
        QFile english(QString::fromUtf8(MLV_RESOURCE_FOLDER) + u"/languages/lang_English.ini"_s);
        EXPECT_TRUE(english.open(QIODevice::ReadOnly));
        catalogue.folders.install(u"lang_English.ini"_s, english.readAll());
        catalogue.folders.install(u"melovane.ini"_s,
                                  "; mine\n[Global]\nForeign=x\n[WarnMeldung]\nMelovaneDB.a=1\n");
        catalogue.fill();
        settings = catalogue.folders.makeSettings();
        draft = std::make_unique<SettingDraft>(catalogue.folders.profile(), file());
        values = std::make_unique<SettingValues>(*draft, *settings, catalogue.texts);
        const ConfigObjects* const languages[] = {&catalogue.texts};
        search = std::make_unique<SettingSearch>(languages);
        desk = std::make_unique<SettingsDesk>(SettingsDesk{
            .draft = *draft,
            .values = *values,
            .keys = keys(),
            .hints = hints(),
            .search = *search,
            .texts = catalogue.texts,
            .skin = skin,
            .icons = icons,
            .cards = [] { return QStringList{u"Kopfhörer"_s}; },
            .testTone =
                [this](const QString& card, int volume) {
                    tones.append(card + u' ' + QString::number(volume));
                    return card.isEmpty();
                },
            .themes =
                [this] {
                    return std::vector<SettingValues::Choice>{
                        {values->defaultValue(*findEntry(u"Global", u"SkinFileName")),
                         u"Desktop"_s},
                        {u"dark.skn"_s, u"Dunkel"_s}};
                },
            .languages =
                [] {
                    return std::vector<SettingValues::Choice>{
                        {u"lang_Deutsch.ini"_s, u"Deutsch"_s},
                        {u"lang_English.ini"_s, u"English"_s}};
                },
            .nameExample = [](const QString& format) { return u'<' + format + u'>'; },
            .chooseFolder = [](QWidget*, const QString&,
                               const QString&) { return u"/music/lists"_s; },
            .chooseLibrary = [](QWidget*, const QString&, const QString&) { return QString(); },
            .chooseColour = [](QWidget*, const QString&,
                               const QColor&) { return QColor(0x11, 0x22, 0x33); }});
        window = std::make_unique<SettingsWindow>(*desk, [this] {
            ++applied;
            return draft->write();
        });
        window->show();
    }

    KeyBindings& keys()
    {
        m_keys = std::make_unique<KeyBindings>(*draft, catalogue.texts);
        return *m_keys;
    }

    HiddenHints& hints()
    {
        m_hints = std::make_unique<HiddenHints>(*draft, catalogue.texts);
        return *m_hints;
    }

    [[nodiscard]] QString file() { return catalogue.folders.configFile(u"melovane.ini"_s); }

    [[nodiscard]] QString stored(const QString& section, const QString& key)
    {
        return catalogue.folders.profile().value(file(), section, key).value_or(u"-"_s);
    }

    template <typename Control> Control* find(const QString& name)
    {
        auto* const control = window->findChild<Control*>(name);
        EXPECT_NE(control, nullptr) << name.toStdString();
        return control;
    }

    void press(const QString& button)
    {
        QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton);
    }

    [[nodiscard]] QString state() { return find<QLabel>(u"lblChanges"_s)->text(); }

    QTreeWidgetItem* keyRow(const QString& id)
    {
        for (QTreeWidgetItemIterator it(find<QTreeWidget>(u"tblKeys"_s)); *it != nullptr; ++it) {
            if ((*it)->data(0, Qt::UserRole).toString() == id) {
                return *it;
            }
        }
        ADD_FAILURE() << id.toStdString();
        return nullptr;
    }

    TextCatalogue catalogue;
    std::unique_ptr<GlobalSettings> settings;
    std::unique_ptr<SettingDraft> draft;
    std::unique_ptr<SettingValues> values;
    std::unique_ptr<KeyBindings> m_keys;
    std::unique_ptr<HiddenHints> m_hints;
    std::unique_ptr<SettingSearch> search;
    Skin skin{*qApp};
    IconSet icons{skin};
    std::unique_ptr<SettingsDesk> desk;
    std::unique_ptr<SettingsWindow> window;
    QStringList tones;
    int applied = 0;
};

TEST_F(SettingsWindowTest, ATitleBarHasRoomOnTheScreen)
{
    const QRect area = window->screen()->availableGeometry();
    EXPECT_GT(window->pos().y(), area.top());
    EXPECT_LE(window->frameGeometry().bottom(), area.bottom());
}

TEST_F(SettingsWindowTest, TheCapsOfAKeyHaveRoomInTheirRow)
{
    window->showPage(SettingPage::Keys);
    const auto* const table = window->findChild<QTreeWidget*>(u"tblKeys"_s);
    constexpr int kAround = 10; // edge of the cap and of the row, above and below
    for (QTreeWidgetItemIterator it(const_cast<QTreeWidget*>(table)); *it != nullptr; ++it) {
        const int row = table->visualItemRect(*it).height();
        ASSERT_GE(row, table->fontMetrics().height() + kAround) << (*it)->text(0).toStdString();
    }
}

TEST_F(SettingsWindowTest, OneSettingIsShownOnItsPageWithTheKeyboardInItsRow)
{
    QTest::keyClicks(find<QLineEdit>(u"txtFind"_s), u"xyz"_s);
    window->showSetting(*findEntry(u"Color", u"FontSize"));
    EXPECT_EQ(window->page(), SettingPage::Look);
    EXPECT_EQ(window->focusWidget(), find<QSpinBox>(u"FontSize"_s));
    EXPECT_TRUE(find<QSpinBox>(u"FontSize"_s)->isVisible());
}

TEST_F(SettingsWindowTest, EverySettingHasAControlThatShowsItsValue)
{
    for (const SettingEntry& entry : settingEntries()) {
        const QString name = entry.kind == SettingKind::Choice
                                 ? entry.key.toString() + u'.' + values->value(entry)
                                 : entry.key.toString();
        auto* const control = find<QWidget>(name);
        ASSERT_NE(control, nullptr);
        if (auto* const spin = qobject_cast<QSpinBox*>(control)) {
            EXPECT_EQ(QString::number(spin->value()), values->value(entry)) << name.toStdString();
        } else if (auto* const tick = qobject_cast<QCheckBox*>(control)) {
            EXPECT_EQ(tick->isChecked(), !values->value(entry).isEmpty()) << name.toStdString();
        } else if (auto* const radio = qobject_cast<QRadioButton*>(control)) {
            EXPECT_TRUE(radio->isChecked()) << name.toStdString();
        } else if (auto* const line = qobject_cast<QLineEdit*>(control)) {
            EXPECT_EQ(line->text(), values->value(entry)) << name.toStdString();
        }
    }
}

TEST_F(SettingsWindowTest, AChangeIsWrittenByApplyAndTheRestOfTheFileStays)
{
    window->showPage(SettingPage::Monitor);
    EXPECT_EQ(state(), u"Alles auf dieser Seite steht auf dem Standard"_s);
    find<QSlider>(u"slider.Volume.Monitor"_s)->setValue(6200);
    find<QRadioButton>(u"GridSwapEditPlay.2"_s)->click();
    EXPECT_EQ(state(), u"2 Änderungen auf dieser Seite"_s);
    EXPECT_EQ(stored(u"Global"_s, u"Volume.Monitor"_s), u"-"_s);
    press(u"cmdApply"_s);
    EXPECT_EQ(stored(u"Global"_s, u"Volume.Monitor"_s), u"6200"_s);
    EXPECT_EQ(stored(u"Global"_s, u"GridSwapEditPlay"_s), u"2"_s);
    EXPECT_EQ(stored(u"Global"_s, u"Foreign"_s), u"x"_s);
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(find<QPushButton>(u"cmdApply"_s)->isEnabled());
}

TEST_F(SettingsWindowTest, CancelDropsWhatWasChosen)
{
    QTest::mouseClick(find<QCheckBox>(u"AutosizeGrid"_s), Qt::LeftButton, {}, {8, 8});
    EXPECT_FALSE(draft->isEmpty());
    press(u"cmdCancel"_s);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(applied, 0);
    EXPECT_EQ(stored(u"Global"_s, u"AutosizeGrid"_s), u"-"_s);
}

TEST_F(SettingsWindowTest, TheArrowBesideAChangedValueGivesItsDefaultBack)
{
    window->showPage(SettingPage::Monitor);
    auto* const arrow = find<QToolButton>(u"reset.Volume.Monitor"_s);
    EXPECT_FALSE(arrow->isVisible());
    find<QSpinBox>(u"Volume.Monitor"_s)->setValue(100);
    EXPECT_TRUE(arrow->isVisible());
    EXPECT_EQ(arrow->toolTip(), u"Zurück zum Standard: 7500"_s);
    QTest::mouseClick(arrow, Qt::LeftButton);
    EXPECT_EQ(find<QSpinBox>(u"Volume.Monitor"_s)->value(), 7500);
    EXPECT_EQ(find<QSlider>(u"slider.Volume.Monitor"_s)->value(), 7500);
    EXPECT_TRUE(draft->isEmpty());
}

TEST_F(SettingsWindowTest, ResetSetsTheWholePageToItsDefaults)
{
    window->showPage(SettingPage::Search);
    find<QCheckBox>(u"SuchAlbum"_s)->click();
    find<QCheckBox>(u"SuchPath"_s)->click();
    EXPECT_EQ(state(), u"2 Änderungen auf dieser Seite"_s);
    press(u"cmdReset"_s);
    EXPECT_TRUE(find<QCheckBox>(u"SuchAlbum"_s)->isChecked());
    EXPECT_FALSE(find<QCheckBox>(u"SuchPath"_s)->isChecked());
    EXPECT_FALSE(find<QPushButton>(u"cmdReset"_s)->isEnabled());
}

TEST_F(SettingsWindowTest, AFileThatCannotBeWrittenIsToldAndTheChangesStay)
{
    QFile large(file());
    ASSERT_TRUE(large.resize(100LL * 1024 * 1024));
    find<QCheckBox>(u"AutosizeGrid"_s)->click();
    press(u"cmdOk"_s);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(state().startsWith(u"Nicht gespeichert"_s)) << state().toStdString();
    EXPECT_TRUE(find<QCheckBox>(u"AutosizeGrid"_s)->isChecked());
    ASSERT_TRUE(large.resize(0));
    press(u"cmdOk"_s);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(stored(u"Global"_s, u"AutosizeGrid"_s), u"1"_s);
}

TEST_F(SettingsWindowTest, TheTestToneSoundsOnTheChosenCardAsLoudAsChosen)
{
    window->showPage(SettingPage::Monitor);
    find<QSpinBox>(u"Volume.Monitor"_s)->setValue(6200);
    press(u"testtone.SCardNameMonitor"_s);
    auto* const cards = find<QComboBox>(u"SCardNameMonitor"_s);
    cards->setCurrentIndex(1);
    emit cards->activated(1);
    press(u"testtone.SCardNameMonitor"_s);
    EXPECT_EQ(tones, (QStringList{u" 6200"_s, u"Kopfhörer 6200"_s}));
    EXPECT_EQ(find<QPushButton>(u"testtone.SCardNameMonitor"_s)->toolTip(),
              u"Die Karte lässt sich nicht öffnen."_s);
}

TEST_F(SettingsWindowTest, ANameFormatShowsWhatItMakesWhileItIsTyped)
{
    window->showPage(SettingPage::Lists);
    auto* const line = find<QLineEdit>(u"PlaylistNameFormat"_s);
    line->selectAll();
    QTest::keyClicks(line, u"Abend #DD#"_s);
    EXPECT_EQ(find<QLabel>(u"example.PlaylistNameFormat"_s)->text(), u"Beispiel: <Abend #DD#>"_s);
    EXPECT_EQ(values->value(*findEntry(u"Global", u"PlaylistNameFormat")), u"Abend #DD#"_s);
}

TEST_F(SettingsWindowTest, AFolderAndAColourAreChosenInTheirDialogs)
{
    window->showPage(SettingPage::Lists);
    press(u"choose.PlaylistVerzeichnis"_s);
    EXPECT_EQ(find<QLineEdit>(u"PlaylistVerzeichnis"_s)->text(), u"/music/lists"_s);
    EXPECT_TRUE(find<QLabel>(u"missing.PlaylistVerzeichnis"_s)->isVisible());
    window->showPage(SettingPage::Look);
    press(u"RowShowDEL"_s);
    // Blue is the highest byte.
    EXPECT_EQ(values->value(*findEntry(u"Color", u"RowShowDEL")), QString::number(0x332211));
}

TEST_F(SettingsWindowTest, TheSearchShowsThoseSettingsAloneThatHaveAllItsWords)
{
    QTest::keyClicks(find<QLineEdit>(u"txtFind"_s), u"Doppelklick"_s);
    auto* const categories = find<QListWidget>(u"lstCategories"_s);
    EXPECT_EQ(window->page(), SettingPage::Monitor);
    EXPECT_TRUE(categories->item(int(SettingPage::Search))->isHidden());
    EXPECT_TRUE(find<QRadioButton>(u"GridSwapEditPlay.1"_s)->isVisible());
    EXPECT_FALSE(find<QSpinBox>(u"Volume.Monitor"_s)->isVisible());
    find<QLineEdit>(u"txtFind"_s)->setText(u"gibtesnicht"_s);
    EXPECT_EQ(state(), u"Keine Einstellung heißt so."_s);
    find<QLineEdit>(u"txtFind"_s)->clear();
    EXPECT_TRUE(find<QSpinBox>(u"Volume.Monitor"_s)->isVisible());
    EXPECT_FALSE(categories->item(int(SettingPage::Search))->isHidden());
}

TEST_F(SettingsWindowTest, EnterTakesTheNextKeysForACommandAndAConflictIsToldInBothRows)
{
    window->showPage(SettingPage::Keys);
    auto* const table = find<QTreeWidget>(u"tblKeys"_s);
    table->setCurrentItem(keyRow(u"PLPLMonitorPlayCenter"_s));
    QTest::keyClick(table, Qt::Key_Return);
    EXPECT_EQ(keyRow(u"PLPLMonitorPlayCenter"_s)->text(1), u"Tasten drücken ..."_s);
    QTest::keyClick(table, Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(keyRow(u"PLPLMonitorPlayCenter"_s)->text(2),
              u"auch bei „Als nächsten Titel spielen“"_s);
    EXPECT_EQ(keyRow(u"DBALLNEXTPLAY"_s)->text(2), u"auch bei „Vorhören ab Mitte“"_s);
    EXPECT_TRUE(find<QLabel>(u"lblConflict"_s)->text().contains(u"„Vorhören ab Mitte“"_s));
    EXPECT_EQ(state(), u"1 Tasten geändert, 1 doppelt"_s);
    press(u"cmdOther"_s);
    EXPECT_EQ(table->currentItem(), keyRow(u"DBALLNEXTPLAY"_s));
    press(u"cmdApply"_s);
    EXPECT_EQ(stored(u"Tastatur"_s, u"centerplay"_s), u"STRG-TASTE + N-TASTE"_s);
}

TEST_F(SettingsWindowTest, EscapeKeepsTheOldKeysAndDeleteTakesThemAway)
{
    window->showPage(SettingPage::Keys);
    auto* const table = find<QTreeWidget>(u"tblKeys"_s);
    table->setCurrentItem(keyRow(u"DBKopie"_s));
    QTest::keyClick(table, Qt::Key_Return);
    QTest::keyClick(table, Qt::Key_Escape);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(draft->isEmpty());
    QTest::keyClick(table, Qt::Key_Delete);
    EXPECT_EQ(keyRow(u"DBKopie"_s)->text(1), u"nicht belegt"_s);
    EXPECT_EQ(keyRow(u"DBKopie"_s)->text(2), u"geändert"_s);
    press(u"cmdReset"_s);
    EXPECT_EQ(keyRow(u"DBKopie"_s)->text(2), QString());
}

TEST_F(SettingsWindowTest, TheTableOfKeysIsSearchedByCommandAndByKey)
{
    window->showPage(SettingPage::Keys);
    find<QLineEdit>(u"txtFindKey"_s)->setText(u"kopieren"_s);
    EXPECT_FALSE(keyRow(u"DBKopie"_s)->isHidden());
    EXPECT_TRUE(keyRow(u"DBInsert"_s)->isHidden());
    find<QLineEdit>(u"txtFindKey"_s)->setText(u"f11"_s);
    EXPECT_FALSE(keyRow(u"PLTOP"_s)->isHidden());
    EXPECT_TRUE(keyRow(u"DBKopie"_s)->isHidden());
}

TEST_F(SettingsWindowTest, AHiddenMessageIsShownAgain)
{
    window->showPage(SettingPage::Hints);
    EXPECT_EQ(find<QListWidget>(u"lstHints"_s)->count(), 1);
    press(u"cmdShowHint"_s);
    EXPECT_TRUE(find<QLabel>(u"lblNoHints"_s)->isVisible());
    press(u"cmdApply"_s);
    EXPECT_EQ(stored(u"WarnMeldung"_s, u"MelovaneDB.a"_s), u"-"_s);
}

TEST_F(SettingsWindowTest, TheWindowIsMadeAnewInAnotherLanguageOnItsPage)
{
    window->showPage(SettingPage::Look);
    const CurrentFolder here(catalogue.folders.programFolder());
    MelovaneConfiguration::speak(catalogue.texts, u"lang_English.ini"_s);
    window->rebuild();
    EXPECT_EQ(window->page(), SettingPage::Look);
    EXPECT_EQ(window->windowTitle(), catalogue.texts.text(u"confApp"));
    EXPECT_EQ(find<QListWidget>(u"lstCategories"_s)->item(0)->toolTip(), u"Library"_s);
    EXPECT_EQ(find<QPushButton>(u"cmdCancel"_s)->text(), u"Cancel"_s);
    EXPECT_EQ(find<QCheckBox>(u"AutosizeGrid"_s)->text(), catalogue.texts.text(u"mnuAutosizeGrid"));
}

TEST_F(SettingsWindowTest, FitsASmallScreenWithItsButtons)
{
    window->resize(760, 520);
    QApplication::processEvents();
    EXPECT_EQ(window->size(), QSize(760, 520));
    auto* const okay = find<QPushButton>(u"cmdOk"_s);
    EXPECT_TRUE(
        window->rect().contains(QRect(okay->mapTo(window.get(), QPoint(0, 0)), okay->size())));
}

TEST_F(SettingsWindowTest, EveryControlHasANameAndARoleAndIsReachedWithoutAMouse)
{
    auto* const categories = find<QListWidget>(u"lstCategories"_s);
    int controls = 0;
    for (int page = 0; page < categories->count(); ++page) {
        categories->setCurrentRow(page);
        QApplication::processEvents();
        const AccessibleWalk walk = walkAccessibly(*window);
        controls += walk.controls;
        EXPECT_EQ(walk.faults().join(u'\n').toStdString(), "")
            << categories->item(page)->text().toStdString();
    }
    EXPECT_GT(controls, 50);
}

} // namespace
} // namespace melovane::test
