#include "care/merge_journal.h"

#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "store/file_locator.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Behind the name of the library; a number follows where there is one already: keep.
const QString kEnding = u".merges"_s;

/// More than any merge leaves.
constexpr qint64 kLargestJournal = qint64{1024} * 1024 * 1024;

// The names of the values are kept: a later program ends what this one has left.
QByteArray lineOf(const MergedFile& file)
{
    const QJsonObject line{{u"fid"_s, file.track.fid},   {u"title"_s, file.track.title},
                           {u"path"_s, file.track.path}, {u"name"_s, file.track.name},
                           {u"rows"_s, file.track.rows}, {u"place"_s, file.place},
                           {u"size"_s, file.size}};
    return QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n';
}

std::optional<MergedFile> fileOf(const QByteArray& line)
{
    const QJsonObject values = QJsonDocument::fromJson(line).object();
    MergedFile file{.track = {.fid = values[u"fid"_s].toString(),
                              .title = values[u"title"_s].toString(),
                              .path = values[u"path"_s].toString(),
                              .name = values[u"name"_s].toString(),
                              .rows = values[u"rows"_s].toString()},
                    .place = values[u"place"_s].toString(),
                    .size = values[u"size"_s].toInteger()};
    return file.track.fid.isEmpty() || file.place.isEmpty() ? std::nullopt : std::optional(file);
}

} // namespace

MergeJournal::MergeJournal(Files& files, const QString& library)
    : m_files(files)
    , m_library(library)
{}

QStringList MergeJournal::left(const Files& files, const QString& library)
{
    const QString folder = path::parent(library);
    const QString beginning = path::fileName(library) + kEnding;
    QStringList result;
    for (const QString& name : files.names(folder)) {
        if (name.startsWith(beginning)) {
            result.append(path::join(folder, name));
        }
    }
    return result;
}

QString MergeJournal::freeName() const
{
    QString name = m_library + kEnding;
    for (int number = 2; m_files.facts(name); ++number) {
        name = m_library + kEnding + QString::number(number);
    }
    return name;
}

void MergeJournal::begin(const std::vector<RemovedTrack>& tracks, FileLocator& locator)
{
    QByteArray lines;
    for (const RemovedTrack& track : tracks) {
        const QString place = locator.placeOf(track.path + track.name);
        if (const auto facts = m_files.facts(place)) {
            lines += lineOf({track, place, facts->size});
        }
    }
    if (lines.isEmpty()) {
        return;
    }
    const QString name = freeName();
    m_files.writeWhole(name, lines);
    m_current = name;
}

void MergeJournal::end()
{
    if (!m_current.isEmpty()) {
        m_files.remove(m_current);
        m_current.clear();
    }
}

std::optional<std::vector<MergedFile>> MergeJournal::read(const Files& files,
                                                          const QString& journal)
{
    std::vector<MergedFile> result;
    try {
        for (const QByteArray& line : files.read(journal, kLargestJournal).split('\n')) {
            if (line.isEmpty()) {
                continue;
            }
            std::optional<MergedFile> file = fileOf(line);
            if (!file) {
                return std::nullopt;
            }
            result.push_back(std::move(*file));
        }
    } catch (const IoError&) {
        return std::nullopt;
    }
    return result;
}

} // namespace melovane
