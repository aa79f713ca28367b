#include "config/config_objects.h"
#include "config/melovane_configuration.h"
#include "platform/controls/file_chooser.h"
#include "platform/controls/progress_window.h"
#include "platform/system/io_error.h"
#include "playlistfiles/m3u_commands.h"
#include "playlistfiles/m3u_fixture.h"
#include "support/answer_queue.h"

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The user's hand in the file dialogs.
class FileHand : public FileChooser
{
public:
    QStringList openFiles(const FileQuestion& question) override
    {
        asked = question;
        return open;
    }

    QString saveFile(const FileQuestion& question) override
    {
        asked = question;
        if (whileAsked) {
            whileAsked();
        }
        return save;
    }

    std::function<void()> whileAsked;

    QStringList open;
    QString save;
    FileQuestion asked;
};

class M3uCommandsTest : public M3uTest
{
protected:
    class Window : public ProgressWindow
    {
    public:
        explicit Window(M3uCommandsTest& test)
            : m_test(test)
        {}

        bool show(const QString& text, qint64, qint64) override
        {
            m_test.progress.append(text);
            if (m_test.whileShown) {
                std::exchange(m_test.whileShown, {})();
            }
            return !m_test.cancels;
        }

    private:
        M3uCommandsTest& m_test;
    };

    M3uCommandsTest()
    {
        MelovaneConfiguration::fill(texts);
        lists.addTracks(3);
        lists.settings->SetPlaylistVerzeichnis(music.path() + u'/');
    }

    static QByteArray entry(int track)
    {
        return "#MLV:FID=" + Lists::fid(track).toUtf8() + "\n/x/" + QByteArray::number(track) +
               ".mp3\n";
    }

    /// Lines enough that the progress is shown.
    static QByteArray manyLines()
    {
        QByteArray lines;
        for (int i = 0; i < 4000; ++i) {
            lines += "Q:\\none\\" + QByteArray::number(i) + ".mp3\n";
        }
        return lines;
    }

    QStringList listNames() { return lists.column(u"select name from pl_name order by nid"_s); }

    ConfigObjects texts{lists.folders.paths(), lists.folders.profile(), lists.files};
    MLVMessageBus bus{lists.folders.paths(), lists.files, lists.clock};
    QStringList sent;
    MLVMessageBus::Subscription listener = bus.subscribe([this](const MLVMessage& message) {
        sent.append(message.Command + u' ' + message.Value1.toText());
    });
    AnswerQueue answers;
    FileHand hand;
    int group = lists.library.addGroup(u"Gruppe"_s);
    bool cancels = false;
    QStringList progress;
    std::function<void()> whileShown;
    QStringList opened;
    bool opens = true; ///< there is a program for logs
    M3uCommands commands{{m3u, *lists.settings, texts, lists.files, answers, hand, bus,
                          [this](const QString&) { return std::make_unique<Window>(*this); },
                          [this] { return GroupId(group); },
                          [this](const QString& file) {
                              opened.append(file);
                              return opens;
                          }}};
};

TEST_F(M3uCommandsTest, EachFileBecomesAListOfTheGroupAndTheFirstIsOpened)
{
    hand.open = {writeList(entry(1) + entry(2), u"Ä eins.m3u"_s),
                 writeList(entry(3), u"zwei.M3U"_s)};
    commands.importLists();
    EXPECT_EQ(listNames(), (QStringList{u"Ä eins"_s, u"zwei"_s}));
    const int first = lists.value(u"select min(nid) from pl_name"_s).toLong();
    EXPECT_EQ(lists.entries(Pnid(first)), u"2:1 3:2"_s);
    EXPECT_EQ(lists.column(u"select distinct grid from pl_name"_s),
              QStringList{QString::number(group)});
    EXPECT_EQ(sent,
              (QStringList{u"show.statustext 2 Playlisten mit 3 Titeln importiert"_s,
                           u"refresh.playlist.tree "_s, u"playlist.aktivieren %1"_s.arg(first)}));
}

