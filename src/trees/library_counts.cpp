#include "trees/library_counts.h"

#include "platform/db/database.h"

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Columns of the library that are counted for a tree table, apart from folders and days.
const QList<QStringList>& countedColumns()
{
    static const QList<QStringList> columns{{u"Genre"_s},     {u"Genre"_s, u"Interpret"_s},
                                            {u"Album"_s},     {u"Interpret"_s},
                                            {u"Situation"_s}, {u"Stimmung"_s},
                                            {u"Tempo"_s},     {u"Kategorie"_s},
                                            {u"User1"_s},     {u"User2"_s},
                                            {u"User3"_s},     {u"User4"_s},
                                            {u"User5"_s}};
    return columns;
}

} // namespace

LibraryCounts::LibraryCounts(Database& library)
    : m_library(library)
    , m_version(library.fileVersion())
{
    for (const QStringList& columns : countedColumns()) {
        m_counters.emplace_back(columns);
    }
    for (const auto field : kSelectionFields) {
        m_counters.emplace_back(QStringList{field}, ValueCounter::Tracks::All);
    }
    std::vector<TrackCounter*> counters{&m_days, &m_folders};
    for (ValueCounter& counter : m_counters) {
        counters.push_back(&counter);
    }
    countTracks(library, counters);
    order();
}

LibraryCounts::~LibraryCounts() = default;

void LibraryCounts::order()
{
    std::vector<std::packaged_task<Names()>> tasks;
    for (const ValueCounter& counter : m_counters) {
        auto& task = tasks.emplace_back([&counter] { return counter.groups(); });
        const bool isTree = tasks.size() <= std::size_t(countedColumns().size());
        (isTree ? m_names : m_typed).push_back(task.get_future().share());
    }
    m_ordering = std::jthread([tasks = std::move(tasks)](const std::stop_token& stop) mutable {
        for (auto task = tasks.begin(); task != tasks.end() && !stop.stop_requested(); ++task) {
            (*task)();
        }
    });
}

bool LibraryCounts::areCurrent() const
{
    return m_library.fileVersion() == m_version;
}

const LibraryCounts::Names* LibraryCounts::names(const QStringList& columns) const
{
    const qsizetype known = countedColumns().indexOf(columns);
    return known < 0 ? nullptr : &m_names[std::size_t(known)].get();
}

} // namespace melovane
