#include "shell/sibling_control.h"

#include "config/paths.h"
#include "platform/system/leading_number.h"
#include "platform/system/letter_case.h"
#include "platform/system/path_text.h"
#include "platform/system/trim_blanks.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

using Style = Processes::WindowStyle;

namespace {

const QString kManual = u"manuell"_s;

} // namespace

SiblingControl::SiblingControl(Mod_API& paths, Files& files, Programs& processes)
    : m_paths(paths)
    , m_files(files)
    , m_processes(processes)
{}

bool SiblingControl::start(const QString& program, const QString& arguments, Style style)
{
    // Never one line of both: a blank in the folder would let a foreign file pass for the program.
    const bool isStarted = m_processes.startProgram(
        path::join(m_paths.programFolder(), program + u".exe"_s), arguments, style);
    if (isStarted && style == Style::Normal) {
        m_started();
    }
    return isStarted;
}

bool SiblingControl::startIfInstalled(const QString& program, const QString& arguments, Style style)
{
    return isInstalled(program) && start(program, arguments, style);
}

bool SiblingControl::isInstalled(const QString& program) const
{
    // The name of the suite first, then that of a program of this system.
    const QString file = path::join(m_paths.programFolder(), program);
    return m_files.fileExists(file + u".exe"_s) || m_files.fileExists(file);
}

bool SiblingControl::startConfig(int ownHandle, const QString& setting)
{
    const QString more = setting.isEmpty() ? QString() : u' ' + setting;
    return start(u"mlvconfig"_s, u" %1"_s.arg(ownHandle) + more, Style::Normal);
}

bool SiblingControl::startImport(int index)
{
    switch (index) {
    case 1:
        return start(u"tagbench"_s, u" import"_s, Style::Normal);
    case 2:
        return start(u"mediaintake"_s, u" 2"_s, Style::Normal);
    default:
        return start(u"mediaintake"_s, u" 1"_s, Style::Normal);
    }
}

bool SiblingControl::startStorePlaylists()
{
    return start(u"Task.StorePlaylists"_s, u" "_s, Style::Minimised);
}

bool SiblingControl::startWriteTags(int ownHandle)
{
    return start(u"Task.WriteTags"_s, u" %1"_s.arg(ownHandle), Style::Minimised);
}

bool SiblingControl::startRebuildTree(const QString& tree)
{
    return start(u"Task.RebuildTree"_s, u' ' + tree, Style::Minimised);
}

bool SiblingControl::startSleeveViewer(const QString& argument)
{
    return start(u"SleeveViewer"_s, u' ' + argument, Style::Normal);
}

bool SiblingControl::startSampleTool()
{
    return start(u"Melovanekiv"_s, {}, Style::Normal);
}

bool SiblingControl::startTagEditor()
{
    return startIfInstalled(u"tagbench"_s, u" edit"_s, Style::Normal);
}

bool SiblingControl::startLevelPanel()
{
    return startIfInstalled(u"LevelPanel"_s, {}, Style::Normal);
}

bool SiblingControl::startJobs()
{
    return startIfInstalled(u"MelovaneJob"_s, {}, Style::Hidden);
}

bool SiblingControl::startPlayer(const QString& order)
{
    return startIfInstalled(u"MelovaneDJ"_s, order.isEmpty() ? QString() : u' ' + order,
                            Style::Normal);
}

bool SiblingControl::startPlugIn(const QString& program, const QString& argument)
{
    return start(program, u' ' + argument, Style::Normal);
}

bool SiblingControl::openPage(const QString& name)
{
    const QString file = pageFile(name);
    return !file.isEmpty() && m_processes.start(u"explorer.exe "_s + file, Style::Normal);
}

QString SiblingControl::pageFile(const QString& name) const
{
    const QString file = path::join(m_paths.programFolder(), name);
    return m_files.fileExists(file) ? file : QString();
}

bool SiblingControl::StartBeatGauge(const QString& cmd, const QString& fid, const QString& plid)
{
    QString arguments = u" fid=%fid% cmd=%cmd%"_s;
    arguments.replace("%fid%"_L1, trimBlanks(fid)).replace("%cmd%"_L1, trimBlanks(cmd));
    if (leadingNumber(plid) > 0) {
        arguments += " plid="_L1 + trimBlanks(plid);
    }
    if (fid == m_lastFid && lowerCase(cmd) != kManual) {
        return true;
    }
    m_lastFid = fid;
    return start(u"beatgauge"_s, arguments, Style::Minimised);
}

bool SiblingControl::findTempo(const QString& cmd, const QString& fid)
{
    return start(u"beatgauge"_s, u" cmd=%1 fid=%2"_s.arg(cmd, fid), Style::Minimised);
}

} // namespace melovane
