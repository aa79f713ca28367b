#include "library/mp3db.h"

#include "bus/message_names.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/update_colors.h"
#include "library/search_text.h"
#include "platform/controls/search_box.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/system/letter_case.h"
#include "platform/system/trim_blanks.h"
#include "views/drag_data.h"

#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Section and key of the settings with the search text of the last run.
const QString kStateSection = u"Default"_s;
const QString kLastSearch = u"LastDbSearch"_s;

/// Whether a node stands for no tracks: a group of lists, the letter of an artist tree, a heading,
/// a year or month. The rows stay then. \param field in lower case
bool isHeading(QStringView field)
{
    return field.contains(u"gruppe") || field == u"rootinterpret" || field == u"info" ||
           field == u"dir" || field == u"dirmon";
}

} // namespace

ctl_MP3DB::ctl_MP3DB(const Mp3dbParts& parts, Mp3dbControls controls, Mp3dbActions actions)
    : m_settings(parts.settings)
    , m_texts(parts.texts)
    , m_controls(controls)
    , m_actions(std::move(actions))
    , m_gate(parts.texts, m_actions.world)
    , m_bus(parts.bus, u"ctl_MP3DB"_s)
    , m_guard(guardOverBus(m_bus, parts.texts, parts.settings, parts.log))
    , m_history(parts.paths, parts.files)
    , m_look(parts.clock)
    , m_rows(parts.engine,
             controls.grid,
             {.readsAll = [&settings = m_settings] { return settings.DBGridLoadAllRows() == 1; }})
    , m_marks(parts.texts, m_rows, m_look)
    , m_shown(
          {parts.engine, parts.settings, controls.grid, controls.pointer, m_rows, m_look, m_guard})
    , m_watch(
          m_rows,
          parts.loop,
          [this] {
              tellCount();
              updateEmptyNote();
              emit changedByOthers();
          },
          [this] {
              // Who has imported his first tracks sees them without asking for them.
              if (state().view == LibraryView::DBGrid && state().searchText.isEmpty()) {
                  tellResult(m_shown.search(u"*"_s));
              }
          })
    , m_jobs(parts.engine, parts.settings)
    , m_edits({m_rows.data(), m_jobs, parts.history, parts.settings, parts.texts, parts.clock,
               m_guard,
               [this](const QString& fid) { m_bus.SendMessage(bus::kDbRefreshByFid, fid); },
               [this](const QString& text) { m_bus.SendMessage(bus::kShowStatusText, text); }})
    , m_layouts(parts.paths, parts.files)
    , m_messages(parts.bus, m_guard, *this, m_bus)
{}

void ctl_MP3DB::start()
{
    m_layouts.repair();
    m_rows.SetAllSortButton();
    m_controls.search.setList(searchExamples());
    dress();
    configure();
    LoadHist();
    m_watch.start();
}

void ctl_MP3DB::configure()
{
    m_shown.configure();
    startWithLastSearch();
    loadGenres();
}

void ctl_MP3DB::startWithLastSearch()
{
    const QString text = trimBlanks(m_settings.GetKeyValue(kStateSection, kLastSearch, QString()));
    const QString before = m_rows.data().RecordSource();
    if (!text.isEmpty()) {
        // With live search on this is a change of the text like any other and shows the rows.
        m_controls.search.setText(text);
    }
    m_shown.showFirst(text, m_rows.isRead() && m_rows.data().RecordSource() != before);
    m_watch.begin();
    tellCount();
    updateEmptyNote();
}

