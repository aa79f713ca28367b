#pragma once

#include "care/recycle_run.h"

#include <QString>

#include <functional>
#include <memory>
#include <set>
#include <vector>

namespace melovane {

class ConfigObjects;
class Database;
class DBEngine;
class DbError;
class GlobalSettings;
class LiveWait;
class MessageLoop;

/// What the user sees of the recycle folders.
struct RecyclerView
{
    struct Row
    {
        QString title;
        QString file; ///< where it goes
        QString moment;
        QString note; ///< why it is not back, or what of it is missing

        bool operator==(const Row&) const = default;
    };

    std::vector<Row> rows;
    QString step; ///< what is being done, or how it ended
    int percent = 0;
    bool isRunning = false;
};

/// The dialog of the recycle folders.
class RecyclerForm
{
public:
    virtual ~RecyclerForm() = default;

    virtual void show(const RecyclerView& view) = 0;
    virtual void close() = 0;
};

struct RecyclerParts
{
    DBEngine& engine;
    const GlobalSettings& settings;
    const ConfigObjects& texts;
    MessageLoop& loop;
    LiveWait& wait;
    RecycleTools tools;
    std::function<void()> changed; ///< rows of the library are others now
    std::function<void()> rebuildTrees;
    std::function<QString(const DbError&)> failed; ///< logs it; what the user reads
};

/// Puts files of the recycle folders back, as ReMoveFiles.sh does, and their rows with them: see
/// bringBack() for what comes back.
///
/// A file that the script has put back already is offered as long as its row is missing. A program
/// that ends at any moment leaves each file in one of its two places, and it is offered again.
class Recycler
{
public:
    Recycler(RecyclerParts parts, RecyclerForm& form);

    /// Reads the recycle folders and shows what can come back. Quiet, as all others here.
    void Show();

    /// \param rows indexes in the view; those that are none are left out
    void putBack(const std::set<int>& rows);
    void putBackAll();

    /// Closes the dialog, or ends what runs behind the present file.
    void cancel();

private:
    class Run;

    void read();
    [[nodiscard]] std::vector<RecycledFile> readFolders();
    void moveAndWrite(const std::shared_ptr<Run>& run);
    [[nodiscard]] bool goesOn(Run& run);
    void writeRows(const std::vector<RecycledFile>& files);
    void showEnd(Run& run, const QString& fault);
    [[nodiscard]] std::unique_ptr<Database> open() const;

    RecyclerParts m_parts;
    RecyclerForm& m_form;
    RecyclerView m_view;
    std::vector<RecycledFile> m_files; ///< of the rows
    int m_tracks = 0;                  ///< whose row the present run has brought back
    bool m_isCancelled = false;
};

} // namespace melovane
