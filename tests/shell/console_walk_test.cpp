#include "bus/message_numbers.h"
#include "shell/console_process.h"
#include "shell/library_file.h"
#include "support/mp3_maker.h"
#include "support/wait_for.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <array>
#include <functional>

/// Random actions of two users at two consoles beside an importer and a program that takes the
/// library for itself, while the settings change between two libraries.
namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int kTracks = 40;
constexpr int kEntries = 8;

/// Actions between two looks at everything.
constexpr int kBurst = 25;

/// As many steps as there are.
const QString kAll = u"100000"_s;

const QByteArray kEntriesOfAll = "select * from pl_all order by PLID";

/// What one has and the other has not, a line each; empty for equal ones.
std::string difference(const QStringList& is, const QStringList& wanted)
{
    if (is == wanted) {
        return {};
    }
    QStringList lines;
    for (qsizetype i = 0; i < std::max(is.size(), wanted.size()); ++i) {
        if (is.value(i) != wanted.value(i)) {
            lines.append(
                u"%1: is \"%2\", wanted \"%3\""_s.arg(i).arg(is.value(i), wanted.value(i)));
        }
    }
    return lines.mid(0, 12).join(u'\n').toStdString();
}

QStringList textsOf(const QJsonValue& value)
{
    QStringList texts;
    for (const QJsonValue& text : value.toArray()) {
        texts.append(text.toString());
    }
    return texts;
}

/// A console, and the library that must be on its screen.
struct Desk
{
    std::unique_ptr<ConsoleProcess> console;
    size_t library = 0;
};

class ConsoleWalk : public testing::Test
{
protected:
    ConsoleWalk()
    {
        for (size_t i = 0; i < m_suites.size(); ++i) {
            fill(m_suites[i], i);
            m_libraries.emplace_back(m_suites[i].dbName());
            m_begin.push_back(m_libraries[i].rows(kEntriesOfAll));
        }
        for (size_t i = 0; i < m_suites.size(); ++i) {
            const QString runtime = m_suites[0].folders.places().runtimeBase;
            m_suites[i].folders.makeSettings()->SetDbName(m_libraries[0].name());
            m_desks[i].console = std::make_unique<ConsoleProcess>(
                m_suites[i], i == 0 ? u"MelovaneDB"_s : u"MelovaneDB2"_s, runtime);
        }
        m_away[1] = m_libraries[1].bytes();
    }

    /// A library whose lists and tracks say which one it is.
    static void fill(Suite& suite, size_t number)
    {
        const QString sign = signOf(number);
        QStringList tracks;
        for (int i = 0; i < kTracks; ++i) {
            tracks.append(suite.library.add({.Titel = u"%1 track %2"_s.arg(sign).arg(i),
                                             .Interpret = u"Artist %1"_s.arg(i % 7),
                                             .Album = u"Album %1"_s.arg(i % 5)}));
        }
        const int group = suite.library.addGroup(sign + u" group"_s);
        for (int i = 0; i < 3; ++i) {
            suite.library.addPlaylist({.Name = u"%1 list %2"_s.arg(sign).arg(i),
                                       .GRID = group,
                                       .tracks = tracks.mid(i * kEntries, kEntries),
                                       .IsPlay = i == 0});
        }
        suite.engine->Release(suite.dbName());
        EXPECT_TRUE(QFile::copy(QString::fromUtf8(MLV_MEDIAINTAKE), suite.file(u"mediaintake"_s)));
    }

    static QString signOf(size_t library) { return library == 0 ? u"One"_s : u"Two"_s; }

    // -- Chance --

    int random(int end) { return int(m_random.bounded(quint32(end))); }

    QString row() { return QString::number(random(200)); }

    QString few() { return QString::number(1 + random(3)); }

    template <typename Row> const Row& oneOf(const std::vector<Row>& rows)
    {
        return rows[size_t(random(int(rows.size())))];
    }

    // -- What a user does at a window --

