// Two tag tools at once, each in a process of its own, over one library.
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/melovane_configuration.h"
#include "platform/linux/id3_cover.h"
#include "platform/linux/job_locks.h"
#include "platform/linux/linux_file_lock.h"
#include "platform/linux/tag_reader.h"
#include "platform/media/picture_maker.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/worker.h"
#include "playlists/list_history.h"
#include "support/mp3_maker.h"
#include "support/suite_fixture.h"
#include "tagbench/bench_session.h"

#include <sys/wait.h>
#include <unistd.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class NoWorker : public Worker
{
public:
    void run(std::function<void()>, std::function<void()>) override {}
};

class NoPictures : public PictureMaker
{
public:
    [[nodiscard]] QByteArray jpeg(const QByteArray&, int, int) const override { return {}; }
};

/// A tag tool without its window.
struct Tool
{
    Tool(test::Suite& suite, DBEngine& engine, BenchMode mode)
        : settings(suite.folders.makeSettings(engine))
        , texts(suite.folders.paths(), suite.folders.profile(), suite.files)
        , history(engine, suite.files, suite.clock, *settings, {})
        , session({engine, history, *settings, suite.files, *reader, suite.clock, texts, covers,
                   pictures, worker, suite.dataFolder(),
                   jobClaim(jobLockFile(suite.files,
                                        {suite.folders.environment().runtimeFolder()},
                                        u"tagbench"_s,
                                        suite.dbName()))},
                  mode)
    {
        MelovaneConfiguration::fill(texts);
        session.load();
    }

    void change(const QString& file, TrackField field, const QString& text)
    {
        for (int track = 0; track < session.tracks().count(); ++track) {
            if (session.tracks().at(track).storedPlace() == file) {
                session.tracks().change({{track, field, text}});
            }
        }
    }

    BenchOutcome apply()
    {
        return session.apply(false, [](int, int) { return true; });
    }

    std::unique_ptr<GlobalSettings> settings;
    ConfigObjects texts;
    std::unique_ptr<TagReader> reader = linux_media::makeTagReader();
    ListHistory history;
    linux_media::Id3CoverReader covers;
    NoPictures pictures;
    NoWorker worker;
    BenchSession session;
};

class BenchBeside : public test::SuiteFixture
{
protected:
    BenchBeside()
    {
        for (const QString& name : {u"eins.mp3"_s, u"zwei.mp3"_s}) {
            music.write(name, test::simpleMp3(name, u"Wer"_s));
        }
    }

    /// What a user does in another process, which has ended when this returns; false fails the
    /// test.
    template <typename Work> void elsewhere(BenchMode mode, Work work)
    {
        suite.engine->GiveAway(suite.dbName());
        suite.engine->TakeBack(suite.dbName());
        const pid_t process = ::fork();
        if (process == 0) {
            const auto engine = sqlite::makeEngine(suite.clock);
            Tool other(suite, *engine, mode);
            ::_exit(work(other) ? 0 : 1);
        }
        int status = 1;
        ::waitpid(process, &status, 0);
        ASSERT_EQ(status, 0);
    }

    void addAll(Tool& tool)
    {
        tool.session.addFiles({music.path()}, [](int, int) { return true; });
    }

    [[nodiscard]] QStringList cells(const QString& column) const
    {
        return suite.column(u"select %1 from db_all order by DName"_s.arg(column));
    }

    test::TempFolder music;
};

TEST_F(BenchBeside, NewFilesOfTwoToolsAreImportedOnce)
{
    Tool here(suite, *suite.engine, BenchMode::Import);
    addAll(here);
    ASSERT_EQ(here.session.tracks().count(), 2);
    here.change(music.file(u"zwei.mp3"_s), TrackField::Jahr, u"1999"_s);
    elsewhere(BenchMode::Import, [&](Tool& other) {
        addAll(other);
        other.change(music.file(u"eins.mp3"_s), TrackField::Album, u"Drüben"_s);
        return other.apply().problems.empty();
    });
    const QStringList fids = cells(u"FID"_s);
    ASSERT_EQ(fids.size(), 2);

    const BenchOutcome outcome = here.apply();
    EXPECT_EQ(outcome.imported, 0);
    EXPECT_TRUE(outcome.problems.empty());
    EXPECT_EQ(outcome.written, std::vector<int>{1});
    EXPECT_EQ(cells(u"FID"_s), fids);
    EXPECT_EQ(cells(u"Album"_s), (QStringList{u"Drüben"_s, QString()}));
    EXPECT_EQ(cells(u"Jahr"_s), (QStringList{QString(), u"1999"_s}));
    EXPECT_EQ(here.session.tracks().text(0, TrackField::Album), u"Drüben"_s);
    EXPECT_FALSE(here.session.canApply());

    Tool later(suite, *suite.engine, BenchMode::Import);
    addAll(later);
    EXPECT_EQ(later.session.tracks().count(), 0) << "all of them are known";
}

