#pragma once

#include "bus/mlv_message_bus.h"
#include "playlists/playlist_ids.h"

#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace melovane {

class ConfigObjects;
class FileChooser;
class Files;
class GlobalSettings;
class MlvM3U;
class ProgressWindow;
class Warnings;

/// What the user's commands about list files speak to; outlives them.
struct M3uCommandParts
{
    MlvM3U& m3u; ///< its events are taken by the commands
    GlobalSettings& settings;
    const ConfigObjects& texts;
    const Files& files;
    Warnings& warnings;
    FileChooser& chooser;
    MLVMessageBus& bus;
    std::function<std::unique_ptr<ProgressWindow>(const QString& title)> openProgress;
    /// The group that imported lists go into; asked once for an import.
    std::function<GroupId()> targetGroup;
    /// Shows a file with the desktop's program for it; false when there is none.
    std::function<bool(const QString& file)> openFile;
};

/// What a user does with list files: imports some as new lists, drops some on a list, saves a list.
///
/// Results are told in the status line, failures in a question that offers the log. While one
/// command is at work, others do nothing.
class M3uCommands
{
public:
    explicit M3uCommands(M3uCommandParts parts);

    /// Asks for files, then makes a list of each; the first of them is opened.
    void importLists();
    void importLists(const QStringList& files);

    /// Puts the entries of list files into a list, in the order of the files.
    /// \param target where, see MlvM3U::Insert; nothing for the end
    /// \param aktion play action of the new entries
    /// True when there are new ones.
    bool insertLists(const QStringList& files, Pnid list, std::optional<Sid> target, int aktion);

    /// Asks for a file and writes the list to it.
    /// \param list Pnid{0} when there is none: that is said
    void saveList(Pnid list);

private:
    /// One command at work: its window, its failures.
    struct Work;

    void watch(Work& work);
    [[nodiscard]] bool load(Work& work, const QStringList& files);
    void tellEntered(const Work& work);
    void askForLog(const Work& work);
    [[nodiscard]] QString rememberedFolder(const QString& key) const;
    void remember(const QString& key, const QString& file);
    [[nodiscard]] QString askTarget(Pnid list);
    [[nodiscard]] QString counted(const QString& key, int count) const;
    void tell(const QString& text);
    void tellLeftOut();

    M3uCommandParts m_parts;
    BusSender m_bus;
    QString m_lastFailure; ///< words of the last failure of the system
    bool m_busy = false;
};

} // namespace melovane
