#pragma once

#include <QString>
#include <QStringList>

namespace melovane {

class ConfigObjects;
struct WriteTagsReport;

/// What was done, and what ended it too early: one line, or two.
/// \param database named when it failed
[[nodiscard]] QString
summary(const ConfigObjects& texts, const WriteTagsReport& report, const QString& database);

/// The whole report for a terminal: the summary, then a line for each file that was not written.
[[nodiscard]] QStringList
reportLines(const ConfigObjects& texts, const WriteTagsReport& report, const QString& database);

} // namespace melovane
