#include "shell/sub_main.h"

#include "bus/event_guard.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "platform/controls/warnings.h"
#include "platform/message/message_control.h"
#include "platform/system/timers.h"
#include "shell/start_up_db.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Schema version that this release needs.
const QString kDatabaseVersion = u"3.4"_s;

/// Title of the message about a wrong version: the same in every language.
const QString kVersionTitle = u"ooop's"_s;

} // namespace

SubMain::SubMain(StartSteps steps, const StartParts& parts)
    : m_steps(std::move(steps))
    , m_parts(parts)
{}

StartResult SubMain::run()
{
    // The test comes first of all, what it found is told only when no other copy runs.
    OpenFault fault = m_steps.openTest();
    m_steps.loadConfig();
    if (m_steps.anotherCopyRuns()) {
        return StartResult::SecondCopy;
    }
    const ConfigObjects& texts = m_parts.texts;
    const QString database = m_parts.settings.DbName();
    if (!fault.text.isEmpty() && m_steps.rescue && m_steps.rescue(fault, reasonOf(fault))) {
        fault = m_steps.openTest();
    }
    if (!fault.text.isEmpty()) {
        return refuse(texts.text(u"glob_warn"), texts.text(u"dbopenerror", reasonOf(fault)),
                      u"dbopenerror"_s);
    }
    if (!m_steps.databaseExists()) {
        return refuse(texts.text(u"glob_warn"), texts.text(u"nodb", database), u"nodb"_s);
    }
    if (!m_steps.versionFits()) {
        return refuse(
            kVersionTitle,
            texts.text(u"dbverserr", database, m_parts.settings.DBVersion(), kDatabaseVersion),
            u"dbverserr"_s);
    }
    if (m_parts.messages.IsMsgWindow(m_parts.settings.MessageHandleDJ())) {
        m_steps.showMainWindow();
    } else {
        showWithSplash();
    }
    return StartResult::Run;
}

void SubMain::showWithSplash()
{
    m_parts.splash.Show();
    m_parts.splash.StartupCloseDelay = kStartupCloseDelay;
    m_parts.loop.turn();
    m_steps.showMainWindow();
    m_parts.splash.BringToFront();
    m_parts.splash.StartTimerCloseWindow();
}

QString SubMain::reasonOf(const OpenFault& fault) const
{
    return databaseFaultText(m_parts.texts, fault.number, fault.text, m_parts.settings.DbName());
}

StartResult SubMain::refuse(const QString& title, const QString& text, const QString& messageKey)
{
    m_parts.warnings.ShowWarning(text, WarningType::Stop, title, messageKey);
    return StartResult::Refused;
}

} // namespace melovane