void ctl_MP3DB::loadGenres()
{
    QStringList names;
    try {
        const auto genres =
            m_rows.database()->OpenRecordset(u"select Name from genre order by Name"_s);
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
    m_watch.stop();
    const bool isSearch = m_shown.request().kind == ShownRequest::Kind::SearchLine;
    const QString typed = trimBlanks(m_controls.search.text());
    m_settings.WriteKeyValue(kStateSection, kLastSearch,
                             typed.isEmpty() && !isSearch ? m_shown.lastSearch() : typed);
    m_shown.storeSorting();
    saveLayout();
}

// ---- the database

void ctl_MP3DB::Refresh()
{
    if (tellWhenLent()) {
        return;
    }
    m_shown.refresh();
    tellCount();
    updateEmptyNote();
}

void ctl_MP3DB::disconnectDatabase()
{
    m_rows.disconnect();
    emit countChanged(-1);
    updateEmptyNote();
    judgeCommands();
}

void ctl_MP3DB::reconnectDatabase()
{
    if (m_rows.isConnected()) {
        return;
    }
    const bool isOther = m_rows.data().DatabaseName() != m_settings.DbName();
    m_rows.reconnect(m_settings.DbName());
    m_shown.fitColumns();
    judgeCommands();
    if (isOther || !m_rows.isRead()) {
        // Another library, or one that was not there at the start either: this is the start.
        m_searchWaits = false;
        configure();
        return;
    }
    loadGenres();
    m_watch.count();
    if (std::exchange(m_searchWaits, false)) {
        search(m_controls.search.text());
    }
    tellCount();
    updateEmptyNote();
}

void ctl_MP3DB::changeDatabase()
{
    if (!m_rows.isConnected()) {
        return;
    }
    if (m_settings.DbName() == m_rows.data().DatabaseName() && m_rows.database()) {
        // New content in the same file: the user stays where he is.
        Refresh();
        m_watch.count();
        updateEmptyNote();
        return;
    }
    configure();
}

/// True while another program has the library, and says why nothing happens.
bool ctl_MP3DB::tellWhenLent()
{
    if (m_rows.isConnected()) {
        return false;
    }
    m_bus.SendMessage(bus::kShowStatusText, m_texts.text(u"library.lent.title"_s));
    return true;
}

// ---- which tracks

void ctl_MP3DB::FindTreeValue(const TreeRequest& request, bool addToHistory)
{
    if (tellWhenLent() || isHeading(lowerCase(request.field))) {
        return;
    }
    if (addToHistory) {
        m_history.push({request.kind, request.field, request.value, request.byNumber});
        tellHistory();
    }
    tellResult(m_shown.showTree(request));
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
    if (!tellWhenLent()) {
        tellResult(m_shown.showWhole(view));
    }
}

void ctl_MP3DB::headerClicked(int column)
{
    if (!tellWhenLent()) {
        m_shown.sortBy(column);
    }
}

void ctl_MP3DB::tellResult(bool shown)
{
    if (shown) {
        if (m_shown.request().kind != ShownRequest::Kind::SearchLine) {
            // These rows are no answer to the text that stands there.
            m_controls.search.setText({});
        }
        tellCount();
    }
    updateEmptyNote();
}

void ctl_MP3DB::tellCount()
{
    if (m_shown.isResult() && m_rows.isConnected()) {
        emit countChanged(m_rows.count(), nameOf(m_shown.request(), m_texts));
    }
}

// ---- the search line

void ctl_MP3DB::searchTextChanged(const QString& text)
{
    if (m_settings.LiveSuche() != 0) {
        search(text);
    }
}

void ctl_MP3DB::search(const QString& text)
{
    m_searchWaits = !m_rows.isConnected();
    tellResult(!trimBlanks(text).isEmpty() && m_rows.isConnected() && m_shown.search(text));
}

void ctl_MP3DB::searchEntered(const QString& text)
{
    search(text);
    if (trimBlanks(text).isEmpty() || m_rows.count() == 0) {
        return;
    }
    const QStringList list = m_controls.search.list();
    if (belongsIntoSearchList(text, list)) {
        m_controls.search.setList(list + QStringList(text));
    }
    m_history.push({kTextSearch.toString(), {}, text, 0});
    tellHistory();
}

void ctl_MP3DB::searchInside()
{
    m_controls.search.setText(u'*' + trimBlanks(m_controls.search.text()));
    // Without live search the change of the text has not searched.
    search(m_controls.search.text());
    SetComboFokus();
}

void ctl_MP3DB::DelSuchlist()
{
    m_controls.search.setList(searchExamples());
}

void ctl_MP3DB::SetComboFokus()
{
    m_controls.search.focus();
}

// ---- the empty grid

LibraryState ctl_MP3DB::state() const
{
    const bool isEmptied = trimBlanks(m_controls.search.text()).isEmpty();
    return {m_rows.count(),        m_watch.librarySize(),
            m_shown.view(),        isEmptied ? QString() : m_shown.lastSearch(),
            !m_rows.isConnected(), m_shown.request()};
}

void ctl_MP3DB::updateEmptyNote()
{
    m_controls.grid.setEmptyNote(libraryNote(state(), m_texts));
}

void ctl_MP3DB::emptyButtonPressed()
{
    switch (emptinessOf(state())) {
    case Emptiness::None:
    case Emptiness::Lent:
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

// ---- rows

QString ctl_MP3DB::GetFID() const
{
    return m_rows.current(u"FID").toText();
}

QString ctl_MP3DB::SetAllBookmarks()
{
    if (m_rows.count() == 0) {
        return {};
    }
    selectAllRows();
    const QString text =
        GetDragData(DragKind::FidMp3db, m_controls.grid, m_rows.walker(), DragOrder::ByPosition)
            .text;
    return text.mid(dragText(DragKind::FidMp3db, {QString()}).size());
}

DragContent ctl_MP3DB::dragContent()
{
    if (!m_rows.isRead()) {
        return {};
    }
    const bool isPlaylist =
        m_shown.view() == LibraryView::PLGrid && m_rows.walker().fieldIndex(u"PLID") >= 0;
    return GetDragData(isPlaylist ? DragKind::Plid : DragKind::FidMp3db, m_controls.grid,
                       m_rows.walker(), DragOrder::ByPosition, {}, m_actions.locate);
}

void ctl_MP3DB::FillTempMp3EditTable()
{
    m_edits.FillTempMp3EditTable(m_controls.grid.selection());
}

void ctl_MP3DB::dress()
{
    const UpdateColors colours(m_settings);
    m_look.setColours(GridColours::from(colours));
    colours.UpdateSplitColors(m_controls.grid);
    refreshCells();
}

void ctl_MP3DB::saveLayout()
{
    m_layouts.save(kLibraryLayout.toString(), m_controls.grid);
}

void ctl_MP3DB::loadLayout(const QString& name)
{
    m_layouts.load(name, m_controls.grid);
    m_shown.fitColumns();
}

void ctl_MP3DB::focusRows()
{
    m_controls.grid.focus();
}

} // namespace melovane
