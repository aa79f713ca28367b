#include "care/missing_list.h"

#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"
#include "platform/system/text_file.h"
#include "store/change_dir.h"
#include "store/file_locator.h"
#include "store/track_fields.h"

#include <algorithm>

namespace melovane::missinglist {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Folders in one statement.
constexpr qsizetype kFoldersAtOnce = 200;

std::vector<MissingTrack> read(Database& database, const QString& condition)
{
    using F = TrackField;
    std::vector<MissingTrack> tracks;
    const auto rows = database.OpenRecordset(
        u"select %1 from db_all where drivetyp<>4 and %2 order by Path, DName"_s.arg(
            columnList({F::FID, F::Titel, F::Path, F::DName, F::DLen, F::DTimeMsec, F::DEL}),
            condition));
    for (; !rows->Eof(); rows->MoveNext()) {
        tracks.push_back({rows->value(0).toText(), rows->value(1).toText(), rows->value(2).toText(),
                          rows->value(3).toText(), rows->value(4).toLong(), rows->value(5).toLong(),
                          rows->value(6).toLong()});
    }
    return tracks;
}

} // namespace

QStringList folders(Database& database)
{
    QStringList result;
    const auto rows =
        database.OpenRecordset(u"select Path from db_all where drivetyp<>4 group by Path"_s);
    for (; !rows->Eof(); rows->MoveNext()) {
        result.append(rows->value(0).toText());
    }
    return result;
}

std::vector<MissingTrack> marked(Database& database)
{
    return read(database, u"(del=2 or del=3)"_s);
}

std::vector<MissingTrack> rowsOf(Database& database, const QStringList& folders)
{
    std::vector<MissingTrack> tracks;
    for (qsizetype at = 0; at < folders.size(); at += kFoldersAtOnce) {
        QStringList texts;
        for (const QString& folder : folders.mid(at, kFoldersAtOnce)) {
            texts.append(sql::text(folder));
        }
        std::vector<MissingTrack> some = read(database, u"Path in ("_s + texts.join(u',') + u')');
        std::move(some.begin(), some.end(), std::back_inserter(tracks));
    }
    return tracks;
}

QStringList gone(const Files& files, const QString& dataFolder, const QStringList& folders)
{
    std::vector<changedir::Record> mappings;
    try {
        mappings = changedir::parse(
            textfile::decode(files.read(path::join(dataFolder, changedir::kFileName))));
    } catch (const IoError&) {
        // No file: no mappings.
    }
    const auto isThere = [&](const QString& folder) {
        return files.folderExists(folder) || !files.resolve(folder).isEmpty();
    };
    QStringList result;
    for (const QString& folder : folders) {
        const bool isMapped =
            std::any_of(mappings.begin(), mappings.end(), [&](const changedir::Record& mapping) {
                const auto other = changedir::mapped(mapping, folder);
                return other && isThere(*other);
            });
        if (!folder.isEmpty() && !isMapped && !isThere(folder)) {
            result.append(folder);
        }
    }
    return result;
}

std::vector<MissingTrack> stillMissing(const Files& files,
                                       const QString& dataFolder,
                                       std::vector<MissingTrack> tracks,
                                       const QStringList& gone,
                                       const std::atomic<bool>& isCancelled)
{
    const QSet<QString> known(gone.cbegin(), gone.cend());
    FileLocator locator(files, dataFolder);
    std::erase_if(tracks, [&](const MissingTrack& track) {
        return !isCancelled && !known.contains(track.folder) &&
               !locator.placeOf(track.place()).isEmpty();
    });
    return tracks;
}

} // namespace melovane::missinglist
