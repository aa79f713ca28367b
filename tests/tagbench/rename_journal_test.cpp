#include "config/global_settings.h"
#include "platform/linux/linux_files.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "playlists/list_history.h"
#include "support/mp3_maker.h"
#include "support/suite_fixture.h"
#include "tagbench/bench_apply.h"
#include "tagbench/bench_library.h"
#include "tagbench/rename_journal.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The disc of a program that is killed when it has changed it so many times.
class KillingFiles : public LinuxFiles
{
public:
    explicit KillingFiles(int changes)
        : m_left(changes)
    {}

    void rename(const QString& source, const QString& target) override
    {
        count();
        LinuxFiles::rename(source, target);
    }

    void writeWhole(const QString& path, const QByteArray& bytes) override
    {
        count();
        LinuxFiles::writeWhole(path, bytes);
    }

    bool remove(const QString& path) override
    {
        count();
        return LinuxFiles::remove(path);
    }

    bool makeFolders(const QString& path) override
    {
        count();
        return LinuxFiles::makeFolders(path);
    }

private:
    void count()
    {
        if (m_left-- == 0) {
            ::raise(SIGKILL);
        }
    }

    int m_left;
};

class RenameJournalTest : public test::SuiteFixture
{
protected:
    void add(const QString& name)
    {
        music.write(name, bytesOf(name));
        fids.insert(name,
                    suite.library.add({.Titel = name, .Path = music.path() + u'/', .DName = name}));
        suite.execute(u"insert into TEMP_MP3Edit (FID, PLID) values ('%1', -1)"_s.arg(fids[name]));
    }

    [[nodiscard]] static QByteArray bytesOf(const QString& name)
    {
        return test::simpleMp3(name, u"Wer"_s);
    }

    void rename(const QString& from, const QString& to) { wanted.emplace_back(from, to); }

    /// Applies the new names as the tool does; `isCancelled` at the end.
    void apply(DBEngine& engine, Files& disc, bool isCancelled = false)
    {
        const auto settings = suite.folders.makeSettings(engine);
        ListHistory history(engine, disc, suite.clock, *settings, {});
        const auto database = engine.OpenDatabase(suite.dbName());
        BenchTracks tracks;
        tracks.setTracks(benchlibrary::markedTracks(*database));
        std::vector<BenchCell> cells;
        for (int track = 0; track < tracks.count(); ++track) {
            for (const auto& [from, to] : wanted) {
                if (tracks.at(track).shownPlace() == from) {
                    cells.push_back({track, kBenchPlace, music.file(to)});
                }
            }
        }
        tracks.change(cells);
        (void)BenchApply({.database = *database,
                          .history = history,
                          .files = disc,
                          .dataFolder = suite.dataFolder(),
                          .library = suite.dbName()})
            .apply(tracks, [=](int done, int size) { return !isCancelled || done < size; });
    }

