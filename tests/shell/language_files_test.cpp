#include "shell/language_files.h"
#include "support/text_catalogue.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct LanguageFilesTest : public testing::Test, public test::TextCatalogue
{
    /// A language file of an installation.
    void put(const QString& name, const QByteArray& bytes) { folders.install(name, bytes); }

    /// "title=file" of all, the active one with a star.
    QStringList listed()
    {
        QStringList result;
        for (const LanguageEntry& entry : languages.entries()) {
            result.append(entry.title + u'=' + entry.fileName + (entry.active ? u"*"_s : u""_s));
        }
        return result;
    }

    LanguageFiles languages{folders.paths(), folders.files(), texts};
};

TEST_F(LanguageFilesTest, WithoutAnyFileThereIsTheBuiltInLanguage)
{
    fill();
    EXPECT_EQ(listed(), QStringList{u"Deutsch=lang_Deutsch.ini*"_s});
}

TEST_F(LanguageFilesTest, FilesAreListedByTheirOwnNameOrTheirFilesWhateverTheyHold)
{
    put(u"lang_English.ini"_s, "[Description]\nSprach.Name=English\n");
    put(u"lang_Polski.ini"_s, "[Description]\nok=OK\n");
    put(u"lang_Bytes.ini"_s, QByteArray("\0\xff[Desc\n=\n", 10));
    put(u"lang_notes.txt"_s, "x");
    put(u"melovane.ini"_s, "[Value]\nSprach.Datei=LANG_ENGLISH.ini\n");
    fill();
    EXPECT_EQ(listed(), (QStringList{u"Bytes=lang_Bytes.ini"_s, u"Deutsch=lang_Deutsch.ini"_s,
                                     u"English=lang_English.ini*"_s, u"Polski=lang_Polski.ini"_s}));
}

TEST_F(LanguageFilesTest, TheBuiltInLanguageIsTheActiveOneWhenTheChosenFileIsGone)
{
    put(u"melovane.ini"_s, "[Value]\nSprach.Datei=lang_Gone.ini\n");
    fill();
    EXPECT_EQ(listed(), QStringList{u"Deutsch=lang_Deutsch.ini*"_s});
}

TEST_F(LanguageFilesTest, AChosenLanguageIsKeptForTheNextStart)
{
    put(u"lang_English.ini"_s, "[Description]\nSprach.Name=English\nmnuExit=Quit\n");
    fill();
    EXPECT_TRUE(languages.choose(u"lang_English.ini"_s));
    EXPECT_FALSE(languages.choose(u"lang_English.ini"_s));
    EXPECT_EQ(texts.text(u"mnuExit"_s), u"Beenden"_s);
    ConfigObjects next(folders.paths(), folders.profile(), folders.files());
    const test::CurrentFolder here(folders.programFolder());
    MelovaneConfiguration::fill(next);
    EXPECT_EQ(next.text(u"mnuExit"_s), u"Quit"_s);
}

} // namespace
} // namespace melovane
