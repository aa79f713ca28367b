#include "tagbench/preview.h"

#include "config/config_objects.h"
#include "config/counted_text.h"
#include "tagbench/name_reader.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

QString heading(const ConfigObjects& texts, TrackField field)
{
    return texts.text(headingKey(columnOf(field)));
}

QString fileName(const BenchTrack& track)
{
    return track.storedPlace().sliced(track.folder.size());
}

/// A row that changes one field: file, field, now, then.
PreviewRow oneField(const ConfigObjects& texts, const BenchTracks& tracks, const BenchCell& cell)
{
    return {.cells = {fileName(tracks.at(cell.track)), heading(texts, cell.field),
                      tracks.text(cell.track, cell.field), cell.text},
            .change = {cell}};
}

QStringList oneFieldHeadings(const ConfigObjects& texts)
{
    return {texts.text(u"bench.file"), texts.text(u"bench.field"), texts.text(u"bench.now"),
            texts.text(u"bench.then")};
}

constexpr RenameState kStates[] = {RenameState::Renamed, RenameState::Cleaned, RenameState::Same,
                                   RenameState::Twice,   RenameState::Taken,   RenameState::NoName,
                                   RenameState::Missing};

QString stateKey(RenameState state)
{
    switch (state) {
    case RenameState::Renamed:
        return u"bench.rename.done"_s;
    case RenameState::Cleaned:
        return u"bench.rename.cleaned"_s;
    case RenameState::Same:
        return u"bench.rename.same"_s;
    case RenameState::Twice:
        return u"bench.rename.twice"_s;
    case RenameState::Taken:
        return u"bench.rename.taken"_s;
    case RenameState::NoName:
        return u"bench.rename.noname"_s;
    case RenameState::Missing:
        return u"bench.rename.missing"_s;
    }
    return {};
}

} // namespace

std::vector<BenchCell> Preview::cells() const
{
    std::vector<BenchCell> result;
    for (const PreviewRow& row : rows) {
        if (row.ticked) {
            result.insert(result.end(), row.change.begin(), row.change.end());
        }
    }
    return result;
}

