#include "config/global_settings.h"
#include "config/refusals.h"
#include "platform/linux/linux_files.h"
#include "platform/system/io_error.h"
#include "support/temp_folder.h"
#include "support/text_catalogue.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct SystemReasons : test::TextCatalogue, testing::Test
{
    SystemReasons() { fill(); }
};

TEST_F(SystemReasons, EachThatAFileOperationMeetsIsToldInTheUsersLanguage)
{
    for (const int number : {EPERM, ENOENT, EIO, EACCES, EBUSY, EEXIST, ENODEV, ENOTDIR, EISDIR,
                             EMFILE, EFBIG, ENOSPC, EROFS, ENAMETOOLONG, ELOOP, ESTALE, EDQUOT}) {
        const QString words = QString::fromLatin1(::strerrordesc_np(number));
        const QString told = systemReasonText(texts, words);
        EXPECT_FALSE(told.isEmpty()) << words.toStdString();
        EXPECT_NE(told, words);
    }
}

TEST_F(SystemReasons, AFailureOfARealFileIsAmongThem)
{
    const test::TempFolder folder;
    LinuxFiles files;
    try {
        files.writeWhole(folder.file(u"nowhere/x"_s), "x");
        FAIL();
    } catch (const IoError& error) {
        EXPECT_EQ(systemReasonText(texts, error.reason()), u"Datei oder Ordner nicht vorhanden"_s);
    }
}

TEST_F(SystemReasons, OtherWordsStayAsTheyAre)
{
    EXPECT_EQ(systemReasonText(texts, u"larger than 5 bytes"_s), u"larger than 5 bytes"_s);
    EXPECT_EQ(systemReasonText(texts, {}), QString());
}

} // namespace
} // namespace melovane
