#include "platform/db/database.h"
#include "playlists/list_fixture.h"
#include "playlists/list_model.h"

#include <QProcess>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace test;

constexpr int kStepsOfASequence = 14;
constexpr unsigned kSeed = 20260314;

/// How often a proof is done: a few times in the normal run, as often as told by the named command.
int timesOf(const char* variable, int normally)
{
    const int asked = qEnvironmentVariableIntValue(variable);
    return asked > 0 ? asked : normally;
}

class ListModelProof : public testing::Test
{
protected:
    ListModelProof()
    {
        lists.addTracks(ListModel::kWithoutLength);
        lists.execute(u"update db_all set DTimeMsec=0 where fid='%1'"_s.arg(
            test::Lists::fid(ListModel::kWithoutLength)));
        lists.addList({1, 2, 5});
        lists.addList({});
    }

    /// Numbers of lists whose count is wrong, and of entries without a list.
    [[nodiscard]] QStringList broken() const
    {
        return lists.column(u"select nid from pl_name where anzahl<>(select count(*) from pl_all "
                            "where pl_all.pnid=pl_name.nid)"_s) +
               lists.column(
                   u"select plid from pl_all where pnid not in (select nid from pl_name)"_s);
    }

    test::Lists lists;
};

TEST_F(ListModelProof, RandomSequencesLeaveTheTablesAsThePlainListHasThem)
{
    const int sequences = timesOf("MLV_LIST_SEQUENCES", 30);
    const auto others = lists.open();
    const ListTools tools{lists.edits, lists.history, lists.names, *others};
    for (int sequence = 0; sequence < sequences; ++sequence) {
        lists.history.clear();
        lists.execute(u"delete from pl_all"_s);
        lists.execute(u"delete from pl_name"_s);
        lists.addList({1, 2, 5});
        lists.addList({1, 3});
        lists.addList({});
        std::mt19937 random(kSeed + unsigned(sequence));
        ListModel model(*lists.open());
        for (int step = 0; step < kStepsOfASequence; ++step) {
            const ModelStep next = model.randomStep(random, ListModel::Others::Write);
            const QString before = model.text();
            const ListHistory::Outcome expected = model.apply(next);
            const ListHistory::Outcome outcome = perform(tools, next);
            ASSERT_TRUE(outcome == expected && model.adopt(*lists.open()))
                << "sequence " << sequence << " step " << step << " kind " << int(next.kind)
                << " list " << next.list << " position " << next.position << " outcome "
                << int(outcome) << " instead of " << int(expected) << "\nbefore "
                << before.toStdString() << "\nmodel  " << model.text().toStdString() << "\ntables "
                << ListModel::textOf(*lists.open()).toStdString() << '\n'
                << lists.log.join(u'\n').toStdString();
            ASSERT_EQ(broken(), QStringList())
                << "sequence " << sequence << " step " << step << " kind " << int(next.kind);
        }
    }
}

/// What an editor that was killed has told.
struct LastWords
{
    QString confirmed; ///< the lists after the last edit that it confirmed
    QString begun;     ///< as they should be after the edit that it had begun; empty for none
    int edits = 0;     ///< confirmed ones
};

void take(const QByteArray& told, LastWords& words)
{
    const QStringList lines = QString::fromUtf8(told).split(u'\n');
    // The last piece is no whole line.
    for (const QString& line : lines.first(lines.size() - 1)) {
        if (line == "done"_L1) {
            words.confirmed = std::exchange(words.begun, {});
            ++words.edits;
        } else if (line.startsWith("next "_L1)) {
            words.begun = line.sliced(5);
        } else {
            words.confirmed = line.sliced(6); // "lists "
        }
    }
}

constexpr int kLongWait = 60'000;

/// Runs an editor that kills itself at the moment at which an edit is committed, the first one
/// behind so many.
LastWords runToCommit(const QString& folder, unsigned seed, int edits)
{
    QProcess editor;
    editor.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    editor.start(QStringLiteral(MLV_LIST_EDITOR),
                 {folder, QString::number(seed), QString::number(edits)});
    LastWords words;
    if (!editor.waitForFinished(kLongWait) || editor.exitStatus() != QProcess::CrashExit) {
        ADD_FAILURE() << "the editor does not end at a commit";
        editor.kill();
        editor.waitForFinished();
        return words;
    }
    take(editor.readAllStandardOutput(), words);
    return words;
}

