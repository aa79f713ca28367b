#include "care/backup_desk.h"

#include "bus/event_guard.h"
#include "config/config_objects.h"
#include "config/moment_text.h"
#include "config/refusals.h"
#include "platform/controls/progress_window.h"
#include "platform/controls/warnings.h"
#include "platform/system/files.h"
#include "platform/system/live_wait.h"
#include "platform/system/worker.h"

#include <QLocale>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Bytes above which a size is told with one digit behind the point.
constexpr qint64 kGigabyte = qint64{1} << 30;

} // namespace

/// What became of a work, as the other thread leaves it.
struct BackupDesk::Result
{
    BackupOutcome outcome = BackupOutcome::GivenUp;
    int error = 0;       ///< of the database; 0 for none
    QString fault;       ///< empty unless it failed
    QString reason;      ///< of the system, for a failed file
    QStringList damages; ///< for the log

    [[nodiscard]] bool isDone() const
    {
        return outcome == BackupOutcome::Done && fault.isEmpty() && reason.isEmpty();
    }
};

/// A work on another thread; it owns all that it uses, for it may outlive the desk's wait.
struct BackupDesk::Running
{
    std::shared_ptr<Backups> backups;
    Work work;
    std::atomic<int> percent{0};
    std::atomic<bool> goesOn{true};
    Result result;

    void run()
    {
        try {
            result.outcome = work(*backups, [this](int done) {
                percent = done;
                return goesOn.load();
            });
        } catch (const DbError& error) {
            result.error = error.number();
            result.fault = error.text();
        } catch (const IoError& error) {
            result.reason = error.reason();
        }
        result.damages = backups->damages();
    }
};

BackupDesk::BackupDesk(BackupDeskParts parts)
    : m_parts(std::move(parts))
{}

BackupDesk::~BackupDesk()
{
    if (m_daily) {
        m_daily->goesOn = false;
    }
}

std::vector<Backup> BackupDesk::list() const
{
    return m_parts.makeBackups()->list();
}

BackupDesk::Result BackupDesk::run(const QString& title, const Work& work)
{
    const auto running = std::make_shared<Running>();
    running->backups = m_parts.makeBackups();
    running->work = work;
    const bool finished = runWatched(
        m_parts.tools, m_parts.tools.texts.text(u"backup.title"), [running] { running->run(); },
        [&](ProgressWindow& window) {
            if (!window.show(title, running->percent, 100)) {
                running->goesOn = false;
            }
            return running->goesOn.load();
        });
    if (!finished) {
        return {}; // it gives up at its next step
    }
    log(running->result);
    return running->result;
}

void BackupDesk::log(const Result& result) const
{
    if (m_parts.tools.log && !result.damages.isEmpty()) {
        m_parts.tools.log(u"Backups"_s, result.damages.join(u"; "_s));
    }
}

QString BackupDesk::faultText(const Result& result, const QString& name) const
{
    const ConfigObjects& texts = m_parts.tools.texts;
    if (result.error == dberror::kInvalidOperation) {
        return texts.text(u"backup.pages", name);
    }
    if (!result.reason.isEmpty()) {
        return texts.text(u"backup.failed", systemReasonText(texts, result.reason));
    }
    if (!result.fault.isEmpty()) {
        return texts.text(u"backup.failed",
                          databaseFaultText(texts, result.error, result.fault, m_parts.library()));
    }
    switch (result.outcome) {
    case BackupOutcome::Done:
        return {};
    case BackupOutcome::GivenUp:
        return texts.text(u"backup.givenup");
    case BackupOutcome::Busy:
        return texts.text(u"backup.busy");
    case BackupOutcome::Damaged:
        return name.isEmpty() ? texts.text(u"backup.library.damaged")
                              : texts.text(u"backup.is.damaged", name);
    }
    return {};
}

void BackupDesk::tellFault(const Result& result, const QString& name)
{
    const QString text = faultText(result, name);
    const bool isGivenUp = result.outcome == BackupOutcome::GivenUp && result.fault.isEmpty() &&
                           result.reason.isEmpty();
    if (isGivenUp) {
        m_parts.tools.tell(text);
    } else {
        m_parts.tools.warnings.ShowWarning(
            text, WarningType::Note, m_parts.tools.texts.text(u"backup.title"), u"backup.failed"_s);
    }
}

bool BackupDesk::makeNow()
{
    const ConfigObjects& texts = m_parts.tools.texts;
    const Result result =
        run(texts.text(u"backup.making"), [](Backups& backups, const BackupStep& step) {
            return backups.make(BackupOccasion::ByHand, step);
        });
    if (!result.isDone()) {
        tellFault(result, {});
        return false;
    }
    const std::vector<Backup> all = list();
    if (!all.empty()) {
        m_parts.tools.tell(texts.text(u"backup.made", all.front().tracks, all.front().lists));
    }
    return true;
}

bool BackupDesk::makeBefore(BackupOccasion occasion)
{
    const ConfigObjects& texts = m_parts.tools.texts;
    const Result result =
        run(texts.text(u"backup.making"), [occasion](Backups& backups, const BackupStep& step) {
            return backups.make(occasion, step);
        });
    return result.isDone() ||
           m_parts.tools.warnings.ShowWarning(texts.text(u"backup.goon", faultText(result, {})),
                                              WarningType::Question, texts.text(u"backup.title"),
                                              u"backup.goon"_s) == WarningAnswer::Yes;
}

void BackupDesk::check(const Backup& backup)
{
    const QString name = backup.name;
    const Result result =
        run(m_parts.tools.texts.text(u"backup.checking"),
            [name](Backups& backups, const BackupStep& step) { return backups.check(name, step); });
    if (!result.isDone()) {
        tellFault(result, name);
    }
}