    QStringList userAction(size_t library)
    {
        using Action = std::function<QStringList()>;
        const QString sign = signOf(library);
        const std::vector<Action> actions = {
            [&] {
                return QStringList{
                    u"search"_s, oneOf<QString>({{}, u"track"_s, u"track 1"_s, u"art"_s, u"x9"_s})};
            },
            [&] {
                return QStringList{u"cell"_s, row(),
                                   oneOf<QString>({u"Album"_s, u"Titel"_s, u"Kommentar"_s}),
                                   u"%1 typed %2"_s.arg(sign).arg(m_actions)};
            },
            [&] {
                return QStringList{u"newlist"_s, u"%1 new %2"_s.arg(sign).arg(m_actions)};
            },
            [&] {
                return QStringList{u"newgroup"_s, u"%1 new %2"_s.arg(sign).arg(m_actions)};
            },
            [&] {
                return QStringList{u"open"_s, row()};
            },
            [&] {
                return QStringList{u"open"_s, row()};
            },
            [&] {
                return QStringList{u"append"_s, row(), few()};
            },
            [&] {
                return QStringList{u"append"_s, row(), few()};
            },
            [&] {
                return QStringList{u"paste"_s, oneOf<QString>({u"list"_s, u"library"_s}), row(),
                                   few(), row()};
            },
            [&] {
                return QStringList{u"move"_s, row(), oneOf<QString>({u"up"_s, u"down"_s})};
            },
            [&] {
                return QStringList{u"move"_s, row(), oneOf<QString>({u"up"_s, u"down"_s})};
            },
            [&] {
                return QStringList{u"remove"_s, row(), few()};
            },
            [&] { return QStringList{u"droplist"_s}; },
            [&] {
                return QStringList{u"undo"_s, few()};
            },
            [&] {
                return QStringList{u"undo"_s, few()};
            },
            [&] {
                return QStringList{u"redo"_s, few()};
            },
            [&] {
                return QStringList{u"rate"_s, row(), few(), QString::number(random(6))};
            },
            [&] {
                return QStringList{u"toggle"_s, row(), few()};
            },
            [&] {
                return QStringList{u"sort"_s, oneOf<QString>({u"Titel"_s, u"Interpret"_s})};
            },
            [&] { return QStringList{u"reload"_s}; },
            [&] {
                return QStringList{u"save"_s, m_exports.file(u"list%1"_s.arg(m_actions))};
            },
        };
        return oneOf(actions)();
    }

    void act(Desk& desk)
    {
        const QStringList words = userAction(desk.library);
        tell(desk, words.join(u' '));
        const QJsonObject answer = watched(desk, [&] { return desk.console->act(words); });
        // Who deletes a list is asked, and who saves one that is lent is told, nobody else.
        if (words[0] != "droplist"_L1 && (words[0] != "save"_L1 || m_borrowers.empty())) {
            EXPECT_EQ(difference(textsOf(answer[u"asked"_s]), {}), "");
        }
        checkLent();
    }

    /// Nothing is written to the other library meanwhile; a console that shows it stands still.
    QJsonObject watched(const Desk& desk, const std::function<QJsonObject()>& work)
    {
        const size_t other = 1 - desk.library;
        if (isImporting(other)) {
            return work();
        }
        const Desk& neighbour = m_desks[&desk == &m_desks[0] ? 1 : 0];
        const bool stands = neighbour.library == other;
        if (stands) {
            neighbour.console->stop();
        }
        const Look before = look(other);
        const QJsonObject answer = work();
        EXPECT_EQ(differentTables(look(other), before), "")
            << "written to the library that is not on the screen";
        if (stands) {
            neighbour.console->goOn();
        }
        return answer;
    }

    // -- What other programs do --