TEST_F(BenchBeside, AFieldOfANewFileThatBothHaveChangedIsNotWrittenTwice)
{
    Tool here(suite, *suite.engine, BenchMode::Import);
    addAll(here);
    here.change(music.file(u"eins.mp3"_s), TrackField::Album, u"Hier"_s);
    elsewhere(BenchMode::Import, [&](Tool& other) {
        addAll(other);
        other.change(music.file(u"eins.mp3"_s), TrackField::Album, u"Drüben"_s);
        return other.apply().problems.empty();
    });
    const BenchOutcome outcome = here.apply();
    ASSERT_EQ(outcome.problems.size(), 1U);
    EXPECT_EQ(outcome.problems[0].fault, BenchFault::ChangedElse);
    EXPECT_EQ(cells(u"Album"_s), (QStringList{u"Drüben"_s, QString()}));
    // The user has read it, and sees what stands there.
    EXPECT_EQ(here.session.tracks().storedText(0, TrackField::Album), u"Drüben"_s);
    EXPECT_EQ(here.session.tracks().text(0, TrackField::Album), u"Hier"_s);
    EXPECT_TRUE(here.apply().problems.empty());
    EXPECT_EQ(cells(u"Album"_s), (QStringList{u"Hier"_s, QString()}));
    EXPECT_EQ(cells(u"FID"_s).size(), 2);
}

TEST_F(BenchBeside, WhatTheOtherToolHasStoredIsShownAndOverwrittenOnlyKnowingly)
{
    const QString fid = suite.library.add(
        {.Titel = u"Eins"_s, .Path = music.path() + u'/', .DName = u"eins.mp3"_s});
    const QString mark = u"insert into TEMP_MP3Edit (FID, PLID) values ('%1', -1)"_s.arg(fid);
    suite.execute(mark);
    Tool here(suite, *suite.engine, BenchMode::Edit);
    here.change(music.file(u"eins.mp3"_s), TrackField::Titel, u"Hier"_s);
    suite.execute(mark);
    elsewhere(BenchMode::Edit, [&](Tool& other) {
        other.change(music.file(u"eins.mp3"_s), TrackField::Titel, u"Drüben"_s);
        other.change(music.file(u"eins.mp3"_s), TrackField::Album, u"Platte"_s);
        return other.apply().problems.empty();
    });
    EXPECT_EQ(here.apply().problems.size(), 1U);
    EXPECT_EQ(cells(u"Titel"_s), QStringList{u"Drüben"_s});
    EXPECT_EQ(here.session.tracks().text(0, TrackField::Album), u"Platte"_s);
    EXPECT_EQ(here.session.tracks().changedCells(), 1);
    EXPECT_TRUE(here.apply().problems.empty());
    EXPECT_EQ(cells(u"Titel"_s), QStringList{u"Hier"_s});
    EXPECT_EQ(cells(u"Album"_s), QStringList{u"Platte"_s});
}

TEST_F(BenchBeside, WhileTheOtherOneWritesNothingIsWritten)
{
    Tool here(suite, *suite.engine, BenchMode::Import);
    addAll(here);
    const auto held = here.session.parts().claim();
    ASSERT_NE(held, nullptr);
    elsewhere(BenchMode::Import, [&](Tool& other) {
        addAll(other);
        return other.apply().isCancelled;
    });
    EXPECT_TRUE(cells(u"FID"_s).isEmpty());
}

} // namespace
} // namespace melovane
