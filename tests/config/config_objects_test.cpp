#include "config/config_objects.h"
#include "support/text_catalogue.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::CurrentFolder;

ConfigObject itemWith(const QString& description)
{
    ConfigObject item;
    item.Description = description;
    item.DescriptionEx = description;
    return item;
}

TEST(ConfigObject, FillsItsPlaceholdersAndTurnsBackslashNIntoALineFeed)
{
    const ConfigObject item = itemWith(u"$1 von $2\\n$3: $1 ''$4''"_s);
    EXPECT_EQ(item.GetDescription(1, u"zwei"_s, 3.5, u"x"_s), u"1 von zwei\n3.5: 1 ''x''"_s);
    EXPECT_EQ(item.GetDescriptionEx(1, u"zwei"_s, 3.5, u"x"_s), u"1 von zwei\n3.5: 1 ''x''"_s);
}

TEST(ConfigObject, AnArgumentThatIsLeftOutCountsAsAnEmptyText)
{
    EXPECT_EQ(itemWith(u"[$1][$2][$3][$4]"_s).GetDescription({}, u"b"_s), u"[][b][][]"_s);
}

TEST(ConfigObject, AValueHoldingDollar1IsNotExpandedAgainButOneHoldingDollar3Is)
{
    EXPECT_EQ(itemWith(u"$1"_s).GetDescription(u"<$1>"_s), u"<$1>"_s);
    EXPECT_EQ(itemWith(u"$1"_s).GetDescription(u"<$3>"_s, {}, u"drei"_s), u"<drei>"_s);
}

TEST(ConfigObject, AnEmptyTextAndTheWordNullGiveNothing)
{
    EXPECT_EQ(itemWith({}).GetDescription(u"x"_s), QString());
    EXPECT_EQ(itemWith(u"Null"_s).GetDescription(u"x"_s), QString());
    EXPECT_EQ(itemWith(u"Null"_s).GetDescriptionEx(u"x"_s), QString());
}

class ConfigObjectsTest : public testing::Test
{
protected:
    ConfigObjectsTest() { texts.SetFileName(u"melovane.ini"_s); }

    QByteArray ini() { return catalogue.folders.folder().read(iniFile()); }

    QString iniFile() { return catalogue.folders.configFile(u"melovane.ini"_s); }

    test::TextCatalogue catalogue;
    ConfigObjects& texts = catalogue.texts;
};

TEST_F(ConfigObjectsTest, NamesAreFoundInAnyLetterCase)
{
    texts.NewItem(u"msg-001"_s, {}, u"eins"_s, {});
    texts.NewItem(u"dbOpenError"_s, {}, u"zwei"_s, {});
    ASSERT_NE(texts.FindObject(u"MSG-001"), nullptr);
    EXPECT_EQ(texts.FindObject(u"MSG-001"), texts.FindObject(u"msg-001"));
    ASSERT_NE(texts.FindObject(u"dbopenerror"), nullptr);
    EXPECT_EQ(texts.FindObject(u"dbopenerror")->Name, u"dbOpenError"_s);
}

TEST_F(ConfigObjectsTest, AnUnknownNameGivesNoObjectAndNoText)
{
    EXPECT_EQ(texts.FindObject(u"fehlt"), nullptr);
    EXPECT_EQ(texts.LoadValue(u"fehlt"_s), nullptr);
    texts.SaveValueByName(u"fehlt"_s);
    EXPECT_EQ(texts.text(u"fehlt", 1), QString());
    EXPECT_EQ(texts.textEx(u"fehlt"), QString());
    EXPECT_EQ(texts.value(u"fehlt"), QString());
    EXPECT_FALSE(QFile::exists(iniFile()));
}

TEST_F(ConfigObjectsTest, OfTwoItemsWithOneNameTheFirstStays)
{
    texts.NewItem(u"player.mnuDockDB"_s, {}, u"erster"_s, {});
    texts.NewItem(u"PLAYER.MNUDOCKDB"_s, {}, u"zweiter"_s, {});
    EXPECT_EQ(texts.AllObjects().size(), 1U);
    EXPECT_EQ(texts.text(u"player.mnuDockDB"), u"erster"_s);
}

TEST_F(ConfigObjectsTest, ANewItemHasAValueUnlessItIsEmptyOrTheWordNull)
{
    texts.NewItem(u"a"_s, u"5"_s, u"Null"_s, u"ex"_s);
    texts.NewItem(u"b"_s, u"Null"_s, u"b"_s, u"Null"_s);
    texts.NewItem(u"c"_s, {}, u"c"_s, {});
    EXPECT_TRUE(texts.FindObject(u"a")->HasValue);
    EXPECT_EQ(texts.FindObject(u"a")->DefaultValue.toLong(), 5);
    EXPECT_EQ(texts.FindObject(u"a")->Description, QString());
    EXPECT_FALSE(texts.FindObject(u"b")->HasValue);
    EXPECT_EQ(texts.FindObject(u"b")->DescriptionEx, QString());
    EXPECT_FALSE(texts.FindObject(u"c")->HasValue);
}

