#include "intake/folder_walk.h"

#include "intake/import_errors.h"
#include "platform/system/path_text.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

bool isMp3(const QString& name)
{
    return name.endsWith(".mp3"_L1, Qt::CaseInsensitive);
}

} // namespace

FolderWalk::FolderWalk(const Files& files, const QStringList& roots, Skipped& skipped)
    : m_files(files)
    , m_skipped(skipped)
    , m_waiting(roots.rbegin(), roots.rend())
{}

std::optional<std::vector<FoundFile>> FolderWalk::next()
{
    if (!m_names.isEmpty()) {
        return lookOn();
    }
    if (m_waiting.empty()) {
        return std::nullopt;
    }
    const QString place = m_waiting.back();
    m_waiting.pop_back();
    return enter(place);
}

std::vector<FoundFile> FolderWalk::enter(const QString& place)
{
    const auto facts = m_files.facts(place);
    if (!facts) {
        m_skipped.refused.push_back({place, importerror::kPathNotFound, {}});
        return {};
    }
    std::vector<FoundFile> found;
    if (!facts->isFolder) {
        take({path::withSeparator(path::parent(place)), path::fileName(place), *facts}, found);
    } else if (isFirstVisit(*facts)) {
        m_folder = path::withSeparator(place);
        m_names = m_files.names(m_folder);
        m_nextName = 0;
        if (m_names.isEmpty() && !m_files.canList(m_folder)) {
            m_skipped.refused.push_back({m_folder, importerror::kFile, u"intake.unreadable"_s});
        }
    }
    return found;
}

bool FolderWalk::isFirstVisit(const FileFacts& folder)
{
    const std::pair identity(folder.device, folder.inode);
    if (m_visited.contains(identity)) {
        return false;
    }
    m_visited.insert(identity);
    return true;
}

std::vector<FoundFile> FolderWalk::lookOn()
{
    std::vector<FoundFile> found;
    const qsizetype end = std::min(m_nextName + kNamesPerLook, m_names.size());
    for (; m_nextName < end; ++m_nextName) {
        look(m_names.at(m_nextName), found);
    }
    if (end == m_names.size()) {
        leave();
    }
    return found;
}

void FolderWalk::look(const QString& name, std::vector<FoundFile>& found)
{
    if (name.startsWith(u'.')) {
        return;
    }
    const auto facts = m_files.facts(m_folder + name);
    if (!facts) {
        // A link to nothing; worth a word only when it claims to be music.
        if (isMp3(name)) {
            m_skipped.refused.push_back({m_folder + name, importerror::kFileNotFound, {}});
        }
    } else if (facts->isFolder) {
        m_subfolders.push_back(m_folder + name);
    } else {
        take({m_folder, name, *facts}, found);
    }
}

void FolderWalk::take(FoundFile file, std::vector<FoundFile>& found)
{
    if (isMp3(file.name)) {
        found.push_back(std::move(file));
    } else if (const QString kind = unreadKind(file.name); !kind.isEmpty()) {
        ++m_skipped.kinds[kind];
    }
}

void FolderWalk::leave()
{
    m_waiting.insert(m_waiting.end(), m_subfolders.rbegin(), m_subfolders.rend());
    m_subfolders.clear();
    m_names.clear();
}

} // namespace melovane
