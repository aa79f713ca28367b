#pragma once

#include <QString>
#include <QStringList>

namespace melovane {

class Files;
class Mod_API;

/// The theme files of an installation, in the folder "skin" of the configuration path.
class SkinFiles
{
public:
    SkinFiles(Mod_API& paths, const Files& files);

    /// File names of all themes, sorted.
    [[nodiscard]] QStringList names() const;

    /// The text of a theme. Empty for an empty name, a full path, and a file that is missing, too
    /// large or not readable.
    [[nodiscard]] QString text(const QString& name) const;

private:
    [[nodiscard]] QString file(const QString& name) const;

    Mod_API& m_paths;
    const Files& m_files;
};

} // namespace melovane
