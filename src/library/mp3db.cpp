#include "library/mp3db.h"

#include "config/global_settings.h"
#include "config/update_colors.h"
#include "platform/controls/pointer_control.h"
#include "platform/controls/search_box.h"
#include "platform/db/db_error.h"
#include "platform/system/text_number.h"
#include "platform/system/timers.h"

#include <QLocale>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Rows of the library that views show: normal ones and those marked as deleted.
const QString kViewFilter = u" and del in (0,-1) "_s;

/// The find text of the start, never shown: a library is empty until the first search.
const QString kStartFind = u"Melovane"_s;

/// Section of the settings with the state of this view.
const QString kStateSection = u"Default"_s;

/// How often the database is asked for changes of other programs.
constexpr std::chrono::milliseconds kLookInterval{500};

/// Builder mode: texts that begin with the find text.
constexpr int kPrefixMode = 2;

} // namespace

QString groupedNumber(qint64 number)
{
    return QLocale(QLocale::German).toString(number).replace(u'.', QChar(0x202F));
}

ctl_MP3DB::ctl_MP3DB(DBEngine& engine,
                     GlobalSettings& settings,
                     const Clock& clock,
                     MessageLoop& loop,
                     Mp3dbControls controls,
                     std::function<void()> startImport)
    : m_settings(settings)
    , m_controls(controls)
    , m_startImport(std::move(startImport))
    , m_sql(engine)
    , m_look(clock)
    , m_data1(engine)
    , m_changeTimer(loop.makeTimer(kLookInterval, [this] { lookForChanges(); }))
{}

ctl_MP3DB::~ctl_MP3DB() = default;

void ctl_MP3DB::start()
{
    m_look.setColours(GridColours::from(UpdateColors(m_settings)));
    configure();
    m_changeTimer->start();
}

void ctl_MP3DB::configure()
{
    m_data1.SetDatabaseName(m_settings.DbName());
    m_sql.SetDataBaseName(m_settings.DbName());
    m_sql.SetTableName(u"db_all"_s);
    m_sql.SetFieldsFromTable(u"db_all"_s);
    m_sql.ViewDEL(kViewFilter);
    m_sql.ClearFieldFind();
    m_sql.AddFieldFind(u"Titel"_s);
    m_sql.AddFieldFind(u"Interpret"_s);
    m_sql.SetFind(kStartFind);
    m_matchCount = m_sql.GetCount(kPrefixMode);
    setSecondaryOrder();
    readSorting();
    startWithLastSearch();
}

void ctl_MP3DB::readSorting()
{
    // The names stand in a file that anybody may edit, and end up in a statement.
    m_sortColName = m_settings.GetKeyValue(kStateSection, u"SortColName"_s, u"Titel"_s);
    m_sortColIndex = m_controls.grid.columnOf(m_sortColName);
    if (m_sortColIndex < 0) {
        m_sortColName = u"Titel"_s;
        m_sortColIndex = m_controls.grid.columnOf(m_sortColName);
    }
    const QString direction = m_settings.GetKeyValue(kStateSection, u"SortRichtung"_s, u"ASC"_s);
    m_sortRichtung = upperCase(trimBlanks(direction)) == "DESC"_L1 ? u"DESC"_s : u"ASC"_s;
    m_sql.SetOrderBy(m_sortColName);
    m_sql.SetSortRichtung(m_sortRichtung);
    showArrow();
}

void ctl_MP3DB::startWithLastSearch()
{
    const QString text =
        trimBlanks(m_settings.GetKeyValue(kStateSection, u"LastDbSearch"_s, QString()));
    if (!text.isEmpty()) {
        // With live search on this is a change of the text like any other and shows the rows.
        m_controls.search.setText(text);
        m_sql.SetFind(text);
    }
    const QString statement = m_sql.GetSql(kPrefixMode);
    if (!m_data1.Recordset() || statement != m_data1.RecordSource()) {
        m_data1.SetRecordSource(statement);
        requery();
    }
    m_dataVersion = m_data1.Database()->DataVersion();
    countLibrary();
    if (!text.isEmpty()) {
        m_searchShown = true;
        m_matchCount = m_data1.rowCount();
        emit countChanged(m_matchCount);
    }
    updateEmptyNote();
}

