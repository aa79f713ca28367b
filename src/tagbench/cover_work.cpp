#include "tagbench/cover_work.h"

#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "store/track_writing.h"
#include "tagbench/bench_fields.h"
#include "trackedit/cover_files.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

CoverWork::CoverWork(const CoverSources& sources, const QHash<QString, QByteArray>& pictures)
    : m_sources(sources)
    , m_pictures(pictures)
    , m_kept(sources.files, sources.dataFolder, sources.reader)
{}

CoverWork::~CoverWork()
{
    for (const QString& picture : m_put) {
        m_sources.files.remove(picture);
    }
    if (m_isSettled) {
        m_kept.notTakenOff(m_chosen.value(QString()));
    }
}

void CoverWork::change(Database& database,
                       const QString& fid,
                       const QString& image,
                       const QString& now,
                       const QString& file)
{
    put(now);
    const QString former = keepFormerCover(m_sources, m_kept, fid, image, file);
    if (!former.isEmpty() && former != image) {
        const std::vector<ColumnValue> values{{columnOf(kBenchCover).toString(), former}};
        writeTrack(database, fid, values, TagOrder::None);
    }
    m_chosen[now].append(fid);
    m_former.append(image);
}

void CoverWork::put(const QString& image)
{
    const QString place = coverPlace(m_sources.dataFolder, image);
    const auto picture = m_pictures.constFind(image);
    if (m_chosen.contains(image) || place.isEmpty() || picture == m_pictures.cend()) {
        return;
    }
    m_sources.files.makeFolders(path::parent(place));
    const bool isNew = !m_sources.files.facts(place);
    m_sources.files.writeWhole(place, *picture);
    if (isNew) {
        m_put.append(place);
    }
}

void CoverWork::settle()
{
    m_isSettled = true;
    for (auto chosen = m_chosen.cbegin(); chosen != m_chosen.cend(); ++chosen) {
        m_kept.chosen(chosen.value(), chosen.key());
    }
}

void CoverWork::keep(Database& database)
{
    m_put.clear();
    m_isSettled = false;
    m_former.removeDuplicates();
    m_former.removeAll(QString());
    for (const QString& image : std::as_const(m_former)) {
        const auto left =
            database.OpenRecordset(u"select FID from db_all where image="_s + sql::text(image) +
                                   u" or image="_s + sql::text(image + u".jpg"_s));
        if (left->Eof()) {
            setCoverAside(m_sources.files, m_sources.dataFolder, image);
        }
    }
}

} // namespace melovane
