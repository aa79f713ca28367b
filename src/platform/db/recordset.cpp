#include "platform/db/recordset.h"

#include "platform/db/db_fault.h"

namespace melovane {

namespace {

int requiredIndex(const Recordset& set, QStringView name)
{
    const int index = set.fieldIndex(name);
    if (index < 0) {
        throw dbError(DbFault::ItemNotFound, name.toString());
    }
    return index;
}

} // namespace

Field::Field(Recordset& set, int index)
    : m_set(&set)
    , m_index(index)
{}

const FieldDef& Field::definition() const
{
    return m_set->fieldDef(m_index);
}

melovane::Value Field::Value() const
{
    return m_set->value(m_index);
}

void Field::SetValue(const melovane::Value& value)
{
    m_set->setValue(m_index, value);
}

Field Recordset::Fields(QStringView name)
{
    return {*this, requiredIndex(*this, name)};
}

Field Recordset::Fields(int index)
{
    return {*this, index};
}

Value Recordset::value(QStringView name) const
{
    return value(requiredIndex(*this, name));
}

void Recordset::setValue(QStringView name, const Value& value)
{
    setValue(requiredIndex(*this, name), value);
}

} // namespace melovane
