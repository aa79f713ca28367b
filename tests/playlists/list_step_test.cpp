#include "playlists/list_step.h"
#include "support/text_catalogue.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class ListStepText : public testing::Test
{
protected:
    ListStepText() { catalogue.fill(); }

    test::TextCatalogue catalogue;
    const ConfigObjects& texts = catalogue.texts;
};

TEST_F(ListStepText, TellsWhatWillBeUndoneAndRedone)
{
    const ListStep step{ListAction::Insert, Pnid{3}, u"Party $1"_s, 12, {}};
    EXPECT_EQ(undoText(texts, step), u"Rückgängig: 12 Titel in „Party $1“ eingefügt"_s);
    EXPECT_EQ(redoText(texts, step), u"Wiederholen: 12 Titel in „Party $1“ eingefügt"_s);
    EXPECT_EQ(undoText(texts, std::nullopt), u"Nichts rückgängig zu machen"_s);
    EXPECT_EQ(redoText(texts, std::nullopt), u"Nichts zu wiederholen"_s);
}

TEST_F(ListStepText, OneEntryHasWordsOfItsOwn)
{
    EXPECT_EQ(stepText(texts, {ListAction::DeleteList, Pnid{3}, u"A"_s, 1, {}}),
              u"Playliste „A“ mit 1 Titel gelöscht"_s);
    EXPECT_EQ(stepText(texts, {ListAction::Aktion, Pnid{3}, u"A"_s, 1, {}}),
              u"Abspielaktion in „A“ geändert"_s);
}

TEST_F(ListStepText, EveryActionHasAWordThatIsReadBackAndAText)
{
    for (int i = 0; i <= int(ListAction::DeleteGroup); ++i) {
        const auto action = ListAction(i);
        EXPECT_EQ(actionOfWord(actionWord(action)), action);
        EXPECT_TRUE(stepText(texts, {action, {}, u"Liste"_s, 2, {}}).contains(u"„Liste“"_s)) << i;
    }
    EXPECT_FALSE(actionOfWord(u"nonsense"));
}

TEST_F(ListStepText, TheQuestionNamesTheListAndTheStep)
{
    const QString question =
        changedElsewhereText(texts, {ListAction::Delete, Pnid{1}, u"A"_s, 2, {}});
    EXPECT_TRUE(question.startsWith(u"„A“ wurde"_s));
    EXPECT_TRUE(question.endsWith(u"2 Titel aus „A“ gelöscht"_s));
    EXPECT_TRUE(question.contains(u'\n'));
}

} // namespace
} // namespace melovane