TEST_F(ConfigObjectsTest, ATextForShowingKeepsItsValuesAsTheyAre)
{
    texts.NewItem(u"del"_s, {}, u"Soll ''$1'' weg ?\\n$2"_s, u"Neustart von $1"_s);
    EXPECT_EQ(texts.text(u"DEL", u"Best of $2\\n"_s, u"ja"_s),
              u"Soll ''Best of $2\\n'' weg ?\nja"_s);
    EXPECT_EQ(texts.textEx(u"del", u"$1$2"_s), u"Neustart von $1$2"_s);
}

TEST_F(ConfigObjectsTest, ATextForShowingHasFourPlacesAndAFifthStaysAsItStands)
{
    texts.NewItem(u"from"_s, {}, u"$1 von $2, $3 in $4, $5 $0"_s, {});
    EXPECT_EQ(texts.text(u"from", 1, u"zwei"_s, 3, u"vier"_s), u"1 von zwei, 3 in vier, $5 $0"_s);
    EXPECT_EQ(texts.text(u"from", 1), u"1 von ,  in , $5 $0"_s);
}

TEST_F(ConfigObjectsTest, ItemsComeInTheOrderOfAdding)
{
    for (const QString& name : {u"c"_s, u"a"_s, u"b"_s}) {
        texts.NewItem(name, {}, name, {});
    }
    QStringList names;
    for (const ConfigObject* item : texts.AllObjects()) {
        names.append(item->Name);
    }
    EXPECT_EQ(names, (QStringList{u"c"_s, u"a"_s, u"b"_s}));
}

TEST_F(ConfigObjectsTest, ValuesComeFromTheFileOrTheirDefaultAndAreKeptForComparison)
{
    catalogue.folders.install(u"melovane.ini"_s, "[Value]\nA=9\nc=7\n");
    texts.NewItem(u"a"_s, u"5"_s, {}, {});
    texts.NewItem(u"b"_s, u"6"_s, {}, {});
    texts.NewItem(u"c"_s, {}, u"Text"_s, {});
    texts.LoadAllValue();
    EXPECT_EQ(texts.value(u"a"), u"9"_s);
    EXPECT_EQ(texts.FindObject(u"a")->ValueLoaded.toText(), u"9"_s);
    EXPECT_EQ(texts.value(u"b"), u"6"_s);
    EXPECT_EQ(texts.value(u"c"), QString()) << "an item without a value takes no part";
}

TEST_F(ConfigObjectsTest, SavingWritesSettingsAlone)
{
    texts.NewItem(u"a"_s, u"5"_s, {}, {});
    texts.NewItem(u"b"_s, {}, u"Text"_s, {});
    texts.FindObject(u"a")->Value = 8;
    texts.FindObject(u"b")->Value = 9;
    texts.SaveValueByName(u"A"_s);
    texts.SaveValueByName(u"b"_s);
    EXPECT_EQ(ini(), "[Value]\na=8\n");
    texts.FindObject(u"a")->Value = 1;
    EXPECT_EQ(texts.LoadValue(u"a"_s)->Value.toLong(), 8);
}

TEST_F(ConfigObjectsTest, SavingAllRemovesTheKeyOfAnEmptyValueSoThatTheDefaultComesBack)
{
    catalogue.folders.install(u"melovane.ini"_s, "[Global]\nLang=x\n[Value]\na=9\nandere=3\n");
    texts.NewItem(u"a"_s, u"5"_s, {}, {});
    texts.NewItem(u"b"_s, u"6"_s, {}, {});
    texts.LoadAllValue();
    texts.FindObject(u"a")->Value = QString();
    texts.SaveAllValue();
    EXPECT_EQ(ini(), "[Global]\nLang=x\n[Value]\nandere=3\nb=6\n");
    texts.LoadAllValue();
    EXPECT_EQ(texts.value(u"a"), u"5"_s);
}

TEST_F(ConfigObjectsTest, ALanguageFileOverlaysTheTextsItHoldsAndAddsNoItems)
{
    catalogue.folders.install(u"lang_X.ini"_s, "[Description]\nA=eins\nneu=x\n"
                                               "[DescriptionEx]\na=ex\n[ToolTip]\na=tip\n");
    texts.NewItem(u"a"_s, {}, u"1"_s, u"2"_s);
    texts.NewItem(u"b"_s, {}, u"bleibt"_s, {});
    const CurrentFolder here(catalogue.folders.programFolder());
    texts.LoadAllLang(u"lang_X.ini"_s);
    EXPECT_EQ(texts.text(u"a"), u"eins"_s);
    EXPECT_EQ(texts.textEx(u"a"), u"ex"_s);
    EXPECT_EQ(texts.FindObject(u"a")->ToolTip, u"tip"_s);
    EXPECT_EQ(texts.text(u"b"), u"bleibt"_s);
    EXPECT_EQ(texts.FindObject(u"neu"), nullptr);
    EXPECT_EQ(texts.AllObjects().size(), 2U);
}

