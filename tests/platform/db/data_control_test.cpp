#include "platform/db/data_control.h"
#include "platform/sqlite/engine/engine_fixture.h"

#include <QFile>
#include <QSignalSpy>

namespace melovane::test {
namespace {

class DataControlTest : public EngineTest
{
protected:
    DataControlTest()
        : m_data(*m_engine)
    {
        makeSuite();
        for (const auto& fid : {u"1"_s, u"2"_s, u"3"_s}) {
            addTrack(fid, u"T"_s + fid);
        }
        m_data.SetDatabaseName(path());
        m_data.SetRecordSource(u"select FID, Titel from db_all order by fid"_s);
    }

    DataControl m_data;
};

TEST_F(DataControlTest, ReadsNothingBeforeRefresh)
{
    EXPECT_EQ(m_data.Recordset(), nullptr);
    EXPECT_EQ(m_data.Database(), nullptr);
    EXPECT_EQ(m_data.rowCount(), 0);
    EXPECT_EQ(m_data.columnCount(), 0);
    EXPECT_TRUE(m_data.cell(0, 0).isNull());
}

TEST_F(DataControlTest, RefreshRunsTheStatementAndStandsOnTheFirstRow)
{
    const QSignalSpy refreshed(&m_data, &DataControl::refreshed);
    m_data.Refresh();
    EXPECT_EQ(refreshed.count(), 1);
    EXPECT_EQ(m_data.rowCount(), 3);
    EXPECT_EQ(m_data.columnCount(), 2);
    EXPECT_EQ(m_data.column(1).Name, u"Titel"_s);
    EXPECT_EQ(m_data.Recordset()->AbsolutePosition(), 0);
}

TEST_F(DataControlTest, ANewRecordSourceTakesEffectAtRefresh)
{
    m_data.Refresh();
    m_data.SetRecordSource(u"select FID from db_all where fid='2'"_s);
    EXPECT_EQ(m_data.rowCount(), 3);
    m_data.Refresh();
    EXPECT_EQ(m_data.rowCount(), 1);
    EXPECT_EQ(m_data.cell(0, 0).toText(), u"2"_s);
}

TEST_F(DataControlTest, PaintingNeverMovesTheCurrentRow)
{
    m_data.Refresh();
    m_data.Recordset()->MoveNext();
    EXPECT_EQ(m_data.cell(2, 1).toText(), u"T3"_s);
    EXPECT_EQ(m_data.cell(0, 0).toText(), u"1"_s);
    EXPECT_EQ(m_data.Recordset()->AbsolutePosition(), 1);
}

TEST_F(DataControlTest, CellsOutsideTheSetReadAsNull)
{
    m_data.Refresh();
    EXPECT_TRUE(m_data.cell(-1, 0).isNull());
    EXPECT_TRUE(m_data.cell(3, 0).isNull());
    EXPECT_TRUE(m_data.cell(0, 2).isNull());
    EXPECT_TRUE(m_data.cell(0, -1).isNull());
}

TEST_F(DataControlTest, AFailedRefreshKeepsTheFormerRows)
{
    m_data.Refresh();
    const QSignalSpy refreshed(&m_data, &DataControl::refreshed);
    m_data.SetRecordSource(u"select nosuch from nowhere"_s);
    EXPECT_NE(errorOf([&] { m_data.Refresh(); }), 0);
    EXPECT_EQ(refreshed.count(), 0);
    EXPECT_EQ(m_data.rowCount(), 3);
    EXPECT_EQ(m_data.cell(1, 1).toText(), u"T2"_s);
}

TEST_F(DataControlTest, ADeletedRowReadsAsNullAndTheOthersStay)
{
    m_data.Refresh();
    sibling()->Execute(u"delete from db_all where fid='2'"_s);
    m_data.refreshCells();
    EXPECT_EQ(m_data.rowCount(), 3);
    EXPECT_TRUE(m_data.cell(1, 0).isNull());
    EXPECT_EQ(m_data.cell(2, 0).toText(), u"3"_s);
}

TEST_F(DataControlTest, RefreshCellsShowsTheValuesOfNow)
{
    m_data.Refresh();
    EXPECT_EQ(m_data.cell(0, 1).toText(), u"T1"_s);
    const QSignalSpy changed(&m_data, &DataControl::cellsChanged);
    sibling()->Execute(u"update db_all set titel='new'"_s);
    m_data.refreshCells();
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(m_data.cell(0, 1).toText(), u"new"_s);
}

TEST_F(DataControlTest, RowsWrittenThroughTheSetAreShown)
{
    m_data.Refresh();
    EXPECT_EQ(m_data.cell(0, 1).toText(), u"T1"_s);
    Recordset& set = *m_data.Recordset();
    set.Edit();
    set.setValue(u"Titel", u"edited"_s);
    set.Update();
    set.AddNew();
    set.setValue(u"FID", u"4"_s);
    set.Update();
    EXPECT_EQ(m_data.cell(0, 1).toText(), u"edited"_s);
    EXPECT_EQ(m_data.rowCount(), 4);
    EXPECT_EQ(m_data.cell(3, 0).toText(), u"4"_s);
}

TEST_F(DataControlTest, CloseDatabaseLetsGoOfTheFileAndItsRows)
{
    m_data.Refresh();
    db().Close();
    const QSignalSpy refreshed(&m_data, &DataControl::refreshed);
    m_data.closeDatabase();
    m_engine->Release(path());
    EXPECT_EQ(refreshed.count(), 1);
    EXPECT_EQ(m_data.rowCount(), 0);
    EXPECT_TRUE(m_data.cell(0, 0).isNull());
    EXPECT_FALSE(QFile::exists(path() + u"-wal"_s));
    m_data.closeDatabase();
    EXPECT_EQ(refreshed.count(), 1) << "there was nothing left to close";
    m_data.Refresh();
    EXPECT_EQ(m_data.rowCount(), 3);
}

TEST_F(DataControlTest, ADatabaseClosedUnderneathIsOpenedAgainByRefresh)
{
    m_data.Refresh();
    m_data.Database()->Close();
    EXPECT_TRUE(m_data.cell(0, 0).isNull());
    m_data.Refresh();
    EXPECT_EQ(m_data.cell(0, 0).toText(), u"1"_s);
}

TEST_F(DataControlTest, AnotherDatabaseNameClosesTheFormer)
{
    m_data.Refresh();
    m_data.SetDatabaseName(path());
    EXPECT_NE(m_data.Database(), nullptr) << "the same name changes nothing";
    m_data.SetDatabaseName(path(u"gone.mdb"_s));
    EXPECT_EQ(m_data.Database(), nullptr);
    EXPECT_EQ(m_data.rowCount(), 0);
    EXPECT_EQ(errorOf([&] { m_data.Refresh(); }), dberror::kFileNotFound);
    EXPECT_EQ(m_data.DatabaseName(), path(u"gone.mdb"_s));
}

TEST_F(DataControlTest, ADeletedFileNeverStopsAPaint)
{
    m_data.Refresh();
    db().Close();
    m_engine->Release(path());
    QFile::remove(path());
    QFile::remove(path() + u"-wal"_s);
    m_data.refreshCells();
    (void)m_data.cell(0, 0);
    EXPECT_EQ(m_data.rowCount(), 3);
    m_data.closeDatabase();
    EXPECT_EQ(errorOf([&] { m_data.Refresh(); }), dberror::kFileNotFound);
    EXPECT_TRUE(m_data.cell(0, 0).isNull());
}

} // namespace
} // namespace melovane::test
