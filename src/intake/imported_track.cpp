#include "intake/imported_track.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

Value orNull(const QString& text)
{
    return text.isEmpty() ? Value() : Value(text);
}

} // namespace

const QStringList& ImportedTrack::columns()
{
    static const QStringList names = {
        u"FID"_s,       u"Titel"_s,  u"Interpret"_s,  u"Album"_s,     u"Genre"_s,
        u"Jahr"_s,      u"Track"_s,  u"Kommentar"_s,  u"Note"_s,      u"BPM"_s,
        u"Path"_s,      u"DName"_s,  u"DLen"_s,       u"DTime"_s,     u"DTimeMsec"_s,
        u"DKhz"_s,      u"DBit"_s,   u"DTSDatei"_s,   u"DTSImport"_s, u"DriveTyp"_s,
        u"DriveName"_s, u"DEL"_s,    u"FrameStart"_s, u"FrameStop"_s, u"Normalize"_s,
        u"Pitch"_s,     u"Volume"_s, u"Kategorie"_s,  u"Situation"_s, u"Stimmung"_s,
        u"Tempo"_s,     u"User1"_s,  u"User2"_s,      u"User3"_s,     u"User4"_s,
        u"User5"_s};
    return names;
}

std::vector<Value> ImportedTrack::values() const
{
    return {FID,
            Titel,
            Interpret,
            Album,
            Genre,
            Jahr,
            Track,
            Kommentar,
            Note,
            BPM,
            Path,
            DName,
            DLen,
            DTime,
            DTimeMsec,
            DKhz,
            DBit,
            DTSDatei,
            DTSImport,
            DriveTyp,
            DriveName,
            DEL,
            FrameStart,
            FrameStop,
            Normalize,
            Pitch,
            Volume,
            orNull(Kategorie),
            orNull(Situation),
            orNull(Stimmung),
            orNull(Tempo),
            orNull(User1),
            orNull(User2),
            orNull(User3),
            orNull(User4),
            orNull(User5)};
}

} // namespace melovane
