#include "platform/db/db_fault.h"

#include "platform/db/fault_of_text.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <array>

namespace melovane {

namespace {

struct Sentence
{
    DbFault fault;
    int number;
    const char16_t* text;
};

// clang-format off
constexpr std::array kSentences{
    Sentence{DbFault::FileNotFound, dberror::kFileNotFound,
             u"Die Datei %1 ist nicht vorhanden."},
    Sentence{DbFault::FileCannotBeOpened, dberror::kCannotOpen,
             u"Die Datei %1 kann nicht geöffnet werden (%2)."},
    Sentence{DbFault::FileIsNoFile, dberror::kCannotOpen,
             u"%1 ist keine Datei."},
    Sentence{DbFault::FileEmpty, dberror::kUnrecognisedFormat,
             u"Die Datei %1 ist leer."},
    Sentence{DbFault::FileIsNoDatabase, dberror::kUnrecognisedFormat,
             u"Die Datei %1 ist keine Datenbank."},
    Sentence{DbFault::FileOfAnother, dberror::kUnrecognisedFormat,
             u"Die Datei %1 ist die Datenbank eines anderen Programms."},
    Sentence{DbFault::FileOfPrevious, dberror::kPreviousEngineFile,
             u"Die Datei %1 stammt von einer früheren Fassung der Programme und ihrer Datenbank. "
             u"Sie kann nicht unmittelbar geöffnet werden."},
    Sentence{DbFault::FileCutOff, dberror::kCorrupt,
             u"Die Datenbank %1 ist unvollständig: ihr Ende fehlt."},
    Sentence{DbFault::FileDamaged, dberror::kCorrupt,
             u"Die Datenbank %1 ist beschädigt (%2)."},
    Sentence{DbFault::FileNotWritten, dberror::kDiskError,
             u"Die Datei %1 kann nicht geschrieben werden."},
    Sentence{DbFault::FileExists, dberror::kDatabaseExists,
             u"Die Datei %1 ist bereits vorhanden."},
    Sentence{DbFault::FileOntoItself, dberror::kCannotOpen,
             u"Die Datenbank %1 kann nicht auf sich selbst kopiert werden."},
    Sentence{DbFault::FileReadOnly, dberror::kReadOnly,
             u"Die Datenbank %1 kann nur gelesen werden."},
    Sentence{DbFault::FileLocked, dberror::kLocked,
             u"Die Datenbank %1 wird gerade von einem anderen Programm benutzt."},
    Sentence{DbFault::FileGivenAway, dberror::kReleased,
             u"Die Datenbank %1 gehört gerade einem anderen Programm allein."},
    Sentence{DbFault::DiskFull, dberror::kDiskFull,
             u"Der Datenträger der Datenbank %1 ist voll."},
    Sentence{DbFault::DiskError, dberror::kDiskError,
             u"Lesen oder Schreiben der Datenbank %1 ist misslungen (%2)."},
    Sentence{DbFault::FileReplaced, dberror::kCannotOpen,
             u"Die Datenbank %1 wurde inzwischen ersetzt oder entfernt und muss neu geöffnet "
             u"werden."},
    Sentence{DbFault::OutOfMemory, dberror::kOutOfMemory,
             u"Der Arbeitsspeicher reicht nicht aus."},

    Sentence{DbFault::ItemNotFound, dberror::kItemNotFound,
             u"Das Element \"%1\" ist in dieser Auflistung nicht vorhanden."},
    Sentence{DbFault::SourceNotFound, dberror::kObjectNotFound,
             u"Die Tabelle oder Abfrage \"%1\" ist nicht vorhanden."},
    Sentence{DbFault::WorkspaceNotFound, dberror::kItemNotFound,
             u"Den Arbeitsbereich %1 gibt es nicht, nur den Arbeitsbereich 0."},
    Sentence{DbFault::NameInvalid, dberror::kSyntax,
             u"\"%1\" ist kein gültiger Name."},
    Sentence{DbFault::NameTaken, dberror::kObjectExists,
             u"Eine Tabelle oder Abfrage \"%1\" ist bereits vorhanden."},
    Sentence{DbFault::FieldTwice, dberror::kFieldTwice,
             u"Die Spalte \"%1\" ist in der Tabelle \"%2\" doppelt."},
    Sentence{DbFault::FieldNotThere, dberror::kItemNotFound,
             u"Die Tabelle \"%2\" hat keine Spalte \"%1\"."},
    Sentence{DbFault::FieldInIndex, dberror::kFieldInIndex,
             u"Die Spalte \"%1\" wird vom Index \"%2\" gebraucht."},
    Sentence{DbFault::NoFields, dberror::kNoFields,
             u"Die Tabelle \"%1\" hat keine Spalten."},
    Sentence{DbFault::AutoNumberWrong, dberror::kSyntax,
             u"Die Tabelle \"%1\" kann nur einen AutoWert haben, und nur in einer Long-Spalte."},
    Sentence{DbFault::IndexTwice, dberror::kIndexExists,
             u"Der Index \"%1\" ist in der Tabelle \"%2\" doppelt."},
    Sentence{DbFault::IndexNotThere, dberror::kItemNotFound,
             u"Die Tabelle \"%2\" hat keinen Index \"%1\"."},
    Sentence{DbFault::IndexWithoutFields, dberror::kNoFields,
             u"Der Index \"%1\" der Tabelle \"%2\" hat keine Spalten."},
    Sentence{DbFault::PrimaryTwice, dberror::kPrimaryExists,
             u"Die Tabelle \"%1\" hat bereits einen Primärschlüssel."},
    Sentence{DbFault::LinkWithoutFile, dberror::kSyntax,
             u"Die Verknüpfung \"%1\" nennt keine Datei."},
    Sentence{DbFault::TableOfOtherFile, dberror::kReadOnly,
             u"Die Tabelle \"%1\" gehört zu einer anderen Datei und kann nur dort umgebaut werden."},
    Sentence{DbFault::DefaultWrong, dberror::kSyntax,
             u"Der Standardwert %2 der Spalte \"%1\" kann nicht berechnet werden."},
    Sentence{DbFault::ParameterNotThere, dberror::kItemNotFound,
             u"Die Abfrage \"%2\" hat keinen Parameter \"%1\"."},
    Sentence{DbFault::ParameterWithoutValue, dberror::kTooFewParameters,
             u"Der Parameter \"%1\" hat keinen Wert."},

    Sentence{DbFault::OneStatementOnly, dberror::kSyntax,
             u"Erlaubt ist genau eine Anweisung."},
    Sentence{DbFault::SelectExecuted, dberror::kSelectExecuted,
             u"Eine Auswahlabfrage kann nicht ausgeführt, nur geöffnet werden."},
    Sentence{DbFault::ActionOpened, dberror::kInvalidOperation,
             u"Diese Anweisung liefert keine Datensätze."},

    Sentence{DbFault::ValueMismatch, dberror::kTypeMismatch,
             u"Der Wert passt nicht zum Typ der Spalte \"%1\"."},
    Sentence{DbFault::RowNumberMismatch, dberror::kTypeMismatch,
             u"Ein Wert passt nicht zum Typ des AutoWerts."},
    Sentence{DbFault::TextTooLong, dberror::kFieldTooSmall,
             u"Der Text ist zu lang für die Spalte \"%1\"."},
    Sentence{DbFault::TextEmpty, dberror::kZeroLength,
             u"Die Spalte \"%1\" nimmt keinen leeren Text auf."},
    Sentence{DbFault::ValueRequired, dberror::kRequired,
             u"Die Spalte \"%1\" muss einen Wert haben."},
    Sentence{DbFault::KeyNull, dberror::kNullInKey,
             u"Die Spalte \"%1\" gehört zum Primärschlüssel und muss einen Wert haben."},
    Sentence{DbFault::DuplicateKey, dberror::kDuplicateKey,
             u"Die Änderung ergäbe doppelte Werte in einem eindeutigen Index (%1)."},

    Sentence{DbFault::SetClosed, dberror::kObjectClosed,
             u"Die Datensatzgruppe ist geschlossen."},
    Sentence{DbFault::DatabaseClosed, dberror::kObjectClosed,
             u"Die Datenbank ist geschlossen."},
    Sentence{DbFault::NoCurrentRecord, dberror::kNoCurrentRecord,
             u"Es gibt keinen aktuellen Datensatz."},
    Sentence{DbFault::BookmarkInvalid, dberror::kBookmarkInvalid,
             u"Dieses Lesezeichen bezeichnet keinen Datensatz."},
    Sentence{DbFault::RecordDeleted, dberror::kRecordDeleted,
             u"Der Datensatz ist gelöscht."},
    Sentence{DbFault::UpdateWithoutEdit, dberror::kUpdateWithoutEdit,
             u"Vor dem Ändern und Schreiben fehlt AddNew oder Edit."},
    Sentence{DbFault::SetReadOnly, dberror::kReadOnly,
             u"Diese Datensätze können nur gelesen werden: jeder fasst mehrere zusammen."},
    Sentence{DbFault::FieldReadOnly, dberror::kFieldReadOnly,
             u"Die Spalte \"%1\" kann nicht geändert werden."},
    Sentence{DbFault::RowOfTwoTables, dberror::kReadOnly,
             u"Ein neuer Datensatz kann nur in eine Tabelle geschrieben werden, nicht zugleich in "
             u"\"%1\" und \"%2\"."},
    Sentence{DbFault::RowWithoutPartner, dberror::kReadOnly,
             u"Zu diesem Datensatz gibt es in der Tabelle \"%1\" keinen, der geändert werden könnte."},

    Sentence{DbFault::NoTransaction, dberror::kNoTransaction,
             u"Es ist keine Transaktion offen."},
    Sentence{DbFault::TransactionUndone, dberror::kNoTransaction,
             u"Die Transaktion wurde nach einem Fehler zurückgenommen."},
};

// clang-format on

/// The rows stand in the order of the kinds, so that the number of a kind is its place.
consteval bool inOrder()
{
    for (std::size_t i = 0; i < kSentences.size(); ++i) {
        if (kSentences[i].fault != static_cast<DbFault>(i)) {
            return false;
        }
    }
    return kSentences.back().fault == DbFault::TransactionUndone;
}

static_assert(inOrder());

/// Whether a sentence is this one, with any names in it.
bool says(const QString& sentence, const Sentence& known)
{
    static const QRegularExpression kName(QStringLiteral("%[12]"));
    const QStringList parts = QString::fromUtf16(known.text).split(kName);
    if (parts.size() == 1) {
        return sentence == parts.first();
    }
    qsizetype at = parts.first().size();
    if (!sentence.startsWith(parts.first()) || !sentence.endsWith(parts.last())) {
        return false;
    }
    for (const QString& part : parts.mid(1)) {
        const qsizetype found = sentence.indexOf(part, at);
        if (found < 0) {
            return false;
        }
        at = found + part.size();
    }
    return true;
}

} // namespace

int errorNumberOf(const QString& sentence)
{
    const auto* const found =
        std::find_if(kSentences.begin(), kSentences.end(),
                     [&sentence](const Sentence& known) { return says(sentence, known); });
    return found == kSentences.end() ? 0 : found->number;
}

DbError dbError(DbFault fault, const QString& first, const QString& second)
{
    const Sentence& sentence = kSentences[static_cast<std::size_t>(fault)];
    QString text = QString::fromUtf16(sentence.text);
    if (text.contains(u"%2")) {
        text = text.arg(first, second); // at once: the first name may hold a "%2" itself
    } else if (text.contains(u"%1")) {
        text = text.arg(first);
    }
    return {sentence.number, text};
}

} // namespace melovane
