#include "config/program_call.h"
#include "support/temp_folder.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

#include <gtest/gtest.h>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

QStringList allPrograms()
{
    return QString::fromUtf8(MLV_PROGRAMS).split(u'|');
}

struct Ended
{
    int code = -1;
    QString out;
    QString errors;
};

/// A program started where there is no display and nothing of a user, and waited for.
class ProgramCall : public testing::TestWithParam<QString>
{
protected:
    [[nodiscard]] Ended run(const QStringList& arguments, const QString& language = u"de_DE"_s)
    {
        QProcessEnvironment environment;
        environment.insert(u"LC_ALL"_s, language + u".UTF-8"_s);
        for (const QString& place : {u"HOME"_s, u"XDG_RUNTIME_DIR"_s, u"XDG_DATA_HOME"_s,
                                     u"XDG_CONFIG_HOME"_s, u"XDG_DOCUMENTS_DIR"_s}) {
            environment.insert(place, folder.path());
        }
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(folder.path());
        process.start(GetParam(), arguments);
        EXPECT_TRUE(process.waitForFinished(60'000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

    [[nodiscard]] static QString name() { return QFileInfo(GetParam()).fileName(); }

    /// Names of everything that a call has left behind.
    [[nodiscard]] QStringList left() const
    {
        return QDir(folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    TempFolder folder;
};

TEST_P(ProgramCall, HelpIsItsPageInTheTerminalsLanguageAndTouchesNothing)
{
    for (const QString& option : {u"--help"_s, u"-h"_s}) {
        const Ended german = run({option});
        EXPECT_EQ(german.code, 0);
        EXPECT_EQ(german.errors, QString());
        EXPECT_EQ(german.out, programPage(name(), PageLanguage::German) + u'\n');
    }
    EXPECT_EQ(run({u"--help"_s}, u"en_GB"_s).out,
              programPage(name(), PageLanguage::English) + u'\n');
    EXPECT_EQ(left(), QStringList());
}

TEST_P(ProgramCall, VersionIsOneLine)
{
    const Ended version = run({u"--version"_s});
    EXPECT_EQ(version.code, 0);
    EXPECT_EQ(version.out, u"%1 (Melovane) %2.%3.%4\n"_s.arg(name())
                               .arg(MLV_VERSION_MAJOR)
                               .arg(MLV_VERSION_MINOR)
                               .arg(MLV_VERSION_REVISION));
    EXPECT_EQ(left(), QStringList());
}

TEST_P(ProgramCall, AWrongCallEndsWithTwoAndOneLineThatNamesIt)
{
    const QString language = u"en_GB"_s;
    const Ended wrong = run({u"--no-such-option"_s, u"x\ny"_s}, language);
    EXPECT_EQ(wrong.code, 2);
    EXPECT_EQ(wrong.out, QString());
    EXPECT_TRUE(wrong.errors.startsWith(name() + u": \"--no-such-option"_s))
        << wrong.errors.toStdString();
    EXPECT_EQ(wrong.errors.count(u'\n'), 1);
    EXPECT_TRUE(wrong.errors.endsWith(u'\n'));
    EXPECT_EQ(left(), QStringList());
}

TEST_P(ProgramCall, ItsPageNamesTheCallAndTheResultsAndFitsATerminal)
{
    for (const PageLanguage language : {PageLanguage::German, PageLanguage::English}) {
        const QString page = programPage(name(), language);
        EXPECT_TRUE(page.startsWith(name() + u": "_s));
        for (const QString& word : {u"--help"_s, u"--version"_s, u": 0 "_s, u" 2 "_s}) {
            EXPECT_TRUE(page.contains(word)) << word.toStdString();
        }
        for (const QString& line : page.split(u'\n')) {
            EXPECT_LE(line.size(), 80) << line.toStdString();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All,
                         ProgramCall,
                         testing::ValuesIn(allPrograms()),
                         [](const auto& program) {
                             return QFileInfo(program.param).fileName().remove(u'.').toStdString();
                         });

TEST(ProgramArguments, TheToolKitsOwnAreNotForeign)
{
    EXPECT_FALSE(firstForeign({}));
    EXPECT_FALSE(
        firstForeign({u"-platform"_s, u"offscreen"_s, u"--style=fusion"_s, u"-reverse"_s}));
    EXPECT_EQ(firstForeign({u"-platform"_s, u"offscreen"_s, u"song.mp3"_s}), u"song.mp3"_s);
    EXPECT_EQ(firstForeign({u"--loud"_s}), u"--loud"_s);
    EXPECT_EQ(firstForeign({QString()}), QString());
}

TEST(ProgramArguments, TheDataFolderIsTakenInBothFormsAndHoldsForEveryProgramThatIsStarted)
{
    qunsetenv("MELOVANE_DATA_DIR");
    EXPECT_EQ(takeSuiteOptions({u"a.mp3"_s, u"--data-dir"_s, u"/tmp/my data"_s, u"b.mp3"_s}),
              (QStringList{u"a.mp3"_s, u"b.mp3"_s}));
    EXPECT_EQ(qgetenv("MELOVANE_DATA_DIR"), QByteArray("/tmp/my data"));
    EXPECT_EQ(takeSuiteOptions({u"--data-dir=here/../there"_s}), QStringList());
    EXPECT_EQ(qEnvironmentVariable("MELOVANE_DATA_DIR"), QDir::currentPath() + u"/there"_s);
    qunsetenv("MELOVANE_DATA_DIR");
    EXPECT_EQ(takeSuiteOptions({u"--data-dir"_s}), QStringList{u"--data-dir"_s});
    EXPECT_EQ(takeSuiteOptions({u"--data-dir="_s}), QStringList{u"--data-dir="_s});
    EXPECT_FALSE(qEnvironmentVariableIsSet("MELOVANE_DATA_DIR"));
}

} // namespace
} // namespace melovane::test
