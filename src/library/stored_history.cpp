#include "library/stored_history.h"

#include "config/paths.h"
#include "platform/system/files.h"
#include "platform/system/io_error.h"
#include "platform/system/path_text.h"
#include "store/keep_aside.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A history is 27 lines; a larger file is none.
constexpr qint64 kMaxHistoryBytes = qint64{4} * 1024 * 1024;

} // namespace

QString StoredHistory::file() const
{
    return path::join(m_paths.GetConfigPath(), u"suche.his"_s);
}

std::optional<QString> StoredHistory::load()
{
    try {
        if (m_files.fileExists(file()) && !read(m_files.read(file(), kMaxHistoryBytes))) {
            return keepDamaged();
        }
    } catch (const IoError&) {
        // A run without the history of the former ones.
    }
    return std::nullopt;
}

/// Mended at once, so that nobody is told a second time of one damage.
std::optional<QString> StoredHistory::keepDamaged()
{
    QString kept = keepAside(m_files, file());
    save();
    return kept;
}

void StoredHistory::save()
{
    try {
        m_files.writeWhole(file(), toText());
    } catch (const IoError&) {
        // The former history stays.
    }
}

} // namespace melovane
