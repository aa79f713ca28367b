#include "platform/sqlite/engine/mixed_changes.h"

#include "platform/sqlite/engine/engine_fixture.h"

namespace melovane::test {

QString Sum::text() const
{
    return u"rows %1 edits %2 counted %3 side %4 queries %5"_s.arg(rows)
        .arg(edits)
        .arg(counted)
        .arg(sideRows)
        .arg(queries);
}

MixedChanges::MixedChanges(DBEngine& engine, QString file, int writer)
    : m_engine(engine)
    , m_file(std::move(file))
    , m_writer(writer)
    , m_random(quint32(writer) + 1)
{}

Sum MixedChanges::run(int count)
{
    constexpr int kCatalogueEvery = 97;
    constexpr int kKinds = 7;
    for (int i = 0; i < count; ++i) {
        // Mostly as the suite works: open, change, close.
        if (!m_database || m_random.bounded(3) == 0) {
            m_database = m_engine.OpenDatabase(m_file);
        }
        if (i % kCatalogueEvery == kCatalogueEvery - 1) {
            changeCatalogue(i);
        } else {
            change(m_random.bounded(kKinds));
        }
    }
    return m_sum;
}

void MixedChanges::change(int kind)
{
    switch (kind) {
    case 0:
        addByRecordset();
        break;
    case 1:
        insert();
        break;
    case 2:
        editLast();
        break;
    case 3:
        deleteFirst();
        break;
    case 4:
        transaction();
        break;
    case 5:
        execute(u"insert into TREE_DIR (Name) values ('%1')"_s.arg(m_writer));
        ++m_sum.sideRows;
        break;
    default:
        execute(u"update pl_name set anzahl=anzahl+1 where nid=1"_s);
        ++m_sum.counted;
    }
}

QString MixedChanges::newFid()
{
    return u"%1-%2"_s.arg(m_writer).arg(m_next++);
}

void MixedChanges::addByRecordset()
{
    const auto set = m_database->OpenRecordset(u"select * from todo where id=-1"_s);
    set->AddNew();
    set->setValue(u"ID", 0);
    set->setValue(u"FID", newFid());
    set->Update();
    ++m_sum.rows;
}

void MixedChanges::insert()
{
    execute(u"insert into todo (ID, FID) values (0, '%1')"_s.arg(newFid()));
    ++m_sum.rows;
}

/// The rows of this writer alone, so that none edits what another has deleted.
std::unique_ptr<Recordset> MixedChanges::ownRows(const QString& order)
{
    return m_database->OpenRecordset(
        u"select * from todo where fid like '%1-*' order by %2"_s.arg(m_writer).arg(order));
}

void MixedChanges::editLast()
{
    const auto set = ownRows(u"fid desc"_s);
    if (!set->Eof()) {
        set->Edit();
        set->setValue(u"ID", set->value(u"ID").toLong() + 1);
        set->Update();
        ++m_sum.edits;
    }
}

void MixedChanges::deleteFirst()
{
    const auto set = ownRows(u"fid"_s);
    if (!set->Eof()) {
        m_sum.edits -= set->value(u"ID").toLong();
        set->Delete();
        --m_sum.rows;
    }
}

void MixedChanges::transaction()
{
    Transaction outer(*m_database);
    insert();
    {
        const Transaction undone(*m_database);
        execute(u"delete from todo"_s);
    }
    execute(u"update pl_name set anzahl=anzahl+1 where nid=1"_s);
    execute(u"insert into TREE_DIR (Name) select name from pl_name where nid=1"_s);
    outer.commit();
    ++m_sum.counted;
    ++m_sum.sideRows;
}

void MixedChanges::changeCatalogue(int number)
{
    const QString name = u"t_%1_%2"_s.arg(m_writer).arg(number);
    m_database->tableDefs().Append(table(name, {textField(u"a"_s, 5)}));
    execute(u"insert into %1 values ('x')"_s.arg(name));
    execute(u"alter table %1 add column b long"_s.arg(name));
    m_database->tableDefs().Delete(name);
    m_database->CreateQueryDef(u"q_"_s + name, u"select * from todo"_s);
    ++m_sum.queries;
}

} // namespace melovane::test