    void startImport(Desk& desk)
    {
        if (m_importer || !m_borrowers.empty()) {
            return;
        }
        const QString folder = u"import%1"_s.arg(m_actions);
        for (int i = 0; i < 4; ++i) {
            m_music.write(
                u"%1/%2.mp3"_s.arg(folder).arg(i),
                simpleMp3(u"%1 import %2 %3"_s.arg(signOf(desk.library)).arg(m_actions).arg(i),
                          u"Importer"_s));
        }
        tell(desk, u"import"_s);
        m_importInto = desk.library;
        m_tracksBefore = countTracks(desk.library);
        m_importer = std::make_unique<QProcess>();
        m_importer->setProcessEnvironment(desk.console->environment());
        m_importer->start(desk.console->suite().file(u"mediaintake"_s),
                          {u"1"_s, u"--folder"_s, m_music.file(folder), u"--quiet"_s});
    }

    void finishImport()
    {
        if (m_importer) {
            EXPECT_TRUE(ended(*m_importer)) << m_importer->readAllStandardError().toStdString();
            m_importer.reset();
            EXPECT_EQ(countTracks(m_importInto), m_tracksBefore + 4);
        }
    }

    [[nodiscard]] bool isImporting(size_t library) const
    {
        return m_importer && m_importInto == library;
    }

    int countTracks(size_t library)
    {
        return m_libraries[library].number("select count(*) from db_all");
    }

    /// A program takes the libraries of both consoles for itself; they have to let go of them.
    void lend()
    {
        finishImport();
        note(u"lend"_s);
        for (const Desk& desk : m_desks) {
            m_borrowers.push_back(desk.console->send({u"hold"_s}));
            QProcess& borrower = *m_borrowers.back();
            EXPECT_TRUE(waitFor([&] { return borrower.canReadLine(); }));
            EXPECT_EQ(borrower.readLine(), "released\n");
        }
        for (const LibraryFile& library : m_libraries) {
            m_lent.push_back(library.bytes());
        }
        checkLent();
    }

    void checkLent()
    {
        for (size_t i = 0; i < m_lent.size(); ++i) {
            EXPECT_TRUE(m_libraries[i].bytes() == m_lent[i]) << "written while it was lent";
            EXPECT_TRUE(m_libraries[i].isAlone()) << "opened while it was lent";
        }
    }

    void giveBack()
    {
        if (m_borrowers.empty()) {
            return;
        }
        const bool isKilled = random(4) == 0;
        note(isKilled ? u"the borrower dies"_s : u"give back"_s);
        checkLent();
        m_lent.clear();
        if (random(2) == 0) {
            Suite& suite = m_suites[m_desks[0].library];
            suite.library.add({.Titel = signOf(m_desks[0].library) + u" lent"_s});
            suite.engine->Release(suite.dbName());
        }
        for (const auto& borrower : m_borrowers) {
            if (isKilled) {
                borrower->kill();
                EXPECT_TRUE(waitFor([&] { return borrower->state() == QProcess::NotRunning; }));
            } else {
                borrower->write("\n");
                EXPECT_TRUE(ended(*borrower));
            }
        }
        m_borrowers.clear();
        for (Desk& desk : m_desks) {
            EXPECT_TRUE(waitFor([&] { return !isLent(desk); }));
            // What the settings named meanwhile is opened now.
            desk.library = namedBy(desk);
        }
        markAway();
    }

    static bool isLent(Desk& desk)
    {
        return desk.console->state()[u"lent"_s].toString().startsWith(u"Ein anderes Programm"_s);
    }

    [[nodiscard]] size_t namedBy(Desk& desk) const
    {
        const QString name = desk.console->suite().folders.makeSettings()->DbName();
        return name == m_libraries[0].name() ? 0 : 1;
    }

    /// Another program has changed the settings.
    void changeLibrary(Desk& desk)
    {
        finishImport();
        const size_t library = 1 - namedBy(desk);
        tell(desk, u"change to "_s + signOf(library));
        desk.console->nameLibrary(m_libraries[library].name());
        desk.console->tell(oneOf<qint32>(
            {message::kConfigChanged, message::kDatabaseChanged, message::kSoundCardChanged}));
        if (m_borrowers.empty()) {
            desk.library = library;
            markAway();
        }
        checkLent();
    }

