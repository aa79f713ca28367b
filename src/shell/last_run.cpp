#include "shell/last_run.h"

#include "platform/system/clock.h"
#include "platform/system/files.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The mark is one line; of anything longer only the beginning could be ours.
constexpr qint64 kMostBytes = 100;

} // namespace

LastRun::LastRun(Files& files, const Clock& clock, QString file)
    : m_files(files)
    , m_clock(clock)
    , m_file(std::move(file))
{}

std::optional<QString> LastRun::begin()
{
    std::optional<QString> died;
    if (m_files.fileExists(m_file)) {
        died = QString();
        try {
            died = QString::fromUtf8(m_files.read(m_file, kMostBytes)).trimmed();
        } catch (const IoError&) {
            // That it stands there tells enough.
            died = QString();
        }
    }
    try {
        m_files.writeWhole(m_file, m_clock.now().toString(u"dd.MM.yyyy HH:mm\n"_s).toUtf8());
    } catch (const IoError&) {
        return died; // The next start learns nothing of this run.
    }
    return died;
}

void LastRun::end()
{
    m_files.remove(m_file);
}

} // namespace melovane