TEST_F(M3uCommandsTest, OneListAndOneTrackAreToldInTheSingular)
{
    hand.open = {writeList(entry(1), u"eins.m3u"_s)};
    commands.importLists();
    EXPECT_EQ(sent.first(), u"show.statustext 1 Playliste mit 1 Titel importiert"_s);
}

TEST_F(M3uCommandsTest, TracksThatAListBringsAreToldToTheViewsOfTheLibrary)
{
    addFile(u"neu.mp3"_s);
    const QString file = writeList("neu.mp3\n");
    commands.importLists({file});
    EXPECT_EQ(sent.count(u"db.change "_s), 1);
    EXPECT_LT(sent.indexOf(u"db.change "_s), sent.indexOf(u"refresh.playlist.tree "_s));
    addFile(u"noch einer.mp3"_s);
    const Pnid list = Pnid(lists.value(u"select min(nid) from pl_name"_s).toLong());
    sent.clear();
    EXPECT_TRUE(commands.insertLists({writeList("noch einer.mp3\n")}, list, {}, 0));
    EXPECT_EQ(sent.count(u"db.change "_s), 1);
    sent.clear();
    EXPECT_TRUE(commands.insertLists({file}, list, {}, 0));
    EXPECT_EQ(sent.count(u"db.change "_s), 0) << "the library has it";
}

TEST_F(M3uCommandsTest, TheFolderOfTheLastImportIsRemembered)
{
    const QString folder = music.file(u"sub"_s);
    hand.open = {music.write(u"sub/a.m3u"_s, entry(1))};
    commands.importLists();
    EXPECT_EQ(lists.settings->GetKeyValue(u"Global"_s, u"LoadPlaylistPath"_s, {}), folder);
    hand.open.clear();
    commands.importLists();
    EXPECT_EQ(hand.asked.start, folder);
    EXPECT_EQ(listNames().size(), 1);
}

TEST_F(M3uCommandsTest, ListsOfTheJingleGroupHoldJingles)
{
    group = -1;
    commands.importLists({writeList(entry(1))});
    EXPECT_EQ(lists.column(u"select aktion from pl_all"_s), QStringList{u"3"_s});
    EXPECT_TRUE(sent.last().startsWith(u"jinglelist.aktivieren "_s));
}

TEST_F(M3uCommandsTest, AListWithFailuresComesInAndThenTheLogIsOffered)
{
    answers.expectMessage(u"Soll das Protokoll angezeigt werden ?"_s, WarningAnswer::Yes);
    commands.importLists({writeList(entry(1) + "gone.mp3\n")});
    EXPECT_EQ(listNames().size(), 1);
    EXPECT_EQ(answers.lastMessage.title, texts.text(u"achtung"_s));
    EXPECT_EQ(answers.lastMessage.suppressCaption, u"warnM3UErrors.plctl"_s);
    const QString log = lists.file(u"M3UImportError.log"_s);
    EXPECT_EQ(opened, QStringList{log});
    EXPECT_EQ(sent.last(), u"show.statustext Das Protokoll liegt hier: "_s + log);
}

TEST_F(M3uCommandsTest, ALogThatNoProgramOpensIsToldWithItsPlace)
{
    opens = false;
    answers.expectMessage(u"Protokoll"_s, WarningAnswer::Yes);
    commands.importLists({writeList("gone.mp3\n")});
    EXPECT_EQ(sent.last(),
              u"show.statustext Kein Programm öffnet das Protokoll. Es liegt hier: "_s +
                  lists.file(u"M3UImportError.log"_s));
}

TEST_F(M3uCommandsTest, AFileWithFailuresAloneMakesNoListAndAnEmptyOneMakesAnEmptyList)
{
    answers.expectMessage(u"Protokoll"_s, WarningAnswer::No);
    commands.importLists({writeList("gone.mp3\n", u"bad.m3u"_s), music.file(u"missing.m3u"_s),
                          writeList("#EXTM3U\n", u"empty.m3u"_s)});
    EXPECT_EQ(listNames(), QStringList{u"empty"_s});
    EXPECT_EQ(opened, QStringList());
}