    /// The same in a program of its own, which is killed behind so many changes of the disc. False
    /// when it came to its end before.
    [[nodiscard]] bool applyAndKill(int changes, bool isCancelled)
    {
        suite.engine->GiveAway(suite.dbName());
        suite.engine->TakeBack(suite.dbName());
        const pid_t child = ::fork();
        if (child == 0) {
            const auto engine = sqlite::makeEngine(suite.clock);
            KillingFiles disc(changes);
            apply(*engine, disc, isCancelled);
            ::_exit(0);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFSIGNALED(status);
    }

    void mend() { RenameJournal(suite.files, suite.dbName()).mend(*suite.open()); }

    [[nodiscard]] QString cell(const QString& name, const QString& column)
    {
        return suite.value(u"select %1 from db_all where FID='%2'"_s.arg(column, fids[name]))
            .toText();
    }

    /// Every row leads to the file of its track, and nothing else lies there.
    void expectWhole()
    {
        QStringList places;
        for (const QString& name : fids.keys()) {
            places.append(cell(name, u"Path"_s) + cell(name, u"DName"_s));
            EXPECT_EQ(music.read(places.last()), bytesOf(name)) << qPrintable(name);
        }
        places.removeDuplicates();
        EXPECT_EQ(places.size(), fids.size());
        qsizetype files = 0;
        for (const QString& name : suite.files.names(music.path())) {
            files += suite.files.folderExists(music.file(name))
                         ? suite.files.names(music.file(name)).size()
                         : 1;
        }
        EXPECT_EQ(files, fids.size());
        for (const QString& name : suite.files.names(suite.dataFolder())) {
            EXPECT_FALSE(name.contains(u".renames"_s)) << qPrintable(name);
        }
    }

    /// A ring, a row of names that move up, and a new folder.
    void addAll()
    {
        for (const QString& name : {u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s, u"1.mp3"_s, u"2.mp3"_s,
                                    u"x.mp3"_s, u"bleibt.mp3"_s}) {
            add(name);
        }
        rename(u"a.mp3"_s, u"b.mp3"_s);
        rename(u"b.mp3"_s, u"c.mp3"_s);
        rename(u"c.mp3"_s, u"a.mp3"_s);
        rename(u"1.mp3"_s, u"2.mp3"_s);
        rename(u"2.mp3"_s, u"3.mp3"_s);
        rename(u"x.mp3"_s, u"Neu/x.mp3"_s);
    }

    test::TempFolder music;
    QMap<QString, QString> fids; ///< by the first name of the file
    std::vector<std::pair<QString, QString>> wanted;
};

TEST_F(RenameJournalTest, AToolThatIsKilledWhileItRenamesLeavesNoRowWithoutItsFile)
{
    addAll();
    int kills = 0;
    for (; cell(u"a.mp3"_s, u"DName"_s) == "a.mp3"_L1; ++kills) {
        ASSERT_TRUE(applyAndKill(kills, false));
        mend();
        expectWhole();
    }
    // The last one came between the rows and the end of the journal; before it were seven moves,
    // each with its folder, and the journal.
    EXPECT_GE(kills, 16);
    EXPECT_EQ(cell(u"a.mp3"_s, u"DName"_s), u"b.mp3"_s);
}

TEST_F(RenameJournalTest, AToolThatIsKilledWhileItTakesBackLeavesNoRowWithoutItsFile)
{
    addAll();
    int kills = 0;
    while (applyAndKill(kills, true)) {
        mend();
        expectWhole();
        ++kills;
    }
    EXPECT_GT(kills, 22);
    expectWhole();
    EXPECT_EQ(cell(u"a.mp3"_s, u"DName"_s), u"a.mp3"_s);
}

TEST_F(RenameJournalTest, WhatIsNoJournalAndWhatIsCutOffMovesNothing)
{
    add(u"a.mp3"_s);
    rename(u"a.mp3"_s, u"b.mp3"_s);
    ASSERT_TRUE(applyAndKill(2, false));
    const QByteArray journal = suite.read(u"melovane.mdb.renames"_s);
    ASSERT_FALSE(journal.isEmpty());
    for (qsizetype size = 0; size < journal.size(); size += 7) {
        suite.write(u"melovane.mdb.renames"_s, journal.first(size));
        mend();
    }
    suite.write(u"melovane.mdb.renames"_s, QByteArray(5000, '\xff'));
    mend();
    EXPECT_EQ(suite.files.names(music.path()), QStringList{u"a.mp3"_s});
}

TEST_F(RenameJournalTest, AJournalOfAVolumeThatIsAwayWaits)
{
    music.write(u"stick/a.mp3"_s, bytesOf(u"a"_s));
    fids.insert(u"a"_s,
                suite.library.add({.Path = music.path() + u"/stick/"_s, .DName = u"a.mp3"_s}));
    suite.execute(u"insert into TEMP_MP3Edit (FID, PLID) values ('%1', -1)"_s.arg(fids[u"a"_s]));
    rename(u"a.mp3"_s, u"stick/b.mp3"_s);
    // The journal, the folder, the new name; the next is the journal's end, with a row that
    // follows.
    ASSERT_TRUE(applyAndKill(3, true));
    ASSERT_EQ(suite.files.names(music.file(u"stick"_s)), QStringList{u"b.mp3"_s});
    suite.files.rename(music.file(u"stick"_s), music.file(u"away"_s));
    mend();
    suite.files.rename(music.file(u"away"_s), music.file(u"stick"_s));
    mend();
    EXPECT_EQ(suite.files.names(music.file(u"stick"_s)), QStringList{u"a.mp3"_s});
    expectWhole();
}

} // namespace
} // namespace melovane
