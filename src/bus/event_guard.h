#pragma once

#include "platform/db/db_error.h"
#include "store/error_sink.h"

#include <QString>

#include <functional>

namespace melovane {

class ConfigObjects;

/// What the user reads about a database that failed, in his language where the error is a known
/// one, else in the engine's own words.
/// \param database path of the file
[[nodiscard]] QString databaseFaultText(const ConfigObjects& texts,
                                        int number,
                                        const QString& text,
                                        const QString& database);

/// The last stop of a failing database or file: work that an event of the window has started.
///
/// The failure is told to the user in one line and stands in the log; the window runs on.
class EventGuard
{
public:
    using Work = std::function<void()>;

    /// \param database path of the library, asked for when it has failed
    /// \param tell     shows one line to the user
    /// \param log      may be empty
    EventGuard(const ConfigObjects& texts,
               std::function<QString()> database,
               std::function<void(const QString&)> tell,
               ErrorSink log);

    /// \param where name of the event, for the log
    /// \return whether the work came to its end
    // NOLINTNEXTLINE(modernize-use-nodiscard): the work is the point, not how it ended.
    bool run(const QString& where, const Work& work) const;

private:
    void failed(const QString& where, const QString& logged, const QString& shown) const;

    const ConfigObjects& m_texts;
    std::function<QString()> m_database;
    std::function<void(const QString&)> m_tell;
    ErrorSink m_log;
};

} // namespace melovane
