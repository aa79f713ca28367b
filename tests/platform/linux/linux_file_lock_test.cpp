#include "platform/linux/linux_file_lock.h"
#include "support/temp_folder.h"

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;
using std::chrono::milliseconds;

TEST(FileLocks, ExcludeEachOtherUntilTheyGo)
{
    const test::TempFolder folder;
    const QString file = folder.file(u"lock"_s);
    auto first = lockFile(file, milliseconds(0));
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(lockFile(file, milliseconds(0)), nullptr);
    EXPECT_EQ(lockFile(file, milliseconds(20)), nullptr);
    first.reset();
    EXPECT_NE(lockFile(file, milliseconds(0)), nullptr);
}

TEST(FileLocks, AFileThatCannotBeOpenedGivesNone)
{
    const test::TempFolder folder;
    EXPECT_EQ(lockFile(folder.path(), milliseconds(0)), nullptr);
    EXPECT_EQ(lockFile(folder.file(u"missing/lock"_s), milliseconds(0)), nullptr);
    EXPECT_EQ(lockFile(QString(), milliseconds(0)), nullptr);
}

} // namespace
} // namespace melovane
