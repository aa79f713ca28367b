#include "intake/import_errors.h"

namespace melovane::importerror {

using namespace Qt::Literals::StringLiterals;

QString GetMessageText(int code)
{
    switch (code) {
    case kPathNotFound:
        return u"Path nicht gefunden"_s;
    case kFileNotFound:
        return u"Datei nicht gefunden"_s;
    case kNoAudio:
        return u"Fehlerhafte MP3"_s;
    case kCannotOpen:
        return u"Fehlerhafe MP3"_s; // spelt so in the logs
    case kOnDisc:
        return u"Die Datei kann an dieser Stelle nicht von CDROM importiert werden"_s;
    case kDatabase:
        return u"Datenbank Fehler"_s;
    case kFile:
        return u"Datei Fehler"_s;
    case kUnknown:
        return u"Unbekannter Fehler"_s;
    default:
        return u"MessageText - Undef"_s;
    }
}

} // namespace melovane::importerror
