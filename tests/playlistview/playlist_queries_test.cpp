// What the view asks the database for after a change.
#include "playlistview/playlist_view_fixture.h"
#include "support/statement_log.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Made in front of the view, whose connections it follows.
struct LogInFront
{
    test::StatementLog statements;
};

class PlaylistQueries : public LogInFront, public test::PlaylistViewTest
{
protected:
    PlaylistQueries()
    {
        openList(5);
        // The first change makes the file of the history.
        others.SendMessage(u"playlist.append.data"_s, lists.tracksText({1}));
        stand(1);
        (void)statements.take();
    }

    /// The questions behind the last commit, in their order: "rows", "list", "steps".
    [[nodiscard]] std::string asked()
    {
        QStringList result;
        for (const QString& text : statements.takeBehindCommit()) {
            // A row that is looked at is fetched by its key; what counts is who asks which rows.
            const bool isFetch = text.contains("rowid = ?"_L1);
            if (text.startsWith("select"_L1, Qt::CaseInsensitive) && !isFetch) {
                result.append(kindOf(text));
            }
        }
        return result.join(u' ').toStdString();
    }

    [[nodiscard]] static QString kindOf(const QString& text)
    {
        for (const auto& [table, kind] :
             {std::pair{u"db_all"_s, u"rows"_s}, std::pair{u"LIST_HISTORY"_s, u"steps"_s},
              std::pair{u"pl_name"_s, u"list"_s}}) {
            if (text.contains(table, Qt::CaseInsensitive)) {
                return kind;
            }
        }
        return text;
    }
};

TEST_F(PlaylistQueries, AnAppendAsksForRowsListAndStepsOnce)
{
    others.SendMessage(u"playlist.append.data"_s, lists.tracksText({2}));
    EXPECT_EQ(asked(), "rows list steps");
}

TEST_F(PlaylistQueries, AMoveAsksForRowsListAndStepsOnce)
{
    view.moveRow(1);
    EXPECT_EQ(asked(), "rows list steps");
}

TEST_F(PlaylistQueries, ADeletionAsksForRowsListAndStepsOnce)
{
    view.deletePressed();
    EXPECT_EQ(asked(), "rows list steps");
}

TEST_F(PlaylistQueries, APlayActionAsksForTheStepsAlone)
{
    view.setAktion(kAktionStop);
    EXPECT_EQ(asked(), "steps");
}

} // namespace
} // namespace melovane