TEST_F(ConfigObjectsTest, ALanguageFileIsLookedForInTheCurrentFolder)
{
    catalogue.folders.install(u"lang_X.ini"_s, "[Description]\na=eins\n");
    texts.NewItem(u"a"_s, {}, u"1"_s, {});
    const test::TempFolder elsewhere;
    const CurrentFolder here(elsewhere.path());
    texts.LoadAllLang(u"lang_X.ini"_s);
    EXPECT_EQ(texts.text(u"a"), u"1"_s);
    // A file of that name here is the sign; the texts come from the configuration path.
    elsewhere.write(u"lang_X.ini"_s, "[Description]\na=falsch\n");
    texts.LoadAllLang(u"lang_X.ini"_s);
    EXPECT_EQ(texts.text(u"a"), u"eins"_s);
}

TEST_F(ConfigObjectsTest, ALanguageFileComesBackAsItWasSaved)
{
    texts.NewItem(u"a"_s, {}, u"  Zeile\\nzwei = drei  "_s, u"\"ex\""_s);
    texts.NewItem(u"b"_s, {}, {}, u"nur zweiter"_s);
    texts.FindObject(u"b")->ToolTip = u"Tipp"_s;
    catalogue.folders.install(u"lang_X.ini"_s, "; Notiz\n[Description]\nb=geht weg\n");
    texts.SaveAllLang(u"lang_X.ini"_s);
    EXPECT_TRUE(catalogue.folders.folder()
                    .read(catalogue.folders.configFile(u"lang_X.ini"_s))
                    .startsWith("; Notiz\n"));

    test::TextCatalogue other;
    other.folders.install(u"lang_X.ini"_s, catalogue.folders.folder().read(
                                               catalogue.folders.configFile(u"lang_X.ini"_s)));
    other.texts.NewItem(u"a"_s, {}, u"x"_s, u"x"_s);
    other.texts.NewItem(u"b"_s, {}, u"eigener"_s, u"x"_s);
    const CurrentFolder here(other.folders.programFolder());
    other.texts.LoadAllLang(u"lang_X.ini"_s);
    EXPECT_EQ(other.texts.FindObject(u"a")->Description, texts.FindObject(u"a")->Description);
    EXPECT_EQ(other.texts.FindObject(u"a")->DescriptionEx, u"\"ex\""_s);
    EXPECT_EQ(other.texts.FindObject(u"b")->Description, u"eigener"_s);
    EXPECT_EQ(other.texts.FindObject(u"b")->ToolTip, u"Tipp"_s);
}

TEST_F(ConfigObjectsTest, ValuesStillGoToTheSettingsAfterALanguageWasLoaded)
{
    catalogue.folders.install(u"lang_X.ini"_s, "[Description]\na=eins\n");
    texts.NewItem(u"a"_s, u"5"_s, {}, {});
    const CurrentFolder here(catalogue.folders.programFolder());
    texts.LoadAllLang(u"lang_X.ini"_s);
    texts.SaveValueByName(u"a"_s);
    EXPECT_EQ(ini(), "[Value]\na=5\n");
}

TEST_F(ConfigObjectsTest, GroupsAreComparedWithoutLetterCaseAndKeysAreCollectedOnce)
{
    const auto add = [&](const QString& name, const QString& group) {
        ConfigObject item;
        item.Name = name;
        item.Group = group;
        texts.Add(item);
    };
    add(u"a"_s, u"Keys"_s);
    add(u"b"_s, u"Player"_s);
    add(u"c"_s, u"KEYS"_s);
    EXPECT_EQ(texts.GetKeys().size(), 2U);
    add(u"d"_s, u"keys"_s);
    EXPECT_EQ(texts.GetKeys().size(), 2U);
    EXPECT_EQ(texts.GetCollection(u"keys"_s).size(), 3U);
    EXPECT_EQ(texts.GetCollection(u"PLAYER"_s).front()->Name, u"b"_s);
    EXPECT_TRUE(texts.GetCollection(u"fehlt"_s).empty());
}

TEST_F(ConfigObjectsTest, AnyBytesAsLanguageFileLeaveTheRestInPlace)
{
    static constexpr char kBytes[] = "\xff\xfe\x00[Description]\nb=gut\n";
    QByteArray bytes(kBytes, sizeof kBytes - 1);
    for (int i = 0; i < 4000; ++i) {
        bytes.append(static_cast<char>(i * 37 % 251));
    }
    catalogue.folders.install(u"lang_X.ini"_s, bytes);
    texts.NewItem(u"a"_s, {}, u"bleibt"_s, {});
    const CurrentFolder here(catalogue.folders.programFolder());
    texts.LoadAllLang(u"lang_X.ini"_s);
    EXPECT_EQ(texts.text(u"a"), u"bleibt"_s);
}

} // namespace
} // namespace melovane
