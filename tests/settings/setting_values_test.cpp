#include "config/config_objects.h"
#include "config/setting_table.h"
#include "settings/hidden_hints.h"
#include "settings/setting_draft.h"
#include "settings/setting_search.h"
#include "settings/setting_values.h"
#include "support/text_catalogue.h"

#include <QFile>
#include <QSet>

#include <gtest/gtest.h>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The values of the pages over a real settings file.
struct SettingValuesTest : testing::Test
{
    void open(const QByteArray& file)
    {
        catalogue.folders.install(u"melovane.ini"_s, file);
        catalogue.fill();
        settings = catalogue.folders.makeSettings();
        draft = std::make_unique<SettingDraft>(catalogue.folders.profile(), name());
        values = std::make_unique<SettingValues>(*draft, *settings, catalogue.texts);
    }

    [[nodiscard]] QString name() { return catalogue.folders.configFile(u"melovane.ini"_s); }

    [[nodiscard]] QByteArray written()
    {
        QFile file(name());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    static const SettingEntry& entry(QStringView section, QStringView key)
    {
        const SettingEntry* const found = findEntry(section, key);
        EXPECT_NE(found, nullptr) << key.toString().toStdString();
        return *found;
    }

    TextCatalogue catalogue;
    std::unique_ptr<GlobalSettings> settings;
    std::unique_ptr<SettingDraft> draft;
    std::unique_ptr<SettingValues> values;
    const SettingEntry& volume = entry(u"Global", u"Volume.Monitor");
    const SettingEntry& album = entry(u"Global", u"SuchAlbum");
    const SettingEntry& bold = entry(u"Color", u"NoteTextBold");
    const SettingEntry& byPos = entry(u"Value", u"db.monitor.play.by.pos");
    const SettingEntry& swap = entry(u"Global", u"GridSwapEditPlay");
};

TEST_F(SettingValuesTest, EverySettingHasItsWordsItsHeadingAndADefaultThatFits)
{
    open({});
    for (const SettingEntry& row : settingEntries()) {
        const std::string name = row.key.toString().toStdString();
        EXPECT_FALSE(catalogue.texts.text(row.text).isEmpty()) << name;
        EXPECT_FALSE(catalogue.texts.text(row.group).isEmpty()) << name;
        const bool isInTable = row.section == kValueSection || row.section == kColourSection ||
                               findRow(row.section, row.key) != nullptr;
        EXPECT_TRUE(isInTable) << name;
        if (isNumber(row.kind)) {
            EXPECT_LT(row.least, row.most) << name;
            EXPECT_EQ(settings->defaultOf(row.section, row.key).value_or(values->defaultValue(row)),
                      values->defaultValue(row))
                << name;
        }
        if (row.kind == SettingKind::Choice) {
            EXPECT_GE(values->choices(row).size(), 2U) << name;
        }
        EXPECT_TRUE(values->isDefault(row)) << name;
        EXPECT_FALSE(values->defaultWords(row).isEmpty()) << name;
    }
}

TEST_F(SettingValuesTest, NoSettingStandsOnTwoPages)
{
    QSet<QString> seen;
    for (const SettingEntry& row : settingEntries()) {
        const QString name = (row.section.toString() + u'/' + row.key.toString()).toLower();
        EXPECT_FALSE(seen.contains(name)) << name.toStdString();
        seen.insert(name);
    }
}

TEST_F(SettingValuesTest, WhatIsChosenIsWrittenAndForeignLinesAndCommentsStay)
{
    open("; mine\n[Global]\nForeign=x\nSuchAlbum=0\n[Other]\nKey=y\n");
    values->set(volume, u"6200"_s);
    values->set(album, u"1"_s);
    values->set(byPos, {});
    EXPECT_EQ(written(), "; mine\n[Global]\nForeign=x\nSuchAlbum=0\n[Other]\nKey=y\n");
    ASSERT_TRUE(draft->write());
    EXPECT_EQ(written(), "; mine\n[Global]\nForeign=x\nVolume.Monitor=6200\n[Other]\nKey=y\n\n"
                         "[Value]\ndb.monitor.play.by.pos=off\n");
    EXPECT_TRUE(draft->isEmpty());
}

TEST_F(SettingValuesTest, ADefaultIsNotWrittenAndItsKeyGoes)
{
    open("[Global]\nVolume.Monitor=6200\n[Color]\nNoteTextBold=0\n");
    EXPECT_FALSE(values->isDefault(volume));
    EXPECT_EQ(values->changed(SettingPage::Monitor), 1);
    values->resetPage(SettingPage::Monitor);
    EXPECT_EQ(values->changed(SettingPage::Monitor), 0);
    values->set(bold, u"1"_s);
    ASSERT_TRUE(draft->write());
    EXPECT_EQ(written(), "[Global]\n[Color]\n");
}

TEST_F(SettingValuesTest, ChosenBackToWhatTheFileHoldsIsNoChange)
{
    open("[Global]\nVolume.Monitor=6200\n");
    values->set(volume, u"100"_s);
    EXPECT_FALSE(draft->isEmpty());
    values->set(volume, u"6200"_s);
    EXPECT_TRUE(draft->isEmpty());
}

TEST_F(SettingValuesTest, ValuesOutOfRangeAndOfOtherKindsAreShownAsWhatFitsAndStayUntilChosen)
{
    const QByteArray file = "[Global]\nVolume.Monitor=99999\nGridSwapEditPlay=7\nSuchAlbum=ja\n"
                            "BPMShowRange=-4\n[Color]\nRowShowDEL=-1\nFontSize=gross\n";
    open(file);
    EXPECT_EQ(values->value(volume), u"10000"_s);
    EXPECT_EQ(values->value(swap), u"0"_s);
    EXPECT_EQ(values->value(album), QString());
    EXPECT_EQ(values->value(entry(u"Global", u"BPMShowRange")), u"0"_s);
    EXPECT_EQ(values->value(entry(u"Color", u"RowShowDEL")), u"0"_s);
    EXPECT_EQ(values->value(entry(u"Color", u"FontSize")), u"5"_s);
    ASSERT_TRUE(draft->write());
    EXPECT_EQ(written(), file);
}

TEST_F(SettingValuesTest, WhatAnotherProgramWritesMeanwhileIsSeenAndKept)
{
    open("[Global]\nVolume.Monitor=6200\n");
    values->set(swap, u"2"_s);
    ASSERT_TRUE(IniProfile(catalogue.folders.files())
                    .writeAll(name(), {{u"Global"_s, u"Volume.Monitor"_s, u"5000"_s},
                                       {u"Global"_s, u"SuchPath"_s, u"1"_s}}));
    EXPECT_EQ(values->value(volume), u"5000"_s);
    ASSERT_TRUE(draft->write());
    EXPECT_EQ(written(), "[Global]\nVolume.Monitor=5000\nSuchPath=1\nGridSwapEditPlay=2\n");
}

TEST_F(SettingValuesTest, AFileFarTooLargeIsNeverWrittenAndTheChangesStay)
{
    open("[Global]\nVolume.Monitor=6200\n");
    QFile large(name());
    ASSERT_TRUE(large.resize(100LL * 1024 * 1024));
    values->set(volume, u"100"_s);
    EXPECT_FALSE(draft->write());
    EXPECT_EQ(values->value(volume), u"100"_s);
    EXPECT_EQ(large.size(), 100LL * 1024 * 1024);
    EXPECT_TRUE(large.resize(0));
    EXPECT_TRUE(draft->write());
    EXPECT_EQ(written(), "[Global]\nVolume.Monitor=100\n");
}

TEST_F(SettingValuesTest, HiddenMessagesAreNamedByTheirWordsAndShownAgain)
{
    open("[WarnMeldung]\nMelovaneDB.msg-002=1\nMelovaneDB.seen=0\nother.thing=1\n");
    HiddenHints hints(*draft, catalogue.texts);
    ASSERT_EQ(hints.rows().size(), 2U);
    EXPECT_EQ(hints.rows()[0].words, u"Keine Änderungen vorhanden"_s);
    EXPECT_EQ(hints.rows()[0].program, u"MelovaneDB"_s);
    EXPECT_EQ(hints.rows()[1].words, u"thing"_s);
    hints.show(hints.rows()[0].key);
    ASSERT_EQ(hints.rows().size(), 1U);
    hints.showAll();
    EXPECT_TRUE(hints.rows().empty());
    ASSERT_TRUE(draft->write());
    EXPECT_EQ(written(), "[WarnMeldung]\nMelovaneDB.seen=0\n");
}

TEST_F(SettingValuesTest, ASettingIsFoundByAnyWordOfItInBothLanguages)
{
    open({});
    TextCatalogue english;
    QFile file(QString::fromUtf8(MLV_RESOURCE_FOLDER) + u"/languages/lang_English.ini"_s);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    english.folders.install(u"lang_English.ini"_s, file.readAll());
    english.folders.install(u"melovane.ini"_s, "[Value]\nSprach.Datei=lang_English.ini\n");
    english.fill();
    const ConfigObjects* const languages[] = {&catalogue.texts, &english.texts};
    const SettingSearch search(languages);
    EXPECT_TRUE(search.finds(u"lautst"_s, volume));
    EXPECT_TRUE(search.finds(u"VOLUME output"_s, volume));
    EXPECT_TRUE(search.finds(u"kopfhörer"_s, volume));
    EXPECT_FALSE(search.finds(u"volume album"_s, volume));
    EXPECT_TRUE(search.finds(u"wiedergegeben"_s, swap));
    EXPECT_TRUE(search.finds(u"double"_s, swap));
    EXPECT_TRUE(search.finds({}, swap));
    EXPECT_TRUE(search.findsPage(u"tauschen"_s, SettingPage::Keys));
    EXPECT_FALSE(search.findsPage(u"tauschen"_s, SettingPage::Hints));
    for (const SettingEntry& row : settingEntries()) {
        EXPECT_TRUE(search.finds(catalogue.texts.text(row.text), row));
        EXPECT_TRUE(search.finds(english.texts.text(row.text), row));
    }
}

} // namespace
} // namespace melovane::test