/// Kills an editor so many milliseconds after its `edits`th confirmed edit.
LastWords runAndKill(const QString& folder, unsigned seed, int edits, int milliseconds)
{
    QProcess editor;
    editor.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    editor.start(QStringLiteral(MLV_LIST_EDITOR), {folder, QString::number(seed)});
    LastWords words;
    QByteArray told;
    while (told.count("done\n") < edits) {
        if (!editor.waitForReadyRead(kLongWait)) {
            ADD_FAILURE() << "the editor does not edit";
            return words;
        }
        told += editor.readAllStandardOutput();
    }
    EXPECT_FALSE(editor.waitForFinished(milliseconds)) << "the editor ended by itself";
    editor.kill();
    editor.waitForFinished();
    told += editor.readAllStandardOutput();
    take(told, words);
    return words;
}

TEST_F(ListModelProof, KilledAtAnyMomentTheListsAreWholeAndTheLastConfirmedEditIsThere)
{
    const int kills = timesOf("MLV_LIST_KILLS", 20);
    std::mt19937 random(kSeed);
    int edits = 0;
    int begunAndThere = 0;
    int withoutRecord = 0;
    for (int kill = 0; kill < kills; ++kill) {
        lists.engine->Release(lists.dbName());
        const int least = std::uniform_int_distribution(1, 4)(random);
        const int wait = std::uniform_int_distribution(0, 30)(random);
        const LastWords words = runAndKill(lists.dataFolder(), unsigned(kill), least, wait);
        const QString found = ListModel::textOf(*lists.open());
        const bool isConfirmed = found == words.confirmed;
        ASSERT_TRUE(isConfirmed || found == words.begun)
            << "kill " << kill << "\nfound     " << found.toStdString() << "\nconfirmed "
            << words.confirmed.toStdString() << "\nbegun     " << words.begun.toStdString();
        ASSERT_EQ(broken(), QStringList()) << "kill " << kill;
        const ListHistory::Outcome outcome = lists.history.undo().outcome;
        if (outcome == ListHistory::Outcome::Done) {
            ASSERT_EQ(lists.history.redo().outcome, ListHistory::Outcome::Done) << kill;
            ASSERT_EQ(ListModel::textOf(*lists.open()), found) << kill;
        }
        // An edit without its record is not granted against; a record without its edit is, and so
        // is the record of an edit that was confirmed.
        const bool isOutOfStep = outcome == ListHistory::Outcome::ChangedElsewhere;
        ASSERT_FALSE(isOutOfStep && isConfirmed) << "kill " << kill << " after " << words.edits
                                                 << " edits, begun " << words.begun.toStdString();
        ASSERT_NE(outcome, ListHistory::Outcome::Failed) << kill;
        edits += words.edits;
        begunAndThere += isConfirmed ? 0 : 1;
        if (isOutOfStep) {
            // Later edits may be taken back down to the gap, which says nothing about them.
            ++withoutRecord;
            lists.history.clear();
        }
    }
    EXPECT_GE(edits, kills) << "each editor was killed behind an edit";
    std::printf("%d kills, %d confirmed edits, %d times the begun edit was there, %d times a step "
                "met lists that it did not know\n",
                kills, edits, begunAndThere, withoutRecord);
}

/// Whether one step back, or forth when the last one was a step back, leads to these lists.
bool isOneStepFrom(test::Lists& lists, const QString& text)
{
    const auto stands = [&] { return ListModel::textOf(*lists.open()) == text; };
    const ListHistory::Outcome back = lists.history.undo().outcome;
    if (back == ListHistory::Outcome::Done) {
        if (stands()) {
            return true;
        }
        EXPECT_EQ(lists.history.redo().outcome, ListHistory::Outcome::Done);
    }
    return lists.history.redo().outcome == ListHistory::Outcome::Done && stands();
}

TEST_F(ListModelProof, KilledAtTheMomentOfACommitTheRecordOfTheEditIsThereWithIt)
{
    const int kills = timesOf("MLV_LIST_KILLS", 20);
    int changes = 0;
    for (int kill = 0; kill < kills; ++kill) {
        lists.engine->Release(lists.dbName());
        const LastWords words = runToCommit(lists.dataFolder(), unsigned(kill), 1 + kill % 5);
        ASSERT_EQ(ListModel::textOf(*lists.open()).toStdString(), words.begun.toStdString())
            << "kill " << kill;
        ASSERT_EQ(broken(), QStringList()) << "kill " << kill;
        if (words.begun != words.confirmed) {
            ++changes;
            ASSERT_TRUE(isOneStepFrom(lists, words.confirmed))
                << "kill " << kill << "\nconfirmed " << words.confirmed.toStdString()
                << "\nbegun     " << words.begun.toStdString();
        }
        lists.history.clear();
    }
    EXPECT_GT(changes, kills / 2);
}

} // namespace
} // namespace melovane
