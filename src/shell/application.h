#pragma once

#include "platform/linux/linux_environment.h"

#include <functional>
#include <memory>

class QApplication;

namespace melovane {

namespace sqlite {
struct IndexFigures;
}

class MLVMessageBus;
class OpenedFiles;
struct CareWing;
struct Desk;
struct EditWing;
struct LibraryWing;
struct ListsWing;
struct Machine;
struct MainWing;
struct PlaylistWing;
struct SoundWing;
struct StartWing;
struct SuiteWing;
struct TreesWing;

/// The composition root: makes every long-lived object of the console once, wing by wing, bottom to
/// top. A wing knows those above it in the list of members.
class Application
{
public:
    /// \param places where the installation lies; the machine's own unless a test says otherwise
    /// \param files opened once the window stands, or by the copy that runs already; absolute
    explicit Application(QApplication& application,
                         EnvironmentPlaces places = {},
                         const QStringList& files = {});
    ~Application();

    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// Starts the console and lives until its window is closed. The exit code of the process: 0,
    /// or 1 when the start failed and a dialog has told why.
    [[nodiscard]] int run();

    /// Runs the work of an event: a failed database or file is told, and the program goes on.
    void guarded(const std::function<void()>& work);

    /// Where the report of a crash belongs; the next start offers it.
    [[nodiscard]] QString crashFile() const;

    /// What the views of this console talk over; whoever speaks there is one of them.
    [[nodiscard]] MLVMessageBus& bus();

    /// What the column index of the library did so far.
    [[nodiscard]] const sqlite::IndexFigures& searchFigures() const;

private:
    std::unique_ptr<Machine> m_machine;
    std::unique_ptr<Desk> m_desk;
    std::unique_ptr<SuiteWing> m_suite;
    std::unique_ptr<SoundWing> m_sound;
    std::unique_ptr<ListsWing> m_lists;
    std::unique_ptr<LibraryWing> m_library;
    std::unique_ptr<PlaylistWing> m_playlist;
    std::unique_ptr<EditWing> m_edit;
    std::unique_ptr<TreesWing> m_trees;
    std::unique_ptr<CareWing> m_care;
    std::unique_ptr<MainWing> m_main;
    std::unique_ptr<OpenedFiles> m_opened;
    std::unique_ptr<StartWing> m_start;
};

} // namespace melovane
