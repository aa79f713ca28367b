#include "shell/skin_files.h"

#include "config/paths.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "platform/system/text_file.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A theme file is a page of text.
constexpr qint64 kLargestSkin = qint64{256} * 1024;

} // namespace

SkinFiles::SkinFiles(Mod_API& paths, const Files& files)
    : m_paths(paths)
    , m_files(files)
{}

QString SkinFiles::file(const QString& name) const
{
    // A full path as name names no file here: themes lie in this folder alone.
    const QString folder = path::join(m_paths.GetConfigPath(), u"skin"_s);
    return m_files.resolve(path::join(folder, name));
}

QStringList SkinFiles::names() const
{
    QStringList result;
    for (const QString& name : m_files.names(file(QString()))) {
        if (path::extension(name).compare("skn"_L1, Qt::CaseInsensitive) == 0) {
            result.append(name);
        }
    }
    return result;
}

QString SkinFiles::text(const QString& name) const
{
    const QString found = name.isEmpty() ? QString() : file(name);
    if (found.isEmpty() || !m_files.fileExists(found)) {
        return {};
    }
    try {
        return textfile::decode(m_files.read(found, kLargestSkin));
    } catch (const IoError&) {
        return {};
    }
}

} // namespace melovane
