#include "bus/bus_table.h"
#include "bus/message_lookup.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/melovane_configuration.h"
#include "support/fake_clock.h"
#include "support/suite_folders.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

/// A view that writes down what it does, and fails on demand.
struct View
{
    void refresh(const MLVMessage& message)
    {
        done.append(u"refresh "_s + message.Value1.toText());
    }

    void again(const MLVMessage&) { done.append(u"again"_s); }

    void lock(const MLVMessage&) { throw DbError(dberror::kSyntax, u"no such field"_s); }

    void write(const MLVMessage&) { throw IoError(u"/m/a"_s, u"full"_s); }

    void blunder(const MLVMessage&) { throw std::logic_error("bug"); }

    QStringList done;
};

constexpr BusRow<View> kTable[] = {
    {bus::kRefreshAll, &View::refresh},      {bus::kRefreshAll, &View::again},
    {bus::kVolumeMonitorShow, &View::again}, {bus::kPlaylistSetLock, &View::lock},
    {bus::kPlaylistSaveFile, &View::write},  {bus::kUpdateColor, &View::blunder},
};

constexpr BusRow<View> kOther[] = {{bus::kPlaylistSetLock, &View::again}};

class BusTableTest : public testing::Test
{
protected:
    BusTableTest() { MelovaneConfiguration::fill(texts); }

    [[nodiscard]] MLVMessageBus::Subscription listen()
    {
        return subscribe<View>(bus, guard, view, kTable);
    }

    test::SuiteFolders folders;
    test::FakeClock clock;
    ConfigObjects texts{folders.paths(), folders.profile(), folders.files()};
    std::unique_ptr<GlobalSettings> settings = folders.makeSettings();
    MLVMessageBus bus{folders.paths(), folders.files(), clock};
    QStringList told;
    QStringList logged;
    MLVMessageBus::Subscription statusLine = bus.subscribe([this](const MLVMessage& message) {
        if (message.Command == bus::kShowStatusText) {
            told.append(message.Sender + u": "_s + message.Value1.toText());
        }
    });
    BusSender sender{bus, u"MLVDB"_s};
    BusSender ownSender{bus, u"View"_s};
    EventGuard guard = guardOverBus(
        ownSender,
        texts,
        *settings,
        [this](const QString& where, const QString& what) { logged.append(where + u'|' + what); });
    View view;
};

TEST_F(BusTableTest, AMessageReachesTheFirstRowOfItsNameWithItsValues)
{
    const auto listening = listen();
    sender.SendMessage(bus::kRefreshAll, u"start"_s);
    EXPECT_EQ(view.done, QStringList{u"refresh start"_s});
}

TEST_F(BusTableTest, CasesAreNotToldApart)
{
    const auto listening = listen();
    sender.SendMessage(u"volume.monitor.SHOW");
    sender.SendMessage(u"Refresh.All");
    EXPECT_EQ(view.done, (QStringList{u"again"_s, u"refresh "_s}));
}

TEST_F(BusTableTest, ANameThatIsNotInTheTableReachesNobody)
{
    const auto listening = listen();
    sender.SendMessage(u"refresh.al");
    sender.SendMessage(u"refresh.all.");
    EXPECT_TRUE(view.done.isEmpty());
}

TEST_F(BusTableTest, WithItsSubscriptionAViewStopsToAct)
{
    auto listening = listen();
    listening.reset();
    sender.SendMessage(bus::kRefreshAll);
    EXPECT_TRUE(view.done.isEmpty());
}

TEST_F(BusTableTest, AFailingDatabaseIsToldAndLoggedAndTheOthersGetTheMessage)
{
    const auto listening = listen();
    View next;
    const auto behind = subscribe<View>(bus, guard, next, kOther);
    EXPECT_NO_THROW(sender.SendMessage(u"Playlist.Set.Lock"));
    EXPECT_EQ(told, QStringList{u"View: no such field"_s});
    EXPECT_EQ(logged, QStringList{u"playlist.set.lock|no such field"_s});
    EXPECT_EQ(next.done, QStringList{u"again"_s});
}

TEST_F(BusTableTest, AFailingFileIsToldAndLogged)
{
    const auto listening = listen();
    EXPECT_NO_THROW(sender.SendMessage(bus::kPlaylistSaveFile));
    EXPECT_EQ(told, QStringList{u"View: Unerwarteter Fehler: /m/a: full"_s});
    EXPECT_EQ(logged, QStringList{u"playlist.save.file|/m/a: full"_s});
}

TEST_F(BusTableTest, AFaultOfTheProgramItselfIsNotHidden)
{
    const auto listening = listen();
    EXPECT_THROW(sender.SendMessage(bus::kUpdateColor), std::logic_error);
}

TEST(MessageLookupTest, EachMonitorButtonHasItsMessage)
{
    EXPECT_EQ(bus::monitorMessage(u"play.start"), u"player.monitor.play.start");
    EXPECT_EQ(bus::monitorMessage(u"play.center"), u"player.monitor.play.center");
    EXPECT_EQ(bus::monitorMessage(u"play.stop"), u"player.monitor.play.stop");
    EXPECT_TRUE(bus::monitorMessage(u"play.vor").isEmpty());
}

TEST(MessageLookupTest, WhoAsksForAllRowsGetsThemUnderTheNameOfThePlaylist)
{
    EXPECT_EQ(bus::playlistMessage(u"all.db.append"), u"playlist.all.db.append.data");
    EXPECT_EQ(bus::playlistMessage(u"All.DB.Append.Aktuell"),
              u"playlist.all.db.append.aktuell.data");
    EXPECT_EQ(bus::playlistMessage(u"all.db.insert"), u"playlist.all.db.insert.data");
    EXPECT_EQ(bus::playlistMessage(u"all.db.insert.aktuell"),
              u"playlist.all.db.insert.aktuell.data");
    EXPECT_TRUE(bus::playlistMessage(u"all.db").isEmpty());
}

} // namespace
} // namespace melovane
