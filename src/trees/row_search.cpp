#include "trees/row_search.h"

#include "platform/db/db_error.h"
#include "platform/system/worker.h"

#include <atomic>
#include <utility>

namespace melovane {

namespace {

/// In the place of a text's number: nobody waits for anything.
constexpr int kGone = -1;

} // namespace

struct RowSearch::State
{
    std::atomic<int> wanted = 0; ///< number of the text that stands in the line
    bool isRead = false;         ///< of the worker, like the names
    RowNames names;
};

RowSearch::RowSearch(Worker& worker, WithLibrary withLibrary, size_t max)
    : m_worker(worker)
    , m_withLibrary(std::move(withLibrary))
    , m_max(max)
    , m_state(std::make_shared<State>())
{}

RowSearch::~RowSearch()
{
    m_state->wanted = kGone;
    m_worker.run([state = m_state] { state->names = RowNames(); }, [] {});
}

void RowSearch::forget()
{
    ++m_state->wanted;
}

void RowSearch::find(const QString& typed, const Answer& answer)
{
    const int number = ++m_state->wanted;
    const auto found = std::make_shared<std::vector<NamedRowPlace>>();
    m_worker.run(
        [state = m_state, typed, number, found, withLibrary = m_withLibrary, max = m_max] {
            if (state->wanted != number && state->isRead) {
                return;
            }
            try {
                if (!state->isRead) {
                    withLibrary([&state](Database& library) {
                        state->names.read(library, [&state] { return state->wanted == kGone; });
                    });
                    state->isRead = true;
                }
            } catch (const DbError&) {
                return; // The views say so of a library that cannot be read.
            }
            *found =
                state->names.find(typed, max, [&state, number] { return state->wanted != number; });
        },
        [state = m_state, number, found, answer] {
            if (state->wanted == number) {
                answer(*found);
            }
        });
}

} // namespace melovane
