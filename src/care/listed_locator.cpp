#include "care/listed_locator.h"

#include "platform/system/files.h"

namespace melovane {

namespace {

/// Names kept at a time: those of a large library, some hundred megabytes.
constexpr qsizetype kMaxNames = 1'500'000;

} // namespace

ListedLocator::ListedLocator(const Files& files, QString dataFolder, FilesIn filesIn)
    : FileLocator(files, std::move(dataFolder))
    , m_files(files)
    , m_filesIn(std::move(filesIn))
{}

const ListedLocator::Folder& ListedLocator::folder(const QString& path)
{
    const auto known = m_folders.constFind(path);
    if (known != m_folders.cend()) {
        return *known;
    }
    if (m_names > kMaxNames) {
        m_folders.clear();
        m_names = 0;
    }
    Folder& fresh = m_folders[path];
    fresh.names = m_filesIn(path);
    fresh.isThere = !fresh.names.isEmpty() || !m_files.resolve(path).isEmpty();
    m_names += fresh.names.size() + 1;
    return fresh;
}

bool ListedLocator::isThere(const QString& path, const QString& name)
{
    m_hasFound = false;
    QString folder = path;
    const QString file = ExistFile(folder, name);
    return m_hasFound || m_files.fileExists(file);
}

QString ListedLocator::find(const QString& file)
{
    const qsizetype cut = file.lastIndexOf(u'/') + 1;
    // Whether a backslash is a letter or a separator, the disk decides for each file.
    if (cut == 0 || cut == file.size() || file.contains(u'\\')) {
        return FileLocator::find(file);
    }
    const Folder& listed = folder(file.first(cut));
    if (listed.names.contains(file.sliced(cut))) {
        m_hasFound = true;
        return file;
    }
    // It may be there under another spelling, but not in a folder that has none.
    return listed.isThere ? FileLocator::find(file) : QString();
}

} // namespace melovane
