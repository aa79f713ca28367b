#include "intake/intake_session.h"

#include "config/config_objects.h"
#include "config/global_settings.h"
#include "platform/system/path_text.h"

namespace melovane {

IntakeSession::IntakeSession(const IntakeParts& parts, GlobalSettings& settings, IntakeMode mode)
    : m_parts(parts)
    , m_settings(settings)
    , m_mode(mode)
{
    if (mode == IntakeMode::NewFiles) {
        addFolder(settings.LastImportDir());
    }
}

void IntakeSession::setFolders(const QStringList& folders)
{
    m_folders = folders;
    m_look.reset();
}

bool IntakeSession::addFolder(const QString& folder)
{
    const QString plain = path::withoutSeparator(folder);
    if (plain.isEmpty() || m_folders.contains(plain) || !m_parts.files.folderExists(plain)) {
        return false;
    }
    m_folders.append(plain);
    m_look.reset();
    return true;
}

void IntakeSession::removeFolder(int index)
{
    if (index >= 0 && index < m_folders.size()) {
        m_folders.removeAt(index);
        m_look.reset();
    }
}

QString IntakeSession::suggestedFolder() const
{
    return m_folders.isEmpty() ? m_settings.LastImportDir() : m_folders.last();
}

bool IntakeSession::look(std::chrono::milliseconds budget)
{
    if (m_running || m_folders.isEmpty()) {
        return false;
    }
    if (!m_look) {
        m_look = std::make_unique<FolderLook>(m_parts.files, m_folders);
    }
    return m_look->step(budget);
}

QString IntakeSession::lookText() const
{
    return m_look ? m_look->text(texts()) : QString();
}

bool IntakeSession::canStart() const
{
    return !m_running && (m_mode == IntakeMode::ChangedFiles || !m_folders.isEmpty());
}

void IntakeSession::start()
{
    if (!canStart()) {
        return;
    }
    if (m_mode == IntakeMode::NewFiles) {
        m_settings.SetLastImportDir(m_folders.first());
    }
    m_intake = std::make_unique<Intake>(
        m_parts, IntakeOrder{m_mode, m_settings.DbName(), m_folders, m_settings.ID3v2Tags()});
    m_running = true;
}

bool IntakeSession::step(std::chrono::milliseconds budget)
{
    if (m_running) {
        goOn(budget);
    }
    return m_running;
}

void IntakeSession::goOn(std::chrono::milliseconds budget)
{
    m_running = m_intake->step(budget);
    if (!m_running && whenOver) {
        whenOver(m_intake->report());
    }
}

void IntakeSession::cancel()
{
    if (m_running) {
        m_intake->cancel();
        goOn(std::chrono::milliseconds{0});
    }
}

int IntakeSession::percent() const
{
    if (!m_intake) {
        return 0;
    }
    const IntakeProgress& progress = m_intake->progress();
    if (m_running && progress.total == 0) {
        return -1;
    }
    return progress.total == 0 ? 100 : static_cast<int>(progress.done * 100 / progress.total);
}

QString IntakeSession::progressText() const
{
    if (!m_intake) {
        return {};
    }
    const IntakeProgress& progress = m_intake->progress();
    if (progress.listing) {
        return texts().text(u"intake.progress.found", fileCount(texts(), m_intake->report().found));
    }
    return texts().text(u"intake.progress.file", progress.done, progress.total);
}

QString IntakeSession::currentFile() const
{
    return m_intake ? m_intake->progress().file : QString();
}

const IntakeReport& IntakeSession::report() const
{
    static const IntakeReport none;
    return m_intake ? m_intake->report() : none;
}

QString IntakeSession::title() const
{
    return texts().text(m_mode == IntakeMode::NewFiles ? u"intake.title.new"
                                                       : u"intake.title.changed");
}

QString IntakeSession::hint() const
{
    return texts().text(m_mode == IntakeMode::NewFiles ? u"intake.hint.new"
                                                       : u"intake.hint.changed");
}

} // namespace melovane
