#include "library/library_columns.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

GridColumn shown(const QString& field,
                 const QString& heading,
                 double width,
                 CellAlignment alignment = CellAlignment::Left)
{
    return {field, heading, width, alignment, true, false};
}

GridColumn hidden(const QString& field,
                  const QString& heading,
                  double width,
                  CellAlignment alignment = CellAlignment::Left)
{
    return {field, heading, width, alignment, false, false};
}

} // namespace

std::vector<GridColumn> libraryColumns()
{
    constexpr auto kRight = CellAlignment::Right;
    GridColumn title = shown(u"Titel"_s, u"Titel"_s, 40);
    title.stretched = true;
    return {
        shown(u"Note"_s, u"Note"_s, 4, CellAlignment::Centre),
        title,
        shown(u"Interpret"_s, u"Interpret"_s, 18),
        shown(u"Album"_s, u"Album"_s, 15),
        shown(u"Genre"_s, u"Genre"_s, 11),
        shown(u"BPM"_s, u"BPM"_s, 5, kRight),
        shown(u"DTime"_s, u"Zeit"_s, 6, kRight),
        shown(u"Play"_s, u"Gespielt"_s, 8, kRight),
        shown(u"PlayCountDay"_s, u"Heute"_s, 6, kRight),
        shown(u"PlayCountAll"_s, u"Gesamt"_s, 7, kRight),
        hidden(u"Jahr"_s, u"Jahr"_s, 5, kRight),
        hidden(u"Track"_s, u"Track"_s, 5, kRight),
        hidden(u"Kommentar"_s, u"Kommentar"_s, 24),
        hidden(u"Kategorie"_s, u"Kategorie"_s, 12),
        hidden(u"Situation"_s, u"Situation"_s, 12),
        hidden(u"Stimmung"_s, u"Stimmung"_s, 12),
        hidden(u"Tempo"_s, u"Tempo"_s, 12),
        hidden(u"User1"_s, u"User 1"_s, 12),
        hidden(u"User2"_s, u"User 2"_s, 12),
        hidden(u"User3"_s, u"User 3"_s, 12),
        hidden(u"User4"_s, u"User 4"_s, 12),
        hidden(u"User5"_s, u"User 5"_s, 12),
        hidden(u"DBit"_s, u"Bitrate"_s, 7, kRight),
        hidden(u"DKhz"_s, u"Abtastrate"_s, 8, kRight),
        hidden(u"DLen"_s, u"Dateigröße"_s, 10, kRight),
        hidden(u"Path"_s, u"Ordner"_s, 30),
        hidden(u"DName"_s, u"Datei"_s, 24),
        hidden(u"DriveName"_s, u"Datenträger"_s, 12),
        hidden(u"DriveTyp"_s, u"Laufwerksart"_s, 6, kRight),
        hidden(u"DTSDatei"_s, u"Dateidatum"_s, 18, kRight),
        hidden(u"DTSImport"_s, u"Importiert"_s, 18, kRight),
        hidden(u"favorit"_s, u"Favorit seit"_s, 18, kRight),
        hidden(u"DTimeMsec"_s, u"Länge (ms)"_s, 9, kRight),
        hidden(u"FrameStart"_s, u"Start"_s, 8, kRight),
        hidden(u"FrameStop"_s, u"Stop"_s, 8, kRight),
        hidden(u"MixTime"_s, u"Mixzeit"_s, 7, kRight),
        hidden(u"MixIn"_s, u"Mix ein"_s, 14),
        hidden(u"MixOut"_s, u"Mix aus"_s, 14),
        hidden(u"eq"_s, u"Equalizer"_s, 14),
        hidden(u"Pitch"_s, u"Pitch"_s, 6, kRight),
        hidden(u"Volume"_s, u"Lautstärke"_s, 8, kRight),
        hidden(u"Normalize"_s, u"Normalisierung"_s, 8, kRight),
        hidden(u"Image"_s, u"Cover"_s, 16),
        hidden(u"DEL"_s, u"Gelöscht"_s, 6, kRight),
        hidden(u"FID"_s, u"FID"_s, 13),
    };
}

} // namespace melovane
