#include "shell/wings/start_wing.h"

#include "bus/message_numbers.h"
#include "care/settings_return.h"
#include "platform/controls/status_line.h"
#include "platform/system/path_text.h"
#include "shell/opened_files.h"
#include "shell/sibling_control.h"
#include "shell/wings/desk.h"
#include "shell/wings/machine.h"
#include "store/check_database.h"

#include <thread>

namespace melovane {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

StartWing::StartWing(Machine& base, Desk& room)
    : machine(base)
    , desk(room)
    , splashForm(room.skin, room.icons)
    , splash(base.texts, base.loop, splashForm, [this] { openMakersPage(); })
    , lastRun(base.files,
              base.clock,
              path::join(base.paths.GetConfigPath(), base.paths.programName() + u".running"_s))
{}

StartWing::~StartWing() = default;

StartResult StartWing::run(const std::function<void()>& showMainWindow)
{
    return SubMain({.openTest = [this] { return openTest(); },
                    .loadConfig =
                        [this] {
                            machine.loadConfig();
                            desk.dress();
                        },
                    .anotherCopyRuns = [this] { return anotherCopyRuns(); },
                    .databaseExists =
                        [this] { return machine.files.fileExists(machine.settings.DbName()); },
                    .versionFits = [this] { return machine.settings.CheckDBVersion() == 0; },
                    .showMainWindow =
                        [this, &showMainWindow] {
                            showMainWindow();
                            listenForNextCopy();
                            if (nextCopy->handle() == 0) {
                                tellWithoutMessages();
                            }
                            tellOtherLibrary();
                            tellLastRun();
                            openFiles(called);
                        },
                    .rescue = rescue},
                   {.settings = machine.settings,
                    .texts = machine.texts,
                    .warnings = desk.warnings,
                    .messages = machine.messages,
                    .loop = machine.loop,
                    .splash = splash})
        .run();
}

void StartWing::end(bool mayAsk)
{
    lastRun.end();
    QStringList lost = machine.profile.unwritten();
    // Files elsewhere are lists and exports; they have told their failure where they were written.
    for (const QString& file : machine.files.unwritten()) {
        if (file.startsWith(machine.paths.GetConfigPath()) && !lost.contains(file)) {
            lost.append(file);
        }
    }
    if (lost.isEmpty()) {
        return;
    }
    lost.sort();
    const QString text = machine.texts.text(u"end.unwritten"_s, lost.join(u'\n'));
    machine.log()(u"Ende"_s, text);
    if (mayAsk) {
        desk.warnings.ShowWarning(text, WarningType::Note, machine.texts.text(u"glob_warn"),
                                  u"end.unwritten"_s);
    }
}

OpenFault StartWing::openTest()
{
    const DatabasePlace place{machine.settings.DbName(), machine.paths.GetConfigPath(),
                              machine.paths.programName()};
    CheckDatabase check(*machine.engine, machine.files, machine.clock, place, machine.log());
    const QString text = check.openTest();
    return {text, check.openError()};
}

bool StartWing::anotherCopyRuns()
{
    if (machine.onlyCopy.claim()) {
        takeRestoredSettings();
        return false;
    }
    const auto control = machine.messages.makeControl();
    if (control->handle() == 0) {
        // The first copy cannot come to the front; the user sees at least why nothing opens.
        tellWithoutMessages();
        return true;
    }
    control->setTarget(runningCopy());
    control->Send(message::kBringToFront, 0, 0);
    bool isTaken = true;
    for (const QString& text : OpenedFiles::texts(called)) {
        isTaken =
            control->SendText(message::kOpenFiles, 0, text) == message::kFilesTaken && isTaken;
    }
    if (!isTaken) {
        desk.warnings.ShowWarning(machine.texts.text(u"open.unanswered"), WarningType::Note,
                                  machine.texts.text(u"glob_warn"), u"open.unanswered"_s);
    }
    return true;
}

/// The control of the copy that runs. Files wait for one that is still at its start.
MessageHandle StartWing::runningCopy() const
{
    constexpr int kMaxLooks = 200;
    constexpr auto kPause = 50ms;
    MessageHandle copy = machine.onlyCopy.runningCopy();
    for (int look = 0; copy == 0 && !called.isEmpty() && look < kMaxLooks; ++look) {
        std::this_thread::sleep_for(kPause);
        copy = machine.onlyCopy.runningCopy();
    }
    return copy;
}

/// Those that a restoring has left are read only by now, for only the first copy may take them.
void StartWing::takeRestoredSettings()
{
    if (takeReturningSettings(machine.files, machine.profile, machine.paths.GetConfigPath())) {
        machine.settings.InitTasten();
        machine.settings.Refresh();
        desk.dress();
    }
}

void StartWing::listenForNextCopy()
{
    nextCopy = machine.messages.makeControl();
    nextCopy->setMessageNumber([this](qint32 id, qint32, qint32) {
        if (id == message::kBringToFront) {
            desk.window.bringToFront();
        }
        return 0;
    });
    nextCopy->setMessageText([this](qint32 id, qint32, const QString& text) {
        if (id != message::kOpenFiles) {
            return 0;
        }
        openFiles(OpenedFiles::fromText(text));
        return message::kFilesTaken;
    });
    machine.onlyCopy.publish(nextCopy->handle());
}

void StartWing::tellWithoutMessages()
{
    desk.warnings.ShowWarning(machine.texts.text(u"messages.nowhere"), WarningType::Note,
                              machine.texts.text(u"glob_warn"), u"messages.nowhere"_s);
}

void StartWing::tellOtherLibrary()
{
    const GlobalSettings& settings = machine.settings;
    if (settings.namedLibrary() == GlobalSettings::NamedLibrary::Missing &&
        settings.namedDbName() != settings.DbName()) {
        const QString text =
            machine.texts.text(u"library.other", settings.namedDbName(), settings.DbName());
        machine.log()(u"Start"_s, text);
        desk.warnings.ShowWarning(text, WarningType::Note, machine.texts.text(u"glob_warn"),
                                  u"library.other"_s);
    }
}

void StartWing::tellLastRun()
{
    if (const auto began = lastRun.begin()) {
        lastRunDied = true;
        const QString text = machine.texts.text(u"start.died"_s, *began);
        machine.log()(u"Start"_s, text);
        desk.window.status().setPanel(StatusPanel::Message, text);
        offerCrashReport();
    }
}

QString StartWing::crashFile() const
{
    return path::join(machine.paths.GetConfigPath(), machine.paths.programName() + u".crash"_s);
}

void StartWing::offerCrashReport()
{
    // Under another name it is offered once, and stays for those who want to send it later.
    const QString report = crashFile() + u".txt"_s;
    if (!machine.files.fileExists(crashFile())) {
        return;
    }
    try {
        machine.files.remove(report);
        machine.files.rename(crashFile(), report);
    } catch (const IoError& error) {
        machine.log()(u"Start"_s, error.path() + u": "_s + error.reason());
        return;
    }
    const auto answer = desk.warnings.ShowWarning(
        machine.texts.text(u"start.crashed"_s, report), WarningType::Question,
        machine.texts.text(u"glob_warn"), u"start.crashed"_s);
    if (answer == WarningAnswer::Yes &&
        !machine.processes.start(u"explorer.exe "_s + report, Processes::WindowStyle::Normal)) {
        desk.window.status().setPanel(StatusPanel::Message,
                                      machine.texts.text(u"start.report.noopener"_s, report));
    }
}

void StartWing::openMakersPage() const
{
    const QString page = path::join(machine.paths.programFolder(), kHelpPage);
    const bool isThere = machine.files.fileExists(page);
    if (isThere &&
        machine.processes.start(u"explorer.exe "_s + page, Processes::WindowStyle::Normal)) {
        return;
    }
    desk.window.status().setPanel(StatusPanel::Message,
                                  isThere ? machine.texts.text(u"status.help.noopener"_s, page)
                                          : machine.texts.text(u"status.help.missing"_s));
}

} // namespace melovane
