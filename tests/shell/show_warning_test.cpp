#include "shell/show_warning.h"
#include "support/answer_queue.h"
#include "support/text_catalogue.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct ShowWarningTest : testing::Test
{
    ShowWarningTest() { catalogue.fill(); }

    QByteArray ini() { return folders.folder().read(folders.configFile(u"melovane.ini"_s)); }

    WarningAnswer ask(const QString& suppressName = {})
    {
        return warnings.ShowWarning(u"Wirklich ?"_s, WarningType::Question, u"Frage"_s, {},
                                    suppressName);
    }

    test::TextCatalogue catalogue;
    test::SuiteFolders& folders = catalogue.folders;
    std::unique_ptr<GlobalSettings> settings = folders.makeSettings();
    test::AnswerQueue answers;
    frmMsg warnings{*settings, catalogue.texts, folders.paths(), answers};
};

TEST_F(ShowWarningTest, ANoteHasOneButtonAndTheCaptionOfTheProgram)
{
    answers.expectMessage(u"Fertig"_s);
    EXPECT_EQ(warnings.ShowWarning(u"Fertig"_s, WarningType::Note, u"Melovane"_s),
              WarningAnswer::Ok);
    EXPECT_EQ(answers.lastMessage.caption, u"Melovane 3.4 build(150)"_s);
    EXPECT_EQ(answers.lastMessage.title, u"Melovane"_s);
    EXPECT_FALSE(answers.lastMessage.question);
    EXPECT_EQ(answers.lastMessage.okCaption, u"OK"_s);
}

TEST_F(ShowWarningTest, Type16AndType0GiveTheSameDialog)
{
    const auto show = [&](WarningType type) {
        answers.expectMessage(u"Text"_s);
        warnings.ShowWarning(u"Text"_s, type, u"Titel"_s, u"key"_s, u"name"_s);
        return answers.lastMessage;
    };
    const MessageView note = show(WarningType::Note);
    const MessageView stop = show(WarningType::Stop);
    EXPECT_EQ(note.question, stop.question);
    EXPECT_EQ(note.title, stop.title);
    EXPECT_EQ(note.text, stop.text);
    EXPECT_EQ(note.caption, stop.caption);
    EXPECT_EQ(note.suppressCaption, stop.suppressCaption);
}

TEST_F(ShowWarningTest, AQuestionGivesItsAnswer)
{
    for (const auto answer : {WarningAnswer::Yes, WarningAnswer::No, WarningAnswer::Left}) {
        answers.expectMessage(u"Wirklich"_s, answer);
        EXPECT_EQ(ask(), answer);
        EXPECT_TRUE(answers.lastMessage.question);
        EXPECT_EQ(answers.lastMessage.yesCaption, u"Ja"_s);
        EXPECT_EQ(answers.lastMessage.noCaption, u"Nein"_s);
    }
}

TEST_F(ShowWarningTest, WithoutASuppressNameThereIsNoCheckBoxAndNothingCanSuppressIt)
{
    folders.install(u"melovane.ini"_s, "[WarnMeldung]\nMelovaneDB.=1\n");
    answers.expectMessage(u"Wirklich"_s, WarningAnswer::No);
    EXPECT_EQ(ask(), WarningAnswer::No);
    EXPECT_EQ(answers.lastMessage.suppressCaption, QString());
}

TEST_F(ShowWarningTest, TheCheckBoxIsRememberedAtOnceHoweverTheDialogEnds)
{
    answers.expectMessageAndTick(u"Wirklich"_s, WarningAnswer::Left);
    EXPECT_EQ(ask(u"delete.playlist.warn"_s), WarningAnswer::Left);
    EXPECT_EQ(answers.lastMessage.suppressCaption, u"Diese Meldung nicht mehr anzeigen"_s);
    EXPECT_EQ(ini(), "[WarnMeldung]\nMelovaneDB.delete.playlist.warn=1\n");
    EXPECT_EQ(ask(u"delete.playlist.warn"_s), WarningAnswer::Yes);
    EXPECT_EQ(answers.messages.size(), 1);
}

TEST_F(ShowWarningTest, UntickingWritesNought)
{
    answers.expectMessageAndTick(u"Wirklich"_s, WarningAnswer::Yes, false);
    ask(u"x"_s);
    EXPECT_EQ(ini(), "[WarnMeldung]\nMelovaneDB.x=0\n");
    answers.expectMessage(u"Wirklich"_s, WarningAnswer::No);
    EXPECT_EQ(ask(u"x"_s), WarningAnswer::No);
}

TEST_F(ShowWarningTest, ASuppressedQuestionGivesYesAlthoughNoWasPressed)
{
    answers.expectMessageAndTick(u"Wirklich"_s, WarningAnswer::No);
    EXPECT_EQ(ask(u"x"_s), WarningAnswer::No);
    EXPECT_EQ(ask(u"x"_s), WarningAnswer::Yes);
}

TEST_F(ShowWarningTest, ASuppressedNoteGivesOk)
{
    folders.install(u"melovane.ini"_s, "[WarnMeldung]\nMelovaneDB.x=2\n");
    EXPECT_EQ(warnings.ShowWarning(u"Text"_s, WarningType::Stop, u"Titel"_s, {}, u"x"_s),
              WarningAnswer::Ok);
    EXPECT_TRUE(answers.messages.isEmpty());
}

TEST_F(ShowWarningTest, AnInstallationCanRewordTextAndTitle)
{
    folders.install(u"melovane.ini"_s, "[Meldung_Text]\nweg=Erste Zeile<BR>zweite<br>\n"
                                       "[Meldung_Title]\nweg=Unser <BR> Titel\n");
    answers.expectMessage(u"Erste Zeile\nzweite<br>"_s);
    warnings.ShowWarning(u"Text"_s, WarningType::Note, u"Titel"_s, u"weg"_s);
    EXPECT_EQ(answers.lastMessage.title, u"Unser <BR> Titel"_s);
    answers.expectMessage(u"Titel: Text"_s);
    warnings.ShowWarning(u"Text"_s, WarningType::Note, u"Titel"_s, u"anders"_s);
}

} // namespace
} // namespace melovane