    // -- What must hold --

    /// A library from outside: its rows while a console shows it, else its bytes.
    struct Look
    {
        QMap<QString, QByteArray> tables;
        QByteArray bytes;
    };

    /// Names of the tables that differ, or "file".
    static std::string differentTables(const Look& now, const Look& before)
    {
        QStringList names;
        for (const QString& name : now.tables.keys() + before.tables.keys()) {
            if (now.tables.value(name) != before.tables.value(name)) {
                names.append(name);
            }
        }
        if (now.bytes != before.bytes) {
            names.append(u"file"_s);
        }
        return names.join(u' ').toStdString();
    }

    Look look(size_t library)
    {
        if (m_borrowers.empty() && isShown(library)) {
            return {m_libraries[library].tables(), {}};
        }
        return {{}, m_libraries[library].bytes()};
    }

    [[nodiscard]] bool isShown(size_t library) const
    {
        return std::any_of(m_desks.begin(), m_desks.end(),
                           [&](const Desk& desk) { return desk.library == library; });
    }

    /// From the moment at which no console shows a library, nothing of it may change.
    void markAway()
    {
        for (size_t i = 0; i < m_libraries.size(); ++i) {
            if (isShown(i)) {
                m_away[i].clear();
            } else if (m_away[i].isEmpty()) {
                EXPECT_TRUE(m_libraries[i].isAlone()) << "still open behind a change of library";
                m_away[i] = m_libraries[i].bytes();
            }
        }
    }

    void checkEverything()
    {
        finishImport();
        giveBack();
        for (size_t i = 0; i < m_libraries.size(); ++i) {
            if (!m_away[i].isEmpty()) {
                EXPECT_TRUE(m_libraries[i].bytes() == m_away[i])
                    << "written while no console showed it";
            } else {
                checkCounts(m_libraries[i]);
            }
        }
        for (Desk& desk : m_desks) {
            checkScreen(desk);
        }
        for (Desk& desk : m_desks) {
            checkHistory(desk);
        }
    }

    static void checkCounts(const LibraryFile& library)
    {
        EXPECT_EQ(difference(library.rows("select NID, anzahl from pl_name where anzahl <> "
                                          "(select count(*) from pl_all where PNID = NID)"),
                             {}),
                  "");
        EXPECT_EQ(difference(library.rows("select PLID from pl_all where PNID not in "
                                          "(select NID from pl_name)"),
                             {}),
                  "");
    }

    /// The screen shows the library that the settings name, as it is.
    void checkScreen(Desk& desk)
    {
        desk.console->act({u"search"_s, signOf(desk.library)});
        const QJsonObject screen = desk.console->act({u"reload"_s});
        const LibraryFile& library = m_libraries[desk.library];
        EXPECT_EQ(namedBy(desk), desk.library);
        QStringList lists = textsOf(screen[u"lists"_s]);
        lists.sort();
        QStringList known = library.rows("select NID from pl_name where Activ");
        known.sort();
        EXPECT_EQ(difference(lists, known), "")
            << "console " << (&desk - m_desks.data()) << ", in the file:\n"
            << library.rows("select * from pl_name").join(u'\n').toStdString()
            << "\ntold: " << screen[u"status"_s].toString().toStdString();
        EXPECT_EQ(screen[u"tracks"_s].toInt(), library.number("select count(*) from db_all"));
        if (const QString open = screen[u"open"_s].toString(); !open.isEmpty()) {
            // The user may have gone on to a group, whose row opens nothing.
            if (const QString marked = screen[u"marked"_s].toString(); !marked.isEmpty()) {
                EXPECT_EQ(difference(library.rows("select Name from pl_name where NID = " +
                                                  marked.toUtf8()),
                                     {open}),
                          "")
                    << "the marked list is not the open one";
            }
            EXPECT_EQ(
                difference(
                    textsOf(screen[u"entries"_s]),
                    library.rows("select Titel from pl_all join db_all on pl_all.FID = db_all.FID "
                                 "collate binary join pl_name on PNID = NID where Name = '" +
                                 open.toUtf8() + "' order by pl_all.SID, PLID desc")),
                "");
        }
    }

