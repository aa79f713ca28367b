#pragma once

#include "siblings/melovanejob/job_schedule.h"

#include <QString>

#include <chrono>
#include <deque>
#include <functional>
#include <optional>

namespace melovane {

class Clock;
class PassingTime;

/// What the jobs program does, look by look: one job at a time, and the end when nobody needs it.
class JobLoop
{
public:
    /// Without a console alive for so long the program ends; one that is started anew meanwhile
    /// finds it at work.
    static constexpr std::chrono::seconds kAlone{30};

    struct Parts
    {
        const Clock& clock;
        PassingTime& passing;
        std::function<JobSettings()> settings;
        /// Changes whenever the library is written; empty when there is none.
        std::function<QString()> library;
        std::function<bool()> consoleIsAlive;
        /// Whether the library is another program's for a while, or another jobs program works in
        /// it.
        std::function<bool()> isTaken;
        /// Whether the job has something to do. \throws DbError
        std::function<bool(JobKind)> hasWork;
        /// Starts the job; false when that is impossible now, because another program works in the
        /// library, for example. Its end is told by jobEnded.
        std::function<bool(JobKind)> start;
        /// Ends the job that runs, and comes back when it is gone.
        std::function<void()> stopJob;
        std::function<void()> endProgram;
    };

    explicit JobLoop(Parts parts);

    /// To be called every few seconds.
    void look();

    /// \param allDone false when the job failed or left something undone
    void jobEnded(bool allDone);

    /// Ends the job that runs, and the program.
    void end();

private:
    [[nodiscard]] bool isAlone(bool consoleIsAlive);
    [[nodiscard]] std::chrono::seconds passed() const;
    void ask();
    void askFor(JobKind kind);
    void startNext();

    Parts m_parts;
    JobSchedule m_schedule;
    std::deque<JobKind> m_waiting;
    std::optional<JobKind> m_running;
    std::optional<std::chrono::seconds> m_consoleSeen;
    bool m_isEnding = false;
};

} // namespace melovane
