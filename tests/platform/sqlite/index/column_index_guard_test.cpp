#include "platform/db/sql_text.h"
#include "platform/db/text_compare.h"
#include "platform/sqlite/index/column_index_fixture.h"

#include <random>

/// Whatever is asked and whoever writes, the index must say what SQLite says.
namespace melovane::test {
namespace {

/// Cells in SQLite's words that texts of a library may hold, and some that they never should.
const QString kTexts[] = {
    u"'Abba'"_s,
    u"'abba'"_s,
    u"'ABBAS'"_s,
    u"'Ärzte'"_s,
    u"'ärzte'"_s,
    u"'Arzt'"_s,
    u"'Straße'"_s,
    u"'STRASSE'"_s,
    u"'Strasse'"_s,
    u"''"_s,
    u"NULL"_s,
    u"'O''Neill'"_s,
    u"'a*b'"_s,
    u"'[x]'"_s,
    u"'50%'"_s,
    u"'10'"_s,
    u"'9'"_s,
    u"'é'"_s,
    u"'e'||char(769)"_s,
    u"'Ελλάδα'"_s,
    u"'東京'"_s,
    u"char(128512)"_s,
    u"' Abba'"_s,
    u"'Abba '"_s,
    u"'a'||char(10)||'b'"_s,
    u"'like this'"_s,
    u"'n' || printf('%.240c','n')"_s,
    u"CAST(X'41FF42' AS TEXT)"_s,
    u"CAST(X'EFBBBF41' AS TEXT)"_s,
    u"'İ'"_s,
    u"'ſ'"_s,
    u"'µ'"_s,
};

const QString kHostileTexts[] = {u"X'4142'"_s, u"'a'||char(0)||'b'"_s,
                                 u"CAST(X'EFBBBFEFBBBF41' AS TEXT)"_s};

const QString kNumbers[] = {u"0"_s, u"-1"_s, u"2"_s, u"NULL"_s, u"3"_s, u"128"_s};

const QString kHostileNumbers[] = {u"'text'"_s,           u"X'00'"_s,      u"9e999"_s, u"2.5"_s,
                                   u"9007199254740993"_s, u"9e999-9e999"_s};

const QString kFinds[] = {u"a"_s,     u"ab"_s,    u"*b"_s,      u"*"_s,       u"ä"_s,  u"str"_s,
                          u"*ss"_s,   u"*e"_s,    u"O*Neill"_s, u"?bba"_s,    u"#"_s,  u"10"_s,
                          u"[a-e]"_s, u"[!a]b"_s, u"nn"_s,      u""_s,        u"é"_s,  u"*é"_s,
                          u"a*a"_s,   u"*a*b"_s,  u"東"_s,      u"*京"_s,     u"😀"_s,  u"[x"_s,
                          u" "_s,     u"*\n"_s,   u"*straße"_s, u"strasse"_s, u"*λ"_s, u"A\uFFFD"_s,
                          u"**"_s,    u"*?a"_s,   u"i"_s,       u"s"_s,       u"Μ"_s};

const QString kTextColumns[] = {u"Titel"_s,     u"Interpret"_s, u"Album"_s,
                                u"Kommentar"_s, u"DName"_s,     u"User1"_s};
const QString kNumberColumns[] = {u"DEL"_s, u"DBit"_s};
const QString kOrders[] = {u"Titel"_s, u"Interpret"_s, u"Album"_s, u"Track"_s,
                           u"DBit"_s,  u"Play"_s,      u"User2"_s, u"DEL"_s};

/// Statements of a run: `count`, or what tools/prove_search.sh asks for.
int statements(int count)
{
    return std::max(count, qEnvironmentVariableIntValue("MLV_SEARCH_STATEMENTS"));
}

class ColumnIndexGuard : public ColumnIndexTest
{
protected:
    [[nodiscard]] int below(int limit) { return int(m_random() % unsigned(limit)); }

    template <std::size_t Size> [[nodiscard]] const QString& any(const QString (&list)[Size])
    {
        return list[below(int(Size))];
    }

    [[nodiscard]] QString textCell()
    {
        return m_hostile && below(60) == 0 ? any(kHostileTexts) : any(kTexts);
    }

    [[nodiscard]] QString numberCell()
    {
        return m_hostile && below(60) == 0 ? any(kHostileNumbers) : any(kNumbers);
    }

    void addRow()
    {
        QStringList columns{u"FID"_s};
        QStringList cells{u"'%1'"_s.arg(++m_fid, 12, 10, QChar(u'0'))};
        for (const QString& column : kTextColumns) {
            columns.append(column);
            cells.append(textCell());
        }
        for (const QString& column : kNumberColumns) {
            columns.append(column);
            cells.append(numberCell());
        }
        raw(u"INSERT INTO db_all(%1) VALUES(%2)"_s.arg(columns.join(u','), cells.join(u',')));
    }

    [[nodiscard]] QString anyRow()
    {
        return u" WHERE FID='%1'"_s.arg(1 + below(m_fid), 12, 10, QChar(u'0'));
    }

