#pragma once

#include "platform/controls/progress_window.h"
#include "platform/controls/status_line.h"

#include <memory>
#include <utility>

namespace melovane {

/// How far a long work is, as the panel of the status line says it: "42 %", never more than all of
/// it. Empty for a work of unknown length.
[[nodiscard]] inline QString progressText(qint64 done, qint64 whole)
{
    if (whole <= 0) {
        return {};
    }
    const double part = double(qBound(qint64{0}, done, whole)) / double(whole);
    // Rounded down: "100 %" is for what is done.
    return QStringLiteral("%1 %").arg(int(part * 100));
}

/// Shows a long work in the status line, too, where it is seen before its own window appears and
/// when another window lies over that. The panel is empty again when the work is over.
class StatusProgress : public ProgressWindow
{
public:
    /// \param window of the work \param line outlives this
    StatusProgress(std::unique_ptr<ProgressWindow> window, StatusLine& line)
        : m_window(std::move(window))
        , m_line(line)
    {}

    ~StatusProgress() override { m_line.setPanel(StatusPanel::Progress, {}); }

    StatusProgress(const StatusProgress&) = delete;
    StatusProgress& operator=(const StatusProgress&) = delete;

    [[nodiscard]] bool show(const QString& text, qint64 done, qint64 whole) override
    {
        m_line.setPanel(StatusPanel::Progress, progressText(done, whole));
        return m_window->show(text, done, whole);
    }

private:
    std::unique_ptr<ProgressWindow> m_window;
    StatusLine& m_line;
};

} // namespace melovane
