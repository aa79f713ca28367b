#include "support/temp_folder.h"

#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

namespace melovane::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// The script on a machine where no package is installed, and where its package manager only notes
/// how it was called and fails.
class ProveListExchange : public testing::Test
{
protected:
    void SetUp() override
    {
        command(u"dpkg-query"_s, "exit 1");
        for (const QString& name : {u"apt-get"_s, u"sudo"_s}) {
            command(name, "echo \"$0 $*\" >> \"$(dirname \"$0\")/installed\"; exit 7");
        }
    }

    void command(const QString& name, const QByteArray& body)
    {
        folder.write(name, "#!/bin/sh\n" + body + '\n');
        QFile::setPermissions(folder.file(name),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    int run(const QStringList& arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"PATH"_s, folder.path() + u':' + environment.value(u"PATH"_s));
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QString::fromUtf8(MLV_TOOLS "/prove_list_exchange.sh"), arguments);
        EXPECT_TRUE(process.waitForFinished(60'000));
        errors = QString::fromUtf8(process.readAllStandardError());
        return process.exitCode();
    }

    [[nodiscard]] bool hasInstalled() const { return QFile::exists(folder.file(u"installed"_s)); }

    TempFolder folder;
    QString errors;
};

TEST_F(ProveListExchange, UnaskedItInstallsNothingAndSaysWhatIsMissing)
{
    EXPECT_EQ(run({}), 2);
    EXPECT_FALSE(hasInstalled());
    EXPECT_TRUE(errors.contains(u"mpd mpc moc mpg123"_s)) << errors.toStdString();
    EXPECT_TRUE(errors.contains(u"--install"_s)) << errors.toStdString();
}

TEST_F(ProveListExchange, AskedItInstalls)
{
    EXPECT_EQ(run({u"--install"_s}), 7);
    EXPECT_TRUE(hasInstalled());
}

TEST_F(ProveListExchange, AnotherArgumentIsAWrongCall)
{
    EXPECT_EQ(run({u"--fly"_s}), 2);
    EXPECT_FALSE(hasInstalled());
    EXPECT_FALSE(errors.isEmpty());
}

} // namespace
} // namespace melovane::test