    void change()
    {
        switch (below(12)) {
        case 0:
        case 1:
            return addRow();
        case 2:
            return raw(u"DELETE FROM db_all"_s + anyRow());
        case 3:
            return raw(u"UPDATE db_all SET %1=%2"_s.arg(any(kTextColumns), textCell()) + anyRow());
        case 4:
            return raw(u"UPDATE db_all SET %1=%2"_s.arg(any(kNumberColumns), numberCell()) +
                       anyRow());
        case 5:
            return raw(u"UPDATE db_all SET mlv_row=-mlv_row"_s + anyRow());
        case 6:
            return indexed().Execute(u"update db_all set Titel='Abba %1'"_s.arg(below(5)) +
                                     anyRow());
        case 7:
            return indexed().Execute(u"update db_all set DEL=-1 where DBit=%1"_s.arg(below(3)));
        case 8:
            return ownTransaction();
        case 9:
            return raw(u"UPDATE db_all SET User1=Titel WHERE mlv_row%7=%1"_s.arg(below(7)));
        default:
            return;
        }
    }

    /// Changes that the searching program takes back, or not; in between it searches.
    void ownTransaction()
    {
        indexed().BeginTrans();
        indexed().Execute(u"update db_all set Interpret='zz'"_s + anyRow());
        indexed().Execute(u"delete from db_all"_s + anyRow());
        const qint64 answers = figures().answers;
        [[maybe_unused]] const QStringList rows = rowsOf(indexed(), statement().select);
        EXPECT_EQ(figures().answers, answers);
        if (below(2) == 0) {
            indexed().Rollback();
        } else {
            indexed().CommitTrans();
        }
    }

    struct Asked
    {
        QString select;
        QString count;
    };

    [[nodiscard]] QString condition()
    {
        QStringList tests;
        for (int n = 1 + below(3); n > 0; --n) {
            const QString find = sql::text(any(kFinds) + (below(4) ? u"*"_s : QString()));
            switch (below(8)) {
            case 0:
                tests.append(u"[%1] = %2"_s.arg(any(kNumberColumns)).arg(below(3)));
                break;
            case 1:
                tests.append(u"[%1] >=%2"_s.arg(any(kNumberColumns)).arg(below(130) - 1));
                break;
            case 2:
                tests.append(u"[%1] = %2"_s.arg(any(kTextColumns), find));
                break;
            case 3:
                tests.append(u"[%1] >=%2"_s.arg(any(kTextColumns), find));
                break;
            default:
                tests.append(u"[%1] like %2"_s.arg(any(kTextColumns), find));
            }
        }
        return u"\n where ("_s + tests.join(u" or "_s) + u" ) "_s +
               (below(3) ? u" and del in (0,-1) "_s : QString());
    }

    [[nodiscard]] Asked statement()
    {
        const QString where = below(12) == 0 ? QString() : condition();
        QStringList columns;
        for (int i = 0, first = below(8); i < 3; ++i) {
            columns.append(kOrders[(first + i * 3) % 8]);
        }
        QString order;
        for (const QString& column : columns) {
            order += (order.isEmpty() ? u"\norder by ["_s : u" , ["_s) + column +
                     (below(2) ? u"] ASC"_s : u"] DESC"_s);
        }
        return {u"select [FID] ,[%1] from db_all"_s.arg(columns.join(u"] ,["_s)) + where +
                    (below(10) ? order : QString()),
                u"select count(*) as anz from db_all"_s + where};
    }

    /// The columns that a statement sorts by, row by row: rows that are equal there may follow each
    /// other in any order. What compares as equal is made equal.
    [[nodiscard]] static QStringList withoutKeys(const QStringList& rows)
    {
        QStringList result;
        for (const QString& row : rows) {
            result.append(textcompare::fold(row.section(u'|', 1)));
        }
        return result;
    }

    [[nodiscard]] static QStringList sorted(QStringList rows)
    {
        rows.sort();
        return rows;
    }

    void compare(const Asked& asked)
    {
        const QStringList expected = rowsOf(plain(), asked.select);
        const QStringList found = rowsOf(indexed(), asked.select);
        ASSERT_EQ(sorted(expected), sorted(found)) << asked.select.toStdString();
        if (asked.select.contains("order by"_L1)) {
            ASSERT_EQ(withoutKeys(expected), withoutKeys(found)) << asked.select.toStdString();
        }
        ASSERT_EQ(cellOf(indexed(), asked.count).toInt64(), expected.size())
            << asked.count.toStdString();
    }

    void run(int rounds, bool hostile)
    {
        m_hostile = hostile;
        for (int i = 0; i < 70; ++i) {
            addRow();
        }
        for (int round = 0; round < rounds && !HasFatalFailure(); ++round) {
            compare(statement());
            change();
        }
        // The comparison means nothing unless the index has answered.
        EXPECT_GT(figures().answers, rounds / (hostile ? 20 : 2));
    }

    std::mt19937 m_random{20261121};
    int m_fid = 0;
    bool m_hostile = false;
};

TEST_F(ColumnIndexGuard, SaysWhatSqliteSaysWhateverIsAskedAndWhoeverWrites)
{
    const int rounds = statements(1000);
    run(rounds, false);
    EXPECT_LT(figures().left, rounds / 5);
}

TEST_F(ColumnIndexGuard, SaysWhatSqliteSaysOfCellsThatNoColumnOfTheTypeHolds)
{
    run(statements(400), true);
}

} // namespace
} // namespace melovane::test
