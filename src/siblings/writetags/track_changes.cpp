#include "siblings/writetags/track_changes.h"

#include "intake/genre_list.h"
#include "intake/imported_track.h"
#include "platform/db/recordset.h"
#include "platform/media/track_tags.h"
#include "platform/system/trim_blanks.h"
#include "store/track_fields.h"

#include <array>

namespace melovane {

namespace {

using F = TrackField;
using C = TagChanges;

struct TaggedField
{
    TrackField field;
    std::optional<QString> TagChanges::*change;
};

constexpr std::array kFields = std::to_array<TaggedField>({
    {F::FID, &C::FID},           {F::Titel, &C::Titel},         {F::Interpret, &C::Interpret},
    {F::Album, &C::Album},       {F::Genre, &C::Genre},         {F::Jahr, &C::Jahr},
    {F::Track, &C::Track},       {F::Kommentar, &C::Kommentar}, {F::Note, &C::Note},
    {F::BPM, &C::BPM},           {F::Kategorie, &C::Kategorie}, {F::Situation, &C::Situation},
    {F::Stimmung, &C::Stimmung}, {F::Tempo, &C::Tempo},         {F::User1, &C::User1},
    {F::User2, &C::User2},       {F::User3, &C::User3},         {F::User4, &C::User4},
    {F::User5, &C::User5},
});

} // namespace

const QStringList& taggedColumns()
{
    static const QStringList names = [] {
        QStringList columns;
        for (const TaggedField& field : kFields) {
            columns.append(columnOf(field.field).toString());
        }
        return columns;
    }();
    return names;
}

QStringList taggedTexts(const Recordset& row)
{
    QStringList texts;
    for (const QString& column : taggedColumns()) {
        texts.append(row.value(column).toText());
    }
    return texts;
}

std::optional<TagChanges> changesOf(const QStringList& texts,
                                    const ImportedTrack& file,
                                    const TrackTags& tags,
                                    const GenreList& genres,
                                    bool more)
{
    TagChanges changes;
    bool changed = more;
    for (std::size_t i = 0; i < kFields.size(); ++i) {
        const QString text = trimBlanks(texts.at(qsizetype(i)));
        const bool differs = text != trimBlanks(file.value(kFields[i].field).toText());
        if (differs || (!tags.hasId3v2 && !text.isEmpty())) {
            changes.*kFields[i].change = text;
        }
        changed = changed || (differs && kFields[i].field != F::FID);
    }
    if (!changed) {
        return std::nullopt;
    }
    if (changes.Genre) {
        changes.genreNumber = genres.numberOf(*changes.Genre);
    }
    return changes;
}

} // namespace melovane
