#include "tagbench/rename_plan.h"

#include "platform/system/letter_case.h"
#include "platform/system/path_text.h"
#include "playlistfiles/template_path.h"

#include <QHash>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Fields that a template names, with their markers.
constexpr std::pair<QStringView, TrackField> kFields[] = {{u"%TO", TrackField::Track},
                                                          {u"%I", TrackField::Interpret},
                                                          {u"%N", TrackField::Titel},
                                                          {u"%A", TrackField::Album},
                                                          {u"%G", TrackField::Genre}};

/// Signs of a value that Template2Path puts "_" for.
bool isCleaned(const BenchTrack& track, const QString& text)
{
    return std::ranges::any_of(kFields, [&](const auto& field) {
        const QString& value = track.now[size_t(benchSlot(field.second))];
        return field.second != TrackField::Track &&
               text.contains(field.first.toString(), Qt::CaseInsensitive) &&
               std::ranges::any_of(value, [](QChar sign) {
                   return QStringView(u"\"/\\:*?<>|").contains(sign) || sign.unicode() < 0x20;
               });
    });
}

TemplateValues valuesOf(const BenchTrack& track)
{
    const auto text = [&](TrackField field) { return track.now[size_t(benchSlot(field))]; };
    TemplateValues values;
    values.Album = text(TrackField::Album);
    values.Interpret = text(TrackField::Interpret);
    values.Titel = text(TrackField::Titel);
    values.Genre = text(TrackField::Genre);
    values.Track = text(TrackField::Track);
    values.DName = track.storedPlace().sliced(track.folder.size());
    return values;
}

/// The part of a template that names the file itself.
QString lastPart(const QString& text)
{
    for (qsizetype at = text.size(); at > 0; --at) {
        if (path::isSeparator(text[at - 1])) {
            return text.sliced(at);
        }
    }
    return text;
}

/// Where both names would be one on a volume that does not tell letter case or Unicode form.
QString foldedPlace(const QString& place)
{
    return lowerCase(path::toSystem(place).normalized(QString::NormalizationForm_C));
}

/// The folder above those that a file lies in already because an equal template put it there.
QString baseFolder(const QString& folder, const QStringList& newFolders)
{
    QString base = path::withoutSeparator(folder);
    for (qsizetype at = newFolders.size() - 1; at >= 0; --at) {
        if (path::fileName(base) != newFolders[at]) {
            return folder;
        }
        base = path::parent(base);
    }
    return newFolders.isEmpty() || base.isEmpty() ? folder : path::withSeparator(base);
}

} // namespace

RenamePlan::RenamePlan(const Files& files, const QString& dataFolder)
    : m_locator(files, dataFolder)
{}

RenameRow RenamePlan::planned(const BenchTrack& track, int number, const QString& text)
{
    RenameRow row{number, {}, track.storedPlace(), RenameState::NoName};
    const TemplateValues values = valuesOf(track);
    if (Template2Path(lastPart(text)).path(values, 1, 1) == ".mp3"_L1) {
        return row; // nothing but the extension
    }
    row.shown = Template2Path(text).path(values, 1, 1);
    QStringList folders = row.shown.split(path::kSeparator);
    const QString name = folders.takeLast();
    QString folder = baseFolder(track.folder, folders);
    for (const QString& below : folders) {
        folder = path::withSeparator(path::join(folder, below));
    }
    row.place = path::join(folder, name);
    row.state = isCleaned(track, text) ? RenameState::Cleaned : RenameState::Renamed;
    if (row.place == track.storedPlace()) {
        row.state = RenameState::Same;
    } else if (m_locator.placeOf(track.storedPlace()).isEmpty()) {
        row.state = RenameState::Missing;
    }
    return row;
}

std::vector<RenameRow>
RenamePlan::rows(const BenchTracks& tracks, const std::vector<int>& chosen, const QString& text)
{
    std::vector<RenameRow> result;
    result.reserve(chosen.size());
    for (const int number : chosen) {
        result.push_back(planned(tracks.at(number), number, text));
    }
    judge(tracks, result);
    return result;
}

void RenamePlan::judge(const BenchTracks& tracks, std::vector<RenameRow>& rows)
{
    QHash<QString, int> wanted;
    QHash<QString, size_t> owner; // whose name it is now
    for (size_t index = 0; index < rows.size(); ++index) {
        owner.insert(foldedPlace(tracks.at(rows[index].track).storedPlace()), index);
        wanted[foldedPlace(rows[index].place)] += int(rows[index].isRenamed());
    }
    for (RenameRow& row : rows) {
        const QString key = foldedPlace(row.place);
        if (row.isRenamed() && wanted[key] > 1) {
            row.state = RenameState::Twice;
        } else if (row.isRenamed() && !owner.contains(key) &&
                   !m_locator.placeOf(row.place).isEmpty()) {
            row.state = RenameState::Taken;
        }
    }
    // Who wants the name of one that stays, stays too.
    QHash<size_t, size_t> waiting; // who waits, by whom he waits for
    std::vector<size_t> staying;
    for (size_t index = 0; index < rows.size(); ++index) {
        const auto before = owner.constFind(foldedPlace(rows[index].place));
        if (!rows[index].isRenamed()) {
            staying.push_back(index);
        } else if (before != owner.cend() && *before != index) {
            waiting.insert(*before, index);
        }
    }
    for (size_t at = 0; at < staying.size(); ++at) {
        if (const auto next = waiting.constFind(staying[at]); next != waiting.cend()) {
            rows[*next].state = RenameState::Taken;
            staying.push_back(*next);
        }
    }
}

} // namespace melovane
