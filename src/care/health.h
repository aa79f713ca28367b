#pragma once

#include "bus/published_controls.h"
#include "care/backup_record.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace melovane {

class Clock;
class ConfigObjects;
class DBEngine;
class Files;
class GlobalSettings;
class Mod_API;

/// A message control of the suite that lives.
struct LiveProgram
{
    MessageHandle handle = 0;
    qint64 process = 0; ///< 0 when it is too busy to tell
    QString name;       ///< what the system calls the process
};

/// What the report is made of; all of it outlives the making.
struct HealthParts
{
    const ConfigObjects& texts;
    GlobalSettings& settings;
    Mod_API& paths;
    const Files& files;
    DBEngine& engine;
    const Clock& clock;
    QString runtimeFolder; ///< where the programs meet; empty for none
    std::function<std::vector<LiveProgram>()> programs;
    /// The last messages of the console, \see journalLine.
    std::function<QStringList()> messages;
    /// Newest first.
    std::function<std::vector<Backup>()> backups;
};

/// One fact about the suite.
struct HealthLine
{
    QString what;
    QString value;
    bool isAlarming = false; ///< the user should look after it
};

struct HealthSection
{
    QString title;
    std::vector<HealthLine> lines;
};

/// How the suite is, in the user's language: which of its programs live, what waits for them, what
/// they said last, backups and check, and where everything lies. A library that cannot be read is
/// told in its place; nothing is thrown.
[[nodiscard]] std::vector<HealthSection> healthOf(const HealthParts& parts);

/// The same as a text for a report: a title a section, a fact a line, an alarming one marked "!".
[[nodiscard]] QString healthText(const std::vector<HealthSection>& sections);

} // namespace melovane
