#include "config/program_call.h"

#include <algorithm>
#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

struct ProgramPage
{
    QStringView program;
    QStringView german;
    QStringView english;
};

// clang-format off
constexpr std::array kPages = std::to_array<ProgramPage>({
    {u"MelovaneDB",
     u"MelovaneDB: Musikdatenbank und Playlisten der Suite\n"
      "\n"
      "Aufruf: MelovaneDB [OPTION]\n"
      "\n"
      "Öffnet die Konsole mit der Musikdatenbank des Benutzers. Läuft sie schon,\n"
      "kommt ihr Fenster nach vorn.\n"
      "\n"
      "  -h, --help     diesen Text ausgeben\n"
      "      --version  Name und Version ausgeben\n"
      "\n"
      "Ergebnis: 0 beendet, 1 nicht gestartet, 2 Aufruf unverständlich",
     u"MelovaneDB: music database and playlists of the suite\n"
      "\n"
      "Usage: MelovaneDB [OPTION]\n"
      "\n"
      "Opens the console with the user's music database. When it runs already, its\n"
      "window comes to the front.\n"
      "\n"
      "  -h, --help     print this text\n"
      "      --version  print name and version\n"
      "\n"
      "Result: 0 ended, 1 not started, 2 wrong call"},
    {u"mediaintake",
     u"mediaintake: liest MP3-Dateien in die Musikdatenbank ein\n"
      "\n"
      "Aufruf: mediaintake [1] [--folder ORDNER]... [--quiet]\n"
      "        mediaintake 2 [--quiet]\n"
      "\n"
      "  1                neue MP3-Dateien einlesen\n"
      "  2                Titel, deren Datei sich geändert hat, neu einlesen\n"
      "  --folder ORDNER  diesen Ordner mit seinen Unterordnern, beliebig oft; der\n"
      "                   Import beginnt dann sofort\n"
      "  --quiet          ohne Fenster arbeiten und den Bericht ausgeben; neue\n"
      "                   Dateien brauchen dann einen Ordner\n"
      "  -h, --help       diesen Text ausgeben\n"
      "      --version    Name und Version ausgeben\n"
      "\n"
      "Ergebnis: 0 eingelesen, 1 nicht gelungen oder ein anderer Import läuft,\n"
      "2 Aufruf unverständlich oder Ordner nicht vorhanden",
     u"mediaintake: reads MP3 files into the music database\n"
      "\n"
      "Usage: mediaintake [1] [--folder FOLDER]... [--quiet]\n"
      "       mediaintake 2 [--quiet]\n"
      "\n"
      "  1                read new MP3 files\n"
      "  2                read tracks again whose file has changed\n"
      "  --folder FOLDER  this folder with its subfolders, any number of times; the\n"
      "                   import then begins at once\n"
      "  --quiet          work without a window and print the report; new files then\n"
      "                   need a folder\n"
      "  -h, --help       print this text\n"
      "      --version    print name and version\n"
      "\n"
      "Result: 0 read, 1 failed or another import is running, 2 wrong call or no\n"
      "such folder"},
    {u"mlvmessage",
     u"mlvmessage: Nachrichten zwischen den Programmen der Suite ansehen und senden\n"
      "\n"
      "  mlvmessage list                              lebende Gegenstellen: Nummer,\n"
      "                                               Prozess, Programm, Namen\n"
      "  mlvmessage alive ZIEL                        lebt sie? gibt ihre Nummer aus\n"
      "  mlvmessage send ZIEL ID [WPARAM [LPARAM]]    senden, die Antwort ausgeben\n"
      "  mlvmessage send ZIEL ID [ZAHL] --text TEXT   ebenso einen Text\n"
      "  mlvmessage post ZIEL ID [WPARAM [LPARAM]]    senden, ohne zu warten\n"
      "  mlvmessage post ZIEL ID [ZAHL] --text TEXT   ebenso einen Text\n"
      "  mlvmessage listen                            ausgeben, was ankommt\n"
      "  mlvmessage --help | --version                diesen Text, die Version ausgeben\n"
      "\n"
      "ZIEL ist die Nummer einer Gegenstelle oder ein Name aus melovane.ini, etwa\n"
      "MelovaneDB, Handle.DJ oder kurz DJ.\n"
      "\n"
      "  send    --wait SEKUNDEN     höchstens so lange auf die Antwort warten (10)\n"
      "  listen  --as NAME           sich in melovane.ini eintragen: DB, DJ und Kiv\n"
      "                              als Handle.NAME, andere als NAME.exe\n"
      "          --answer ZAHL       so auf alles antworten (0)\n"
      "          --count ZAHL        nach so vielen Nachrichten enden\n"
      "          --seconds SEKUNDEN  nach dieser Zeit enden\n"
      "\n"
      "Ergebnis: 0 getan, 1 Gegenstelle lebt nicht, 2 Aufruf unverständlich,\n"
      "3 keine Antwort oder zu wenige Nachrichten in der Zeit",
     u"mlvmessage: watch and send messages between the programs of the suite\n"
      "\n"
      "  mlvmessage list                                living partners: number,\n"
      "                                                 process, program, names\n"
      "  mlvmessage alive TARGET                        does it live? prints its number\n"
      "  mlvmessage send TARGET ID [WPARAM [LPARAM]]    send, print the answer\n"
      "  mlvmessage send TARGET ID [NUMBER] --text TEXT the same with a text\n"
      "  mlvmessage post TARGET ID [WPARAM [LPARAM]]    send without waiting\n"
      "  mlvmessage post TARGET ID [NUMBER] --text TEXT the same with a text\n"
      "  mlvmessage listen                              print what arrives\n"
      "  mlvmessage --help | --version                  print this text, the version\n"
      "\n"
      "TARGET is the number of a partner or a name from melovane.ini, such as\n"
      "MelovaneDB, Handle.DJ or DJ for short.\n"
      "\n"
      "  send    --wait SECONDS     wait for the answer no longer than this (10)\n"
      "  listen  --as NAME          enter itself in melovane.ini: DB, DJ and Kiv as\n"
      "                             Handle.NAME, others as NAME.exe\n"
      "          --answer NUMBER    answer this to everything (0)\n"
      "          --count NUMBER     end after so many messages\n"
      "          --seconds SECONDS  end after this time\n"
      "\n"
      "Result: 0 done, 1 the partner is not alive, 2 wrong call, 3 no answer or too\n"
      "few messages in the time"},
    {u"Task.StorePlaylists",
     u"Task.StorePlaylists: schreibt geänderte Playlisten in ihre Dateien\n"
      "\n"
      "Aufruf: Task.StorePlaylists [--quiet]\n"
      "\n"
      "Nennt jede geschriebene Datei. Was nicht gelingt, zeigt ein Fenster.\n"
      "\n"
      "  --quiet        kein Fenster öffnen, auch wenn etwas nicht gelingt\n"
      "  -h, --help     diesen Text ausgeben\n"
      "      --version  Name und Version ausgeben\n"
      "\n"
      "Ergebnis: 0 geschrieben, 1 nicht alles gelungen, 2 Aufruf unverständlich",
     u"Task.StorePlaylists: writes changed playlists to their files\n"
      "\n"
      "Usage: Task.StorePlaylists [--quiet]\n"
      "\n"
      "Names each file that it writes. A window shows what fails.\n"
      "\n"
      "  --quiet        open no window, even when something fails\n"
      "  -h, --help     print this text\n"
      "      --version  print name and version\n"
      "\n"
      "Result: 0 written, 1 something failed, 2 wrong call"},
    {u"Task.WriteTags",
     u"Task.WriteTags: schreibt geänderte Titel in die Tags ihrer Dateien\n"
      "\n"
      "Aufruf: Task.WriteTags [ZAHL] [--quiet]\n"
      "\n"
      "Zeigt in einem Fenster, wie weit es ist, und was nicht gelingt. Was nicht\n"
      "gelingt, wartet auf den nächsten Aufruf.\n"
      "\n"
      "  ZAHL           Gegenstelle der Konsole, die das Ergebnis erfährt\n"
      "  --quiet        ohne Fenster und ohne Meldung der Konsole arbeiten, den\n"
      "                 Bericht ausgeben\n"
      "  -h, --help     diesen Text ausgeben\n"
      "      --version  Name und Version ausgeben\n"
      "\n"
      "Ergebnis: 0 geschrieben, 1 nicht alles gelungen oder schon am Werk, 2 Aufruf\n"
      "unverständlich",
     u"Task.WriteTags: writes changed tracks into the tags of their files\n"
      "\n"
      "Usage: Task.WriteTags [NUMBER] [--quiet]\n"
      "\n"
      "A window shows how far it is and what fails. What fails waits for the next\n"
      "call.\n"
      "\n"
      "  NUMBER         partner of the console, which is told the result\n"
      "  --quiet        work without a window and without a message of the console,\n"
      "                 print the report\n"
      "  -h, --help     print this text\n"
      "      --version  print name and version\n"
      "\n"
      "Result: 0 written, 1 something failed or another one is running, 2 wrong call"},
    {u"MelovaneJob",
     u"MelovaneJob: erledigt im Hintergrund, was für die Musikdatenbank zu tun ist\n"
      "\n"
      "Aufruf: MelovaneJob [OPTION]\n"
      "\n"
      "Die Konsole startet es. Schreibt geänderte Titel und Playlisten in ihre\n"
      "Dateien und baut geänderte Bäume auf: wenn eine Zeit lang niemand die\n"
      "Musikdatenbank geändert hat, und zu den Uhrzeiten in MelovaneJob.ini. Endet,\n"
      "wenn keine Konsole mehr läuft oder ein anderes Programm die Musikdatenbank\n"
      "für sich braucht.\n"
      "\n"
      "  -h, --help     diesen Text ausgeben\n"
      "      --version  Name und Version ausgeben\n"
      "\n"
      "Ergebnis: 0 beendet, 2 Aufruf unverständlich",
     u"MelovaneJob: does behind the console what the music database needs\n"
      "\n"
      "Usage: MelovaneJob [OPTION]\n"
      "\n"
      "The console starts it. Writes changed tracks and playlists to their files and\n"
      "rebuilds changed trees: when nobody has changed the music database for a\n"
      "while, and at the times of day in MelovaneJob.ini. Ends when no console is\n"
      "running any more, or when another program needs the music database for\n"
      "itself.\n"
      "\n"
      "  -h, --help     print this text\n"
      "      --version  print name and version\n"
      "\n"
      "Result: 0 ended, 2 wrong call"},
    {u"Task.RebuildTree",
     u"Task.RebuildTree: bringt die Bäume der Musikdatenbank auf den neuesten Stand\n"
      "\n"
      "Aufruf: Task.RebuildTree [1|Dir|Genre|Album|Interpret]\n"
      "\n"
      "Ohne Argument die Bäume, die seit dem letzten Lauf geändert wurden. Läuft\n"
      "schon ein Aufbau, wird auf sein Ende gewartet.\n"
      "\n"
      "  1              alle Bäume, die Titelzahlen der Playlisten und die Werte der\n"
      "                 Auswahlfelder\n"
      "  Dir ...        diesen einen Baum\n"
      "  -h, --help     diesen Text ausgeben\n"
      "      --version  Name und Version ausgeben\n"
      "\n"
      "Ergebnis: 0 aufgebaut, 1 nicht alles gelungen, 2 Aufruf unverständlich",
     u"Task.RebuildTree: brings the trees of the music database up to date\n"
      "\n"
      "Usage: Task.RebuildTree [1|Dir|Genre|Album|Interpret]\n"
      "\n"
      "Without an argument the trees that were changed since the last run. While a\n"
      "rebuild is running, waits for its end.\n"
      "\n"
      "  1              all trees, the track counts of playlists and the values of the\n"
      "                 selection fields\n"
      "  Dir ...        this tree alone\n"
      "  -h, --help     print this text\n"
      "      --version  print name and version\n"
      "\n"
      "Result: 0 rebuilt, 1 something failed, 2 wrong call"},
    {u"demomusic",
     u"demomusic: füllt einen Ordner mit MP3-Dateien einer erfundenen Sammlung\n"
      "\n"
      "Aufruf: demomusic ORDNER [ANZAHL [STARTWERT [SEKUNDEN]]]\n"
      "\n"
      "  ORDNER         wird angelegt, wenn er fehlt\n"
      "  ANZAHL         Dateien (200)\n"
      "  STARTWERT      gleicher Wert, gleiche Sammlung (1)\n"
      "  SEKUNDEN       Länge jedes Titels; 0 gibt jedem eine eigene und legt\n"
      "                 einige hörbare dazu, wenn es einen Encoder gibt (0)\n"
      "  -h, --help     diesen Text ausgeben\n"
      "      --version  Name und Version ausgeben\n"
      "\n"
      "Ergebnis: 0 geschrieben, 1 nicht gelungen, 2 Aufruf unverständlich",
     u"demomusic: fills a folder with MP3 files of an invented collection\n"
      "\n"
      "Usage: demomusic FOLDER [COUNT [SEED [SECONDS]]]\n"
      "\n"
      "  FOLDER         made when it is missing\n"
      "  COUNT          files (200)\n"
      "  SEED           the same seed, the same collection (1)\n"
      "  SECONDS        length of each track; 0 gives each one its own and adds some\n"
      "                 that can be heard, when there is an encoder (0)\n"
      "  -h, --help     print this text\n"
      "      --version  print name and version\n"
      "\n"
      "Result: 0 written, 1 failed, 2 wrong call"},
    {u"demotour",
     u"demotour: zeigt die Hauptarbeit der Konsole an einer Sammlung\n"
      "\n"
      "Aufruf: demotour MUSIK BILD [--stay]\n"
      "\n"
      "Importiert den Ordner MUSIK in die Musikdatenbank, sucht, stellt eine Playliste\n"
      "zusammen, speichert und exportiert sie und legt Bilder der Fenster neben BILD.\n"
      "\n"
      "  --stay         das Fenster am Ende offen lassen\n"
      "  -h, --help     diesen Text ausgeben\n"
      "      --version  Name und Version ausgeben\n"
      "\n"
      "Ergebnis: 0 gelungen, 1 nicht gelungen, 2 Aufruf unverständlich",
     u"demotour: shows the console's main work on a collection\n"
      "\n"
      "Usage: demotour MUSIC PICTURE [--stay]\n"
      "\n"
      "Imports the folder MUSIC into the music database, searches, makes a playlist,\n"
      "saves and exports it, and leaves pictures of the windows beside PICTURE.\n"
      "\n"
      "  --stay         leave the window open at the end\n"
      "  -h, --help     print this text\n"
      "      --version  print name and version\n"
      "\n"
      "Result: 0 done, 1 failed, 2 wrong call"},
    {u"makedatabase",
     u"makedatabase: baut die Datenbank, mit der das Programm ausgeliefert wird\n"
      "\n"
      "Aufruf: makedatabase SCHEMAORDNER ZIELDATEI\n"
      "\n"
      "  -h, --help     diesen Text ausgeben\n"
      "      --version  Name und Version ausgeben\n"
      "\n"
      "Ergebnis: 0 gebaut, 1 nicht gelungen, 2 Aufruf unverständlich",
     u"makedatabase: makes the database that ships with the program\n"
      "\n"
      "Usage: makedatabase SCHEMA_FOLDER TARGET\n"
      "\n"
      "  -h, --help     print this text\n"
      "      --version  print name and version\n"
      "\n"
      "Result: 0 made, 1 failed, 2 wrong call"},
});
// clang-format on

} // namespace

QString programPage(QStringView program, PageLanguage language)
{
    const auto* const page =
        std::find_if(kPages.begin(), kPages.end(),
                     [program](const ProgramPage& entry) { return entry.program == program; });
    if (page == kPages.end()) {
        return {};
    }
    return (language == PageLanguage::German ? page->german : page->english).toString();
}

} // namespace melovane
