#pragma once

#include <QStringList>

#include <functional>
#include <memory>

namespace melovane {

class MessageLoop;
class Timer;

/// Files that the user opens with the console from outside: from a file manager, or by its call.
/// Lists are imported, tracks and folders enter the library, which then shows them.
///
/// A second copy of the console hands its files to the first one as texts, a message each.
class OpenedFiles
{
public:
    struct Parts
    {
        MessageLoop& loop;
        std::function<bool(const QString& place)> isList;
        std::function<void(const QStringList& files)> importLists;
        /// The tracks of files and folders, new ones entered; may give the window its turns.
        std::function<QStringList(const QStringList& places)> tracksOf;
        /// Shows the tracks that meet a condition on `db_all`.
        std::function<void(const QString& condition)> show;
    };

    explicit OpenedFiles(Parts parts);
    ~OpenedFiles();

    /// Opens files once no other work is going on: messages come in the middle of anything, and an
    /// import gives the window its turns.
    /// \param places absolute; others are left out
    void open(const QStringList& places);

    /// The places as texts that a message carries, each short enough for one.
    [[nodiscard]] static QStringList texts(const QStringList& places);

    /// The places of one of these texts. None of a text that is no such.
    [[nodiscard]] static QStringList fromText(const QString& text);

private:
    void take();

    Parts m_parts;
    std::unique_ptr<Timer> m_timer;
    QStringList m_waiting;
};

} // namespace melovane
