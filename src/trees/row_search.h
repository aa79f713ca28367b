#pragma once

#include "trees/row_names.h"

#include <functional>
#include <memory>

namespace melovane {

class Database;
class Worker;

/// Finds rows of the trees by what is typed, beside the window: the names are read at the first
/// text and searched at each one, all on a worker. No key waits for it.
class RowSearch
{
public:
    /// Opens the library on the worker and shows it to the given work, which may throw DbError.
    using WithLibrary = std::function<void(const std::function<void(Database&)>& work)>;
    using Answer = std::function<void(const std::vector<NamedRowPlace>& found)>;

    /// \param worker outlives this
    /// \param max    rows of an answer
    RowSearch(Worker& worker, WithLibrary withLibrary, size_t max);

    /// Drops what is under way; the names are given back on the worker, which takes its time for a
    /// million.
    ~RowSearch();
    RowSearch(const RowSearch&) = delete;
    RowSearch& operator=(const RowSearch&) = delete;

    /// Asks for the rows that fit best. The answer comes by the message loop, or never: another
    /// text was asked for, the library cannot be read, or this is gone.
    void find(const QString& typed, const Answer& answer);

    /// What was asked for is not wanted any more.
    void forget();

private:
    struct State;

    Worker& m_worker;
    WithLibrary m_withLibrary;
    size_t m_max;
    std::shared_ptr<State> m_state;
};

} // namespace melovane