    /// All that was done to lists can be taken back to the first state, and done once more.
    void checkHistory(Desk& desk)
    {
        note(u"all back and forth over "_s + signOf(desk.library));
        const LibraryFile& library = m_libraries[desk.library];
        desk.console->act({u"redo"_s, kAll});
        const QStringList last = library.rows(kEntriesOfAll);
        const int back = desk.console->act({u"undo"_s, kAll})[u"done"_s].toInt();
        EXPECT_EQ(difference(library.rows(kEntriesOfAll), m_begin[desk.library]), "");
        checkCounts(library);
        const int forth = desk.console->act({u"redo"_s, kAll})[u"done"_s].toInt();
        EXPECT_EQ(forth, back);
        EXPECT_EQ(difference(library.rows(kEntriesOfAll), last), "");
        checkCounts(library);
        m_steps = std::max(m_steps, back);
    }

    // -- The walk --

    void step()
    {
        ++m_actions;
        Desk& desk = m_desks[size_t(random(2))];
        switch (random(30)) {
        case 0:
            startImport(desk);
            break;
        case 1:
            finishImport();
            break;
        case 2:
        case 3:
            m_borrowers.empty() ? lend() : giveBack();
            break;
        case 4:
            changeLibrary(desk);
            break;
        default:
            act(desk);
        }
    }

    void walk(quint32 seed, int actions)
    {
        m_random.seed(seed);
        checkEverything();
        for (int i = 1; i <= actions && !HasFailure(); ++i) {
            step();
            if (i % kBurst == 0 || i == actions) {
                checkEverything();
            }
        }
        if (HasFailure()) {
            ADD_FAILURE()
                << "seed " << seed << ", the last actions:\n"
                << m_told.mid(std::max<qsizetype>(0, m_told.size() - 40)).join(u'\n').toStdString();
        }
        finishImport();
        giveBack();
    }

    void note(const QString& text) { m_told.append(u"%1 "_s.arg(m_actions) + text); }

    void tell(const Desk& desk, const QString& text)
    {
        note(u"console %1 (%2): "_s.arg(&desk - m_desks.data()).arg(signOf(desk.library)) + text);
    }

    std::array<Suite, 2> m_suites;
    std::vector<LibraryFile> m_libraries;
    std::vector<QStringList> m_begin; ///< entries of all lists before the first action
    std::array<QByteArray, 2> m_away; ///< sums of libraries that no console shows
    TempFolder m_music;
    TempFolder m_exports;
    std::array<Desk, 2> m_desks;
    std::unique_ptr<QProcess> m_importer;
    size_t m_importInto = 0;
    int m_tracksBefore = 0;
    std::vector<std::unique_ptr<QProcess>> m_borrowers;
    std::vector<QByteArray> m_lent; ///< sums of the libraries while they are lent
    QRandomGenerator m_random;
    int m_actions = 0;
    int m_steps = 0; ///< most of a history
    QStringList m_told;
};

int numberFrom(const char* variable, int fallback)
{
    return qEnvironmentVariableIntValue(variable) > 0 ? qEnvironmentVariableIntValue(variable)
                                                      : fallback;
}

TEST_F(ConsoleWalk, NothingIsWrittenToALibraryThatIsNotOnTheScreenAndEveryStepCanBeTakenBack)
{
    const int actions = numberFrom("MLV_WALK_ACTIONS", 80);
    const int seed = numberFrom("MLV_WALK_SEED", 1);
    walk(quint32(seed), actions);
    std::printf("proof: %d actions with seed %d, %d steps taken back and done again\n", m_actions,
                seed, m_steps);
}

} // namespace
} // namespace melovane::test
