#pragma once

#include "intake/folder_look.h"
#include "intake/intake.h"

#include <QStringList>

#include <chrono>
#include <functional>
#include <memory>

namespace melovane {

class GlobalSettings;

/// The importer as its user meets it: which folders, start, how far, what came of it. Knows no
/// window.
class IntakeSession
{
public:
    IntakeSession(const IntakeParts& parts, GlobalSettings& settings, IntakeMode mode);

    [[nodiscard]] IntakeMode mode() const { return m_mode; }

    /// In which the user is spoken to.
    [[nodiscard]] const ConfigObjects& texts() const { return m_parts.texts; }

    /// Folders to import from; at first the one of the last import, if it is still there.
    [[nodiscard]] const QStringList& folders() const { return m_folders; }

    /// Empties the list first: folders that a caller names replace the last one.
    void setFolders(const QStringList& folders);

    /// False for a folder that is in the list already, or is none.
    bool addFolder(const QString& folder);
    void removeFolder(int index);

    /// Where the choice of a folder begins; empty when nothing is known.
    [[nodiscard]] QString suggestedFolder() const;

    /// Looks for about that long at what the chosen folders hold; false when all of it was seen.
    /// Begins anew when the folders were changed, and does nothing while an import runs.
    bool look(std::chrono::milliseconds budget);
    /// What was seen, by kind; empty without folders and before the first look.
    [[nodiscard]] QString lookText() const;

    [[nodiscard]] bool canStart() const;

    /// Begins the import and keeps the first folder for the next time.
    void start();

    [[nodiscard]] bool isRunning() const { return m_running; }

    /// Works for about that long; false when the import is over.
    bool step(std::chrono::milliseconds budget);
    void cancel();

    /// Called at the end of each import, cancelled and failed ones included; may be empty.
    std::function<void(const IntakeReport&)> whenOver;

    /// Per cent, or -1 while the number of files is not known.
    [[nodiscard]] int percent() const;
    /// "Datei 120 von 2000", or how many were found so far.
    [[nodiscard]] QString progressText() const;
    /// The file last looked at.
    [[nodiscard]] QString currentFile() const;

    /// Empty before the first start.
    [[nodiscard]] const IntakeReport& report() const;

    [[nodiscard]] QString title() const;
    /// What will happen, in one sentence.
    [[nodiscard]] QString hint() const;

private:
    void goOn(std::chrono::milliseconds budget);

    IntakeParts m_parts;
    GlobalSettings& m_settings;
    IntakeMode m_mode;
    QStringList m_folders;
    std::unique_ptr<FolderLook> m_look; ///< null when the folders are others than it was made for
    std::unique_ptr<Intake> m_intake;
    bool m_running = false;
};

} // namespace melovane
