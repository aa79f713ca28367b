#pragma once

#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_messages.h"
#include "support/suite_fixture.h"

#include <QFile>
#include <QProcess>
#include <QTest>

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;

/// The program as the console starts it: beside its settings and its database.
class RebuildTreeProcess : public SuiteFixture
{
protected:
    void SetUp() override
    {
        m_program = suite.file(u"Task.RebuildTree"_s);
        ASSERT_TRUE(QFile::copy(QString::fromUtf8(MLV_REBUILDTREE), m_program));
        suite.library.add({.Interpret = u"Anna"_s, .Album = u"Eins"_s, .Genre = u"Pop"_s});
        LinuxMessages messages(MessagePlace(LinuxEnvironment().runtimeFolder()));
        m_console = messages.makeControl();
        m_console->setMessageNumber([this](qint32 id, qint32 wParam, qint32 lParam) {
            m_heard.append(u"%1 %2 %3"_s.arg(id).arg(wParam).arg(lParam));
            return 0;
        });
        suite.write(u"melovane.ini"_s,
                    "[Message]\nHandle.DB=" + QByteArray::number(m_console->handle()) + "\n");
    }

    QString run(const QStringList& arguments, int code)
    {
        QProcess process;
        process.start(m_program, arguments);
        EXPECT_TRUE(process.waitForFinished(60'000));
        EXPECT_EQ(process.exitCode(), code);
        return QString::fromUtf8(process.readAllStandardOutput() + process.readAllStandardError());
    }

    [[nodiscard]] QStringList names(const QString& table) const
    {
        return suite.column(u"select Name from %1 order by id"_s.arg(table));
    }

    QString m_program;
    std::unique_ptr<KSMessage> m_console;
    QStringList m_heard;
};

} // namespace melovane::test
