#pragma once

#include "platform/qt/counting_engine.h"
#include "platform/qt/data_grid.h"
#include "platform/qt/icon_set.h"
#include "platform/qt/skin.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

namespace melovane::test {

class PlainLook : public GridLook
{
public:
    [[nodiscard]] QString text(const QString&, const Value& value) const override
    {
        return value.toText();
    }

    [[nodiscard]] CellStyle style(const QString&, const RowValues&) const override
    {
        return cellStyle;
    }

    CellStyle cellStyle;
};

/// A grid over made-up rows, 400 units high.
struct GridTest : public testing::Test
{
    GridTest()
    {
        grid.resize(500, 400);
        GridColumn stretched{
            QStringLiteral("titel"), QStringLiteral("Titel"), 20, CellAlignment::Left, true, true};
        GridColumn hidden{QStringLiteral("FID"),
                          QStringLiteral("Nummer"),
                          12,
                          CellAlignment::Right,
                          false,
                          false};
        GridColumn missing{
            QStringLiteral("Album"), QStringLiteral("Album"), 9, CellAlignment::Left, true, false};
        grid.setSource(rows, look, {stretched, hidden, missing});
    }

    void show(qint64 count)
    {
        engine.counter.rows = count;
        rows.SetRecordSource(QStringLiteral("select"));
        rows.Refresh();
        grid.show();
        QTest::qWait(0);
    }

    CountingEngine engine;
    DataControl rows{engine};
    PlainLook look;
    Skin skin{*qApp};
    IconSet icons{skin};
    DataGrid grid{skin, icons};
};

} // namespace melovane::test
