#include "store/file_locator.h"

#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "platform/system/text_file.h"
#include "platform/system/trim_blanks.h"

namespace melovane {

namespace {

/// A file written by hand is smaller; a larger one is something else.
constexpr qint64 kLargestMappingFile = qint64{1024} * 1024;

QString readText(const Files& files, const QString& file)
{
    try {
        return textfile::decode(files.read(file, kLargestMappingFile));
    } catch (const IoError&) {
        return {};
    }
}

} // namespace

FileLocator::FileLocator(const Files& files, QString dataFolder)
    : m_files(files)
    , m_dataFolder(std::move(dataFolder))
{}

QString FileLocator::find(const QString& file)
{
    if (m_files.fileExists(file)) {
        return file;
    }
    const QString spelled = m_files.resolve(file);
    return !spelled.isEmpty() && m_files.fileExists(spelled) ? spelled : QString();
}

void FileLocator::loadMappings()
{
    m_mappings = {{changedir::kDummy.toString(), {}, {}}};
    const QString text = readText(m_files, path::join(m_dataFolder, changedir::kFileName));
    for (changedir::Record& record : changedir::parse(text)) {
        const QString folder = m_files.resolve(record.newFolder);
        if (!folder.isEmpty() && m_files.folderExists(folder)) {
            record.newFolder = folder;
            m_mappings.push_back(std::move(record));
        }
    }
}

QString FileLocator::ExistFile(QString& path, const QString& name)
{
    const QString trimmed = trimBlanks(name);
    if (const QString stored = find(path::join(path, trimmed)); !stored.isEmpty()) {
        return stored;
    }
    if (const QString starred = path + u'*' + trimmed; m_files.fileExists(starred)) {
        return starred;
    }
    if (m_mappings.empty()) {
        loadMappings();
    }
    for (const changedir::Record& record : m_mappings) {
        const auto folder =
            record.kind == changedir::kDir ? changedir::mapped(record, path) : std::nullopt;
        if (!folder) {
            continue;
        }
        const QString wanted = path::join(*folder, trimmed);
        if (const QString file = find(wanted); !file.isEmpty()) {
            path = file == wanted ? *folder : path::withSeparator(path::parent(file));
            return file;
        }
    }
    return path + trimmed;
}

QString FileLocator::placeOf(const QString& file)
{
    QString folder = path::withSeparator(path::parent(file));
    const QString place = ExistFile(folder, path::fileName(file));
    return m_files.fileExists(place) ? place : QString();
}

} // namespace melovane
