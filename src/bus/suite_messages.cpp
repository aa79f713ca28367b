#include "bus/suite_messages.h"

#include "config/global_settings.h"
#include "config/paths.h"
#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/leading_number.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Key of section "Global": keep.
const QString kVolumeMonitorKey = u"Message.Handle.Volume.Monitor"_s;

/// How long the window stands still for a program that hangs: at its first number, and at those
/// that follow.
constexpr std::chrono::milliseconds kPatience{1000};
constexpr std::chrono::milliseconds kPatienceWithSilent{100};

QString updateTodo(qint32 id, const QString& fid)
{
    return u"update todo set fid='"_s + sql::quoted(fid) + u"' where id="_s +
           sql::number(qint64{id});
}

QString insertTodo(qint32 id, const QString& fid)
{
    return u"insert into todo(id,fid)values("_s + sql::number(qint64{id}) + u",'"_s +
           sql::quoted(fid) + u"')"_s;
}

/// The number behind the first "=" of a line of a settings file.
MessageHandle handleOf(const QString& line)
{
    const qsizetype at = line.indexOf(u'=');
    return at < 0 ? 0 : leadingLong(QStringView(line).sliced(at + 1));
}

} // namespace

SuiteMessages::SuiteMessages(GlobalSettings& settings,
                             DBEngine& engine,
                             const Messages& messages,
                             KSMessage& control,
                             ErrorSink errors)
    : m_settings(settings)
    , m_engine(engine)
    , m_messages(messages)
    , m_control(control)
    , m_errors(std::move(errors))
{}

void SuiteMessages::publishControl(const Mod_API& paths)
{
    m_settings.WriteKeyValue(section::kMessageHandle.toString(), paths.programName() + u".exe"_s,
                             QString::number(m_control.handle()));
}

void SuiteMessages::publishWindow(qint32 window)
{
    m_settings.SetMessageHandleDB(m_control.handle());
    m_settings.SetHandleDB(window);
}

void SuiteMessages::withdraw()
{
    m_settings.SetMessageHandleDB(0);
}

MessageHandle SuiteMessages::player()
{
    m_settings.RefreshMessageHandle();
    return m_settings.MessageHandleDJ();
}

bool SuiteMessages::playerIsAlive()
{
    return m_messages.IsMsgWindow(player());
}

void SuiteMessages::SetTodo(qint32 id, const QString& fid)
{
    quietly(m_errors, u"SetTodo"_s, [&] {
        const auto database = m_engine.OpenDatabase(m_settings.DbName());
        {
            // Two programs may write the first row of a number at the same moment.
            Transaction change(*database);
            database->Execute(updateTodo(id, fid));
            if (database->RecordsAffected() == 0) {
                database->Execute(insertTodo(id, fid));
            }
            change.commit();
        }
        database->Close();
        m_engine.Idle(dbRefreshCache);
    });
}

bool SuiteMessages::sendIfAlive(MessageHandle target, qint32 id)
{
    if (!m_messages.IsMsgWindow(target)) {
        return false;
    }
    ask(target, id);
    return true;
}

/// False when the target runs and does not answer.
bool SuiteMessages::ask(MessageHandle target, qint32 id, qint32 lParam)
{
    m_control.setTarget(target);
    const auto patience = m_silent.count(target) != 0 ? kPatienceWithSilent : kPatience;
    const bool answered =
        m_control.SendWithin(patience, id, 0, lParam) || !m_messages.IsMsgWindow(target);
    if (answered) {
        m_silent.erase(target);
    } else {
        m_silent.insert(target);
    }
    return answered;
}

bool SuiteMessages::SendToPlayer(const QString& fid, qint32 id)
{
    const MessageHandle target = player();
    // The player reads the row as soon as it gets the number.
    try {
        SetTodo(id, fid);
    } catch (const DbError&) {
        ask(target, id);
        throw;
    }
    return ask(target, id);
}

bool SuiteMessages::sendToPlayer(qint32 id)
{
    return ask(player(), id);
}

void SuiteMessages::postToPlayer(qint32 id)
{
    m_control.setTarget(player());
    m_control.Post(id, 0, 0);
}

bool SuiteMessages::StopOtherMonitors()
{
    bool allAnswered = true;
    for (const QString& line : m_settings.toolBox().INI_GetSection(section::kMessage.toString())) {
        const MessageHandle target = handleOf(line);
        if (target != m_control.handle() && m_messages.IsMsgWindow(target)) {
            // The others are still to be told.
            allAnswered = ask(target, message::kStopMonitor) && allAnswered;
        }
    }
    return allAnswered;
}

void SuiteMessages::answerDatabaseRelease(MessageHandle asker)
{
    ask(asker, message::kReleaseDatabase, message::kDatabaseIsFree);
}

bool SuiteMessages::isAlive(MessageHandle control) const
{
    return m_messages.IsMsgWindow(control);
}

bool SuiteMessages::hasJobs()
{
    return isAlive(jobs());
}

bool SuiteMessages::endJobs()
{
    return sendIfAlive(jobs(), message::kEndJobs);
}

MessageHandle SuiteMessages::jobs()
{
    return m_settings.GetKeyValueLong(section::kGlobal.toString(), kJobsHandleKey.toString(), 0);
}

MessageHandle SuiteMessages::volumeMonitor()
{
    return m_settings.GetKeyValueLong(section::kGlobal.toString(), kVolumeMonitorKey, 0);
}

MessageHandle SuiteMessages::sampleTool()
{
    m_settings.RefreshMessageHandle();
    return m_settings.MessageHandleKiv();
}

bool SuiteMessages::isRunning(const QString& program)
{
    return (program == "LevelPanel"_L1 && isAlive(volumeMonitor())) ||
           (program == "Melovanekiv"_L1 && isAlive(sampleTool()));
}

bool SuiteMessages::showVolumeMonitor()
{
    return sendIfAlive(volumeMonitor(), message::kShowVolumeMonitor);
}

bool SuiteMessages::editSample()
{
    return sendIfAlive(sampleTool(), message::kEditSample);
}

} // namespace melovane
