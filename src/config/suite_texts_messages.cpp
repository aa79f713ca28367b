#include "config/built_in_texts.h"

#include <array>

namespace melovane::suitetexts {

namespace {

// clang-format off
constexpr std::array kTexts = std::to_array<BuiltInText>({
    {u"msg-001", u"$1 Änderungen übernommen"},
    {u"msg-002", u"Keine Änderungen vorhanden"},
    {u"inf-001", u"Bitte warten ..."},
    {u"inf-002", u"Fertig"},
    {u"inf-003", u"Kein Titel markiert"},
    {u"inf-004", u"Keine Playliste ausgewählt"},
    {u"noWarn", u"Diese Meldung nicht mehr anzeigen"},
    {u"warnDelPlaylistLock", u"Eine schreibgeschützte Playliste kann nicht gelöscht werden !"},
    {u"warnDelPlaylistAktiv", u"Die aktive Playliste kann nicht gelöscht werden !"},
    {u"warnDelPlaylist", u"Soll die Playliste ''$1'' wirklich gelöscht werden ?"},
    {u"warnDelGroup", u"Die Gruppe ''$1'' kann nicht gelöscht werden, da sich noch Playlisten in ihr befinden !"},
    {u"warnM3Uerrors", u"Beim importieren der M3U Playliste(n) sind Fehler aufgetreten.\\n\\nSoll das Protokoll angezeigt werden ?"},
    {u"nodb", u"Melovane Datenbank nicht gefunden $1"},
    {u"dbverserr", u"Falsche Melovane Datenbankversion\\n$1\\nIhre Datenbank hat die Versionsnummer: $2 benötigt wird aber die Version: $3\\n\\nWerkzeuge für die Übernahme alter Daten und neue Versionen des Programms gibt es auf der Seite des Herstellers."},
    {u"glob_warn", u"Achtung !"},
    {u"dbOpenError", u"Melovane kann nicht gestartet werden, da folgender Fehler aufgetreten ist.\\n\\n$1"},
    {u"Db.Open.No.Data", u"Keine Daten in der Datenbank\\nZuerst MP3s importieren und eine Playliste erstellen"},
});
// clang-format on

} // namespace

std::span<const BuiltInText> messages()
{
    return kTexts;
}

} // namespace melovane::suitetexts
