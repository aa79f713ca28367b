#include "playlistfiles/export_log.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kLineEnd = u"\r\n"_s;

/// Signs of the line above a section.
constexpr int kRule = 60;

} // namespace

bool ExportLog::append(const QString& line)
{
    m_text += line + kLineEnd;
    if (m_text.size() < kCutAt) {
        return false;
    }
    qsizetype start = m_text.size();
    for (int lines = 0; lines <= kKeptLines && start > 0; ++lines) {
        const qsizetype end = m_text.lastIndexOf(kLineEnd, start - 1);
        if (end < 0 || lines == kKeptLines) {
            start = end < 0 ? 0 : end + kLineEnd.size();
            break;
        }
        start = end;
    }
    m_text.remove(0, start);
    return true;
}

bool ExportLog::appendSection(const QString& line)
{
    return append(QString(kRule, u'*') + kLineEnd + line);
}

} // namespace melovane
