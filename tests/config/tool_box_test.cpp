#include "config/tool_box.h"
#include "support/suite_folders.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class ToolBoxFile : public testing::Test
{
protected:
    ToolBoxFile() { box.INI_SetFilename(u"melovane.ini"_s, true); }

    void write(const QByteArray& bytes) { suite.folder().write(file, bytes); }

    test::SuiteFolders suite;
    QString file = suite.configFile(u"melovane.ini"_s);
    ToolBox box{suite.paths(), suite.profile()};
};

TEST_F(ToolBoxFile, AValueOf260LettersOrMoreIsCutTo259)
{
    for (const int length : {259, 260, 10000}) {
        write("[Global]\nDBName=" + QByteArray(length, 'x') + "\n");
        EXPECT_EQ(box.INI_GetKeyValue(u"Global"_s, u"DBName"_s, u"d"_s), QString(259, u'x'));
    }
}

TEST_F(ToolBoxFile, ACutNeverLeavesHalfALetter)
{
    const QString music = QString::fromUcs4(U"\U0001F3B5");
    write("[A]\nb=" + QByteArray(258, 'x') + music.toUtf8() + "\n");
    EXPECT_EQ(box.INI_GetKeyValue(u"A"_s, u"b"_s, QString()), QString(258, u'x'));
}

TEST_F(ToolBoxFile, ADefaultPathIsNotCut)
{
    const QString path(400, u'p');
    EXPECT_EQ(box.INI_GetKeyValue(u"Global"_s, u"DBName"_s, path), path);
}

TEST_F(ToolBoxFile, AnEmptyStoredValueWithAnEmptyDefaultIsEmpty)
{
    write("[A]\nb=\n");
    EXPECT_EQ(box.INI_GetKeyValue(u"A"_s, u"b"_s, QString()), QString());
}

TEST_F(ToolBoxFile, AKeySetToEmptyGivesADefaultThatIsNotEmpty)
{
    write("[A]\nb=\n");
    EXPECT_EQ(box.INI_GetKeyValue(u"A"_s, u"b"_s, u"default"_s), u"default"_s);
}

TEST_F(ToolBoxFile, TheNumberAtTheBeginningOfAValueIsRead)
{
    write("[A]\nnumber=12abc\nword=abc\nempty=\nreal=-3.5x\n");
    EXPECT_EQ(box.INI_GetKeyValueLong(u"A"_s, u"number"_s, 7), 12);
    EXPECT_EQ(box.INI_GetKeyValueLong(u"A"_s, u"word"_s, 7), 0);
    EXPECT_EQ(box.INI_GetKeyValueLong(u"A"_s, u"empty"_s, 7), 7);
    EXPECT_EQ(box.INI_GetKeyValueLong(u"A"_s, u"missing"_s, -7), -7);
    EXPECT_EQ(box.INI_GetKeyValueLong(u"A"_s, u"real"_s, 7), -3.5);
}

TEST_F(ToolBoxFile, SubSelectionIsPutBeforeTheSectionInReadsAndWritesAlike)
{
    write("[Global]\na=plain\n[Dj.Global]\na=prefixed\n");
    box.SetSubSelection(u"Dj."_s);
    EXPECT_EQ(box.INI_GetKeyValue(u"Global"_s, u"a"_s, QString()), u"prefixed"_s);
    EXPECT_EQ(box.INI_GetSection(u"Global"_s), QStringList{u"a=prefixed"_s});
    EXPECT_TRUE(box.INI_WriteKeyValue(u"Global"_s, u"a"_s, u"new"_s));
    EXPECT_EQ(suite.folder().read(file), "[Global]\na=plain\n[Dj.Global]\na=new\n");
}

TEST_F(ToolBoxFile, ASectionWithoutLinesGivesOneEmptyText)
{
    write("[A]\n; nothing\n");
    EXPECT_EQ(box.INI_GetSection(u"A"_s), QStringList(QString()));
    EXPECT_EQ(box.INI_GetSection(u"Missing"_s), QStringList(QString()));
}

TEST_F(ToolBoxFile, ASectionOfMoreThan30000LettersIsCut)
{
    QByteArray text = "[A]\n";
    for (int i = 0; i < 4000; ++i) {
        text += "key" + QByteArray::number(i).rightJustified(5, '0') + "=1\n";
    }
    write(text);
    const QStringList lines = box.INI_GetSection(u"A"_s);
    EXPECT_EQ(lines.join(QChar(u'\0')).size(), 30000);
    EXPECT_EQ(lines.front(), u"key00000=1"_s);
    EXPECT_EQ(lines.back(), u"key"_s);
}

TEST_F(ToolBoxFile, NothingAsValueRemovesTheKey)
{
    write("[A]\nb=1\nc=2\n");
    EXPECT_TRUE(box.INI_WriteKeyValue(u"A"_s, u"b"_s, std::nullopt));
    EXPECT_EQ(suite.folder().read(file), "[A]\nc=2\n");
}

TEST_F(ToolBoxFile, AFullPathIsNotLookedForInTheConfigurationPath)
{
    const QString other = suite.folder().write(u"elsewhere/x.ini"_s, "[A]\nb=there\n");
    box.INI_SetFilename(other, false);
    EXPECT_EQ(box.INI_GetKeyValue(u"A"_s, u"b"_s, QString()), u"there"_s);
}

TEST_F(ToolBoxFile, TheLanguageIsKeyLangOfSectionGlobal)
{
    EXPECT_EQ(box.GetLang(), QString());
    write("[Global]\nLang=2\n");
    EXPECT_EQ(box.GetLang(), u"2"_s);
}

} // namespace
} // namespace melovane
