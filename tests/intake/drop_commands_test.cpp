#include "intake/drop_commands.h"
#include "intake/intake_fixture.h"
#include "platform/controls/pointer_control.h"
#include "platform/controls/progress_window.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct CountingPointer : public PointerControl
{
    void push(PointerShape) override { ++pushed; }

    void pop() override { ++popped; }

    int pushed = 0;
    int popped = 0;
};

class DropCommandsTest : public test::IntakeFixture
{
protected:
    QString addFile(const QString& name)
    {
        return music.write(name, test::simpleMp3(name, u"Artist"_s));
    }

    /// The same, with a track of the library for it.
    QString addTrack(const QString& name)
    {
        addFile(name);
        return suite.library.add({.Titel = name, .Path = music.path() + u'/', .DName = name});
    }

    /// Keeps what was shown; the user ends the work when the test says so.
    class Window : public ProgressWindow
    {
    public:
        explicit Window(DropCommandsTest& test)
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
        DropCommandsTest& m_test;
    };

    QStringList progress;
    std::function<void()> whileShown;
    bool cancels = false;
    int changes = 0; ///< of the library, as its views are told
    std::unique_ptr<GlobalSettings> settings = suite.makeSettings();
    CountingPointer pointer;
    QStringList shown;
    QStringList logged;
    DropCommands drops{
        {.engine = *suite.engine,
         .settings = *settings,
         .texts = texts,
         .files = suite.files,
         .reader = reader,
         .clock = suite.clock,
         .pointer = pointer,
         .showStatusText = [this](const QString& text) { shown.append(text); },
         .openProgress = [this](const QString&) { return std::make_unique<Window>(*this); },
         .libraryChanged = [this] { ++changes; },
         .logRefusal = [this](const Refusal& refusal) { logged.append(refusal.path); }}};
};

TEST_F(DropCommandsTest, KnownAndNewFilesAreTracksInTheirOrder)
{
    const QString known = addTrack(u"b.mp3"_s);
    const QString fresh = addFile(u"a.mp3"_s);
    const QStringList fids = drops.tracksOf({music.file(u"b.mp3"_s), fresh});
    ASSERT_EQ(fids.size(), 2);
    EXPECT_EQ(fids[0], known);
    EXPECT_EQ(drops.tracksOf({fresh}), QStringList{fids[1]}) << "it has entered the library";
    EXPECT_TRUE(shown.isEmpty());
    EXPECT_EQ(pointer.pushed, 2);
    EXPECT_EQ(pointer.popped, 2);
    EXPECT_EQ(changes, 1) << "the views of the library are told of new tracks alone";
}

TEST_F(DropCommandsTest, ADropShowsWhereItIsAndOneThatTheUserEndsChangesNothing)
{
    const QString file = addFile(u"a.mp3"_s);
    cancels = true;
    EXPECT_EQ(drops.tracksOf({file}), QStringList());
    EXPECT_EQ(progress.size(), 1);
    EXPECT_EQ(shown, QStringList{u"Einfügen abgebrochen, die Playliste ist unverändert"_s});
    EXPECT_EQ(rows(), 0);
    EXPECT_EQ(changes, 0);
}

TEST_F(DropCommandsTest, WhileOneDropIsAtWorkAnotherDoesNothing)
{
    const QString file = addFile(u"a.mp3"_s);
    whileShown = [&] { EXPECT_EQ(drops.tracksOf({file}), QStringList()); };
    EXPECT_EQ(drops.tracksOf({file}).size(), 1);
    EXPECT_EQ(rows(), 1);
}

TEST_F(DropCommandsTest, WhatIsBeyondTheMeasureOfOneDropIsTold)
{
    for (int i = 0; i < DroppedTracks::kMaxFiles + 2; ++i) {
        music.write(u"%1.mp3"_s.arg(i, 5, 10, QChar(u'0')), "x");
    }
    EXPECT_EQ(drops.tracksOf({music.path()}), QStringList());
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(
        shown.first().contains(u"Höchstens 5000 Dateien auf einmal, 2 weitere ausgelassen"_s))
        << qPrintable(shown.first());
}

TEST_F(DropCommandsTest, FilesWithoutSoundAreLeftOutAndTold)
{
    const QString good = addFile(u"a.mp3"_s);
    const QString bad = music.write(u"noise.mp3"_s, "not a sound");
    EXPECT_EQ(drops.tracksOf({bad, good}).size(), 1);
    EXPECT_EQ(shown, QStringList{texts.text(u"playlist.skipped.one"_s, 1, u"noise.mp3"_s)});
    EXPECT_EQ(logged, QStringList{bad}) << "the log of imports has each of them";
}

TEST_F(DropCommandsTest, KindsThatAreNotReadAreToldWithTheirCounts)
{
    QStringList places;
    for (const QString& name : {u"a.pls"_s, u"b.pls"_s, u"c.xspf"_s, u"d.flac"_s}) {
        places.append(music.write(name, "x"));
    }
    EXPECT_EQ(drops.tracksOf(places), QStringList());
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown.first().contains(u"1 FLAC, 2 PLS, 1 XSPF"_s)) << qPrintable(shown.first());
    EXPECT_EQ(logged, QStringList());
}

} // namespace
} // namespace melovane
