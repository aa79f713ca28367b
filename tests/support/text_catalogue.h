#pragma once

#include "config/config_objects.h"
#include "config/melovane_configuration.h"
#include "support/suite_folders.h"

#include <QDir>

namespace melovane::test {

/// Makes a folder the current one as long as it lives.
class CurrentFolder
{
public:
    explicit CurrentFolder(const QString& folder)
        : m_former(QDir::currentPath())
    {
        QDir::setCurrent(folder);
    }

    ~CurrentFolder() { QDir::setCurrent(m_former); }

    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

private:
    QString m_former;
};

/// An installation with a catalogue over it, empty at first.
struct TextCatalogue
{
    /// Fills the catalogue as a program does that was started in the configuration path.
    void fill()
    {
        const CurrentFolder here(folders.programFolder());
        MelovaneConfiguration::fill(texts);
    }

    SuiteFolders folders;
    ConfigObjects texts{folders.paths(), folders.profile(), folders.files()};
};

} // namespace melovane::test
