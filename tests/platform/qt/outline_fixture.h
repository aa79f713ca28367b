#pragma once

#include "platform/qt/icon_set.h"
#include "platform/qt/outline_tree.h"
#include "platform/qt/skin.h"

#include <QAbstractItemModelTester>
#include <QApplication>

#include <gtest/gtest.h>

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;

inline TreeRow outlineRow(const QString& key, int level)
{
    TreeRow result;
    result.key = key;
    result.text = u"Text "_s + key;
    result.level = level;
    result.heading = level == 0;
    return result;
}

/// A tree of a few rows in a window.
struct OutlineFixture : public testing::Test
{
    OutlineFixture()
    {
        tree.setRows({outlineRow(u"a"_s, 0), outlineRow(u"a1"_s, 1), outlineRow(u"a2"_s, 1),
                      outlineRow(u"b"_s, 0), outlineRow(u"b1"_s, 1), outlineRow(u"b11"_s, 2),
                      outlineRow(u"c"_s, 0)});
        tree.resize(200, 300);
        tree.show();
    }

    /// The keys of all rows that are to be seen, from top to bottom.
    [[nodiscard]] QString lines() const
    {
        QStringList keys;
        for (int row = 0; row < tree.rowCount(); ++row) {
            if (tree.placeOf(row).isValid()) {
                keys.append(tree.row(row).key);
            }
        }
        return keys.join(u' ');
    }

    Skin skin{*qApp};
    IconSet icons{skin};
    OutlineTree tree{skin, icons};
    QAbstractItemModelTester check{tree.model(),
                                   QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace melovane::test
