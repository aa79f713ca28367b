#include "playlistfiles/m3u_errors.h"

#include "intake/import_errors.h"
#include "intake/skipped.h"
#include "platform/system/clock.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "platform/system/print_line.h"
#include "platform/system/readable_name.h"

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Bytes that are collected before the log is opened: a list of wrong paths would open it for each
/// of them.
constexpr qsizetype kPortion = 64LL * 1024;

} // namespace

M3uErrors::M3uErrors(Files& files, QStringList folders, const Clock& clock)
    : m_files(files)
    , m_folders(std::move(folders))
    , m_clock(clock)
{}

M3uErrors::~M3uErrors()
{
    flush();
}

QString M3uErrors::file() const
{
    return m_folders.isEmpty() ? QString() : path::join(m_folders.first(), kFileName);
}

void M3uErrors::add(int code, const QString& source, const QString& what)
{
    ++m_count;
    m_waiting += printLine({m_clock.now().toString(u"dd.MM.yyyy HH:mm:ss"_s), QString::number(code),
                            importerror::GetMessageText(code), u"MlvM3U."_s + source,
                            shortened(what, kMaxInLog)})
                     .toUtf8() +
                 '\n';
    if (m_waiting.size() >= kPortion) {
        flush();
    }
}

void M3uErrors::flush()
{
    const QByteArray lines = std::exchange(m_waiting, {});
    while (!lines.isEmpty() && !m_folders.isEmpty()) {
        try {
            m_files.append(file(), lines);
            return;
        } catch (const IoError&) {
            if (m_folders.size() == 1) {
                return; // counted all the same: the log is not worth more than the list
            }
            m_folders.removeFirst();
        }
    }
}

} // namespace melovane
