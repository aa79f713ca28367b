#include "tagbench/library_visit.h"

#include "platform/db/database.h"

namespace melovane {

LibraryVisit::LibraryVisit(DBEngine& engine, const QString& library)
    : m_engine(engine)
    , m_library(library)
    , m_database(engine.OpenDatabase(library))
{}

LibraryVisit::~LibraryVisit()
{
    m_database.reset();
    // Release() alone would leave its side files open.
    m_engine.GiveAway(m_library);
    m_engine.TakeBack(m_library);
}

} // namespace melovane
