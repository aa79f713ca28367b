#include "support/suite_fixture.h"

#include <QProcess>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

namespace {

struct Outcome
{
    int code = -1;
    QByteArray said;
};

/// Runs the tool that the build calls.
Outcome makeDatabase(const QStringList& arguments)
{
    QProcess tool;
    tool.setProcessChannelMode(QProcess::MergedChannels);
    tool.start(QStringLiteral(MLV_MAKEDATABASE), arguments);
    EXPECT_TRUE(tool.waitForFinished());
    EXPECT_EQ(tool.exitStatus(), QProcess::NormalExit);
    return {tool.exitCode(), tool.readAll()};
}

} // namespace

TEST(MakeDatabase, MakesADatabaseThatPassesTheOpenTest)
{
    test::Suite suite(test::Suite::SideFiles::None);
    suite.engine->Release(suite.dbName());
    const Outcome outcome = makeDatabase({test::schemaFolder(), suite.dbName()});
    EXPECT_EQ(outcome.code, 0) << outcome.said.constData();
    EXPECT_EQ(outcome.said, QByteArray());
    EXPECT_EQ(suite.check().openTest(), QString());
    EXPECT_EQ(suite.value(u"select count(*) as anz from genre"_s).toLong(), 193);
}

TEST(MakeDatabase, SourcesThatAreNotThereFailWithTheirNameAndMakeNothing)
{
    const test::TempFolder folder;
    const Outcome outcome = makeDatabase({folder.file(u"none"_s), folder.file(u"x.mdb"_s)});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.said.contains("none/tables.txt")) << outcome.said.constData();
    EXPECT_FALSE(LinuxFiles().fileExists(folder.file(u"x.mdb"_s)));
}

TEST(MakeDatabase, MissingArgumentsAreTold)
{
    const Outcome outcome = makeDatabase({test::schemaFolder()});
    EXPECT_EQ(outcome.code, 2);
    EXPECT_TRUE(outcome.said.startsWith("makedatabase: "));
}
