#include "platform/db/db_error.h"
#include "platform/sqlite/engine/engine_changes.h"
#include "support/faulty_memory.h"
#include "support/faulty_vfs.h"
#include "support/proof.h"

#include <QHash>
#include <QRandomGenerator>

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <tuple>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

struct FaultKind
{
    const char* name;
    FileCall call;
    int code;
};

constexpr FaultKind kFileFaults[] = {
    {"open", FileCall::Open, SQLITE_CANTOPEN},
    {"delete", FileCall::Delete, SQLITE_IOERR_DELETE},
    {"look", FileCall::Look, SQLITE_IOERR_ACCESS},
    {"read", FileCall::Read, SQLITE_IOERR_READ},
    {"write", FileCall::Write, SQLITE_IOERR_WRITE},
    {"disk full", FileCall::Write, SQLITE_FULL},
    {"truncate", FileCall::Truncate, SQLITE_IOERR_TRUNCATE},
    {"sync", FileCall::Sync, SQLITE_IOERR_FSYNC},
    {"size", FileCall::Size, SQLITE_IOERR_FSTAT},
    {"lock", FileCall::Lock, SQLITE_IOERR_LOCK},
    {"map memory", FileCall::MapMemory, SQLITE_IOERR_SHMMAP},
    {"lock memory", FileCall::LockMemory, SQLITE_IOERR_SHMLOCK},
};

/// What the loops saw, all operations together; printed at the end of the full proof.
struct Tally
{
    int faults = 0;       ///< that occurred
    int told = 0;         ///< of them ended in an error
    int wholeAndTold = 0; ///< of those left the change whole all the same
};

/// Runs one operation over and over, each time with another fault, and looks at what it left.
class EngineFaults : public testing::TestWithParam<EngineChange>
{
protected:
    using Content = QMap<QString, QString>; ///< by file

    /// One scene serves all tests: it takes longer to make than to put back.
    static void TearDownTestSuite() { s_scene.reset(); }

    static Scene& scene()
    {
        if (!s_scene) {
            s_scene = std::make_unique<Scene>();
        }
        return *s_scene;
    }

    EngineFaults()
    {
        // Each operation comes in several tests.
        static QHash<QByteArray, std::pair<Content, Content>> known;
        if (!known.contains(GetParam().name)) {
            scene().reset();
            const Content before = scene().content();
            GetParam().run(scene());
            scene().close();
            known.insert(GetParam().name, {before, scene().content()});
        }
        std::tie(m_before, m_after) = known.value(GetParam().name);
        EXPECT_NE(m_before.value(u"melovane.mdb"_s), QString());
    }

    ~EngineFaults() override
    {
        scene().close();
        if (isFullProof()) {
            // tools/prove_engine.sh adds these up.
            const auto* info = testing::UnitTest::GetInstance()->current_test_info();
            std::printf("proof: faults %s %s %d %d %d\n", info->test_suite_name(), GetParam().name,
                        m_tally.faults, m_tally.told, m_tally.wholeAndTold);
            std::fflush(stdout);
        }
    }

    /// Runs the operation. \return true when it reported no error
    bool passes()
    {
        try {
            GetParam().run(scene());
            return true;
        } catch (const DbError& error) {
            EXPECT_FALSE(error.text().isEmpty());
            ++m_tally.told;
            return false;
        }
    }

    /// Each file is as before or as after the change, and as after it when it reported no error.
    void expectWholeOrAbsent(bool passed)
    {
        const Content content = scene().content();
        bool isWhole = true;
        for (auto file = m_after.cbegin(); file != m_after.cend(); ++file) {
            const QString found = content.value(file.key());
            isWhole &= found == file.value();
            EXPECT_TRUE(found == file.value() || (!passed && found == m_before.value(file.key())))
                << file.key().toStdString() << (passed ? ", no error reported" : ", with an error")
                << "\nfound:\n"
                << found.toStdString().substr(0, 1500);
        }
        for (const QString& name : content.keys()) {
            EXPECT_TRUE(m_after.contains(name)) << name.toStdString();
        }
        m_tally.wholeAndTold += !passed && isWhole ? 1 : 0;
    }

    void expectIntactFiles()
    {
        EXPECT_EQ(scene().damage(), QString());
        EXPECT_EQ(scene().litter(), QStringList());
    }

    /// The connection that met the fault goes on as if nothing had been.
    void expectUsable()
    {
        try {
            scene().db().Execute(u"update genre set genre_id=genre_id+1000"_s);
            const auto set = scene().db().OpenRecordset(u"genre"_s);
            EXPECT_GT(set->value(u"genre_id").toLong(), 1000);
        } catch (const DbError& error) {
            ADD_FAILURE() << error.number() << " " << error.text().toStdString();
        }
    }

    /// Looks at everything after a fault.
    void expectAllWell(bool passed)
    {
        expectWholeOrAbsent(passed);
        expectUsable();
        scene().close();
        expectIntactFiles();
    }

    Tally m_tally;
    /// The same at each run, another one for each operation.
    QRandomGenerator m_random{quint32(qHash(QByteArray(GetParam().name), 4711))};

private:
    inline static std::unique_ptr<Scene> s_scene;
    Content m_before;
    Content m_after;
};

