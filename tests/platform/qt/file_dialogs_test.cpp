#include "platform/qt/file_dialogs.h"
#include "support/temp_folder.h"
#include "support/wait_for.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QTimer>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct flock lockOf(short kind)
{
    struct flock lock = {};
    lock.l_type = kind;
    lock.l_whence = SEEK_SET;
    lock.l_start = 0;
    lock.l_len = 1;
    return lock;
}

/// As another program of the suite sees it.
bool isLockedForOthers(const QString& file)
{
    const QByteArray path = QFile::encodeName(file);
    const pid_t other = ::fork();
    if (other == 0) {
        const int number = ::open(path.constData(), O_RDWR | O_CLOEXEC);
        struct flock lock = lockOf(F_WRLCK);
        ::_exit(number >= 0 && ::fcntl(number, F_SETLK, &lock) != 0 ? 1 : 0);
    }
    int state = 0;
    ::waitpid(other, &state, 0);
    return WIFEXITED(state) && WEXITSTATUS(state) == 1;
}

class FileDialogsTest : public testing::Test
{
protected:
    FileDialogsTest()
    {
        m_number = ::open(QFile::encodeName(m_file).constData(), O_RDWR | O_CLOEXEC);
        struct flock lock = lockOf(F_RDLCK);
        EXPECT_EQ(::fcntl(m_number, F_SETLK, &lock), 0);
    }

    ~FileDialogsTest() override { ::close(m_number); }

    /// Looks at the dialog when it has read all of the folder, then leaves it.
    void lookAtDialog()
    {
        QTimer::singleShot(0, qApp, [this] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            auto* rows = dialog->findChild<QFileSystemModel*>();
            ASSERT_NE(rows, nullptr);
            m_isRead = test::waitFor([&] { return !rows->type(rows->index(m_file)).isEmpty(); });
            m_kind = rows->type(rows->index(m_file));
            dialog->reject();
        });
    }

    test::TempFolder m_folder;
    QString m_file = m_folder.write(u"melovane.mdb-shm"_s, QByteArray(32768, '\0'));
    int m_number = -1;
    bool m_isRead = false;
    QString m_kind;
};

TEST_F(FileDialogsTest, FilesOfAFolderThatIsShownKeepTheLocksOfThisProgram)
{
    const std::function<void()> questions[] = {
        [this] { (void)askFile(nullptr, u"one"_s, m_folder.path(), {}); },
        [this] { (void)askFiles(nullptr, u"some"_s, m_folder.path(), {}); },
        [this] { (void)askSaveFile(nullptr, u"new"_s, m_folder.file(u"list.m3u"_s), {}); }};
    ASSERT_TRUE(isLockedForOthers(m_file));
    for (const auto& question : questions) {
        m_isRead = false;
        lookAtDialog();
        question();
        EXPECT_TRUE(m_isRead);
        EXPECT_TRUE(isLockedForOthers(m_file));
    }
}

TEST_F(FileDialogsTest, AProposalThatIsNotThereShowsTheNearestFolderAndKeepsItsName)
{
    const auto asked = [](const QString& from) {
        std::pair<QString, QString> shown;
        QTimer::singleShot(0, qApp, [&shown] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            shown = {dialog->directory().absolutePath(),
                     dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->text()};
            dialog->reject();
        });
        EXPECT_TRUE(askSaveFile(nullptr, u"new"_s, from, {}).isEmpty());
        return shown;
    };
    EXPECT_EQ(asked(m_folder.file(u"gone/too/list.m3u"_s)),
              std::pair(m_folder.path(), u"list.m3u"_s));
    EXPECT_EQ(asked(m_folder.path()), std::pair(m_folder.path(), QString()));
    EXPECT_EQ(asked(u"list.m3u"_s), std::pair(QDir::homePath(), u"list.m3u"_s));
}

TEST_F(FileDialogsTest, AFolderThatIsNotThereIsNoAnswer)
{
    QString typed = u"nothing was looked at"_s;
    QTimer::singleShot(0, qApp, [&typed] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        typed = dialog->findChild<QLineEdit*>(u"fileNameEdit"_s)->text();
        dialog->reject();
    });
    EXPECT_TRUE(askFolder(nullptr, u"folder"_s, m_folder.file(u"gone"_s)).isEmpty());
    EXPECT_EQ(typed, QString());
}

TEST_F(FileDialogsTest, TheKindOfAFileIsToldByItsName)
{
    m_file = m_folder.write(u"list.txt"_s, QByteArray(8, '\0'));
    lookAtDialog();
    EXPECT_TRUE(askFile(nullptr, u"one"_s, m_folder.path(), {}).isEmpty());
    EXPECT_FALSE(m_kind.contains(u"octet"_s));
    EXPECT_TRUE(m_kind.contains(u"text"_s, Qt::CaseInsensitive)) << m_kind.toStdString();
}

} // namespace
} // namespace melovane
