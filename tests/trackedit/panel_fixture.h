#pragma once

#include "config/config_objects.h"
#include "config/melovane_configuration.h"
#include "platform/system/timers.h"
#include "playlists/list_history.h"
#include "support/suite_fixture.h"
#include "trackedit/edit_tag.h"
#include "views/track_look.h"

#include <array>
#include <map>

namespace melovane::test {

/// The tag panel without a window.
class PlainTagForm : public EditTagForm
{
public:
    void detach() override { isDetached = true; }

    void setPanelShown(bool wanted) override { shown = wanted; }

    [[nodiscard]] bool isPanelShown() const override { return shown; }

    [[nodiscard]] int panelHeight() const override { return height; }

    void setPanelHeight(int wanted) override { height = wanted; }

    void setRatingColours(const NoteColours& wanted) override { colours = wanted; }

    void focusFirst() override { ++focused; }

    void setText(PanelField field, const QString& text) override { texts[size_t(field)] = text; }

    void setChoices(PanelField field, const QStringList& wanted) override
    {
        choices[field] = wanted;
    }

    void setRating(int option) override { rating = option; }

    void setTrack(const PanelTrack& wanted) override { track = wanted; }

    void setUse(PanelUse wanted, const QString& reason) override
    {
        use = wanted;
        why = reason;
    }

    void setWaiting(qint64 tracks) override { waiting = tracks; }

    void setCover(const QByteArray& picture) override { cover = picture; }

    bool shown = false;
    bool isDetached = false;
    int focused = 0;
    int height = -1;
    NoteColours colours;
    std::array<QString, kPanelFields> texts;
    std::map<PanelField, QStringList> choices;
    int rating = -1;
    PanelTrack track;
    PanelUse use = PanelUse::Empty;
    QString why;
    qint64 waiting = 0;
    QByteArray cover;
};

/// A loop whose timers run when the test says so.
class HeldLoop : public MessageLoop
{
public:
    struct HeldTimer : public Timer
    {
        explicit HeldTimer(std::function<void()> work)
            : handler(std::move(work))
        {}

        void start() override { active = true; }

        void stop() override { active = false; }

        [[nodiscard]] bool isActive() const override { return active; }

        std::function<void()> handler;
        bool active = false;
    };

    [[nodiscard]] std::unique_ptr<Timer> makeTimer(std::chrono::milliseconds,
                                                   std::function<void()> handler) override
    {
        auto timer = std::make_unique<HeldTimer>(std::move(handler));
        timers.push_back(timer.get());
        return timer;
    }

    void turn() override {}

    /// The time of every timer that runs is over.
    void pass() const
    {
        for (HeldTimer* timer : timers) {
            if (timer->active) {
                timer->handler();
            }
        }
    }

    std::vector<HeldTimer*> timers;
};

/// A library with two tracks, and what a tag panel over it is made of.
class TagPanelTest : public SuiteFixture
{
protected:
    TagPanelTest()
    {
        MelovaneConfiguration::fill(texts);
        settings->SetDbName(suite.dbName());
        suite.execute(QStringLiteral("update db_all set FrameStart=459, FrameStop=14979, "
                                     "Normalize=25670, DBit=320 where fid='") +
                      one + QLatin1Char('\''));
        heard = bus.subscribe([this](const MLVMessage& message) {
            messages.append(message.Command + QLatin1Char('|') + message.Value1.toText());
            if (message.Command == QLatin1String("play.from.start.pos") ||
                message.Command == QLatin1String("play.from.stop.pos")) {
                messages.last() += QLatin1Char('|') + message.Value2.toText();
            }
        });
    }

    [[nodiscard]] EditTagParts parts()
    {
        return {
            .engine = *suite.engine,
            .settings = *settings,
            .texts = texts,
            .loop = loop,
            .bus = bus,
            .history = history,
            .log = [this](const QString& where,
                          const QString& what) { logged.append(where + what); },
            .mayWrite = [this] { return mayWrite; },
            .placeOf = [this](const QString& file) { return fileIsThere ? file : QString(); },
            .unwritten = [this](const QString& fid) { return failures.value(fid); },
            .showUnwritten = [this] { ++listsShown; },
            .run =
                [this](const QString& line) {
                    commands.append(line);
                    return runs;
                },
            .showCover =
                [this](const Covers::Track&, std::function<void(const QByteArray&)> shown) {
                    answerCover = std::move(shown);
                },
            .chooseCover = [this](const Covers::Track& track) { chosenCovers.append(track.fid); },
            .left = [this] { ++left; }};
    }

    void send(QStringView name, const Value& value = {})
    {
        BusSender(bus, QStringLiteral("Test")).SendMessage(name, value);
    }

    [[nodiscard]] QString cell(const QString& column, const QString& fid) const
    {
        return suite.value(QStringLiteral("select %1 from db_all where fid='%2'").arg(column, fid))
            .toText();
    }

    [[nodiscard]] QStringList entered() const
    {
        return suite.column(QStringLiteral("select FID from db_edit"));
    }

    QString one = suite.library.add({.Titel = QStringLiteral("Lichter"),
                                     .Interpret = QStringLiteral("Mara"),
                                     .Album = QStringLiteral("Nachtfahrt"),
                                     .Genre = QStringLiteral("Deep House"),
                                     .Note = QStringLiteral("5")});
    QString two = suite.library.add(
        {.Titel = QStringLiteral("Lange Schatten"), .Interpret = QStringLiteral("Trio")});
    std::unique_ptr<GlobalSettings> settings = suite.makeSettings();
    ConfigObjects texts{suite.folders.paths(), suite.folders.profile(), suite.folders.files()};
    MLVMessageBus bus{suite.folders.paths(), suite.folders.files(), suite.clock};
    ListHistory history{*suite.engine, suite.folders.files(), suite.clock, *settings, {}};
    HeldLoop loop;
    QStringList messages;
    MLVMessageBus::Subscription heard;
    QStringList logged;
    QStringList commands;
    QStringList chosenCovers;
    std::function<void(const QByteArray&)> answerCover;
    QHash<QString, QString> failures; ///< reasons by track
    int listsShown = 0;
    bool mayWrite = true;
    bool fileIsThere = true;
    bool runs = true;
    int left = 0;
};

} // namespace melovane::test
