#include "library/search_history.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

HistoryEntry node(const QString& value)
{
    return {u"Genre"_s, u"Genre"_s, value, 0};
}

TEST(SearchHistory, TheFirstEntryOfARunWithoutAFileGoesToIndexOneAndIndexZeroIsEmpty)
{
    SearchHistory history;
    EXPECT_FALSE(history.canGoBack());
    history.push(node(u"Rock"_s));
    EXPECT_EQ(history.last(), 1);
    ASSERT_TRUE(history.canGoBack());
    EXPECT_EQ(history.back(), HistoryEntry());
    EXPECT_EQ(history.back(), std::nullopt);
}

TEST(SearchHistory, BackAndForwardWalkTheEntries)
{
    SearchHistory history;
    history.push(node(u"a"_s));
    history.push(node(u"b"_s));
    history.push(node(u"c"_s));
    EXPECT_EQ(history.back(), node(u"b"_s));
    EXPECT_EQ(history.back(), node(u"a"_s));
    EXPECT_EQ(history.forward(), node(u"b"_s));
    EXPECT_EQ(history.forward(), node(u"c"_s));
    EXPECT_FALSE(history.canGoForward());
    EXPECT_EQ(history.forward(), std::nullopt);
}

TEST(SearchHistory, ARepeatedEntryMovesToTheNewestPlace)
{
    SearchHistory history;
    for (const QString& value : {u"a"_s, u"b"_s, u"c"_s, u"a"_s}) {
        history.push(node(value));
    }
    EXPECT_EQ(history.last(), 3);
    EXPECT_EQ(history.back(), node(u"c"_s));
    EXPECT_EQ(history.back(), node(u"b"_s));
    EXPECT_EQ(history.back(), HistoryEntry());
}

TEST(SearchHistory, NothingIsThrownAwayByAPushAfterGoingBack)
{
    SearchHistory history;
    history.push(node(u"a"_s));
    history.push(node(u"b"_s));
    (void)history.back();
    history.push(node(u"c"_s));
    EXPECT_EQ(history.last(), 3);
    EXPECT_EQ(history.back(), node(u"b"_s));
}

TEST(SearchHistory, ItHoldsAtMost27EntriesAndTheOldestFallsOff)
{
    SearchHistory history;
    for (int i = 1; i <= 60; ++i) {
        history.push(node(QString::number(i)));
    }
    EXPECT_EQ(history.last(), 26);
    std::optional<HistoryEntry> oldest;
    while (auto entry = history.back()) {
        oldest = entry;
    }
    EXPECT_EQ(oldest, node(u"34"_s));
}

TEST(SearchHistory, EntriesWithAnEmptyKindOrValueAreDroppedWhenWritten)
{
    SearchHistory history;
    history.push({QString(), u"Titel"_s, u"x"_s, 0});
    history.push({u"Genre"_s, u"Genre"_s, QString(), 0});
    history.push({kTextSearch.toString(), QString(), u"wi,l\"d"_s, 0});
    EXPECT_EQ(history.toText(), "\"TextSuche\",0,\"\",\"wi,l\"\"d\"\n");
}

TEST(SearchHistory, WhatWasWrittenIsReadFromIndexZeroOn)
{
    SearchHistory written;
    written.push(node(u"ä, b"_s));
    written.push({u"Statistik"_s, u"tday:long"_s, u"20260101"_s, 1});
    SearchHistory history;
    history.read(written.toText());
    EXPECT_EQ(history.last(), 1);
    EXPECT_EQ(history.cursor(), 1);
    EXPECT_EQ(history.back(), node(u"ä, b"_s));
}

TEST(SearchHistory, ABrokenFileKeepsWhatWasReadBeforeTheFailingLine)
{
    SearchHistory history;
    history.read("\"Genre\",0,\"Genre\",\"Rock\"\r\n\r\n\"Genre\",0,\"Genre\",\"Pop\"\n"
                 "\"offen\n\"Genre\",0,\"Genre\",\"Jazz\"\n");
    EXPECT_EQ(history.last(), 1);
    SearchHistory few;
    few.read("\"Genre\",0,\"Genre\"\n");
    EXPECT_EQ(few.last(), 0);
    few.push(node(u"a"_s));
    EXPECT_EQ(few.last(), 1);
}

TEST(SearchHistory, AFileWithMoreLinesThanFitKeepsTheNewest27)
{
    QByteArray bytes;
    for (int i = 1; i <= 40; ++i) {
        bytes += "\"Genre\",0,\"Genre\",\"" + QByteArray::number(i) + "\"\n";
    }
    SearchHistory history;
    history.read(bytes);
    EXPECT_EQ(history.last(), 26);
    EXPECT_EQ(history.back(), node(u"39"_s));
}

} // namespace
} // namespace melovane
