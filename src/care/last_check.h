#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace melovane {

class GlobalSettings;

/// What the last check of a library has come to.
struct LastCheck
{
    QDateTime moment;
    qint64 findings = 0;
};

/// Keeps it in the settings, for every program of the suite. A file that cannot be written keeps
/// the former one.
void keepLastCheck(GlobalSettings& settings, const QString& library, const LastCheck& check);

/// Nothing when the library was never checked.
[[nodiscard]] std::optional<LastCheck> lastCheck(const GlobalSettings& settings,
                                                 const QString& library);

} // namespace melovane
