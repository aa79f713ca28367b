#include "library/mp3db.h"

#include "bus/message_names.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/update_colors.h"
#include "platform/controls/pointer_control.h"
#include "platform/controls/search_box.h"
#include "platform/db/db_error.h"
#include "platform/system/letter_case.h"
#include "platform/system/timers.h"
#include "platform/system/trim_blanks.h"

#include <QLocale>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Section of the settings with the state of this view.
const QString kStateSection = u"Default"_s;

/// How often the database is asked for changes of other programs.
constexpr std::chrono::milliseconds kLookInterval{500};

/// Columns that are never fitted to their contents, and the widest that others get, in figures.
const QStringList kFixedColumns = {u"ac"_s, u"dc"_s, u"note"_s};
constexpr double kWidestFitted = 60;

/// Selected rows that are looked for in a new order, each in all its rows; of more only the current
/// one stays selected.
constexpr size_t kMostKeptSelected = 500;

} // namespace

QString groupedNumber(qint64 number)
{
    return QLocale(QLocale::German).toString(number).replace(u'.', QChar(0x202F));
}

ctl_MP3DB::ctl_MP3DB(const Mp3dbParts& parts, Mp3dbControls controls, Mp3dbActions actions)
    : m_settings(parts.settings)
    , m_texts(parts.texts)
    , m_paths(parts.paths)
    , m_files(parts.files)
    , m_controls(controls)
    , m_actions(std::move(actions))
    , m_bus(parts.bus, u"ctl_MP3DB"_s)
    , m_query(parts.engine)
    , m_look(parts.clock)
    , m_data1(parts.engine)
    , m_jobs(parts.engine, parts.settings)
    , m_place(controls.grid, m_data1)
    , m_edits(
          m_data1,
          m_jobs,
          parts.settings,
          parts.clock,
          [this](const QString& fid) { m_bus.SendMessage(bus::kDbRefreshByFid, fid); },
          [this](const QString& text) { m_bus.SendMessage(bus::kShowStatusText, text); })
    , m_layouts(parts.paths, parts.files)
    , m_changeTimer(parts.loop.makeTimer(kLookInterval, [this] { lookForChanges(); }))
    , m_guard(guardOverBus(m_bus, parts.texts, parts.settings, parts.log))
    , m_messBus(subscribe(parts.bus, m_guard, *this, busTable()))
{}

ctl_MP3DB::~ctl_MP3DB() = default;

void ctl_MP3DB::start()
{
    m_layouts.repair();
    m_place.SetAllSortButton();
    m_controls.search.setList(searchExamples());
    updateColor({});
    configure();
    LoadHist();
    m_changeTimer->start();
}

void ctl_MP3DB::configure()
{
    m_data1.SetDatabaseName(m_settings.DbName());
    readSorting();
    m_query.configure(m_settings.DbName());
    startWithLastSearch();
    loadGenres();
}

void ctl_MP3DB::readSorting()
{
    // The names stand in a file that anybody may edit, and end up in a statement.
    QString column = m_settings.GetKeyValue(kStateSection, u"SortColName"_s, u"Titel"_s);
    if (m_controls.grid.columnOf(column) < 0) {
        column = u"Titel"_s;
    }
    m_sortColIndex = m_controls.grid.columnOf(column);
    m_query.setSorting(column, m_settings.GetKeyValue(kStateSection, u"SortRichtung"_s, u"ASC"_s));
    showArrow();
}

void ctl_MP3DB::startWithLastSearch()
{
    const QString text =
        trimBlanks(m_settings.GetKeyValue(kStateSection, u"LastDbSearch"_s, QString()));
    const QString before = m_data1.RecordSource();
    if (!text.isEmpty()) {
        // With live search on this is a change of the text like any other and shows the rows.
        m_controls.search.setText(text);
    }
    if (!m_data1.Recordset() || m_data1.RecordSource() == before) {
        m_data1.SetRecordSource(m_query.startStatement(text));
        requery();
    }
    m_dataVersion = m_data1.Database()->DataVersion();
    countLibrary();
    m_searchShown = !text.isEmpty();
    tellCount();
    updateEmptyNote();
}

void ctl_MP3DB::loadGenres()
{
    QStringList names;
    try {
        const auto genres =
            m_data1.Database()->OpenRecordset(u"select Name from genre order by Name"_s);
        for (; !genres->Eof(); genres->MoveNext()) {
            names.append(genres->value(u"Name").toText());
        }
    } catch (const DbError&) {
        // Without the list a genre can still be typed.
        names.clear();
    }
    names.removeAll(QString());
    names.removeDuplicates();
    m_edits.setGenres(names);
}

