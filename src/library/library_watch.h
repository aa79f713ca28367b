#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>

namespace melovane {

class GridRows;
class MessageLoop;
class Timer;

/// Notices that other programs have changed the library, and knows how large it is. The rows
/// outlive it.
class LibraryWatch
{
public:
    /// \param changed called when something may be different now
    /// \param filled  called when a library without tracks has got its first ones
    LibraryWatch(GridRows& rows,
                 MessageLoop& loop,
                 std::function<void()> changed,
                 std::function<void()> filled);
    ~LibraryWatch();

    /// From here to stop() it looks twice a second.
    void start();
    void stop();

    /// What stands in the file now is known; counts it. \throws DbError
    void begin();

    /// Counts the tracks. \throws DbError
    void count();

    /// Tracks in the library, whatever is shown.
    [[nodiscard]] qint64 librarySize() const { return m_librarySize; }

    /// One look: shows the values of now; an empty grid is read anew. Quiet: a file that somebody
    /// holds is looked at again soon.
    void look();

private:
    GridRows& m_rows;
    std::function<void()> m_changed;
    std::function<void()> m_filled;
    qint64 m_librarySize = 0;
    qint64 m_dataVersion = 0;
    std::unique_ptr<Timer> m_changeTimer;
};

} // namespace melovane