namespace previews {

Preview fromNames(const ConfigObjects& texts,
                  const BenchTracks& tracks,
                  const NameReader& reader,
                  bool onlyEmpty)
{
    Preview result;
    const std::vector<TrackField> fields = reader.fields();
    result.headings = {texts.text(u"bench.file")};
    for (const TrackField field : fields) {
        result.headings.append(heading(texts, field));
    }
    result.headings.append(texts.text(u"bench.result"));
    result.lastTexts = {texts.text(u"bench.fits"), texts.text(u"bench.fitsnot")};
    int fitting = 0;
    for (int number = 0; number < tracks.count(); ++number) {
        const BenchTrack& track = tracks.at(number);
        const auto read = reader.read(track.folder, fileName(track));
        PreviewRow row{.cells = {fileName(track)}, .warns = !read};
        for (size_t index = 0; index < fields.size(); ++index) {
            row.cells.append(read ? (*read)[index].text : u"–"_s);
            if (read && !(onlyEmpty && !tracks.text(number, fields[index]).isEmpty())) {
                row.change.push_back({number, fields[index], (*read)[index].text});
            }
        }
        row.cells.append(texts.text(read ? u"bench.fits"_s : u"bench.fitsnot"_s));
        fitting += int(read.has_value());
        result.rows.push_back(row);
    }
    result.summary = reader.isUsable()
                         ? texts.text(u"bench.names.summary"_s, fitting, tracks.count())
                         : texts.text(u"bench.names.unclear"_s);
    return result;
}

Preview
renaming(const ConfigObjects& texts, const BenchTracks& tracks, const std::vector<RenameRow>& plan)
{
    Preview result;
    result.headings = {texts.text(u"bench.rename.old"), texts.text(u"bench.rename.new"),
                       texts.text(u"bench.result")};
    for (const RenameState state : kStates) {
        result.lastTexts.append(texts.text(stateKey(state)));
    }
    int renamed = 0;
    int colliding = 0;
    for (const RenameRow& planned : plan) {
        const bool collides =
            planned.state == RenameState::Twice || planned.state == RenameState::Taken;
        PreviewRow row{.cells = {fileName(tracks.at(planned.track)), planned.shown,
                                 texts.text(stateKey(planned.state))},
                       .warns = !planned.isRenamed() && planned.state != RenameState::Same};
        // Who stays where he is takes back a name that an earlier template gave him.
        const QString place =
            planned.isRenamed() ? planned.place : tracks.at(planned.track).storedPlace();
        if (place != tracks.at(planned.track).place()) {
            row.change = {{planned.track, kBenchPlace, place}};
        }
        renamed += int(planned.isRenamed());
        colliding += int(collides);
        result.rows.push_back(row);
    }
    result.summary = texts.text(u"bench.rename.summary"_s, renamed, colliding);
    if (colliding > 0) {
        result.warning = countedText(texts, u"bench.rename.warning"_s, colliding);
    }
    return result;
}

Preview replacing(const ConfigObjects& texts,
                  const BenchTracks& tracks,
                  const TextReplacement& replacement,
                  const std::vector<TrackField>& fields)
{
    Preview result;
    result.headings = oneFieldHeadings(texts);
    for (int number = 0; number < tracks.count() && replacement.isUsable(); ++number) {
        for (const TrackField field : fields) {
            const QString& now = tracks.text(number, field);
            const QString then = now.isEmpty() ? now : replacement.applied(now);
            if (then != now) {
                result.rows.push_back(oneField(texts, tracks, {number, field, then}));
            }
        }
    }
    const auto ticked = std::ranges::count_if(result.rows, &PreviewRow::ticked);
    result.summary = replacement.isUsable() || replacement.fault().isEmpty()
                         ? texts.text(u"bench.replace.summary"_s, qint64(result.rows.size()),
                                      tracks.count(), qint64(ticked))
                         : texts.text(u"bench.replace.fault"_s, replacement.fault());
    return result;
}

Preview spelling(const ConfigObjects& texts,
                 const BenchTracks& tracks,
                 const std::vector<int>& chosen,
                 LetterCase letters,
                 const std::vector<TrackField>& fields)
{
    Preview result;
    result.headings = oneFieldHeadings(texts);
    for (const int number : chosen) {
        for (const TrackField field : fields) {
            const QString& now = tracks.text(number, field);
            if (const QString then = spelt(now, letters); then != now) {
                result.rows.push_back(oneField(texts, tracks, {number, field, then}));
            }
        }
    }
    result.summary =
        texts.text(u"bench.spelling.summary"_s, qint64(result.rows.size()), qint64(chosen.size()));
    return result;
}

Preview numbering(const ConfigObjects& texts,
                  const BenchTracks& tracks,
                  const std::vector<int>& chosen,
                  const NumberOrder& order)
{
    Preview result;
    result.headings = oneFieldHeadings(texts);
    const std::vector<QString> numbers = trackNumbers(order, int(chosen.size()));
    for (size_t index = 0; index < chosen.size(); ++index) {
        result.rows.push_back(
            oneField(texts, tracks, {chosen[index], TrackField::Track, numbers[index]}));
    }
    result.summary =
        texts.text(u"bench.spelling.summary"_s, qint64(result.rows.size()), qint64(chosen.size()));
    return result;
}

} // namespace previews

void PreviewRows::show(Preview preview)
{
    m_preview = std::move(preview);
    emit refreshed();
}

void PreviewRows::toggle(qint64 row)
{
    if (row >= 0 && row < rowCount()) {
        PreviewRow& chosen = m_preview.rows[size_t(row)];
        chosen.ticked = !chosen.ticked;
        emit cellsChanged();
    }
}

Value PreviewRows::cell(qint64 row, int column) const
{
    return row < 0 || row >= rowCount() ? Value()
                                        : Value(m_preview.rows[size_t(row)].cells.value(column));
}

} // namespace melovane
