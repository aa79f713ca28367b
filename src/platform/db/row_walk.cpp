#include "platform/db/row_walk.h"

namespace melovane {

namespace {

/// The current row of a set.
class SetRow : public WalkedRow
{
public:
    explicit SetRow(const Recordset& set)
        : m_set(set)
    {}

    [[nodiscard]] bool isNull(int column) const override { return m_set.value(column).isNull(); }

    [[nodiscard]] bool isNumber(int column) const override
    {
        const Value cell = m_set.value(column);
        return !cell.isNull() && !cell.isText();
    }

    [[nodiscard]] qint64 number(int column) const override { return m_set.value(column).toInt64(); }

    [[nodiscard]] double real(int column) const override { return m_set.value(column).toDouble(); }

    [[nodiscard]] std::string_view bytes(int column) const override
    {
        m_bytes = text(column).toUtf8();
        return {m_bytes.constData(), std::size_t(m_bytes.size())};
    }

    [[nodiscard]] QString text(int column) const override { return m_set.value(column).toText(); }

private:
    const Recordset& m_set;
    mutable QByteArray m_bytes;
};

} // namespace

void walkRows(Database& database, const QString& statement, const RowVisit& visit)
{
    if (auto* const walker = dynamic_cast<RowWalk*>(&database)) {
        walker->walk(statement, visit);
        return;
    }
    const auto set = database.OpenRecordset(statement);
    for (const SetRow row(*set); !set->Eof(); set->MoveNext()) {
        visit(row);
    }
}

} // namespace melovane
