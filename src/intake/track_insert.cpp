#include "intake/track_insert.h"

#include "platform/db/db_error.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kTable = u"db_all"_s;

} // namespace

TrackInsert::TrackInsert(Database& database, LibraryPlaces& places, const Clock& clock)
    : m_places(places)
    , m_fids(clock)
    , m_insert(database, kTable, writtenColumns(database, kTable, ImportedTrack::columns()))
{}

TrackInsert::Result TrackInsert::add(ImportedTrack& track, TakenFid taken)
{
    if (auto row = m_places.find(track.Path, track.DName)) {
        return {Result::Kind::FileIsKnown, std::move(*row)};
    }
    const QString candidate = std::exchange(track.FID, m_fids.make(track.FID));
    const bool isOfTheFile = track.FID == candidate;
    auto holder = insert(track);
    if (holder && isOfTheFile && taken == TakenFid::Tell) {
        return {Result::Kind::FidIsTaken, std::move(*holder)};
    }
    while (holder) {
        m_fids.wasTaken();
        track.FID = m_fids.make();
        holder = insert(track);
    }
    m_places.added(track.Path);
    return {};
}

std::optional<StoredPlace> TrackInsert::insert(const ImportedTrack& track)
{
    try {
        m_insert.run(track.values());
        return {};
    } catch (const DbError& error) {
        if (error.number() == dberror::kDuplicateKey) {
            if (auto holder = m_places.placeOf(track.FID)) {
                return holder;
            }
            // Another column refuses the row, and would refuse it under any identifier.
        }
        throw;
    }
}

} // namespace melovane