TEST_F(M3uCommandsTest, ACancelledImportKeepsTheListsThatAreDoneAndChangesNothingElse)
{
    const QString done = writeList(entry(1), u"done.m3u"_s);
    const QString large = writeList(manyLines(), u"large.m3u"_s);
    cancels = true;
    answers.expectMessage(u"Protokoll"_s, WarningAnswer::No);
    commands.importLists({done, large, writeList(entry(2), u"never.m3u"_s)});
    EXPECT_EQ(listNames(), QStringList{u"done"_s});
    EXPECT_EQ(progress, QStringList{u"large.m3u"_s});
    EXPECT_EQ(sent.first(), u"show.statustext Import abgebrochen, 1 Playliste ist da"_s);
}

TEST_F(M3uCommandsTest, WhileAnImportRunsAnotherCommandDoesNothing)
{
    const QString list = writeList(entry(1), u"other.m3u"_s);
    whileShown = [&] {
        commands.importLists({list});
        EXPECT_FALSE(commands.insertLists({list}, Pnid{1}, {}, 0));
        commands.saveList(Pnid{1});
    };
    answers.expectMessage(u"Protokoll"_s, WarningAnswer::No);
    commands.importLists({writeList(manyLines(), u"large.m3u"_s)});
    EXPECT_FALSE(whileShown);
    EXPECT_EQ(listNames(), QStringList());
}

TEST_F(M3uCommandsTest, DroppedListsStandInTheirOrderWhereverTheyFall)
{
    const Pnid list = lists.addList({10, 20});
    const QStringList files{writeList(entry(3), u"a.m3u"_s),
                            writeList(entry(1) + entry(2), u"b.m3u"_s)};
    EXPECT_TRUE(commands.insertLists(files, list, {}, 0));
    EXPECT_EQ(lists.entries(list), u"10:1 20:2 21:3 22:1 23:2"_s);
    EXPECT_TRUE(commands.insertLists(files, list, Sid{0}, kAktionJinglePlay));
    EXPECT_EQ(lists.column(u"select fid from pl_all where aktion=3 order by sid"_s),
              (QStringList{Lists::fid(3), Lists::fid(1), Lists::fid(2)}));
    EXPECT_TRUE(sent.last().endsWith(u"3 Titel aus Playlisten eingefügt"_s));
}

TEST_F(M3uCommandsTest, ACancelledDropChangesNothing)
{
    const Pnid list = lists.addList({10});
    cancels = true;
    answers.expectMessage(u"Protokoll"_s, WarningAnswer::No);
    EXPECT_FALSE(commands.insertLists({writeList(entry(2) + manyLines())}, list, Sid{10}, 0));
    EXPECT_EQ(lists.entries(list), u"10:1"_s);
    EXPECT_EQ(sent, QStringList{
                        u"show.statustext Einfügen abgebrochen, die Playliste ist unverändert"_s});
}

TEST_F(M3uCommandsTest, ADroppedListWithFailuresInsertsTheGoodRowsAndThenAsksAboutTheLog)
{
    const Pnid list = lists.addList({10});
    answers.expectMessage(u"Protokoll"_s, WarningAnswer::No);
    EXPECT_TRUE(
        commands.insertLists({writeList("gone.mp3\n" + entry(2) + "Q:\\x.mp3\n")}, list, {}, 0));
    EXPECT_EQ(lists.entries(list), u"10:1 11:2"_s);
}