class FilesThatFail : public EngineFaults
{
protected:
    /// \return false when the operation ended before the fault
    bool tryWith(const FaultKind& kind, int nth, bool lasting)
    {
        SCOPED_TRACE(testing::Message() << kind.name << " " << nth << (lasting ? " lasting" : ""));
        scene().reset();
        m_vfs.arm({kind.call, nth, kind.code, lasting});
        const bool passed = passes();
        const bool fired = m_vfs.disarm();
        m_tally.faults += fired ? 1 : 0;
        expectAllWell(passed);
        return fired;
    }

    /// A few faults somewhere in the operation, of other kinds for each operation.
    void tryFew()
    {
        constexpr int kFew = 3;
        scene().reset();
        m_vfs.arm({FileCall::Open, 0, 0, false});
        GetParam().run(scene());
        QHash<FileCall, int> counts;
        for (const FaultKind& kind : kFileFaults) {
            counts.insert(kind.call, m_vfs.count(kind.call));
        }
        for (int i = 0; i < kFew; ++i) {
            const FaultKind& kind = kFileFaults[m_random.bounded(int(std::size(kFileFaults)))];
            if (const int count = counts.value(kind.call); count > 0) {
                (void)tryWith(kind, 1 + int(m_random.bounded(count)), m_random.bounded(2) == 0);
            }
        }
    }

    ~FilesThatFail() override { scene().close(); }

    FaultyVfs m_vfs;
};

TEST_P(FilesThatFail, LeaveTheChangeWholeOrAbsent)
{
    if (!isFullProof()) {
        tryFew();
        return;
    }
    for (const FaultKind& kind : kFileFaults) {
        for (const bool lasting : {false, true}) {
            for (int nth = 1; tryWith(kind, nth, lasting) && !HasFailure(); ++nth) {
            }
        }
    }
}

class PowerThatFails : public FilesThatFail
{
protected:
    bool tryCut(int nth, quint32 seed)
    {
        SCOPED_TRACE(testing::Message() << "cut at " << nth << ", seed " << seed);
        scene().reset();
        m_vfs.armPowerCut(nth);
        const bool passed = passes();
        scene().close();
        const bool cut = m_vfs.restorePower(seed);
        m_tally.faults += cut ? 1 : 0;
        expectWholeOrAbsent(passed);
        expectIntactFiles();
        return cut;
    }

    int changesOfFiles()
    {
        scene().reset();
        m_vfs.armPowerCut(0);
        GetParam().run(scene());
        scene().close();
        (void)m_vfs.restorePower(0);
        return m_vfs.countOfChanges();
    }
};

TEST_P(PowerThatFails, LeavesTheChangeWholeOrAbsent)
{
    if (!GetParam().seenByFileLayer) {
        return; // renamed into place after a sync that this file layer does not see
    }
    if (!isFullProof()) {
        (void)tryCut(1 + int(m_random.bounded(changesOfFiles())), m_random.generate());
        return;
    }
    constexpr quint32 kSeeds = 8;
    for (quint32 seed = 1; seed <= kSeeds; ++seed) {
        for (int nth = 1; tryCut(nth, seed) && !HasFailure(); ++nth) {
        }
    }
}

class MemoryThatFails : public EngineFaults
{
protected:
    bool tryWith(int nth, bool lasting)
    {
        SCOPED_TRACE(testing::Message() << "request " << nth << (lasting ? " lasting" : ""));
        scene().reset();
        (void)scene().db();
        m_memory->arm(nth, lasting);
        const bool passed = passes();
        const bool fired = m_memory->disarm();
        m_tally.faults += fired ? 1 : 0;
        expectAllWell(passed);
        return fired;
    }

    int requests()
    {
        scene().reset();
        (void)scene().db();
        m_memory->arm(0, false);
        GetParam().run(scene());
        return m_memory->count();
    }

    MemoryThatFails()
    {
        scene().close();
        m_memory = std::make_unique<FaultyMemory>();
    }

    ~MemoryThatFails() override { scene().close(); }

    std::unique_ptr<FaultyMemory> m_memory;
};

TEST_P(MemoryThatFails, LeavesTheChangeWholeOrAbsent)
{
    if (!isFullProof()) {
        const int count = requests();
        (void)tryWith(1 + int(m_random.bounded(count)), m_random.bounded(2) == 0);
        return;
    }
    for (int nth = 1; tryWith(nth, false) && !HasFailure(); ++nth) {
    }
    // Memory that stays away takes much the same road from neighbouring requests.
    constexpr int kStep = 9;
    for (int nth = 1; tryWith(nth, true) && !HasFailure(); nth += kStep) {
    }
}

const auto kAll = testing::ValuesIn(engineChanges());

std::string nameOf(const testing::TestParamInfo<EngineChange>& test)
{
    return test.param.name;
}

INSTANTIATE_TEST_SUITE_P(Change, FilesThatFail, kAll, nameOf);
INSTANTIATE_TEST_SUITE_P(Change, PowerThatFails, kAll, nameOf);
INSTANTIATE_TEST_SUITE_P(Change, MemoryThatFails, kAll, nameOf);

} // namespace
} // namespace melovane::test
