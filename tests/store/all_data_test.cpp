#include "store/all_data.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace melovane;

TEST(MlvAllData, IsUserLooksAtTheFiveUserFieldsAlone)
{
    EXPECT_FALSE(MlvAllData().IsUser());
    for (QString MlvAllData::*field : {&MlvAllData::User1, &MlvAllData::User2, &MlvAllData::User3,
                                       &MlvAllData::User4, &MlvAllData::User5}) {
        MlvAllData data;
        data.*field = u"x"_s;
        EXPECT_TRUE(data.IsUser());
        EXPECT_FALSE(data.IsMusicMatch());
    }
}

TEST(MlvAllData, IsMusicMatchLooksAtTheFourSelectionFieldsAlone)
{
    EXPECT_FALSE(MlvAllData().IsMusicMatch());
    for (QString MlvAllData::*field : {&MlvAllData::Kategorie, &MlvAllData::Situation,
                                       &MlvAllData::Stimmung, &MlvAllData::Tempo}) {
        MlvAllData data;
        data.*field = u"x"_s;
        EXPECT_TRUE(data.IsMusicMatch());
        EXPECT_FALSE(data.IsUser());
    }
}
