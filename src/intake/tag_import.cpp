#include "intake/tag_import.h"

#include "intake/import_errors.h"
#include "intake/tag_choice.h"
#include "platform/db/definitions.h"
#include "platform/system/clock.h"
#include "platform/system/leading_number.h"
#include "platform/system/path_text.h"
#include "platform/system/trim_blanks.h"
#include "store/milli_sec_to_min.h"

#include <algorithm>
#include <limits>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

int codeOf(const MediaReading& reading)
{
    switch (reading.fault) {
    case MediaFault::None:
        break;
    case MediaFault::NotFound:
        return importerror::kFileNotFound;
    case MediaFault::NoAudio:
    case MediaFault::Truncated:
        return importerror::kNoAudio;
    case MediaFault::Empty:
    case MediaFault::TagSize:
        return importerror::kCannotOpen;
    }
    const AudioFacts& audio = reading.audio;
    const bool silent = audio.milliseconds <= 0 || audio.bitRate == 0 || audio.sampleRate <= 0;
    return silent ? importerror::kNoAudio : 0;
}

/// "128.00" is 128; what is no number above 0 is no tempo.
QString beatsPerMinute(const QString& text)
{
    const int beats = leadingLong(text);
    return beats > 0 ? QString::number(beats) : QString();
}

/// What names a file or a track is never cut: the rest would name another one.
bool isCut(TrackField field)
{
    return field != TrackField::FID && field != TrackField::Path && field != TrackField::DName;
}

} // namespace

int frameStopOf(int milliseconds)
{
    return toLongHalfEven(milliseconds / Mod_MilliSecToMin::kFrameMs);
}

TagImport::TagImport(const Files& files, const Clock& clock)
    : m_files(files)
    , m_clock(clock)
{}

void TagImport::SetWidths(const TableDef& dbAll)
{
    m_widths.fill(0);
    for (const FieldDef& field : dbAll.Fields) {
        if (field.Type == FieldType::Text) {
            if (const TrackFieldRow* const row = findTrackField(field.Name)) {
                m_widths[std::size_t(row->field)] = field.Size;
            }
        }
    }
}

ImportOutcome TagImport::ImportFile(const QString& folder,
                                    const QString& name,
                                    const FileFacts& facts,
                                    const MediaReading& reading)
{
    ImportOutcome outcome;
    outcome.code = codeOf(reading);
    outcome.detail = reading.detail;
    if (outcome.code != 0) {
        return outcome;
    }
    ImportedTrack& track = outcome.track;
    takePlace(folder, name, facts, track);
    takeTags(reading.tags, track);
    takeSound(reading.audio, track);
    cutToWidths(track);
    track.FID = trimBlanks(reading.tags.FID);
    return outcome;
}

void TagImport::takeTags(const TrackTags& tags, ImportedTrack& track) const
{
    const auto choose = [&](QString TagFields::*field) {
        return tagchoice::choose(tags.id3v1.*field, tags.id3v2.*field, m_choice);
    };
    track.Titel = choose(&TagFields::Titel);
    track.Interpret = choose(&TagFields::Interpret);
    track.Album = choose(&TagFields::Album);
    track.Kommentar = choose(&TagFields::Kommentar);
    track.Jahr = tagchoice::numeric(choose(&TagFields::Jahr));
    track.Track = tagchoice::numeric(choose(&TagFields::Track));
    // Names are compared, not the numbers that stand for them: "17" is not shorter than "Rock".
    track.Genre = tagchoice::choose(m_genres.nameOf(tags.id3v1.Genre),
                                    m_genres.nameOf(tags.id3v2.Genre), m_choice);
    if (track.Titel.isEmpty() && track.Interpret.isEmpty()) {
        const auto named = tagchoice::fromFileName(track.DName);
        track.Titel = named.Titel;
        track.Interpret = named.Interpret;
    }
    track.Note = tags.Note;
    track.BPM = beatsPerMinute(tags.BPM);
    track.Kategorie = trimBlanks(tags.Kategorie);
    track.Situation = trimBlanks(tags.Situation);
    track.Stimmung = trimBlanks(tags.Stimmung);
    track.Tempo = trimBlanks(tags.Tempo);
    track.User1 = trimBlanks(tags.User1);
    track.User2 = trimBlanks(tags.User2);
    track.User3 = trimBlanks(tags.User3);
    track.User4 = trimBlanks(tags.User4);
    track.User5 = trimBlanks(tags.User5);
}

void TagImport::takeSound(const AudioFacts& audio, ImportedTrack& track) const
{
    track.DTimeMsec = audio.milliseconds;
    track.DTime = Mod_MilliSecToMin::MilliSecToMin(audio.milliseconds);
    track.DKhz = audio.sampleRate;
    track.DBit = audio.bitRate;
    track.FrameStart = 0;
    track.FrameStop = frameStopOf(audio.milliseconds);
}

void TagImport::takePlace(const QString& folder,
                          const QString& name,
                          const FileFacts& facts,
                          ImportedTrack& track)
{
    track.Path = path::withSeparator(folder);
    track.DName = name;
    track.DLen = static_cast<int>(std::min<qint64>(facts.size, std::numeric_limits<int>::max()));
    track.DTSDatei = facts.modified;
    track.DTSImport = m_clock.now();
    auto volume = m_volumes.find(facts.device);
    if (volume == m_volumes.end()) {
        volume = m_volumes.insert(facts.device, m_files.volume(folder));
    }
    track.DriveTyp = static_cast<int>(volume->kind);
    track.DriveName = volume->label;
}

void TagImport::cutToWidths(ImportedTrack& track) const
{
    for (const ImportedField& field : ImportedTrack::fields()) {
        if (const auto text = field.text(); text && isCut(field.field)) {
            track.*text = tagchoice::cut(track.*text, m_widths[std::size_t(field.field)]);
        }
    }
}

} // namespace melovane
