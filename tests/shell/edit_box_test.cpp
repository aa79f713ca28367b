#include "shell/edit_box.h"
#include "shell/info.h"
#include "support/answer_queue.h"
#include "support/fake_clock.h"
#include "support/text_catalogue.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct EditBoxTest : testing::Test
{
    EditBoxTest() { catalogue.fill(); }

    test::TextCatalogue catalogue;
    test::FakeClock clock;
    MLVMessageBus bus{catalogue.folders.paths(), catalogue.folders.files(), clock};
    QStringList sent;
    MLVMessageBus::Subscription listener = bus.subscribe([this](const MLVMessage& message) {
        sent.append(message.Command + u'=' + message.Value1.toText());
    });
    test::AnswerQueue answers;
    frmEditBox box{catalogue.texts, bus, answers};
};

TEST_F(EditBoxTest, TheNameOfANewGenreGoesToTheBusWithoutItsOuterBlanks)
{
    answers.expectInput(u"Neues Genre: Name des neuen Genres"_s, u"  Deep House "_s);
    box.Show();
    EXPECT_EQ(sent, QStringList{u"editbox.add.new.genre=Deep House"_s});
}

TEST_F(EditBoxTest, CancellingAndANameOfBlanksSendNothing)
{
    answers.expectInput(u"Neues Genre"_s, std::nullopt);
    box.Show();
    answers.expectInput(u"Neues Genre"_s, u"   "_s);
    box.Show();
    EXPECT_TRUE(sent.isEmpty());
}

TEST_F(EditBoxTest, TheInformationWindowNamesVersionDatabaseAndSettings)
{
    const auto settings = catalogue.folders.makeSettings();
    answers.expectInfo(u"Melovane DB 3.4 build(150)"_s);
    frmInfo(*settings, catalogue.texts, catalogue.folders.paths(), answers).Show();
    EXPECT_EQ(answers.lastInfo.caption, u"Über Melovane DB"_s);
    EXPECT_EQ(
        answers.lastInfo.facts,
        (QStringList{u"Datenbank: "_s + settings->DbName(),
                     u"Einstellungen: "_s + catalogue.folders.configFile(u"melovane.ini"_s)}));
}

} // namespace
} // namespace melovane
