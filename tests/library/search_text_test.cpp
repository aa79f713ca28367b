#include "library/search_text.h"

#include <gtest/gtest.h>

namespace melovane {
namespace {

using namespace Qt::Literals::StringLiterals;

struct TextCase
{
    const char* name;
    QString text;
    SearchRequest request;
};

SearchRequest plain(const QString& text)
{
    return {SearchForm::Text, {}, text};
}

class SearchText : public testing::TestWithParam<TextCase>
{};

TEST_P(SearchText, IsReadAsTold)
{
    const SearchRequest request = readSearchText(GetParam().text);
    EXPECT_EQ(request.form, GetParam().request.form);
    EXPECT_EQ(request.column, GetParam().request.column);
    EXPECT_EQ(request.value, GetParam().request.value);
}

INSTANTIATE_TEST_SUITE_P(
    Forms,
    SearchText,
    testing::Values(
        TextCase{"NoteOneIsStoredFive", u"Note=1"_s, {SearchForm::Equal, u"Note"_s, u"5"_s}},
        TextCase{"NoteTwo", u"N=2"_s, {SearchForm::Equal, u"Note"_s, u"4"_s}},
        TextCase{"NoteThree", u"n=3"_s, {SearchForm::Equal, u"Note"_s, u"3"_s}},
        TextCase{"NoteFour", u"note=4"_s, {SearchForm::Equal, u"Note"_s, u"2"_s}},
        TextCase{"NoteFive", u"NOTE=5"_s, {SearchForm::Equal, u"Note"_s, u"1"_s}},
        TextCase{"MarkTwoOrBetter", u"Note<2"_s, {SearchForm::TextGreater, u"Note"_s, u"4"_s}},
        TextCase{"NoSuchMark", u"N=7"_s, {SearchForm::Equal, u"Note"_s, QString()}},
        TextCase{"NoMark", u"N="_s, {SearchForm::Equal, u"Note"_s, QString()}},
        TextCase{"CountGreater",
                 u"Count>1"_s,
                 {SearchForm::NumberGreater, u"PlayCountAll"_s, u"1"_s}},
        TextCase{"CountEqualIsGreater",
                 u"C=12"_s,
                 {SearchForm::NumberGreater, u"PlayCountAll"_s, u"12"_s}},
        TextCase{"HeadRemovedWhereverItOccurs",
                 u"C>1C>2"_s,
                 {SearchForm::NumberGreater, u"PlayCountAll"_s, u"12"_s}},
        TextCase{"TempoEqual", u"BPM=130"_s, {SearchForm::Equal, u"BPM"_s, u"130"_s}},
        TextCase{"TempoGreater", u"bpm>90"_s, {SearchForm::TextGreater, u"BPM"_s, u"90"_s}},
        TextCase{"TempoWithoutAValue", u"B>"_s, {SearchForm::TextGreater, u"BPM"_s, QString()}},
        TextCase{"AWordWithTheLetters", u"Notebook count"_s, plain(u"Notebook count"_s)},
        TextCase{"NotAtTheStart", u"x N=1"_s, plain(u"x N=1"_s)},
        TextCase{"InsideSearch", u"*wild"_s, plain(u"*wild"_s)}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(SearchList, TheExamplesComeFirstInTheirOrder)
{
    EXPECT_EQ(searchExamples(), (QStringList{u"Count>1"_s, u"Note=1"_s, u"BPM=130"_s}));
}

TEST(SearchList, ATextIsAddedOnceAndShortFormsStayOutInTheirUsualSpelling)
{
    const QStringList list = searchExamples() + QStringList{u"Wilde"_s};
    EXPECT_TRUE(belongsIntoSearchList(u"wilde"_s, list));
    EXPECT_FALSE(belongsIntoSearchList(u"Wilde"_s, list));
    EXPECT_FALSE(belongsIntoSearchList(u"  "_s, list));
    EXPECT_FALSE(belongsIntoSearchList(u"bpm=99"_s, list));
    EXPECT_FALSE(belongsIntoSearchList(u"count>9"_s, list));
    EXPECT_FALSE(belongsIntoSearchList(u"Note=3"_s, list));
    EXPECT_TRUE(belongsIntoSearchList(u"BPM=120"_s, list));
    EXPECT_TRUE(belongsIntoSearchList(u"note=1"_s, list));
}

} // namespace
} // namespace melovane
