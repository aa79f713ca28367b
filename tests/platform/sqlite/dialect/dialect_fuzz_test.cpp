#include "platform/db/db_error.h"
#include "platform/sqlite/dialect/dialect_library.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

#include <random>

namespace melovane::sqlite {

using namespace Qt::Literals::StringLiterals;

namespace {

const QStringList kSeeds{
    u"select  [FID] , [TITEL]  from db_all\n where ( [TITEL] like 'blue*' or [ALBUM] like '[!a]?#' )  and del in (0,-1) \norder by [TITEL] ASC , [FID] DESC"_s,
    u"update db_all set play=cdate(format(now,'dd.mm.yyyy hh:mm:ss')), PlayCountDay=iif(isnull(PlayCountDay),1,PlayCountDay+1) where fid='x' "_s,
    u"select a.fid, first(b.plid), count(*) as anz, sum(a.dlen / 2) from (db_all as a left join pl_all b on a.fid = b.fid) inner join pl_name on b.pnid=pl_name.nid where a.titel + 'x' > 'y' group by a.fid, left(a.titel, 2) having max(a.dlen) > 5 order by 3 desc, count(*)"_s,
    u"select name from genre Union select name from config union all select distinct top 3 titel & now & 5 from vpl_all order by name;"_s,
    u"insert into todo ( ID , FID ) select 1 as ID , FID from db_all where del=-1 and dtsimport between #01.02.2024# and date() - 3.5"_s,
    u" UPDATE VPL_ALL as pl_all SET PL_ALL.FrameStart = 0, PL_ALL.FrameStop = (pl_ALL.DTIMEMSEC/26.12245) where exists (select * from pl_name where nid=pl_all.pnid)"_s,
    u"delete a.* from pl_all a left join db_all on a.fid=db_all.fid where db_all.fid is null or not a.pitch mod 3 \\ 2 ^ 2 = -1"_s,
    u"parameters [p] Long; select nz(dlen, [p]) as x, switch(x=1,'a',true,\"b\") from db_all d where d.fid in (select fid from pl_all where pl_all.plid = d.dlen) xor titel not like 'a*'"_s,
    u"create table t (a counter primary key, b text(20) not null, constraint u unique (a, b))"_s,
    u"alter table db_version alter COLUMN id text(50)"_s,
    u"select * from (select pnid, first(fid) as f from pl_all group by pnid) as q, vpl_all right join pl_group on pl_group.grid = vpl_all.pnid where q.pnid = vpl_all.pnid"_s,
};

const QStringList kPieces{
    u"select "_s,
    u" from "_s,
    u" where "_s,
    u"("_s,
    u")"_s,
    u","_s,
    u"'"_s,
    u"\""_s,
    u"["_s,
    u"]"_s,
    u"#"_s,
    u" and "_s,
    u" or "_s,
    u" not "_s,
    u" = "_s,
    u" like "_s,
    u"*"_s,
    u"?"_s,
    u" null "_s,
    u"1"_s,
    u"-"_s,
    u"fid"_s,
    u"db_all"_s,
    u" as x "_s,
    u"."_s,
    u" in "_s,
    u" is "_s,
    u"count(*)"_s,
    u"max(dlen)"_s,
    u" union "_s,
    u" order by 1 "_s,
    u" group by fid "_s,
    u" top 2 "_s,
    u";"_s,
    u"vpl_all"_s,
    u"\n"_s,
    u" between 1 and 2 "_s,
    u" + "_s,
    u" & "_s,
    u"5.5"_s,
    u"pl_all"_s,
    u" distinct "_s,
    u"(select 1)"_s,
    u"now"_s,
    u"true"_s,
    u" left join "_s,
    u" on "_s,
    u"\\"_s,
};

const QStringList kNames{u"fid"_s,  u"titel"_s,   u"dlen"_s, u"dtsimport"_s, u"del"_s, u"pnid"_s,
                         u"plid"_s, u"null"_s,    u"3"_s,    u"-1.5"_s,      u"'a'"_s, u"now"_s,
                         u"true"_s, u"[titel]"_s, u"sid"_s,  u"play"_s,      u"'5'"_s, u"isplay"_s};
const QStringList kOperators{u"="_s,   u"<>"_s, u">="_s,  u"like"_s,    u"+"_s,   u"&"_s,
                             u"/"_s,   u"-"_s,  u"and"_s, u"or"_s,      u"xor"_s, u"*"_s,
                             u"mod"_s, u"^"_s,  u"\\"_s,  u"not like"_s};

/// Another name for a name, another operator for an operator: mostly still a statement.
QString swapped(const QString& seed, std::mt19937& random)
{
    static const QRegularExpression kWord(
        u"\\b(fid|titel|dlen|del|pnid|plid|name|grid|nid|play|pitch)\\b|<>|[=+&>-]|\\b(and|or|like|xor|mod)\\b"_s,
        QRegularExpression::CaseInsensitiveOption);
    QString text = seed;
    for (int change = 0; change < 2; ++change) {
        std::vector<QRegularExpressionMatch> words;
        for (auto all = kWord.globalMatch(text); all.hasNext();) {
            words.push_back(all.next());
        }
        if (words.empty()) {
            return text;
        }
        const QRegularExpressionMatch& word = words[random() % words.size()];
        const QStringList& others = word.captured(1).isEmpty() ? kOperators : kNames;
        text.replace(word.capturedStart(), word.capturedLength(),
                     u' ' + others[qsizetype(random() % size_t(others.size()))] + u' ');
    }
    return text;
}

QString mutated(const QString& seed, std::mt19937& random)
{
    const auto below = [&](qsizetype limit) {
        return qsizetype(random() % std::uint32_t(std::max<qsizetype>(1, limit)));
    };
    QString text = seed;
    const qsizetype changes = 1 + below(4);
    for (qsizetype i = 0; i < changes; ++i) {
        const qsizetype at = below(text.size() + 1);
        switch (below(5)) {
        case 0:
            text.remove(at, 1 + below(12));
            break;
        case 1:
            text.insert(at, kPieces[below(kPieces.size())]);
            break;
        case 2: {
            const QString& other = kSeeds[below(kSeeds.size())];
            text.insert(at, other.mid(below(other.size()), below(40)));
            break;
        }
        case 3:
            text.replace(at, 1, QChar(char16_t(1 + below(0x250))));
            break;
        case 4: {
            const QString part = text.mid(at, below(20));
            text.insert(below(text.size() + 1), part);
            break;
        }
        }
    }
    return text;
}

/// True when the translation was refused with an error of the engine.
bool refusedOrPrepares(DialectLibrary& library, const QString& statement, QString& trouble)
{
    Translation translation;
    try {
        translation = translate(statement, library);
    } catch (const DbError& error) {
        trouble = error.text().isEmpty() ? u"an error without text"_s : QString();
        return true;
    }
    const QStringList texts =
        translation.keyed ? QStringList{translation.sql, translation.keySql, translation.rowSql}
                          : QStringList{translation.sql};
    for (const QString& sql : texts) {
        if (!sql.isEmpty() && !library.prepares(sql)) {
            trouble = library.message() + u"\n"_s + sql;
        }
    }
    return false;
}

TEST(DialectFuzz, AnyChangedStatementIsRefusedOrAcceptedBySqlite)
{
    DialectLibrary library;
    std::mt19937 random(20240615);
    int refused = 0;
    constexpr int kRounds = 8000;
    for (int i = 0; i < kRounds; ++i) {
        const QString& seed = kSeeds[i % kSeeds.size()];
        const QString statement = i % 3 == 0 ? mutated(seed, random) : swapped(seed, random);
        QString trouble;
        refused += refusedOrPrepares(library, statement, trouble) ? 1 : 0;
        ASSERT_TRUE(trouble.isEmpty()) << trouble.toStdString() << "\n" << statement.toStdString();
    }
    // Both sides must be met, or the test says nothing.
    EXPECT_GT(refused, kRounds / 10);
    EXPECT_LT(refused, kRounds * 8 / 10);
}

TEST(DialectFuzz, EverySeedIsAccepted)
{
    DialectLibrary library;
    library.addQuery(u"genre"_s, u"select name from config"_s);
    for (const QString& seed : kSeeds) {
        QString trouble;
        EXPECT_FALSE(refusedOrPrepares(library, seed, trouble)) << seed.toStdString();
        EXPECT_EQ(trouble.toStdString(), "") << seed.toStdString();
    }
}

TEST(DialectFuzz, RandomLettersAreRefused)
{
    DialectLibrary library;
    std::mt19937 random(7);
    for (int i = 0; i < 2000; ++i) {
        QString text;
        const int size = int(random() % 60);
        for (int j = 0; j < size; ++j) {
            text.append(QChar(char16_t(random() % 0x10000)));
        }
        EXPECT_THROW(static_cast<void>(translate(text, library)), DbError);
    }
}

struct Repeated
{
    const char* name;
    const char* head;
    const char* part;
    const char* tail;
    const char* end;
};

void PrintTo(const Repeated& value, std::ostream* stream)
{
    *stream << value.name;
}

class DialectDepth : public testing::TestWithParam<Repeated>
{};

TEST_P(DialectDepth, NestingOfAnyDepthIsRefusedOrAcceptedBySqlite)
{
    DialectLibrary library;
    const Repeated& form = GetParam();
    for (const int count :
         {1, 5, 10, 15, 20, 25, 30, 40, 60, 80, 85, 90, 95, 100, 150, 199, 400, 900, 1100, 5000}) {
        const QString statement =
            QString::fromUtf8(form.head) + QString::fromUtf8(form.part).repeated(count) +
            QString::fromUtf8(form.tail) + QString::fromUtf8(form.end).repeated(count);
        QString trouble;
        const bool refused = refusedOrPrepares(library, statement, trouble);
        ASSERT_TRUE(trouble.isEmpty()) << count << " times: " << trouble.left(300).toStdString();
        EXPECT_TRUE(!refused || count > 4) << count;
    }
}

constexpr Repeated kForms[] = {
    {"Brackets", "select ", "(", "1", ")"},
    {"Calls", "select ", "abs(", "1", ")"},
    {"TextCalls", "select ", "left(", "titel", ",5) from db_all"},
    {"Iif", "select ", "iif(true,", "1", ",2)"},
    {"IifLast", "select ", "iif(1=1,2,", "1", ")"},
    {"Sums", "select 1", " + 1", "", ""},
    {"RightSums", "select ", "1+(", "1", ")"},
    {"Texts", "select 'a'", " + 'b'", "", ""},
    {"Ands", "select fid from db_all where del=0", " and del=0", "", ""},
    {"Ors", "select fid from db_all where titel like 'a*'", " or titel like 'b*'", "", ""},
    {"Nots", "select fid from db_all where ", "not ", "del=0", ""},
    {"Minus", "select ", "- ", "dlen from db_all", ""},
    {"MinusOne", "select ", "- ", "1", ""},
    {"Powers", "select 2", "^2", "", ""},
    {"SignedPowers", "select 2", "^-2", "", ""},
    {"IsNull", "select 1", " is null", "", ""},
    {"Comparisons", "select 1", " = 1", "", ""},
    {"Divisions", "select dlen", " / 2", " from db_all", ""},
    {"Xors", "select 1", " xor 1", "", ""},
    {"Imps", "select 1", " imp 1", "", ""},
    {"Scalars", "select ", "(select ", "1", ")"},
    {"InSelects", "select fid from db_all where fid in ", "(select fid from db_all where fid in ",
     "('a')", ")"},
    {"Exists", "select 1 where ", "exists (select 1 where ", "1=1", ")"},
    {"Derived", "select * from ", "(select * from ", "db_all", ") as q"},
    {"Joins", "select 1 from ", "(", "db_all inner join pl_all on db_all.fid=pl_all.fid", ")"},
    {"Unions", "select fid from db_all", " union select fid from db_all", "", ""},
    {"Columns", "select fid", ", fid", " from db_all", ""},
    {"Orders", "select fid from db_all order by fid", ", fid", "", ""},
    {"Lists", "select fid from db_all where fid in ('x'", ", 'y'", ")", ""},
    {"Between", "select ", "1 between 0 and ", "1", ""},
    {"Choose", "select choose(1", ", 2", ")", ""},
    {"Aliases", "select 1 as a", ", 1+1 as b", "", ""},
};

INSTANTIATE_TEST_SUITE_P(OfEachKind, DialectDepth, testing::ValuesIn(kForms), [](const auto& test) {
    return std::string(test.param.name);
});

TEST(DialectDepthOfNames, AliasesThatStandForEachOtherAreRefusedBeforeTheyExplode)
{
    DialectLibrary library;
    QString statement = u"select 1+1 as a0"_s;
    for (int i = 1; i < 60; ++i) {
        statement += u", a%1+a%1 as a%2"_s.arg(i - 1).arg(i);
    }
    EXPECT_THROW(static_cast<void>(translate(statement, library)), DbError);
}

TEST(DialectDepthOfNames, QueriesThatJoinThemselvesAreRefusedBeforeTheyExplode)
{
    DialectLibrary library;
    library.addQuery(u"q0"_s, u"select distinct fid from db_all"_s);
    for (int i = 1; i < 40; ++i) {
        library.addQuery(u"q%1"_s.arg(i), u"select distinct a.fid from q%1 a, q%1 b"_s.arg(i - 1));
    }
    EXPECT_THROW(static_cast<void>(translate(u"select * from q39"_s, library)), DbError);
}

TEST(DialectDepthOfNames, ExpressionsOfQueriesThatDoubleAreRefusedBeforeTheyExplode)
{
    DialectLibrary library;
    library.addQuery(u"q0"_s, u"select titel & titel as x from db_all"_s);
    for (int i = 1; i < 60; ++i) {
        library.addQuery(u"q%1"_s.arg(i), u"select x & x as x from q%1"_s.arg(i - 1));
    }
    EXPECT_THROW(static_cast<void>(translate(u"select * from q59"_s, library)), DbError);
}

TEST(DialectLongStatements, AMillionLettersTakeLittleTime)
{
    DialectLibrary library;
    QString list = u"'x'"_s;
    for (int i = 0; i < 100'000; ++i) {
        list += u", 'abcdefg'"_s;
    }
    const QString statement = u"select fid from db_all where fid in (%1)"_s.arg(list);
    EXPECT_EQ(library.run(statement).toStdString(), "");
    const QString quotes = u"select '"_s + QString(1'000'000, u'\'') + u"'"_s;
    EXPECT_EQ(library.run(quotes).size(), 500'000);
}

} // namespace

} // namespace melovane::sqlite
