#pragma once

#include <QList>
#include <QString>
#include <QTime>

#include <array>
#include <chrono>

namespace melovane {

class PrivateProfile;

/// The jobs that run behind the console, in the order in which they run.
enum class JobKind
{
    Tags,  ///< changed tracks into their files
    Lists, ///< changed playlists into their files
    Trees  ///< the tables behind the trees
};

inline constexpr std::array kJobKinds{JobKind::Tags, JobKind::Lists, JobKind::Trees};

/// When a job runs, given that it has something to do.
struct JobRule
{
    bool whenIdle = true;    ///< as soon as the console is idle
    QList<QTime> times = {}; ///< of day, also when the console is busy

    bool operator==(const JobRule&) const = default;
};

/// What `MelovaneJob.ini` says. A key that is missing, and a value that makes no sense, is the
/// built-in one.
struct JobSettings
{
    /// Without a change in the library the console counts as idle.
    std::chrono::seconds pause{60};
    /// Until a job that did not manage all of its work is tried again.
    std::chrono::seconds retry{30 * 60};
    std::array<JobRule, kJobKinds.size()> rules = {};

    [[nodiscard]] const JobRule& rule(JobKind kind) const { return rules[size_t(kind)]; }

    bool operator==(const JobSettings&) const = default;
};

/// \param file path of `MelovaneJob.ini`; any bytes, and none, are read without failing
[[nodiscard]] JobSettings readJobSettings(const PrivateProfile& profile, const QString& file);

} // namespace melovane
