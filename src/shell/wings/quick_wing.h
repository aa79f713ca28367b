#pragma once

#include "platform/qt/qt_worker.h"
#include "shell/quick_open.h"
#include "trees/row_names.h"

#include <functional>

namespace melovane {

struct Desk;
struct LibraryWing;
struct Machine;
struct PlaylistWing;
struct SuiteWing;
struct TreesWing;
class MLVDB;
class RowSearch;

/// The line that finds every command, list, tree row, setting and theme by its name.
struct QuickWing
{
    /// What stands below this.
    struct Below
    {
        Machine& machine;
        Desk& desk;
        SuiteWing& suite;
        LibraryWing& library;
        PlaylistWing& playlist;
        TreesWing& trees;
        MLVDB& window;
    };

    explicit QuickWing(const Below& wings);

    /// Shows the line until something was chosen, which is then done, or the user leaves it.
    void open();

    Below below;

private:
    using Entries = std::vector<QuickEntry>;

    [[nodiscard]] Entries commands();
    [[nodiscard]] Entries rowCommands();
    void addSettings(Entries& entries) const;
    void addLooks(Entries& entries) const;
    void find(RowSearch& search,
              const QString& typed,
              const std::function<void(Entries found)>& answer) const;
    [[nodiscard]] QuickEntry entryOf(const NamedRowPlace& row) const;
    void show(const NamedRowPlace& row) const;

    QtWorker m_worker; ///< the last member: it ends before all that it works on
};

} // namespace melovane
