#pragma once

#include "bus/mlv_message_bus.h"
#include "config/config_objects.h"
#include "config/melovane_configuration.h"
#include "platform/system/timers.h"
#include "playlists/list_history.h"
#include "playlists/mlv_function.h"
#include "store/file_locator.h"
#include "support/answer_queue.h"
#include "support/suite_fixture.h"
#include "trees/playlist_favorit.h"

namespace melovane::test {

/// A message loop that stands still. Its timers run when the test says so.
class StillLoop : public MessageLoop
{
public:
    [[nodiscard]] std::unique_ptr<Timer> makeTimer(std::chrono::milliseconds interval,
                                                   std::function<void()> handler) override
    {
        (void)interval;
        auto timer = std::make_unique<StillTimer>(std::move(handler));
        timers.push_back(timer.get());
        return timer;
    }

    void turn() override { ++turns; }

    /// Runs those that are started.
    void run() const
    {
        for (StillTimer* timer : timers) {
            if (timer->active) {
                timer->handler();
            }
        }
    }

    struct StillTimer : public Timer
    {
        explicit StillTimer(std::function<void()> work)
            : handler(std::move(work))
        {}

        void start() override { active = true; }

        void stop() override { active = false; }

        [[nodiscard]] bool isActive() const override { return active; }

        std::function<void()> handler;
        bool active = false;
    };

    std::vector<StillTimer*> timers;
    int turns = 0;
};

/// A suite with a few lists, and all that the playlist panel is made over.
///
/// Group "Freitag" holds "Hauptset" (playing), "Warm-up" and "Reserve", group "Samstag" holds
/// "Tanz", and there are the jingle lists "Kennung" (playing) and "Wetter".
class FavoritLists : public Suite
{
public:
    FavoritLists()
    {
        MelovaneConfiguration::fill(texts);
        settings->SetDbName(dbName());
        execute(QStringLiteral("delete from pl_name"));
        execute(QStringLiteral("delete from pl_group"));
        friday = library.addGroup(QStringLiteral("Freitag"), 1);
        saturday = library.addGroup(QStringLiteral("Samstag"), 2);
        main = add(QStringLiteral("Hauptset"), friday, 1);
        warmUp = add(QStringLiteral("Warm-up"), friday, 2);
        reserve = add(QStringLiteral("Reserve"), friday, 3);
        dance = add(QStringLiteral("Tanz"), saturday, 1);
        station = add(QStringLiteral("Kennung"), -1, 1);
        weather = add(QStringLiteral("Wetter"), -1, 2);
        set(main, QStringLiteral("isplay=true"));
        set(station, QStringLiteral("isplay=true"));
        heard = bus.subscribe([this](const MLVMessage& message) {
            QStringList words{message.Command};
            for (const Value& value : {message.Value1, message.Value2, message.Value3}) {
                if (!value.isNull()) {
                    words.append(value.toText());
                }
            }
            messages.append(words.join(u'|'));
            if (message.Command.endsWith(QStringLiteral("list.aktivieren"))) {
                // As the view of the entries does, unless it could not.
                open = opens ? Pnid(message.Value1.toLong()) : open;
            }
        });
    }

    int add(const QString& name, int group, int position)
    {
        return library.addPlaylist({.Name = name, .GRID = group, .SID = position});
    }

    void set(int list, const QString& change) const
    {
        execute(QStringLiteral("update pl_name set %1 where nid=%2").arg(change).arg(list));
    }

    /// One column of a list.
    [[nodiscard]] QString of(int list, const QString& column) const
    {
        return value(QStringLiteral("select %1 from pl_name where nid=%2").arg(column).arg(list))
            .toText();
    }

    /// "nid" of all playing lists, joined by commas.
    [[nodiscard]] QString playing() const
    {
        return column(QStringLiteral("select nid from pl_name where isplay=true order by nid"))
            .join(u',');
    }

    /// Names of a group's lists in their order.
    [[nodiscard]] QString order(int group) const
    {
        return column(QStringLiteral("select name from pl_name where grid=%1 order by sid, nid")
                          .arg(group))
            .join(u',');
    }

    [[nodiscard]] FavoritParts parts(MessageLoop& loop)
    {
        return {*engine,
                *settings,
                texts,
                lists,
                loop,
                bus,
                answers,
                answers,
                [this](const QString& where, const QString& what) {
                    log.append(where + QStringLiteral(": ") + what);
                },
                [this] { return open; },
                [this](const QString& dragText, Pnid list) {
                    appended.append(dragText + QStringLiteral(" to ") +
                                    QString::number(numberOf(list)));
                },
                [this](Pnid list) { details.append(int(numberOf(list))); },
                [this](Pnid list) { saved.append(int(numberOf(list))); },
                {.isReadOnly = [this] { return !mayWrite; }}};
    }

    std::unique_ptr<GlobalSettings> settings = makeSettings();
    ConfigObjects texts{folders.paths(), folders.profile(), folders.files()};
    MLVMessageBus bus{folders.paths(), folders.files(), clock};
    AnswerQueue answers;
    FileLocator locator{files, dataFolder()};
    ListHistory history{*engine, files, clock, *settings, {}};
    MLVFunction lists{{*engine, *settings, files, locator, history, {}}, clock};
    QStringList messages; ///< "name|first value|second value|third value" of all on the bus
    Pnid open{};          ///< the list on the screen
    bool opens = true;
    bool mayWrite = true;
    QStringList appended; ///< "drag text to list"
    QList<int> details;
    QList<int> saved;
    int friday = 0;
    int saturday = 0;
    int main = 0;
    int warmUp = 0;
    int reserve = 0;
    int dance = 0;
    int station = 0;
    int weather = 0;

private:
    MLVMessageBus::Subscription heard;
};

} // namespace melovane::test
