#include "intake/imported_track.h"

#include <algorithm>
#include <array>

namespace melovane {

namespace {

using F = TrackField;
using T = ImportedTrack;

constexpr std::array kFields = std::to_array<ImportedField>({
    {F::FID, &T::FID},
    {F::Titel, &T::Titel},
    {F::Interpret, &T::Interpret},
    {F::Album, &T::Album},
    {F::Genre, &T::Genre},
    {F::Jahr, &T::Jahr},
    {F::Track, &T::Track},
    {F::Kommentar, &T::Kommentar},
    {F::Note, &T::Note},
    {F::BPM, &T::BPM},
    {F::Path, &T::Path},
    {F::DName, &T::DName},
    {F::DLen, &T::DLen},
    {F::DTime, &T::DTime},
    {F::DTimeMsec, &T::DTimeMsec},
    {F::DKhz, &T::DKhz},
    {F::DBit, &T::DBit},
    {F::DTSDatei, &T::DTSDatei},
    {F::DTSImport, &T::DTSImport},
    {F::DriveTyp, &T::DriveTyp},
    {F::DriveName, &T::DriveName},
    {F::DEL, &T::DEL},
    {F::FrameStart, &T::FrameStart},
    {F::FrameStop, &T::FrameStop},
    {F::Normalize, &T::Normalize},
    {F::Pitch, &T::Pitch},
    {F::Volume, &T::Volume},
    {F::Kategorie, &T::Kategorie},
    {F::Situation, &T::Situation},
    {F::Stimmung, &T::Stimmung},
    {F::Tempo, &T::Tempo},
    {F::User1, &T::User1},
    {F::User2, &T::User2},
    {F::User3, &T::User3},
    {F::User4, &T::User4},
    {F::User5, &T::User5},
});

/// Of the texts only those of frames with a name of our own are null when they are empty.
bool isNullWhenEmpty(const ImportedField& field)
{
    return field.isFromTag() && !rowOf(field.field).frame.description.isEmpty();
}

Value valueOf(const ImportedTrack& track, const ImportedField& field)
{
    const auto text = field.text();
    if (text && (track.*text).isEmpty() && isNullWhenEmpty(field)) {
        return {};
    }
    return std::visit([&track](const auto member) { return Value(track.*member); }, field.member);
}

} // namespace

std::span<const ImportedField> ImportedTrack::fields()
{
    return kFields;
}

const QStringList& ImportedTrack::columns()
{
    static const QStringList names = [] {
        QStringList columns;
        for (const ImportedField& field : kFields) {
            columns.append(columnOf(field.field).toString());
        }
        return columns;
    }();
    return names;
}

std::vector<Value> ImportedTrack::values() const
{
    std::vector<Value> values;
    values.reserve(kFields.size());
    for (const ImportedField& field : kFields) {
        values.push_back(valueOf(*this, field));
    }
    return values;
}

Value ImportedTrack::value(TrackField field) const
{
    const auto* const found = std::ranges::find(kFields, field, &ImportedField::field);
    Q_ASSERT(found != kFields.end());
    return valueOf(*this, *found);
}

} // namespace melovane
