#include "siblings/melovanedj/ui/run_player.h"

#include "bus/message_numbers.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/log4mlv.h"
#include "config/melovane_configuration.h"
#include "config/paths.h"
#include "help/ui/help_desk.h"
#include "platform/linux/beat_thread.h"
#include "platform/linux/end_signals.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/library_loan.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/linux/linux_messages.h"
#include "platform/linux/mp3_stream.h"
#include "platform/linux/only_copy.h"
#include "platform/linux/sdl_output.h"
#include "platform/qt/desktop_texts.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/qt_keyboard.h"
#include "platform/qt/qt_message_loop.h"
#include "platform/qt/qt_worker.h"
#include "platform/qt/skin.h"
#include "platform/qt/started_window.h"
#include "platform/sqlite/engine/sqlite_engine.h"
#include "platform/system/clock.h"
#include "platform/system/path_text.h"
#include "player/mix_engine.h"
#include "player/player_suite.h"
#include "player/playing_list.h"
#include "player/sound_shapes.h"
#include "player/ui/player_window.h"
#include "playlists/list_history.h"
#include "shell/skin_files.h"
#include "siblings/melovanedj/night_state.h"
#include "store/file_locator.h"

#include <QApplication>
#include <QDir>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Section of the player's own settings, and where it was when it was closed: keep.
const QString kSection = u"MelovaneDJ"_s;
const QString kLastEntry = u"LastEntry"_s;
const QString kLastTrack = u"LastTrack"_s;
const QString kLastPlace = u"LastPlace"_s; // ms in the file
/// Record of the window's place.
const QString kPosition = u"DJPosition"_s;

/// Turns of the sequence, and how many of them make a second.
constexpr std::chrono::milliseconds kTurn{50};
constexpr int kTurnsASecond = 20;

/// A stock of sound at the server: a busy machine is not heard.
const linux_media::SoundUse kOnAir{"Melovane DJ", "Player", 100};

/// Everything that lives as long as the program, bottom to top, without the window.
struct PlayerMachine
{
    PlayerMachine()
        : paths(environment, files)
        , database(sqlite::makeEngine(clock))
        , settings(paths, profile, files, *database)
        , loan(files, lockFolders())
        , messages(MessagePlace(environment.runtimeFolder()))
        , control(messages.makeControl())
        , onlyCopy(lockFolders(), u"MelovaneDJ"_s)
        , texts(paths, profile, files)
        , locator(files, paths.GetConfigPath())
        , history(*database, files, clock, settings, {})
        , playlists{*database, settings, files, locator, history, {}}
        , list(playlists)
    {
        // Language files are looked for in the current folder.
        QDir::setCurrent(paths.GetConfigPath());
        MelovaneConfiguration::fill(texts);
        texts.LoadAllValue();
        settings.InitTasten();
        settings.Refresh();
    }

    [[nodiscard]] QStringList lockFolders()
    {
        return {environment.runtimeFolder(), paths.GetConfigPath()};
    }

    SystemClock clock;
    LinuxFiles files;
    LinuxEnvironment environment;
    IniProfile profile{files};
    Mod_API paths;
    std::unique_ptr<DBEngine> database;
    GlobalSettings settings;
    LibraryLoan loan;
    LinuxMessages messages;
    std::unique_ptr<KSMessage> control;
    OnlyCopy onlyCopy;
    ConfigObjects texts;
    FileLocator locator;
    ListHistory history;
    PlaylistParts playlists;
    PlayingList list;
};

