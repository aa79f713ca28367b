#include "support/suite_fixture.h"

#include <QProcess>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

namespace {

struct Ended
{
    int code = -1;
    QString out;
};

/// The program beside a library of its own.
class CheckProcess : public test::SuiteFixture
{
protected:
    CheckProcess()
    {
        suite.write(u"MelovaneCheck"_s, QByteArray());
        suite.files.remove(suite.file(u"MelovaneCheck"_s));
        QFile::copy(QStringLiteral(MLV_MELOVANECHECK), suite.file(u"MelovaneCheck"_s));
        suite.library.addPlaylist({.Name = u"Abend"_s, .tracks = {suite.library.add()}});
        suite.execute(u"update pl_name set anzahl=1, sicherung=true"_s);
    }

    [[nodiscard]] Ended run(const QStringList& arguments)
    {
        suite.engine->Release(suite.dbName());
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_s, suite.dataFolder());
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(suite.file(u"MelovaneCheck"_s), arguments);
        EXPECT_TRUE(process.waitForFinished(60'000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput())};
    }
};

} // namespace

TEST_F(CheckProcess, AWholeLibraryEndsWith0)
{
    const Ended ended = run({});
    EXPECT_EQ(ended.code, 0) << ended.out.toStdString();
    EXPECT_EQ(ended.out, u"Die Datenbank ist in Ordnung.\n"_s);
}

TEST_F(CheckProcess, FindingsEndWith1AndAreMendedOnWish)
{
    suite.execute(u"update pl_name set anzahl=9"_s);
    EXPECT_EQ(run({}).code, 1);
    EXPECT_TRUE(run({u"--quick"_s}).out.contains(u"Abend"_s));
    EXPECT_EQ(suite.value(u"select anzahl from pl_name"_s).toLong(), 9);
    EXPECT_EQ(run({u"--repair"_s}).code, 0);
    EXPECT_EQ(suite.value(u"select anzahl from pl_name"_s).toLong(), 1);
}

TEST_F(CheckProcess, AWrongCallEndsWith2)
{
    EXPECT_EQ(run({u"--mend"_s}).code, 2);
    EXPECT_EQ(run({u"--repair"_s, u"x.mdb"_s}).code, 2);
}

TEST_F(CheckProcess, WhatCannotBeReadEndsWith3)
{
    const QString file = suite.write(u"foreign.mdb"_s, QByteArray(9000, 'x'));
    const Ended ended = run({file});
    EXPECT_EQ(ended.code, 3);
    EXPECT_TRUE(ended.out.contains(file)) << ended.out.toStdString();
}

TEST_F(CheckProcess, ACopyIsCheckedByItsName)
{
    suite.check().backup(343);
    const QString copy = suite.file(u"Melovane.Backup.(343).20260314_150926.mdb"_s);
    EXPECT_EQ(run({copy}).code, 0);
}
