#pragma once

#include "siblings/melovanejob/job_settings.h"

#include <QDateTime>
#include <QString>

#include <array>
#include <chrono>
#include <vector>

namespace melovane {

/// Decides for which jobs the library is to be asked whether there is work. Touches neither clock
/// nor disk.
///
/// The console is idle when nobody, it or another program, has written into the library for the
/// pause of the settings. Then each job is asked for once, and again when the library has changed
/// since. A time of day asks for its job in any case, also one that was slept through.
class JobSchedule
{
public:
    void setSettings(const JobSettings& settings) { m_settings = settings; }

    /// To be called every few seconds.
    /// \param now     local time
    /// \param passed  time that no user can set back
    /// \param library changes whenever the library is written; empty when there is none
    void look(const QDateTime& now, std::chrono::seconds passed, const QString& library);

    /// In the order in which they run. Those that are not answered are wanted at the next look,
    /// too.
    [[nodiscard]] std::vector<JobKind> wanted() const;

    /// The library was asked: whether the job has work is seen to.
    void asked(JobKind kind);

    /// The job did not manage all of its work.
    void failed(JobKind kind);

    /// The library could not be asked, or another program works in it: later then, and a time of
    /// day that has come stays.
    void postponed(JobKind kind);

private:
    struct State
    {
        bool isAsked = false;              ///< since the library was written last
        bool timeHasCome = false;          ///< one of the times of day
        std::chrono::seconds retryAt{0};   ///< not before then when the console is idle
        std::chrono::seconds heldUntil{0}; ///< not before then in any case
    };

    [[nodiscard]] bool isWanted(JobKind kind) const;
    void takeTimes(const QDateTime& now);

    State& state(JobKind kind) { return m_states[size_t(kind)]; }

    JobSettings m_settings;
    std::array<State, kJobKinds.size()> m_states;
    QString m_library;
    QDateTime m_now;                      ///< of the last look, as a wall clock shows it
    std::chrono::seconds m_passed{0};     ///< at the last look
    std::chrono::seconds m_lastChange{0}; ///< when another m_library was seen
};

} // namespace melovane
