#include "trackedit/unwritten_tags.h"

#include "config/config_objects.h"
#include "config/refusals.h"
#include "platform/db/database.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/system/files.h"
#include "platform/system/path_text.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Tracks that are kept: who has more of them has a reason that concerns all.
constexpr std::size_t kMaxTracks = 2000;

/// Bytes; a longer file is none that was written here.
constexpr qint64 kLargestFile = qint64{4} * 1024 * 1024;

/// Words of the file: keep.
struct FaultWord
{
    TagWriteFault fault;
    QStringView word;
    QStringView text; ///< key of what the user reads
};

constexpr std::array kWords = std::to_array<FaultWord>({
    {TagWriteFault::NotFound, u"notfound", u"writetags.notfound"},
    {TagWriteFault::ReadOnly, u"readonly", u"writetags.readonly"},
    {TagWriteFault::NoAudio, u"noaudio", u"writetags.noaudio"},
    {TagWriteFault::TagSize, u"tagsize", u"writetags.tagsize"},
    {TagWriteFault::Full, u"full", u"writetags.full"},
    {TagWriteFault::Changed, u"changed", u"writetags.changed"},
    {TagWriteFault::Failed, u"failed", u"writetags.failed"},
});

const FaultWord& wordOf(TagWriteFault fault)
{
    for (const FaultWord& word : kWords) {
        if (word.fault == fault) {
            return word;
        }
    }
    return kWords.back();
}

TagWriteFault faultOf(QStringView text)
{
    for (const FaultWord& word : kWords) {
        if (word.word == text) {
            return word.fault;
        }
    }
    return TagWriteFault::Failed;
}

QString placeIn(const QString& dataFolder)
{
    return path::join(dataFolder, u"unwritten.txt");
}

} // namespace

void keepUnwritten(Files& files, const QString& dataFolder, std::span<const UnwrittenTag> tracks)
{
    const QString place = placeIn(dataFolder);
    QStringList lines;
    for (const UnwrittenTag& track : tracks.first(std::min(tracks.size(), kMaxTracks))) {
        lines.append(
            u"%1\t%2\t%3\n"_s.arg(track.fid, wordOf(track.fault).word, track.detail.simplified()));
    }
    try {
        if (!lines.isEmpty()) {
            files.writeWhole(place, lines.join(QString()).toUtf8());
        } else if (files.fileExists(place)) {
            files.remove(place);
        }
    } catch (const IoError&) {
        // The list of Task.WriteTags itself says it.
    }
}

std::optional<UnwrittenTag>
unwrittenOf(const Files& files, const QString& dataFolder, const QString& fid)
{
    const QString place = placeIn(dataFolder);
    if (fid.isEmpty() || !files.fileExists(place)) {
        return std::nullopt;
    }
    try {
        const QString text = QString::fromUtf8(files.read(place, kLargestFile));
        for (const QStringView line : QStringView(text).split(u'\n')) {
            const auto parts = line.split(u'\t');
            if (parts.size() == 3 && parts[0] == fid) {
                return UnwrittenTag{fid, faultOf(parts[1]), parts[2].toString()};
            }
        }
    } catch (const IoError&) {
        return std::nullopt;
    }
    return std::nullopt;
}

qint64 waitingTracks(Database& database, const QString& fid)
{
    const QString which = fid.isEmpty() ? QString() : u" where fid="_s + sql::text(fid);
    return database
        .OpenRecordset(u"select count(*) as anz from (select distinct fid from db_edit"_s + which +
                       u')')
        ->value(u"anz")
        .toInt64();
}

QString unwrittenReason(const ConfigObjects& texts, TagWriteFault fault, const QString& detail)
{
    const QString reason = texts.text(wordOf(fault).text);
    return detail.isEmpty() ? reason : u"%1 (%2)"_s.arg(reason, systemReasonText(texts, detail));
}

} // namespace melovane
