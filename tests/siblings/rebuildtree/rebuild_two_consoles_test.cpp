#include "platform/sqlite/engine/sqlite_engine.h"
#include "rebuildtree_process.h"
#include "trees/library_tree_panel.h"

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The library tree of a console of its own, with its own connections to the library.
class Console
{
public:
    explicit Console(Suite& suite)
        : m_engine(sqlite::makeEngine(suite.clock))
        , m_settings(suite.folders.makeSettings(*m_engine))
        , m_texts(suite.folders.paths(), suite.folders.profile(), suite.folders.files())
        , m_bus(suite.folders.paths(), suite.folders.files(), suite.clock)
        , m_locator(suite.files, suite.dataFolder())
        , m_history(*m_engine, suite.files, suite.clock, *m_settings, {})
        , m_lists({*m_engine, *m_settings, suite.files, m_locator, m_history, {}}, suite.clock)
        , m_tree(parts(), m_form)
    {
        MelovaneConfiguration::fill(m_texts);
        m_settings->SetDbName(suite.dbName());
        m_tree.start();
    }

    /// Reads the trees anew, as behind the message of a rebuild. \return the keys of each kind
    QStringList rows()
    {
        BusSender(m_bus, u"MLVDB"_s).SendMessage(u"refresh.tree"_s, u"1111111"_s, {});
        QStringList keys;
        for (const auto& [kind, tool] : {std::pair(TreeKind::Dir, u"tree.dir"_s),
                                         {TreeKind::Genre, u"tree.genre"_s},
                                         {TreeKind::Album, u"tree.album"_s}}) {
            m_tree.toolPressed(tool);
            QStringList of;
            for (const TreeRow& row : m_form.pages[size_t(kind)].rows) {
                of.append(row.key);
            }
            keys.append(of.join(u'\n'));
        }
        return keys;
    }

    [[nodiscard]] const QStringList& failures() const { return m_failures; }

    [[nodiscard]] int rebuilds() const { return m_rebuilds; }

private:
    TreeParts parts()
    {
        return {.engine = *m_engine,
                .settings = *m_settings,
                .texts = m_texts,
                .lists = m_lists,
                .loop = m_loop,
                .bus = m_bus,
                .warnings = m_answers,
                .popup = m_answers,
                .sink = [this](const QString& where,
                               const QString& what) { m_failures.append(where + u": "_s + what); },
                .mayWrite = [] { return true; },
                .track = [](const QString&) { return MlvAllData(); },
                .cover = [](const MlvAllData&) { return QString(); },
                .placeOf = [](const QString& file) { return file; },
                .append = [](const QString&, Pnid) {},
                .startViewer = [] {},
                .rebuildTables = [this] { ++m_rebuilds; }};
    }

    std::unique_ptr<DBEngine> m_engine;
    std::unique_ptr<GlobalSettings> m_settings;
    ConfigObjects m_texts;
    MLVMessageBus m_bus;
    AnswerQueue m_answers;
    FileLocator m_locator;
    ListHistory m_history;
    MLVFunction m_lists;
    StillLoop m_loop;
    PlainTreeForm m_form;
    QStringList m_failures;
    int m_rebuilds = 0;
    Tree m_tree;
};

class TwoConsoles : public RebuildTreeProcess
{
protected:
    void fill(const QString& word)
    {
        const auto database = suite.open();
        database->Execute(u"delete from db_all"_s);
        Transaction transaction(*database);
        const auto tracks = database->OpenRecordset(u"select * from db_all"_s);
        for (int i = 0; i < kTracks; ++i) {
            tracks->AddNew();
            tracks->setValue(u"FID", QString::number(100'000'000'000 + i));
            tracks->setValue(u"Interpret", u"%1 %2"_s.arg(word).arg(i / 3));
            tracks->setValue(u"Album", u"%1 %2"_s.arg(word).arg(i / 2));
            tracks->setValue(u"Genre", u"%1 %2"_s.arg(word).arg(i % 40));
            tracks->setValue(u"Path", u"/%1/%2/%3/"_s.arg(word).arg(i % 50).arg(i));
            tracks->Update();
        }
        transaction.commit();
    }

    static constexpr int kTracks = 3000;
};

TEST_F(TwoConsoles, ShowTheOldTreesWhileTheyAreMadeAndTheNewOnesBehindTheMessage)
{
    fill(u"old"_s);
    EXPECT_EQ(run({u"1"_s}, 0), QString());
    ASSERT_TRUE(QTest::qWaitFor([this] { return !m_heard.isEmpty(); }));
    m_heard.clear();
    Console first(suite);
    Console second(suite);
    const QStringList before = first.rows();
    EXPECT_EQ(second.rows(), before);
    fill(u"new"_s);
    QProcess rebuild;
    rebuild.start(m_program, {u"1"_s});
    ASSERT_TRUE(rebuild.waitForStarted());
    QList<QStringList> seen;
    const auto isTold = [&] {
        seen.append(first.rows());
        seen.append(second.rows());
        return !m_heard.isEmpty();
    };
    EXPECT_TRUE(QTest::qWaitFor(isTold, 60'000));
    EXPECT_EQ(m_heard, QStringList{u"1056 200 1111111"_s});
    const QStringList after = first.rows();
    EXPECT_EQ(second.rows(), after);
    for (qsizetype kind = 0; kind < after.size(); ++kind) {
        EXPECT_TRUE(after[kind].contains(u"new"_s)) << kind;
        EXPECT_FALSE(after[kind].contains(u"old"_s)) << kind;
        for (const QStringList& rows : seen) {
            EXPECT_TRUE(rows[kind] == before[kind] || rows[kind] == after[kind])
                << "a tree that is empty or half, kind " << kind;
        }
    }
    // It may have ended while its message was waited for.
    EXPECT_TRUE(rebuild.state() == QProcess::NotRunning || rebuild.waitForFinished(60'000));
    EXPECT_EQ(rebuild.exitCode(), 0);
    for (const Console* console : {&first, &second}) {
        EXPECT_EQ(console->failures(), QStringList());
        EXPECT_EQ(console->rebuilds(), 0);
    }
}

} // namespace
} // namespace melovane::test