void ctl_MP3DB::end()
{
    m_changeTimer->stop();
    m_settings.WriteKeyValue(kStateSection, u"LastDbSearch"_s,
                             trimBlanks(m_controls.search.text()));
    m_settings.WriteKeyValue(kStateSection, u"SortColName"_s, m_query.SortColName());
    m_settings.WriteKeyValue(kStateSection, u"SortRichtung"_s, m_query.SortRichtung());
    m_settings.WriteKeyValue(kStateSection, u"SortColIndex"_s, QString::number(m_sortColIndex));
    m_layouts.save(kLibraryLayout.toString(), m_controls.grid);
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
    } catch (const DbError& error) {
        // The rows of the former statement are still there; so a second try is no repetition.
        m_data1.SetRecordSource(former);
        // Half a short form is no fault of anybody's: its other half is being typed.
        if (error.number() != dberror::kSyntax) {
            m_bus.SendMessage(bus::kShowStatusText, error.text());
        }
        return false;
    }
}

bool ctl_MP3DB::show(const QString& statement)
{
    const bool shown = statement == m_data1.RecordSource() || applyStatement(statement);
    if (shown) {
        m_searchShown = true;
        m_look.setPlayIsTimeOfDay(m_query.view() == LibraryView::DBState);
        fitColumns();
        tellCount();
    }
    updateEmptyNote();
    return shown;
}

void ctl_MP3DB::fitColumns()
{
    if (m_settings.AutosizeGrid() != 0) {
        m_controls.grid.fitColumns(kFixedColumns, kWidestFitted);
    }
}

// ---- searching

void ctl_MP3DB::searchTextChanged(const QString& text)
{
    if (m_settings.LiveSuche() != 0) {
        search(text);
    }
}

void ctl_MP3DB::search(const QString& text)
{
    if (trimBlanks(text).isEmpty() || !m_connected) {
        updateEmptyNote();
        return;
    }
    const bool inside = text.startsWith(u'*');
    const BusyCursor busy(m_controls.pointer, inside ? PointerShape::Search : PointerShape::Wait);
    try {
        show(m_query.searchStatement(text, chosenSearchColumns(m_settings)));
    } catch (const DbError& error) {
        m_bus.SendMessage(bus::kShowStatusText, error.text());
    }
}

void ctl_MP3DB::searchEntered(const QString& text)
{
    search(text);
    if (trimBlanks(text).isEmpty() || m_data1.rowCount() == 0) {
        return;
    }
    const QStringList list = m_controls.search.list();
    if (belongsIntoSearchList(text, list)) {
        m_controls.search.setList(list + QStringList(text));
    }
    m_history.push({kTextSearch.toString(), {}, text, 0});
    tellHistory();
}

void ctl_MP3DB::FindTreeValue(const TreeRequest& request, bool addToHistory)
{
    if (!m_connected || lowerCase(request.field).contains("gruppe"_L1)) {
        return;
    }
    const bool inside = request.value.startsWith(u'*');
    const BusyCursor busy(m_controls.pointer, inside ? PointerShape::Search : PointerShape::Wait);
    if (addToHistory) {
        m_history.push({request.kind, request.field, request.value, request.byNumber});
        tellHistory();
    }
    try {
        show(m_query.treeStatement(request, chosenSearchColumns(m_settings)));
    } catch (const DbError& error) {
        m_bus.SendMessage(bus::kShowStatusText, error.text());
    }
}

void ctl_MP3DB::DB_ALL_DEL()
{
    showWholeView(LibraryView::DBGridDel);
}

void ctl_MP3DB::DB_ALL_NOEXIST()
{
    showWholeView(LibraryView::DBGridNoExist);
}

void ctl_MP3DB::showWholeView(LibraryView view)
{
    if (!m_connected) {
        return;
    }
    const BusyCursor busy(m_controls.pointer);
    try {
        show(m_query.wholeView(view));
    } catch (const DbError& error) {
        m_bus.SendMessage(bus::kShowStatusText, error.text());
    }
}

// ---- order and place

void ctl_MP3DB::headerClicked(int column)
{
    const QString field = m_controls.grid.dataField(column);
    if (field.isEmpty() || !m_connected) {
        return;
    }
    const BusyCursor busy(m_controls.pointer);
    const bool turn = column == m_sortColIndex && m_query.SortRichtung() != "DESC"_L1;
    const QString statement = m_query.sortedBy(field, turn ? u"DESC"_s : u"ASC"_s);
    m_sortColIndex = column;
    showArrow();
    applyKeepingTrack(statement);
}

void ctl_MP3DB::showArrow()
{
    m_controls.grid.setSortArrow(m_sortColIndex, m_query.SortRichtung() == "DESC"_L1
                                                     ? SortArrow::Descending
                                                     : SortArrow::Ascending);
}

