#pragma once

#include "platform/db/value.h"

#include <QObject>
#include <QString>

namespace melovane {

/// The rows of a grid, wherever they come from. Rows and columns count from 0.
class GridSource : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    [[nodiscard]] virtual qint64 rowCount() const = 0;
    [[nodiscard]] virtual int columnCount() const = 0;
    /// The field of a column; letter case has no meaning.
    [[nodiscard]] virtual QString columnName(int index) const = 0;

    /// A cell for painting. Asked for what is on the screen only, so it must be quick.
    [[nodiscard]] virtual Value cell(qint64 row, int column) const = 0;

signals:
    /// Rows, their order or the columns are others now.
    void refreshed();
    /// The same rows have other values.
    void cellsChanged();
};

} // namespace melovane