void ctl_MP3DB::end()
{
    m_changeTimer->stop();
    m_settings.WriteKeyValue(kStateSection, u"LastDbSearch"_s,
                             trimBlanks(m_controls.search.text()));
    m_settings.WriteKeyValue(kStateSection, u"SortColName"_s, m_sortColName);
    m_settings.WriteKeyValue(kStateSection, u"SortRichtung"_s, m_sortRichtung);
    m_settings.WriteKeyValue(kStateSection, u"SortColIndex"_s, QString::number(m_sortColIndex));
}

void ctl_MP3DB::setSecondaryOrder()
{
    for (const QString& column : {u"Track"_s, u"Interpret"_s, u"Titel"_s}) {
        m_sql.AddOrderBy(column, cls_CreateSqlFind::kAscending);
    }
}

void ctl_MP3DB::setFindColumns()
{
    m_sql.ClearFieldFind();
    m_sql.AddFieldFind(u"Titel"_s);
    m_sql.AddFieldFind(u"Interpret"_s);
    const std::pair<bool, QString> choices[] = {{m_settings.SuchAlbum() != 0, u"Album"_s},
                                                {m_settings.SuchKommentar() != 0, u"Kommentar"_s},
                                                {m_settings.SuchDatei() != 0, u"Dname"_s},
                                                {m_settings.SuchPath() != 0, u"Path"_s}};
    for (const auto& [chosen, column] : choices) {
        if (chosen) {
            m_sql.AddFieldFind(column);
        }
    }
}

void ctl_MP3DB::requery()
{
    m_data1.Refresh();
    if (m_settings.DBGridLoadAllRows() == 1) {
        m_data1.Recordset()->MoveLast();
        m_data1.Recordset()->MoveFirst();
    }
    m_rowClone = m_data1.Recordset()->Clone();
}

bool ctl_MP3DB::applyStatement(const QString& statement)
{
    const QString former = m_data1.RecordSource();
    try {
        m_data1.SetRecordSource(statement);
        requery();
        return true;
    } catch (const DbError&) {
        // The rows of the former statement are still there; so a second try is no repetition.
        m_data1.SetRecordSource(former);
        return false;
    }
}

void ctl_MP3DB::searchTextChanged(const QString& text)
{
    if (m_settings.LiveSuche() != 0) {
        search(text);
    }
}

void ctl_MP3DB::search(const QString& text)
{
    if (trimBlanks(text).isEmpty()) {
        updateEmptyNote();
        return;
    }
    const bool inside = text.startsWith(u'*');
    const BusyCursor busy(m_controls.pointer, inside ? PointerShape::Search : PointerShape::Wait);
    setFindColumns();
    m_sql.ViewDEL(kViewFilter);
    m_sql.SetFind(text);
    m_sql.SetOrderBy(m_sortColName);
    m_sql.SetSortRichtung(m_sortRichtung);
    const QString statement = m_sql.GetSql(kPrefixMode);
    if (statement == m_data1.RecordSource() || applyStatement(statement)) {
        m_searchShown = true;
        countMatches();
    }
    updateEmptyNote();
}

void ctl_MP3DB::countMatches()
{
    try {
        m_matchCount = m_sql.GetCount(kPrefixMode);
        if (m_searchShown) {
            emit countChanged(m_matchCount);
        }
    } catch (const DbError&) {
        // The rows are shown all the same; the count is that of the search before.
    }
}

void ctl_MP3DB::countLibrary()
{
    const auto set = m_data1.Database()->OpenRecordset(u"select count(*) as anz from db_all"_s);
    m_librarySize = set->Eof() ? 0 : set->value(u"anz").toLong();
}

void ctl_MP3DB::headerClicked(int column)
{
    const QString field = m_controls.grid.dataField(column);
    if (field.isEmpty()) {
        return;
    }
    const BusyCursor busy(m_controls.pointer);
    const bool turn = column == m_sortColIndex && m_sortRichtung != "DESC"_L1;
    m_sortRichtung = turn ? u"DESC"_s : u"ASC"_s;
    m_sortColName = field;
    m_sortColIndex = column;
    showArrow();
    m_sql.RemoveOrderBy();
    setSecondaryOrder();
    m_sql.SetOrderBy(m_sortColName);
    m_sql.SetSortRichtung(m_sortRichtung);
    applyKeepingTrack(m_sql.GetLastSQL());
}

