#include "views/layout_files.h"

#include "config/paths.h"
#include "platform/system/files.h"
#include "platform/system/io_error.h"
#include "platform/system/path_text.h"
#include "views/grid_layout.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kFolder = u"Layout"_s;
const QString kModel = u"default.grx"_s;

/// Version of the layouts of this release, and the mark for one to be put back: keep.
const QString kVersion = u"3.4"_s;
const QString kRepair = u"repair"_s;

/// Behind the name of a layout that was put back.
const QString kFormer = u".bak"_s;

/// A layout is a few lines; a larger file is none.
constexpr qint64 kMaxBytes = qint64{1024} * 1024;

} // namespace

LayoutFiles::LayoutFiles(Mod_API& paths, Files& files)
    : m_paths(paths)
    , m_files(files)
{}

QString LayoutFiles::fileOf(const QString& name) const
{
    return path::join(path::join(m_paths.GetConfigPath(), kFolder), name);
}

std::vector<GridColumn> LayoutFiles::read(const QString& name) const
{
    const QString file = fileOf(name);
    if (!m_files.fileExists(file)) {
        return {};
    }
    try {
        return readLayout(m_files.read(file, kMaxBytes));
    } catch (const IoError&) {
        return {};
    }
}

bool LayoutFiles::write(const QString& name, const std::vector<GridColumn>& columns)
{
    try {
        m_files.makeFolders(path::join(m_paths.GetConfigPath(), kFolder));
        m_files.writeWhole(fileOf(name), layoutText(columns));
        return true;
    } catch (const IoError&) {
        return false;
    }
}

void LayoutFiles::load(const QString& name, GridControl& grid)
{
    const std::vector<GridColumn> columns = read(name);
    if (!columns.empty()) {
        grid.arrange(columns);
    }
    if (m_paths.GetUserRegistryValue(name, QString()) != kVersion) {
        m_paths.SetUserRegistryValue(name, kVersion);
    }
}

void LayoutFiles::save(const QString& name, const GridControl& grid)
{
    write(name, grid.columns());
}

void LayoutFiles::markForRepair()
{
    for (const QStringView name : {kLibraryLayout, kPlaylistLayout}) {
        m_paths.SetUserRegistryValue(name.toString(), kRepair);
    }
}

void LayoutFiles::repair()
{
    for (const QStringView view : {kLibraryLayout, kPlaylistLayout}) {
        const QString name = view.toString();
        const bool hasModel = name == kLibraryLayout;
        const bool isMarked = m_paths.GetUserRegistryValue(name, kVersion) == kRepair;
        if (!isMarked || (hasModel && !m_files.fileExists(fileOf(kModel)))) {
            continue;
        }
        try {
            if (m_files.fileExists(fileOf(name))) {
                m_files.copy(fileOf(name), fileOf(name) + kFormer);
            }
            if (hasModel) {
                m_files.copy(fileOf(kModel), fileOf(name));
            } else {
                m_files.remove(fileOf(name));
            }
        } catch (const IoError&) {
            // The layout stays as it is; the mark too, so the next start tries again.
        }
    }
}

} // namespace melovane
