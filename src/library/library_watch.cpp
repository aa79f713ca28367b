#include "library/library_watch.h"

#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/system/timers.h"
#include "views/grid_rows.h"

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// How often the database is asked for changes of other programs.
constexpr std::chrono::milliseconds kLookInterval{500};

/// Before the first count.
constexpr qint64 kUnknown = -1;

} // namespace

LibraryWatch::LibraryWatch(GridRows& rows,
                           MessageLoop& loop,
                           std::function<void()> changed,
                           std::function<void()> filled)
    : m_rows(rows)
    , m_changed(std::move(changed))
    , m_filled(std::move(filled))
    , m_changeTimer(loop.makeTimer(kLookInterval, [this] { look(); }))
{}

LibraryWatch::~LibraryWatch() = default;

void LibraryWatch::start()
{
    m_changeTimer->start();
}

void LibraryWatch::stop()
{
    m_changeTimer->stop();
}

void LibraryWatch::begin()
{
    m_dataVersion = m_rows.database()->DataVersion();
    m_librarySize = kUnknown;
    count();
}

void LibraryWatch::count()
{
    const auto set = m_rows.database()->OpenRecordset(u"select count(*) as anz from db_all"_s);
    const qint64 before =
        std::exchange(m_librarySize, set->Eof() ? 0 : set->value(u"anz").toLong());
    if (before == 0 && m_librarySize > 0) {
        m_filled();
    }
}

void LibraryWatch::look()
{
    if (!m_rows.database() || !m_rows.isConnected()) {
        return;
    }
    try {
        const qint64 version = m_rows.database()->DataVersion();
        if (version == m_dataVersion) {
            return;
        }
        m_dataVersion = version;
        count();
        if (m_rows.count() == 0) {
            m_rows.read();
        } else {
            m_rows.data().refreshCells();
        }
    } catch (const DbError&) {
        // Somebody holds the file; the next look comes soon.
    }
    m_changed();
}

} // namespace melovane