void ctl_MP3DB::showArrow()
{
    m_controls.grid.setSortArrow(
        m_sortColIndex, m_sortRichtung == "DESC"_L1 ? SortArrow::Descending : SortArrow::Ascending);
}

void ctl_MP3DB::Refresh()
{
    applyKeepingTrack(m_data1.RecordSource());
    countMatches();
    updateEmptyNote();
}

QString ctl_MP3DB::GetFID() const
{
    const Recordset* set = m_data1.Recordset();
    const qint64 row = m_controls.grid.currentRow();
    return set && row >= 0 ? m_data1.cell(row, set->fieldIndex(u"FID")).toText() : QString();
}

void ctl_MP3DB::applyKeepingTrack(const QString& statement)
{
    const qint64 row = m_controls.grid.currentRow();
    const qint64 fromTop = row - m_controls.grid.firstVisibleRow();
    // The former clone still knows where the track stood when the new rows are there.
    const auto former = m_rowClone ? m_rowClone->Clone() : nullptr;
    if (!applyStatement(statement) || !former || row < 0 || row >= former->rowCount()) {
        return;
    }
    former->SetAbsolutePosition(row);
    const qint64 found = m_rowClone->rowOfSame(*former, former->bookmark());
    if (found >= 0) {
        m_data1.Recordset()->SetAbsolutePosition(found);
        m_controls.grid.goToRow(found, found - fromTop);
    }
}

void ctl_MP3DB::lookForChanges()
{
    Database* database = m_data1.Database();
    if (!database) {
        return;
    }
    try {
        const qint64 version = database->DataVersion();
        if (version == m_dataVersion) {
            return;
        }
        m_dataVersion = version;
        countLibrary();
        if (m_data1.rowCount() == 0) {
            requery();
        } else {
            m_data1.refreshCells();
        }
        countMatches();
    } catch (const DbError&) {
        // Somebody holds the file; the next look comes soon.
    }
    updateEmptyNote();
}

ctl_MP3DB::Emptiness ctl_MP3DB::emptiness() const
{
    if (m_data1.rowCount() > 0) {
        return Emptiness::None;
    }
    if (m_librarySize == 0) {
        return Emptiness::NoLibrary;
    }
    return trimBlanks(m_controls.search.text()).isEmpty() ? Emptiness::NoSearch : Emptiness::NoHits;
}

void ctl_MP3DB::updateEmptyNote()
{
    const QString text = trimBlanks(m_controls.search.text());
    switch (emptiness()) {
    case Emptiness::None:
        m_controls.grid.setEmptyNote({});
        break;
    case Emptiness::NoLibrary:
        m_controls.grid.setEmptyNote({u"Noch keine Titel - MP3s importieren"_s,
                                      u"Wähle einen Ordner mit MP3-Dateien; danach findest du hier "
                                      "jeden Titel mit ein paar Buchstaben."_s,
                                      u"MP3s importieren"_s});
        break;
    case Emptiness::NoSearch:
        m_controls.grid.setEmptyNote(
            {u"%1 Titel in der Bibliothek"_s.arg(groupedNumber(m_librarySize)),
             u"Tippe den Anfang von Titel oder Interpret in die Suchzeile."_s,
             u"Alle Titel zeigen"_s});
        break;
    case Emptiness::NoHits:
        m_controls.grid.setEmptyNote(
            {u"Keine Treffer für „%1“"_s.arg(text.left(60)),
             text.startsWith(u'*') ? u"Auch mitten im Text kommt das nicht vor."_s
                                   : u"Gesucht wurde am Anfang der Felder."_s,
             text.startsWith(u'*') ? QString() : u"Auch mitten im Text suchen"_s});
        break;
    }
}

void ctl_MP3DB::emptyButtonPressed()
{
    switch (emptiness()) {
    case Emptiness::None:
        break;
    case Emptiness::NoLibrary:
        m_startImport();
        break;
    case Emptiness::NoSearch:
    case Emptiness::NoHits:
        searchInside();
        break;
    }
}

void ctl_MP3DB::searchInside()
{
    m_controls.search.setText(u'*' + trimBlanks(m_controls.search.text()));
    // Without live search the change of the text has not searched.
    search(m_controls.search.text());
    m_controls.search.focus();
}

} // namespace melovane