/// The sound, and who drives it.
struct PlayerSound
{
    explicit PlayerSound(PlayerMachine& machine)
        : engine([] { return std::make_unique<linux_media::Mp3Stream>(); },
                 first,
                 second,
                 [this] { beat.hurry(); })
        , jingleDecks(engine, [&machine] { return airSettings(machine.settings, machine.texts); })
        , sequence({.list = machine.list,
                    .engine = engine,
                    .jingles = jingleDecks,
                    .settings = [&machine] { return airSettings(machine.settings, machine.texts); },
                    .told = [this](Plid now, Plid next) { told(now, next); },
                    .played = [this](const MlvPlaylistDetail& entry) { played(entry); },
                    .leftOut = [this](const MlvPlaylistDetail& entry,
                                      AirFault fault) { leftOut(entry, fault); }})
        , jingles(machine.playlists, jingleDecks)
        , desk(sequence, engine, machine.list, jingles, machine.settings, machine.texts, [this] {
            showConsole();
        })
    {
        beat.start(std::chrono::milliseconds(MixEngine::kBeatMs), [this] { engine.beat(); });
    }

    ~PlayerSound() { beat.stop(); }

    PlayerSound(const PlayerSound&) = delete;
    PlayerSound& operator=(const PlayerSound&) = delete;

    linux_media::BeatThread beat;
    linux_media::SdlOutput first{kOnAir};
    linux_media::SdlOutput second{kOnAir};
    MixEngine engine;
    std::function<void(Plid, Plid)> told = [](Plid, Plid) {};
    std::function<void()> showConsole = [] {};
    std::function<void(const MlvPlaylistDetail&)> played = [](const MlvPlaylistDetail&) {};
    std::function<void(const MlvPlaylistDetail&, AirFault)> leftOut = [](const MlvPlaylistDetail&,
                                                                         AirFault) {};
    JingleDecks jingleDecks;
    AirSequence sequence;
    JinglePads jingles;
    PlayerDesk desk;
};

/// The player with its window.
class PlayerProgram
{
public:
    PlayerProgram(QApplication& application, PlayerMachine& machine)
        : m_machine(machine)
        , m_skin(application)
        , m_icons(m_skin)
        , m_help(application,
                 helpOf(machine.files, machine.paths, machine.texts, machine.settings),
                 m_icons)
        , m_sound(machine)
        , m_state(nightStatePath(machine.environment.runtimeFolder()))
        , m_window(m_sound.desk, machine.texts, m_skin, m_icons)
        , m_shapes(
              m_worker,
              [] { return std::make_unique<linux_media::Mp3Stream>(); },
              ShapeCache(machine.files, path::join(machine.environment.cacheFolder(), u"Shapes"_s)))
        , m_suite({.settings = machine.settings,
                   .messages = machine.messages,
                   .control = *machine.control,
                   .playlists = machine.playlists,
                   .clock = machine.clock,
                   .list = machine.list,
                   .sequence = m_sound.sequence,
                   .isLent =
                       [&machine](const QString& library) { return machine.loan.isLent(library); },
                   .openCards = [this] { openCards(); },
                   .changed = [this] { m_isOther = true; },
                   .bringToFront = [this] { m_window.bringToFront(); }})
        , m_turns(m_loop.makeTimer(kTurn, [this] { turn(); }))
        , m_ends([this] { m_window.close(); })
    {
        const QString theme =
            SkinFiles(machine.paths, machine.files).text(machine.settings.SkinFileName());
        if (!theme.isEmpty()) {
            m_skin.load(theme);
        }
        connectParts();
    }

    void begin(const QString& order, const NightStart& start)
    {
        openCards();
        m_suite.watch(); // the library may be lent
        m_sound.jingles.refresh();
        m_suite.publish(qint32(m_window.winId()));
        m_machine.onlyCopy.publish(m_machine.control->handle());
        takePlace();
        const std::optional<NightState> before = start.isRestart ? m_state.read() : std::nullopt;
        if (before) {
            goOn(*before, start.skipsEntry);
        } else {
            beginAnew();
        }
        if (!order.isEmpty()) {
            m_suite.number(order == "now"_L1 ? message::kPlayNow : message::kPlayNext, 0, 0);
            m_sound.sequence.play();
        }
        m_turns->start();
        showAsStarted(m_window);
    }

