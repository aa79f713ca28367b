#pragma once

#include "shell/day_counts.h"
#include "shell/edit_box.h"
#include "shell/first_hour.h"
#include "shell/info.h"
#include "shell/key_commands.h"
#include "shell/mlvdb.h"
#include "shell/ui/edit_box_dialog.h"
#include "shell/ui/info_dialog.h"
#include "shell/wings/quick_wing.h"
#include "shell/work_place.h"

namespace melovane {

class RetoldTexts;
struct CareWing;
struct Desk;
struct EditWing;
struct LibraryWing;
struct Machine;
struct PlaylistWing;
struct SoundWing;
struct SuiteWing;
struct TreesWing;

/// The main window's own logic, its keys and small dialogs.
struct MainWing
{
    /// The wings that stand below this one.
    struct Below
    {
        Machine& machine;
        Desk& desk;
        SuiteWing& suite;
        SoundWing& sound;
        LibraryWing& library;
        PlaylistWing& playlist;
        TreesWing& trees;
        EditWing& edit;
        CareWing& care;
    };

    explicit MainWing(const Below& below);
    ~MainWing();

    MainWing(const MainWing&) = delete;
    MainWing& operator=(const MainWing&) = delete;

    /// Connects the forms with their logic, loads the window and shows it. A library that fails is
    /// told; the window is there all the same, incomplete.
    void show();

    Below below;
    EditBoxDialog inputBox;
    frmEditBox editBox;
    InfoDialog infoForm;
    frmInfo info;
    MLVDB window;
    QuickWing quick;
    FirstHour firstHour;
    DayCounts dayCounts;
    KeyCommands keys;
    WorkPlace place;

private:
    [[nodiscard]] MlvdbParts windowParts();
    [[nodiscard]] CareCommands commands();
    [[nodiscard]] WindowDialogs dialogs();
    [[nodiscard]] KeyActions keyActions();
    [[nodiscard]] DayCountParts dayCountParts();
    void connectViews();
    void connectTagPanel();
    void connectFirstHour();
    void translate();

    MLVMessageBus::Subscription m_libraryChanged;
    std::unique_ptr<RetoldTexts> m_spoken; ///< the language that the window speaks; null before it
};

} // namespace melovane
