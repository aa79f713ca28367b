#include "platform/linux/library_loan.h"
#include "platform/linux/linux_files.h"
#include "support/temp_folder.h"

#include <QDir>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

class LibraryLoanTest : public testing::Test
{
protected:
    LinuxFiles files;
    test::TempFolder folder;
    QString library = folder.file(u"melovane.mdb"_s);
    LibraryLoan console{files, {QString(), folder.path()}};
    LibraryLoan sibling{files, {folder.path()}};
};

TEST_F(LibraryLoanTest, ALibraryIsLentFromItsBeginningToItsEndAndNoOtherOneIs)
{
    EXPECT_FALSE(sibling.isLent(library));
    console.begin(library);
    EXPECT_TRUE(sibling.isLent(library));
    EXPECT_FALSE(sibling.isLent(folder.file(u"andere.mdb"_s)));
    console.end();
    EXPECT_FALSE(sibling.isLent(library));
}

TEST_F(LibraryLoanTest, ThoseWhoLookAtTheSameTimeDontTakeOneAnotherForTheConsole)
{
    console.begin(library);
    console.end();
    const QStringList marks = QDir(folder.path()).entryList({u"lent-*"_s}, QDir::Files);
    ASSERT_EQ(marks.size(), 1);
    // Another program in the middle of its look.
    const int other = ::open(folder.file(marks.first()).toUtf8().constData(), O_RDONLY | O_CLOEXEC);
    ASSERT_GE(other, 0);
    ASSERT_EQ(::flock(other, LOCK_SH | LOCK_NB), 0);
    EXPECT_FALSE(sibling.isLent(library));
    ::close(other);
}

TEST_F(LibraryLoanTest, WithoutAFolderNobodySeesAMark)
{
    LibraryLoan nowhere(files, {QString()});
    nowhere.begin(library);
    EXPECT_FALSE(nowhere.isLent(library));
}

} // namespace
} // namespace melovane
