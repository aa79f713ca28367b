#include "platform/db/db_fault.h"
#include "platform/db/fault_of_text.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(DbFault, ASentenceLeadsBackToItsNumberWhateverNamesAreInIt)
{
    for (int kind = 0; kind <= static_cast<int>(DbFault::TransactionUndone); ++kind) {
        for (const QString& name : {u"/music/a.mdb"_s, u"%2 \"x\" (y). "_s, QString()}) {
            const DbError error = dbError(static_cast<DbFault>(kind), name, u"weil"_s);
            EXPECT_EQ(errorNumberOf(error.text()), error.number()) << error.text().toStdString();
        }
    }
}

TEST(DbFault, AnotherTextHasNoNumber)
{
    for (const QString& text : {QString(), u"Permission denied"_s, u"Die Datei"_s, u" (x)"_s}) {
        EXPECT_EQ(errorNumberOf(text), 0) << text.toStdString();
    }
}

} // namespace
} // namespace melovane