TEST_F(M3uCommandsTest, TheActiveListIsSavedWhereTheUserSays)
{
    const Pnid list = lists.addList({10, 20}, u"Set: 1"_s);
    hand.save = music.file(u"out/list.m3u"_s);
    ASSERT_TRUE(lists.files.makeFolder(music.file(u"out"_s)));
    commands.saveList(list);
    EXPECT_EQ(hand.asked.start, music.file(u"Set_ 1.m3u"_s));
    EXPECT_TRUE(music.read(u"out/list.m3u"_s).startsWith("#Melovane-M3U "));
    EXPECT_EQ(sent, QStringList{u"show.statustext Gespeichert: "_s + hand.save});
    EXPECT_EQ(lists.settings->GetKeyValue(u"Global"_s, u"SavePlaylistPath"_s, {}),
              music.file(u"out"_s));
    commands.saveList(list);
    EXPECT_EQ(hand.asked.start, music.file(u"out/Set_ 1.m3u"_s));
}

TEST_F(M3uCommandsTest, WithoutAListThereIsNothingToSave)
{
    commands.saveList(Pnid{});
    EXPECT_EQ(sent, QStringList{u"show.statustext Es ist keine Playliste geöffnet."_s});
    EXPECT_EQ(hand.asked.title, QString());
}

TEST_F(M3uCommandsTest, LeavingTheDialogSavesNothing)
{
    commands.saveList(lists.addList({10}));
    EXPECT_EQ(sent, QStringList());
    EXPECT_EQ(lists.files.names(music.path()), QStringList());
}

TEST_F(M3uCommandsTest, AFileThatTheDialogDidNotAskAboutIsReplacedOnlyAfterAQuestion)
{
    const Pnid list = lists.addList({10});
    music.write(u"list.txt.m3u"_s, "old");
    hand.save = music.file(u"list.txt"_s);
    answers.expectMessage(u"list.txt.m3u"_s, WarningAnswer::No);
    commands.saveList(list);
    EXPECT_EQ(music.read(u"list.txt.m3u"_s), "old");
    answers.expectMessage(u"list.txt.m3u"_s, WarningAnswer::Yes);
    commands.saveList(list);
    EXPECT_NE(music.read(u"list.txt.m3u"_s), "old");
}

TEST_F(M3uCommandsTest, EntriesWhoseTrackIsGoneAreToldWithTheirPlaceWhenTheListIsSaved)
{
    const Pnid list = lists.addList({10, 20, 30});
    lists.execute(u"update pl_all set FID='800000000099' where SID=20"_s);
    hand.save = music.file(u"list.m3u"_s);
    answers.expectMessage(u"2: 800000000099"_s);
    commands.saveList(list);
    ASSERT_EQ(answers.messages.size(), 1);
    EXPECT_TRUE(answers.messages.first().endsWith(
        u"1 Eintrag steht nicht in der Datei, weil sein Titel nicht mehr in der Bibliothek "
        "ist:\n2: 800000000099"_s));
    EXPECT_EQ(music.read(u"list.m3u"_s).count("#MLV:FID="), 2);
    lists.execute(u"delete from pl_all where FID='800000000099'"_s);
    commands.saveList(list);
    EXPECT_EQ(answers.messages.size(), 1);
}

TEST_F(M3uCommandsTest, ALibraryThatFailsWhileAListIsSavedIsToldInTheUsersWords)
{
    const Pnid list = lists.addList({10});
    hand.save = music.file(u"list.m3u"_s);
    hand.whileAsked = [this] { lists.engine->GiveAway(lists.dbName()); };
    answers.expectMessage(u"nicht gespeichert"_s);
    commands.saveList(list);
    EXPECT_TRUE(answers.messages.first().endsWith(texts.text(u"dberror.3045"_s, lists.dbName())))
        << answers.messages.first().toStdString();
}

TEST_F(M3uCommandsTest, AFailedSaveIsToldWithFileAndReason)
{
    hand.save = u"/proc/list.m3u"_s;
    answers.expectMessage(u"/proc/list.m3u"_s);
    commands.saveList(lists.addList({10}));
    EXPECT_TRUE(answers.messages.first().contains(u"nicht gespeichert"_s));
    EXPECT_TRUE(answers.messages.first().endsWith(u"\n\n"_s + texts.text(u"system.missing"_s)))
        << answers.messages.first().toStdString(); // the system's reason
    EXPECT_EQ(sent, QStringList());
}

} // namespace
} // namespace melovane::test
