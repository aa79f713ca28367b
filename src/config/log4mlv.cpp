#include "config/log4mlv.h"

#include "config/paths.h"
#include "platform/system/clock.h"
#include "platform/system/files.h"
#include "platform/system/letter_case.h"
#include "platform/system/path_text.h"
#include "platform/system/text_file.h"
#include "platform/system/trim_blanks.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A marker file is written by hand; a larger one is something else.
constexpr qint64 kMaxMarker = 1024LL * 1024;

/// Former logs that are kept.
constexpr int kKeptLogs = 3;

} // namespace

Log4Mlv::Log4Mlv(Mod_API& paths, Files& files, const Clock& clock)
    : m_files(files)
    , m_clock(clock)
    , m_logPath(path::join(paths.GetConfigPath(), paths.programName() + u".log"_s))
{
    readMarker(path::join(paths.programFolder(), paths.programName() + u".log4mlv"_s));
    m_isAsked = qEnvironmentVariableIsSet(kLogVariable);
    m_enabled = isOn(paths.programName());
    if (m_enabled) {
        rotate();
    }
}

/// At the start alone: other programs of the suite write into logs of their own.
void Log4Mlv::rotate()
{
    const auto facts = m_files.facts(m_logPath);
    if (!facts || facts->size <= kMaxLog) {
        return;
    }
    try {
        m_files.remove(m_logPath + u".%1"_s.arg(kKeptLogs));
        for (int number = kKeptLogs - 1; number >= 0; --number) {
            const QString former = number == 0 ? m_logPath : m_logPath + u".%1"_s.arg(number);
            if (m_files.fileExists(former)) {
                m_files.rename(former, m_logPath + u".%1"_s.arg(number + 1));
            }
        }
    } catch (const IoError&) {
        return; // The log goes on where it is.
    }
}

void Log4Mlv::readMarker(const QString& path)
{
    QByteArray bytes;
    try {
        bytes = m_files.read(path, kMaxMarker);
    } catch (const IoError&) {
        return;
    }
    for (const QString& whole : textfile::lines(textfile::decode(bytes))) {
        const QString line = trimBlanks(whole);
        const qsizetype equals = line.indexOf(u'=');
        if (line.startsWith(u'#') || equals < 0) {
            continue;
        }
        const QString key = upperCase(trimBlanks(QStringView(line).first(equals)));
        if (!m_levels.contains(key)) {
            m_levels.insert(key, upperCase(trimBlanks(QStringView(line).sliced(equals + 1))));
        }
    }
}

bool Log4Mlv::isOn(const QString& key) const
{
    return m_levels.value(upperCase(key), m_isAsked ? u"DEBUG"_s : QString()) == "DEBUG"_L1;
}

void Log4Mlv::DebugOut(const QString& text)
{
    const QString area = m_className + u'.' + m_areaName;
    if (!m_enabled || !isOn(area)) {
        return;
    }
    QString line = text;
    line.replace(u'\r', u' ').replace(u'\n', u' ');
    const QString moment = m_clock.now().toString(u"dd.MM.yyyy HH:mm:ss"_s);
    try {
        m_files.append(m_logPath,
                       (u'[' + moment + u"]["_s + area + u"]::"_s + line + u'\n').toUtf8());
    } catch (const IoError&) {
        return; // A log that cannot be written must not disturb what it tells about.
    }
}

} // namespace melovane
