#include "shell/sub_main.h"

#include "config/global_settings.h"
#include "platform/controls/warning_dialog.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Schema version that this release needs.
const QString kDatabaseVersion = u"3.4"_s;

const QString kWarningTitle = u"Achtung !"_s;
const QString kOpenError =
    u"Melovane kann nicht gestartet werden, da folgender Fehler aufgetreten ist.\n\n%1"_s;
const QString kNoDatabase = u"Melovane Datenbank nicht gefunden %1"_s;
const QString kVersionTitle = u"ooop's"_s;
const QString kVersionError =
    u"Falsche Melovane Datenbankversion\n%1\nIhre Datenbank hat die Versionsnummer: %2 benötigt "
    "wird aber die Version: %3\n\nWerkzeuge für die Übernahme alter Daten gibt es auf der Seite "
    "des Herstellers."_s;

} // namespace

SubMain::SubMain(StartSteps steps, const GlobalSettings& settings, WarningDialog& dialog)
    : m_steps(std::move(steps))
    , m_settings(settings)
    , m_dialog(dialog)
{}

StartResult SubMain::run()
{
    // The test comes first of all, what it found is told only when no other copy runs.
    const QString fault = m_steps.openTest();
    m_steps.loadConfig();
    if (m_steps.anotherCopyRuns()) {
        return StartResult::SecondCopy;
    }
    if (!fault.isEmpty()) {
        return refuse(kWarningTitle, kOpenError.arg(fault));
    }
    if (!m_steps.databaseExists()) {
        return refuse(kWarningTitle, kNoDatabase.arg(m_settings.DbName()));
    }
    if (!m_steps.versionFits()) {
        return refuse(kVersionTitle, kVersionError.arg(m_settings.DbName(), m_settings.DBVersion(),
                                                       kDatabaseVersion));
    }
    return StartResult::Run;
}

StartResult SubMain::refuse(const QString& title, const QString& text)
{
    m_dialog.show(title, text);
    return StartResult::Refused;
}

} // namespace melovane