    void end()
    {
        m_turns->stop();
        if (m_window.isDocked()) {
            m_suite.dock(false);
        } else {
            keepPlace();
        }
        keepEntry();
        m_state.write({});
        m_suite.tellPlaying(Plid{}, Plid{});
        m_suite.withdraw();
    }

private:
    void connectParts()
    {
        m_sound.told = [this](Plid now, Plid next) {
            m_suite.tellPlaying(now, next);
            m_next = next;
            m_isOther = true;
        };
        m_sound.showConsole = [this] { m_suite.showConsole(); };
        m_sound.played = [this](const MlvPlaylistDetail& entry) { m_suite.countPlay(entry); };
        m_sound.leftOut = [this](const MlvPlaylistDetail& entry, AirFault fault) {
            m_sound.desk.leftOut(entry, fault);
        };
        m_machine.settings.SetKeyboard(&m_keyboard);
        m_keyboard.setHandler(&m_window, [this] { return m_sound.desk.keyPressed(); });
        QObject::connect(&m_window, &PlayerWindow::dockAsked, &m_window,
                         [this](bool isDocked) { m_suite.dock(isDocked); });
    }

    void openCards()
    {
        m_sound.engine.openCards(m_machine.settings.SCardNamePlayer1(),
                                 m_machine.settings.SCardNamePlayer2());
    }

    void beginAnew()
    {
        m_sound.sequence.setMixMode(m_machine.settings.StartMixMode() != 0);
        m_sound.sequence.listChanged();
        if (m_machine.texts.value(u"StartUp.Set.Old.Track").toInt() != 0) {
            standWhereItWas();
        }
        if (m_machine.texts.value(u"StartUp.Autoplay").toInt() != 0) {
            m_sound.sequence.play();
        }
    }

    /// The entry at which the player was closed, and where the user wants it, its place.
    void standWhereItWas()
    {
        GlobalSettings& settings = m_machine.settings;
        const auto entry = Plid(settings.GetKeyValueLong(kSection, kLastEntry, 0));
        const int place = settings.GetKeyValueLong(kSection, kLastPlace, 0);
        const bool isToPlace =
            m_machine.texts.value(u"StartUp.Set.To.Old.Position").toInt() != 0 && place > 0;
        if (!isToPlace || !m_sound.sequence.waitAt(
                              entry, settings.GetKeyValue(kSection, kLastTrack, {}), place)) {
            m_sound.sequence.standAt(entry);
        }
    }

    void keepEntry()
    {
        const AirSequence& sequence = m_sound.sequence;
        const MlvPlaylistDetail playing =
            sequence.isPaused() ? sequence.upcoming() : sequence.playing();
        const auto current = m_machine.list.current();
        const Plid last = playing.FID.isEmpty() && current ? current->PLID : playing.PLID;
        GlobalSettings& settings = m_machine.settings;
        settings.WriteKeyValue(kSection, kLastEntry, QString::number(numberOf(last)));
        settings.WriteKeyValue(kSection, kLastTrack, playing.FID);
        settings.WriteKeyValue(kSection, kLastPlace,
                               QString::number(qRound64(sequence.positionMs())));
    }

    void goOn(const NightState& before, bool skipsEntry)
    {
        m_sound.sequence.setMixMode(before.isMixMode);
        m_sound.sequence.listChanged();
        m_notice = m_machine.texts.text(u"air.restarted");
        if (!before.isPlaying) {
            const bool wasPaused = before.positionMs > 0;
            if (!wasPaused ||
                !m_sound.sequence.waitAt(before.entry, before.fid, before.positionMs)) {
                m_sound.sequence.standAt(before.entry);
            }
            return;
        }
        if (skipsEntry || !m_sound.sequence.resume(before.entry, before.fid, before.positionMs)) {
            m_sound.sequence.standBehind(before.entry);
            m_sound.sequence.play();
        }
    }

