#include "trees/extended_rows.h"

#include "config/config_objects.h"
#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/letter_case.h"
#include "store/error_sink.h"
#include "trees/tree_key.h"
#include "trees/tree_rows.h"

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Value of `ItemTyp` of a row that shows its name; the other kind runs its statement.
constexpr QLatin1StringView kHeading("heading");

/// A row of the table.
struct Item
{
    qint64 id = 0;
    bool isHeading = false;
    QString name;
    QString picture;
    QString field;
    QString sql;
    int level = 0;
    int itemLevel = 0;
    bool isOpen = true;
};

std::vector<Item> readItems(Database& database, const QString& condition)
{
    const auto rows = database.OpenRecordset("select * from TreeErweitertConfig where "_L1 +
                                             condition + " and aktiv=true order by sid"_L1);
    std::vector<Item> items;
    for (; !rows->Eof(); rows->MoveNext()) {
        items.push_back({rows->value(u"id").toLong(),
                         lowerCase(rows->value(u"ItemTyp").toText()) == kHeading,
                         rows->value(u"ItemName").toText(), rows->value(u"ItemImage").toText(),
                         rows->value(u"ItemField").toText(), rows->value(u"itemsql").toText(),
                         rows->value(u"RowLevel").toLong(), rows->value(u"RowLevelItem").toLong(),
                         rows->value(u"RowExpand").toBool()});
    }
    return items;
}

std::vector<Item> readChildren(Database& database, qint64 parent)
{
    return readItems(database, "parentid="_L1 + sql::number(parent));
}

/// A name in the language of the user when the system ships a row of that name, else as it is: the
/// table is one for the users of all languages.
QString captionOf(const QString& name, const ConfigObjects& texts)
{
    QString letters = lowerCase(name);
    letters.removeIf(
        [](QChar letter) { return letter == u' ' || letter == u'(' || letter == u')'; });
    const QString text = texts.text(u"tree.shipped."_s + letters);
    return text.isEmpty() ? name : text;
}

class ExtendedFill
{
public:
    ExtendedFill(Database& database, const ConfigObjects& texts)
        : m_database(database)
        , m_texts(texts)
    {}

    ExtendedRows run()
    {
        for (const Item& item : readChildren(m_database, 0)) {
            if (!item.isHeading) {
                addItemOrWait(item);
                continue;
            }
            const QString key = treekey::extendedHeading(item.id);
            addHeading(item, item.level, key);
            addChildren(item);
            fold(item, key);
        }
        return std::move(m_result);
    }

    /// The heading and its rows, folded or not.
    std::vector<TreeRow> runItem(const Item& item)
    {
        addItem(item);
        return std::move(m_result.rows);
    }

private:
    void addHeading(const Item& item, int level, const QString& key)
    {
        TreeRow row = treerows::row(level, captionOf(item.name, m_texts), key, item.picture);
        row.heading = level == 0;
        m_result.rows.push_back(std::move(row));
    }

    void addChildren(const Item& parent)
    {
        for (const Item& child : readChildren(m_database, parent.id)) {
            if (child.isHeading) {
                addHeading(child, parent.itemLevel, treekey::extended(child.field, child.name));
            } else {
                addItemOrWait(child);
            }
        }
    }

    void fold(const Item& item, const QString& key)
    {
        if (!item.isOpen) {
            m_result.folded.append(key);
        }
    }

    /// One that is folded runs its statement when it is opened.
    void addItemOrWait(const Item& item)
    {
        if (item.isOpen) {
            addItem(item);
            return;
        }
        addHeading(item, item.level, treekey::extendedHeading(item.id));
        m_result.rows.back().fillable = true;
    }

    void addItem(const Item& item);
    [[nodiscard]] bool addResults(const Item& item);

    Database& m_database;
    const ConfigObjects& m_texts;
    ExtendedRows m_result;
};

/// Whether a row was added.
bool ExtendedFill::addResults(const Item& item)
{
    const auto results = m_database.OpenRecordset(item.sql);
    const int name = results->fieldIndex(u"Name");
    const int count = results->fieldIndex(u"anzahl");
    const int picture = results->fieldIndex(u"imgkey");
    if (name < 0 || count < 0 || picture < 0) {
        throw DbError(dberror::kItemNotFound, m_texts.text(u"tree.item.columns"));
    }
    bool any = false;
    for (; !results->Eof(); results->MoveNext()) {
        const QString value = results->value(name).toText();
        if (value.isEmpty()) {
            continue;
        }
        const QString number = u'(' + QString::number(results->value(count).toLong()) + u')';
        TreeRow row = treerows::row(item.itemLevel, {}, treekey::extended(item.field, value),
                                    treerows::pictureOf(results->value(picture).toText()));
        treerows::setCounted(row, value, number);
        m_result.rows.push_back(std::move(row));
        any = true;
    }
    return any;
}

void ExtendedFill::addItem(const Item& item)
{
    const QString key = treekey::extendedHeading(item.id);
    const size_t place = m_result.rows.size();
    addHeading(item, item.level, key);
    try {
        if (!addResults(item)) {
            const QString nothing = m_texts.text(u"Tree.Item.No.Data");
            m_result.rows[place].text = nothing;
            if (nothing.isEmpty()) {
                m_result.rows.pop_back();
            }
        }
    } catch (const DbError& error) {
        passReleased(error);
        // The rows read until then are a part that could be taken for the whole.
        m_result.rows.resize(place + 1);
        m_result.rows[place].toolTip = m_texts.text(u"tree.item.wrong", error.text());
    }
}

} // namespace

ExtendedRows extendedRows(Database& database, const ConfigObjects& texts)
{
    return ExtendedFill(database, texts).run();
}

std::vector<TreeRow> extendedItem(Database& database, const ConfigObjects& texts, qint64 id)
{
    const std::vector<Item> items = readItems(database, "id="_L1 + sql::number(id));
    if (items.empty() || items.front().isHeading) {
        return {};
    }
    return ExtendedFill(database, texts).runItem(items.front());
}

qint64 extendedHeadingOf(const QString& key)
{
    const QStringList halves = key.split("??"_L1);
    return halves.size() == 2 && halves[0] == "Info?Info"_L1 ? halves[1].toLongLong() : 0;
}

} // namespace melovane