void ctl_MP3DB::Refresh()
{
    if (!m_connected) {
        return;
    }
    applyKeepingTrack(m_data1.RecordSource());
    tellCount();
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
    const std::vector<qint64> selected = selectedRows();
    if (!applyStatement(statement) || !former || row < 0 || row >= former->rowCount()) {
        return;
    }
    former->SetAbsolutePosition(row);
    const qint64 found = m_rowClone->rowOfSame(*former, former->bookmark());
    if (found >= 0) {
        m_data1.Recordset()->SetAbsolutePosition(found);
        m_controls.grid.goToRow(found, found - fromTop);
    }
    if (selected.size() > 1) {
        m_controls.grid.select(rowsOf(*former, selected));
    }
}

std::vector<qint64> ctl_MP3DB::selectedRows() const
{
    std::vector<qint64> rows;
    for (const RowRange& range : m_controls.grid.selection()) {
        for (qint64 row = range.first; row <= range.last; ++row) {
            if (rows.size() == kMostKeptSelected) {
                return {};
            }
            rows.push_back(row);
        }
    }
    return rows;
}

std::vector<RowRange> ctl_MP3DB::rowsOf(Recordset& former, const std::vector<qint64>& rows) const
{
    std::vector<RowRange> result;
    for (const qint64 row : rows) {
        if (row >= former.rowCount()) {
            continue;
        }
        former.SetAbsolutePosition(row);
        const qint64 found = m_rowClone->rowOfSame(former, former.bookmark());
        if (found >= 0) {
            result.push_back({found, found});
        }
    }
    return result;
}

// ---- changes of others

void ctl_MP3DB::countLibrary()
{
    const auto set = m_data1.Database()->OpenRecordset(u"select count(*) as anz from db_all"_s);
    m_librarySize = set->Eof() ? 0 : set->value(u"anz").toLong();
}

void ctl_MP3DB::tellCount()
{
    if (m_searchShown) {
        emit countChanged(m_data1.rowCount());
    }
}

void ctl_MP3DB::lookForChanges()
{
    Database* database = m_data1.Database();
    if (!database || !m_connected) {
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
        tellCount();
    } catch (const DbError&) {
        // Somebody holds the file; the next look comes soon.
    }
    updateEmptyNote();
}

// ---- the empty grid

ctl_MP3DB::Emptiness ctl_MP3DB::emptiness() const
{
    if (m_data1.rowCount() > 0) {
        return Emptiness::None;
    }
    if (m_librarySize == 0) {
        return Emptiness::NoLibrary;
    }
    if (m_query.view() != LibraryView::DBGrid) {
        return Emptiness::NothingHere;
    }
    return trimBlanks(m_controls.search.text()).isEmpty() ? Emptiness::NoSearch : Emptiness::NoHits;
}

void ctl_MP3DB::updateEmptyNote()
{
    m_controls.grid.setEmptyNote(emptyNote());
}

EmptyNote ctl_MP3DB::emptyNote() const
{
    const QString text = trimBlanks(m_controls.search.text());
    switch (emptiness()) {
    case Emptiness::None:
        break;
    case Emptiness::NoLibrary:
        return {m_texts.text(u"library.empty.title"_s), m_texts.text(u"library.empty.text"_s),
                m_texts.text(u"library.import"_s)};
    case Emptiness::NothingHere:
        if (m_query.view() == LibraryView::DBGridDel) {
            return {m_texts.text(u"library.nodeleted"_s), {}, {}};
        }
        return {m_texts.text(m_query.view() == LibraryView::DBGridNoExist ? u"library.nomissing"_s
                                                                          : u"library.norows"_s),
                {},
                {}};
    case Emptiness::NoSearch: {
        const QString title =
            m_librarySize == 1 ? u"library.nosearch.title.one"_s : u"library.nosearch.title"_s;
        return {m_texts.text(title, groupedNumber(m_librarySize)),
                m_texts.text(u"library.nosearch.text"_s),
                m_texts.text(u"library.nosearch.button"_s)};
    }
    case Emptiness::NoHits: {
        const bool inside = text.startsWith(u'*');
        return {m_texts.text(u"library.nohits.title"_s, text.left(60)),
                m_texts.text(inside ? u"library.nohits.inside"_s : u"library.nohits.begin"_s),
                inside ? QString() : m_texts.text(u"library.nohits.button"_s)};
    }
    }
    return {};
}

void ctl_MP3DB::emptyButtonPressed()
{
    switch (emptiness()) {
    case Emptiness::None:
    case Emptiness::NothingHere:
        break;
    case Emptiness::NoLibrary:
        m_actions.startImport();
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
