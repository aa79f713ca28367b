#pragma once

#include "playlistfiles/export_log.h"
#include "playlistfiles/export_run.h"
#include "playlistfiles/template_path.h"

#include <QStringList>

#include <optional>

namespace melovane {

class ConfigObjects;
class frmKopieFile;
class Warnings;

/// The window of an export, as its logic sees it.
class KopieForm
{
public:
    virtual ~KopieForm() = default;

    /// Makes the window; `logic` hears what the user does in it.
    virtual void open(frmKopieFile& logic) = 0;
    /// Shows the window and returns when it was closed; it is gone then.
    virtual void run() = 0;
    virtual void close() = 0;

    virtual void setSubject(const QString& sentence) = 0;
    virtual void setTemplates(const QStringList& offered) = 0;

    virtual void setFolder(const QString& folder) = 0;
    /// What there is to say about the folder.
    virtual void setFolderNote(const QString& note, bool isGood) = 0;
    virtual void setTemplate(const QString& text) = 0;
    virtual void setPreview(const QString& text) = 0;
    /// Which options are chosen, nothing where the template is none of theirs.
    virtual void setOptions(std::optional<int> file, std::optional<int> folders) = 0;

    /// While an export runs, only its end can be asked for.
    virtual void setRunning(bool running) = 0;
    virtual void setProgress(qint64 position, qint64 count) = 0;
    virtual void setLog(const QString& text) = 0;
    virtual void appendLog(const QString& line) = 0;
    virtual void setOutcome(const QString& text, bool isGood) = 0;

    /// Nothing when the user did not choose.
    [[nodiscard]] virtual std::optional<QString> chooseFolder(const QString& present) = 0;
};

/// A failure as the log of list files keeps it.
struct ExportFault
{
    int code = 0; ///< number of importerror
    QString what; ///< which file, and why
};

/// What the export window is made over; all of it outlives the window.
struct KopieParts
{
    ExportParts exports;
    GlobalSettings& settings;
    const ConfigObjects& texts;
    Warnings& warnings;
    KopieForm& form;
    /// Writes failures to the log of list files, one line each. Returns its path.
    std::function<QString(const std::vector<ExportFault>& faults)> logFailures;
    /// Told after each row, see SavePlaylistFiles::ProgressSave; a count of 0 says that the export
    /// is over.
    SavePlaylistFiles::ProgressSave progressSave = {};
};

/// Lets the user export a list with its files: `frmKopieFile`. Folder, template and options are
/// those of the last time.
class frmKopieFile
{
public:
    explicit frmKopieFile(KopieParts parts);

    void SetPNID(Pnid list) { m_list = list; }

    /// Returns when the window was closed; does nothing while it is open. \throws DbError when the
    /// list cannot be read
    void Show();

    // -- What the user does --

    void folderTyped(const QString& folder);
    void templateTyped(const QString& text);
    /// A click in `List1`.
    void templateChosen(int index);
    /// `opExpFile`: 0 name of the file, 1 title - artist, 2 artist - title.
    void fileOptionChosen(int option);
    /// `opExpDir`: a folder for each 0 genre, 1 album, 2 genre and album, 3 none.
    void folderOptionChosen(int option);
    void cmdDir();
    /// Runs the export, or opens the choice of the folder when there is none.
    void cmdStart();
    /// Asks a running export to stop, else closes the window.
    void cmdAbbruch();

    /// False while an export runs: it is stopped, and the window closes by itself then.
    [[nodiscard]] bool mayClose();

private:
    void setTemplate(const QString& text);
    void composeTemplate();
    void showOptions();
    void noteFolder();
    void tellProgress(const QString& name, qint64 position, qint64 count);
    void storeSettings();
    void runExport();
    void log(const QString& line);
    void logSection(const QString& line);
    void stop();
    void tell(const ExportResult& result);
    void tellFailures(const ExportResult& result);
    /// Returns the path of the log, which is never cut.
    [[nodiscard]] QString logAll(const ExportResult& result) const;
    [[nodiscard]] QString outcomeOf(const ExportResult& result) const;
    [[nodiscard]] QString reasonOf(const ExportFailure& failure) const;

    KopieParts m_parts;
    SavePlaylistFiles m_export;
    ExportLog m_log;
    Pnid m_list{};
    QString m_folder;
    QString m_template;
    int m_fileOption = 0;
    int m_folderOption = 0;
    bool m_open = false;
    bool m_running = false;
    bool m_stopping = false;
    bool m_closeAfterwards = false;
};

} // namespace melovane
