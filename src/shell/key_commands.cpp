#include "shell/key_commands.h"

#include "config/global_settings.h"
#include "platform/system/timers.h"

#include <algorithm>
#include <array>
#include <chrono>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// How long a combination is locked behind its last press.
constexpr std::chrono::milliseconds kKeyLock{500};

struct Command
{
    QStringView binding;
    bool (*run)(KeyActions& actions);
};

template <const char16_t* Text> bool sendToView(KeyActions& actions)
{
    return actions.toView(QString::fromUtf16(Text));
}

constexpr char16_t kPlayStart[] = u"play.start";
constexpr char16_t kPlayCenter[] = u"play.center";
constexpr char16_t kSelectAll[] = u"selall";
constexpr char16_t kCopy[] = u"copy";
constexpr char16_t kInsert[] = u"insert";
constexpr char16_t kAppend[] = u"append";

/// In the order of trial: of two bindings with the same keys the first acts.
constexpr std::array<Command, 11> kCommands = {{
    {u"PLPLMonitorPlay", sendToView<kPlayStart>},
    {u"PLPLMonitorStop",
     [](KeyActions& actions) {
         actions.stopMonitor();
         return true;
     }},
    {u"PLPLMonitorPlayCenter", sendToView<kPlayCenter>},
    {u"DBSelall", sendToView<kSelectAll>},
    {u"DBKopie", sendToView<kCopy>},
    {u"DBInsert", sendToView<kInsert>},
    {u"DBAppend", sendToView<kAppend>},
    {u"DBDetail",
     [](KeyActions& actions) {
         actions.setFavorit();
         return true;
     }},
    {u"DBALLNEXTPLAY", [](KeyActions& actions) { return actions.playNext(); }},
    {u"DBALLSOFORTPLAY", [](KeyActions& actions) { return actions.playNow(); }},
    {u"PLTOP",
     [](KeyActions& actions) {
         actions.showPlayer();
         return true;
     }},
}};

} // namespace

KeyCommands::KeyCommands(GlobalSettings& settings, MessageLoop& loop, KeyActions actions)
    : m_settings(settings)
    , m_actions(std::move(actions))
    , m_timerTastenFreigabe(loop.makeTimer(kKeyLock, [this] {
        m_timerTastenFreigabe->stop();
        m_last.clear();
        m_lastActed = false;
    }))
{}

KeyCommands::~KeyCommands() = default;

/// Whether these keys are the way to the last combination and no command of their own: who lets go
/// of everything presses Ctrl alone before the second Ctrl+V.
bool KeyCommands::beginsTheLast(const QString& keys) const
{
    const auto isBound = [&](const Command& command) {
        return m_settings.Tasten(command.binding.toString()).matches(keys);
    };
    return !keys.isEmpty() && m_last.startsWith(keys + u" + "_s) &&
           std::none_of(std::begin(kCommands), std::end(kCommands), isBound);
}

bool KeyCommands::keyPressed()
{
    const QString keys = m_settings.GetKeyStatusString();
    if (keys == m_last) {
        return m_lastActed;
    }
    if (beginsTheLast(keys)) {
        return false;
    }
    m_last = keys;
    m_lastActed = false;
    // A command may turn the message loop, in which further keys arrive.
    const bool acted = run(keys);
    if (m_last == keys) {
        m_lastActed = acted;
    }
    m_timerTastenFreigabe->start();
    return acted;
}

bool KeyCommands::run(const QString& keys)
{
    for (const Command& command : kCommands) {
        if (m_settings.Tasten(command.binding.toString()).matches(keys)) {
            return command.run(m_actions);
        }
    }
    return false;
}

} // namespace melovane