bool BackupDesk::restore(const Backup& backup, bool withSettings)
{
    const ConfigObjects& texts = m_parts.tools.texts;
    const auto count = [](int number) { return number < 0 ? u"?"_s : QString::number(number); };
    const QString moment = dateText(backup.made);
    if (m_parts.tools.warnings.ShowWarning(texts.text(u"backup.ask", m_parts.library(), moment,
                                                      count(backup.tracks), count(backup.lists)),
                                           WarningType::Question, texts.text(u"backup.title"),
                                           u"backup.ask"_s) != WarningAnswer::Yes) {
        return false;
    }
    m_parts.tools.takeLibrary();
    const QString name = backup.name;
    const Result result = run(texts.text(u"backup.restoring"),
                              [name, withSettings](Backups& backups, const BackupStep& step) {
                                  return backups.restore(name, withSettings, step);
                              });
    m_parts.tools.giveLibrary();
    if (!result.isDone()) {
        tellFault(result, name);
        return false;
    }
    m_parts.tools.tell(
        texts.text(withSettings ? u"backup.restored.settings" : u"backup.restored", moment));
    return true;
}

bool BackupDesk::rescue(const QString& fault)
{
    const ConfigObjects& texts = m_parts.tools.texts;
    const std::vector<Backup> all = list();
    const auto good = std::find_if(all.begin(), all.end(), [](const Backup& backup) {
        return backup.state != BackupState::Damaged;
    });
    if (good == all.end()) {
        return false;
    }
    const auto count = [](int number) { return number < 0 ? u"?"_s : QString::number(number); };
    if (m_parts.tools.warnings.ShowWarning(texts.text(u"backup.rescue", fault, dateText(good->made),
                                                      count(good->tracks), count(good->lists)),
                                           WarningType::Question, texts.text(u"backup.title"),
                                           u"backup.rescue"_s) != WarningAnswer::Yes) {
        return false;
    }
    const QString name = good->name;
    const Result result =
        run(texts.text(u"backup.restoring"), [name](Backups& backups, const BackupStep& step) {
            return backups.restore(name, false, step);
        });
    if (!result.isDone()) {
        tellFault(result, name);
    }
    return result.isDone();
}

void BackupDesk::startDaily()
{
    if (m_daily || m_parts.library().isEmpty()) {
        return;
    }
    m_daily = std::make_shared<Running>();
    m_daily->backups = m_parts.makeBackups();
    m_daily->work = [](Backups& backups, const BackupStep& step) {
        return backups.isDue() ? backups.make(BackupOccasion::Daily, step) : BackupOutcome::Busy;
    };
    m_parts.tools.worker.run([running = m_daily] { running->run(); },
                             [this, running = m_daily] { dailyDone(*running); });
}

/// Who works with the backups at that moment makes one himself.
void BackupDesk::dailyDone(const Running& running)
{
    const Result result = running.result;
    m_daily.reset();
    log(result);
    const bool isQuiet =
        result.fault.isEmpty() && result.reason.isEmpty() &&
        (result.outcome == BackupOutcome::GivenUp || result.outcome == BackupOutcome::Busy);
    if (result.isDone() || isQuiet) {
        return;
    }
    const QString text = faultText(result, {});
    if (m_parts.tools.log) {
        m_parts.tools.log(u"Backups"_s, text);
    }
    m_parts.tools.tell(text);
}

// ---- texts

QString backupStateText(const ConfigObjects& texts, BackupState state)
{
    switch (state) {
    case BackupState::Good:
        return texts.text(u"backup.good");
    case BackupState::Damaged:
        return texts.text(u"backup.damaged");
    case BackupState::Unchecked:
        return texts.text(u"backup.unchecked");
    }
    return {};
}

QString BackupDesk::dateText(const QDateTime& moment) const
{
    return momentText(m_parts.tools.texts, moment);
}

QString BackupDesk::sizeText(qint64 bytes) const
{
    return QLocale(m_parts.tools.texts.text(u"Sprach.Code"))
        .formattedDataSize(bytes, bytes < kGigabyte ? 0 : 1, QLocale::DataSizeTraditionalFormat);
}

QString BackupDesk::occasionText(const Backup& backup) const
{
    const ConfigObjects& texts = m_parts.tools.texts;
    switch (backup.occasion) {
    case BackupOccasion::Daily:
        return texts.text(u"backup.daily");
    case BackupOccasion::ByHand:
        return texts.text(u"backup.hand");
    case BackupOccasion::Cleaning:
        return texts.text(u"backup.cleaning");
    case BackupOccasion::Relink:
        return texts.text(u"backup.relink");
    case BackupOccasion::Merge:
        return texts.text(u"backup.merge");
    case BackupOccasion::Restore:
        return texts.text(u"backup.beforerestore");
    case BackupOccasion::Upgrade:
        return texts.text(u"backup.level", backup.level);
    }
    return {};
}

QString BackupDesk::stateText(const Backup& backup) const
{
    return backupStateText(m_parts.tools.texts, backup.state);
}

QString BackupDesk::checkText(const Backup& backup) const
{
    if (!backup.checked.isValid()) {
        return backup.state == BackupState::Damaged
                   ? stateText(backup)
                   : m_parts.tools.texts.text(u"backup.unchecked.long");
    }
    return m_parts.tools.texts.text(u"backup.checked", dayText(m_parts.tools.texts, backup.checked),
                                    backup.checked.toString(u"HH:mm"_s), stateText(backup));
}

QString BackupDesk::freeText() const
{
    const auto space = m_parts.files.space(m_parts.dataFolder);
    return space ? m_parts.tools.texts.text(u"backup.free", sizeText(space->free)) : QString();
}

} // namespace melovane
