#include "care/desk_tools.h"

#include "platform/controls/progress_window.h"
#include "platform/system/live_wait.h"

namespace melovane {

bool runWatched(const DeskTools& tools,
                const QString& title,
                const std::function<void()>& work,
                const std::function<bool(ProgressWindow& window)>& show)
{
    const auto window = tools.openProgress(title);
    return tools.wait.run(work, [&] { return show(*window); });
}

} // namespace melovane
