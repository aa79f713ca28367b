#pragma once

#include <QHash>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace melovane {

class Files;
class MessageLoop;
class Timer;

/// A part of the window in which the user stands somewhere.
struct PlacePart
{
    QString name;                   ///< of its line in the file: keep
    std::function<QString()> place; ///< where he stands now
    /// Goes there. May be empty for one that the next start finds by itself once it is kept.
    std::function<void(const QString& place)> restore = {};
    /// The place is another one than before: keeps what the next start reads.
    std::function<void()> keep = {};
};

/// Where the user is in his work, kept while he works, so that a run that was killed, or ended by
/// the end of the desktop's session, is followed by one that begins at the same place.
///
/// A run that the user has ended himself leaves no place behind. Quiet: where the file cannot be
/// written or read, the next run begins as any other.
class WorkPlace
{
public:
    /// \param file  full path; its folder is there
    /// \param parts in the order in which they are restored; what they speak to outlives this
    WorkPlace(Files& files, MessageLoop& loop, QString file, std::vector<PlacePart> parts);
    ~WorkPlace();

    /// Notes every change from now on.
    /// \param goesBack goes first to where the run before this one has left the user, if it has;
    ///                 false when he has asked for something else
    void begin(bool goesBack);

    /// Notes where the user is now.
    void note();

    /// The run has come to its end.
    /// \param isLeft whether the user is to come back to where he is
    void end(bool isLeft);

private:
    void restore();

    Files& m_files;
    QString m_file;
    std::vector<PlacePart> m_parts;
    QHash<QString, QString> m_noted; ///< by the names of the parts
    std::unique_ptr<Timer> m_timer;
};

} // namespace melovane