    void turn()
    {
        m_sound.sequence.advance();
        m_sound.desk.turn();
        keepState();
        if (++m_count % kTurnsASecond == 0) {
            m_suite.watch();
            m_window.setHint(hint());
        }
        if (m_isOther) {
            m_isOther = false;
            m_sound.jingles.refresh();
            m_window.refreshLists();
        }
        m_window.refresh();
        findShapes();
    }

    /// Asks once for the shape of what a deck holds.
    void findShapes()
    {
        for (const int deck : {0, 1}) {
            const QString file = m_window.shapeless(deck);
            if (!file.isEmpty() && file != m_shaped[deck]) {
                m_shaped[deck] = file;
                m_shapes.want(file, [this, file](const SoundShape& shape) {
                    m_window.setShape(file, shape);
                });
            }
        }
    }

    void keepState()
    {
        const AirSequence& sequence = m_sound.sequence;
        if (!sequence.isPlaying()) {
            const QString fid = sequence.isPaused() ? sequence.upcoming().FID : QString();
            m_state.write({m_next, fid, sequence.positionMs(), false, sequence.isMixMode()});
            return;
        }
        const MlvPlaylistDetail playing = sequence.playing();
        if (playing.FID.isEmpty()) {
            return; // in between two entries the last place is the better one
        }
        m_state.write(
            {playing.PLID, playing.FID, sequence.positionMs(), true, sequence.isMixMode()});
    }

    [[nodiscard]] QString hint() const
    {
        for (const int output : {0, 1}) {
            if (m_sound.engine.card(output).isLost) {
                return m_machine.texts.text(u"air.cardlost");
            }
        }
        if (!m_sound.engine.card(0).isOpen) {
            return m_machine.texts.text(u"air.nocard");
        }
        if (m_machine.list.count() == 0 && !m_suite.isLibraryAway()) {
            return m_machine.texts.text(u"air.nolist");
        }
        return m_sound.desk.notice().isEmpty() ? m_notice : QString();
    }

    void takePlace()
    {
        const WindowPosition& place = m_machine.settings.Position(kPosition);
        if (place.Whidth > 0 && place.Height > 0) {
            m_window.setGeometry(place.place());
        }
    }

    void keepPlace()
    {
        WindowPosition& place = m_machine.settings.Position(kPosition);
        place.setPlace(m_window.geometry());
        m_machine.settings.PositionSave(kPosition);
    }

    PlayerMachine& m_machine;
    Skin m_skin;
    IconSet m_icons;
    HelpDesk m_help;
    QtMessageLoop m_loop;
    QtKeyboard m_keyboard;
    PlayerSound m_sound;
    NightStateFile m_state;
    PlayerWindow m_window;
    QtWorker m_worker;
    SoundShapes m_shapes;
    QString m_shaped[2]; ///< files whose shapes were asked for
    PlayerSuite m_suite;
    std::unique_ptr<Timer> m_turns;
    EndSignals m_ends;
    Plid m_next{};    ///< what the list goes on with
    QString m_notice; ///< while there is nothing newer
    int m_count = 0;
    bool m_isOther = true; ///< the lists are to be shown anew
};

} // namespace

int runPlayer(int argc, char** argv, const QString& order, const NightStart& start)
{
    QApplication application(argc, argv);
    PlayerMachine machine;
    if (!machine.onlyCopy.claim()) {
        machine.control->setTarget(machine.onlyCopy.runningCopy());
        if (!order.isEmpty()) {
            machine.control->Send(order == "now"_L1 ? message::kPlayNow : message::kPlayNext, 0, 0);
        }
        machine.control->Send(message::kBringToFront, 0, 0);
        return 0;
    }
    setLanguageOfDesktopTexts(application, machine.texts.text(u"Sprach.Code"));
    PlayerProgram program(application, machine);
    program.begin(order, start);
    const int code = QApplication::exec();
    program.end();
    return code;
}

} // namespace melovane
