#include "siblings/mediaintake/folder_walk.h"

#include "platform/system/path_text.h"
#include "playlistfiles/import_errors.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

bool isMp3(const QString& name)
{
    return name.endsWith(".mp3"_L1, Qt::CaseInsensitive);
}

} // namespace

FolderWalk::FolderWalk(const Files& files, const QStringList& roots)
    : m_files(files)
    , m_waiting(roots.rbegin(), roots.rend())
{}

std::optional<std::vector<FoundFile>> FolderWalk::next()
{
    if (m_waiting.empty()) {
        return std::nullopt;
    }
    const QString place = m_waiting.back();
    m_waiting.pop_back();
    const auto facts = m_files.facts(place);
    if (!facts) {
        m_refused.push_back({place, importerror::kPathNotFound,
                             importerror::GetMessageText(importerror::kPathNotFound)});
        return std::vector<FoundFile>();
    }
    if (!facts->isFolder) {
        return std::vector<FoundFile>{
            {path::withSeparator(path::parent(place)), path::fileName(place), *facts}};
    }
    return isFirstVisit(*facts) ? visit(path::withSeparator(place)) : std::vector<FoundFile>();
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

std::vector<FoundFile> FolderWalk::visit(const QString& folder)
{
    std::vector<FoundFile> found;
    std::vector<QString> folders;
    const QStringList names = m_files.names(folder);
    for (const QString& name : names) {
        if (name.startsWith(u'.')) {
            continue;
        }
        const auto facts = m_files.facts(folder + name);
        if (!facts) {
            // A link to nothing; worth a word only when it claims to be music.
            if (isMp3(name)) {
                m_refused.push_back({folder + name, importerror::kFileNotFound,
                                     importerror::GetMessageText(importerror::kFileNotFound)});
            }
        } else if (facts->isFolder) {
            folders.push_back(folder + name);
        } else if (isMp3(name)) {
            found.push_back({folder, name, *facts});
        }
    }
    m_waiting.insert(m_waiting.end(), folders.rbegin(), folders.rend());
    return found;
}

} // namespace melovane
