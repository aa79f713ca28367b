#include "trackedit/edit_tag.h"

#include "bus/message_names.h"
#include "config/config_objects.h"
#include "config/global_settings.h"
#include "config/update_colors.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"
#include "platform/system/path_text.h"
#include "platform/system/timers.h"
#include "platform/system/trim_blanks.h"
#include "trackedit/panel_texts.h"
#include "trackedit/panel_track.h"
#include "trackedit/unwritten_tags.h"
#include "views/track_look.h"

#include <algorithm>
#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Key of the height of the panel, in units of the screen.
const QString kHeightKey = u"EditTag.Height"_s;

/// `Table name` of the row.
const QString kTable = u"db_all"_s;

/// The hand rests: what was typed is written.
constexpr std::chrono::milliseconds kChangeInterval{800};

} // namespace

EditTag::EditTag(EditTagParts parts, EditTagForm& form)
    : m_parts(std::move(parts))
    , m_form(form)
    , m_bus(m_parts.bus, u"EditTag"_s)
    , m_guard(guardOverBus(m_bus, m_parts.texts, m_parts.settings, m_parts.log))
    , m_writer(m_parts, m_bus, m_guard)
    , m_choices(m_parts.engine, m_parts.settings, form)
    , m_data1(m_parts.engine)
    , m_record(m_parts.engine)
    , m_timerChange(m_parts.loop.makeTimer(kChangeInterval, [this] { commit(); }))
    , m_messBus(subscribe(m_parts.bus, m_guard, *this, busTable()))
{}

EditTag::~EditTag()
{
    m_form.detach();
}

std::span<const BusRow<EditTag>> EditTag::busTable()
{
    static constexpr BusRow<EditTag> kRows[] = {
        {bus::kInfoFromFid, &EditTag::infoFromFid},
        {bus::kEditBoxAddNewGenre, &EditTag::addNewGenre},
        {bus::kDbRefreshByFid, &EditTag::refreshByFid},
        {bus::kDbDisconnect, &EditTag::disconnectDatabase},
        {bus::kDbReconnect, &EditTag::reconnectDatabase},
        {bus::kDbChange, &EditTag::changeDatabase},
        {bus::kUpdateColor, &EditTag::updateColor},
    };
    return kRows;
}

// ---- shown or not

void EditTag::ShowTagEdit(bool show)
{
    if (!show || !m_form.isPanelShown()) {
        close();
    }
    if (show) {
        m_isActive = true;
        const bool isThere = m_form.isPanelShown();
        m_form.setPanelShown(true);
        if (!isThere) {
            UpdateUserControlSkinColors();
            m_form.setPanelHeight(m_parts.settings.GetKeyValueLong(u"Global"_s, kHeightKey, 0));
        }
    }
}

void EditTag::UpdateUserControlSkinColors()
{
    m_form.setRatingColours(NoteColours::from(UpdateColors(m_parts.settings)));
}

void EditTag::closePressed()
{
    close();
    m_parts.left();
}

void EditTag::close()
{
    if (m_isActive) {
        commit();
        keepForLater();
        keepHeight();
    }
    m_isActive = false;
    m_timerChange->stop();
    m_fid.clear();
    m_data1.closeDatabase();
    m_form.setPanelShown(false);
}

void EditTag::keepHeight()
{
    m_parts.settings.WriteKeyValue(u"Global"_s, kHeightKey, QString::number(m_form.panelHeight()));
}

void EditTag::showTrack(const QString& fid, bool edits)
{
    if (m_isActive && !edits && (fid == m_fid || fid.isEmpty())) {
        closePressed();
        return;
    }
    ShowTagEdit(true);
    setFid(fid);
    m_form.focusFirst();
}

void EditTag::infoFromFid(const MLVMessage& message)
{
    trackEntered(message.Value1.toText());
}

void EditTag::trackEntered(const QString& fid)
{
    // A view without rows leaves the track of the moment in the panel.
    if (m_isActive && !fid.isEmpty()) {
        setFid(fid);
    }
}

void EditTag::refreshByFid(const MLVMessage& message)
{
    if (message.Sender != m_bus.name()) {
        renewTrack();
    }
}

// ---- the row

bool EditTag::hasRow() const
{
    return m_data1.Recordset() && !m_data1.Recordset()->Eof();
}

bool EditTag::canEdit() const
{
    return m_isActive && !m_isAway && hasRow() && m_parts.mayWrite();
}

void EditTag::setFid(const QString& fid)
{
    if (fid == m_fid && hasRow()) {
        return;
    }
    if (!m_isAway) {
        commit();
    }
    keepForLater();
    m_fid = fid;
    m_texts.clear();
    m_data1.SetRecordSource(u"select * from "_s + kTable + u" where fid="_s + sql::text(m_fid));
    if (!m_isAway) {
        m_guard.run(u"EditTag.setFid"_s, [this] {
            m_choices.fill();
            readRow();
            if (hasRow()) {
                m_texts.show(*m_data1.Recordset());
            }
            m_texts.takeUp(m_writer.takeKept(m_fid));
        });
    }
    showRow();
    showCover();
}

Covers::Track EditTag::coverTrack() const
{
    const Recordset& row = *m_data1.Recordset();
    const QString file = row.value(u"Path").toText() + row.value(u"DName").toText();
    return {m_fid, row.value(u"Image").toText(), m_parts.placeOf(file)};
}

void EditTag::showCover()
{
    if (!hasRow()) {
        m_form.setCover({});
        return;
    }
    m_shownImage = m_data1.Recordset()->value(u"Image").toText();
    m_parts.showCover(coverTrack(), [this, fid = m_fid](const QByteArray& picture) {
        if (fid == m_fid) {
            m_form.setCover(picture);
        }
    });
}

void EditTag::Mp3Image()
{
    if (canEdit()) {
        m_parts.chooseCover(coverTrack());
    }
}

void EditTag::coverChanged(const QString& fid)
{
    if (m_isActive && fid == m_fid) {
        m_shownImage.clear();
        renewTrack();
        showCover();
    }
    m_bus.SendMessage(bus::kDbRefreshByFid, fid);
}

/// \throws DbError, and there is no row then
void EditTag::readRow()
{
    m_data1.SetDatabaseName(m_parts.settings.DbName());
    m_data1.Refresh();
    m_record.setDb_name(m_parts.settings.DbName());
    m_record.GetFidData(m_fid);
}

void EditTag::renewTrack()
{
    if (!m_isActive || m_isAway || m_fid.isEmpty()) {
        return;
    }
    m_guard.run(u"EditTag.renewTrack"_s, [this] {
        readRow();
        if (hasRow()) {
            m_texts.renew(*m_data1.Recordset());
        }
    });
    showRow();
    if (hasRow() && m_data1.Recordset()->value(u"Image").toText() != m_shownImage) {
        showCover();
    }
}

void EditTag::showRow()
{
    showTexts();
    if (hasRow()) {
        const Recordset& row = *m_data1.Recordset();
        m_form.setRating(paneltexts::optionOfNote(row.value(u"Note")));
        PanelTrack track = describeTrack(row, m_record, m_parts);
        track.unwritten = unwritten();
        m_form.setTrack(track);
    } else {
        m_form.setRating(0);
        m_form.setTrack({});
    }
    tellUse();
}

void EditTag::showTexts()
{
    for (const PanelFieldRow& field : panelFields()) {
        m_form.setText(field.field, m_texts.text(field.field));
    }
}

void EditTag::tellUse()
{
    const ConfigObjects& texts = m_parts.texts;
    if (m_isAway) {
        m_form.setUse(PanelUse::Locked, texts.text(u"library.lent.title"));
    } else if (!hasRow()) {
        m_form.setUse(PanelUse::Empty, texts.text(u"edittag.none"));
    } else if (!m_parts.mayWrite()) {
        m_form.setUse(PanelUse::Locked, texts.text(u"library.readonly"));
    } else {
        m_form.setUse(PanelUse::Editing, {});
    }
    if (!m_isAway && m_data1.Database()) {
        m_guard.run(u"EditTag.waiting"_s,
                    [this] { m_form.setWaiting(waitingTracks(*m_data1.Database())); });
    }
}

/// Only as long as the track still waits: what failed may have been written meanwhile.
QString EditTag::unwritten() const
{
    const QString reason = m_parts.unwritten(m_fid);
    qint64 waiting = 0;
    if (!reason.isEmpty()) {
        m_guard.run(u"EditTag.unwritten"_s,
                    [&] { waiting = waitingTracks(*m_data1.Database(), m_fid); });
    }
    return waiting > 0 ? m_parts.texts.text(u"edittag.unwritten", reason) : QString();
}

// ---- writing

bool EditTag::commit(std::vector<ColumnValue> values)
{
    m_timerChange->stop();
    if (!hasRow() || m_isAway) {
        return m_texts.changes().empty();
    }
    for (ColumnValue& value : m_texts.changes()) {
        values.push_back(std::move(value));
    }
    if (values.empty()) {
        return true;
    }
    if (!m_writer.write(m_data1.DatabaseName(), m_fid, values)) {
        return false;
    }
    m_texts.written();
    m_writer.writeKept(m_data1.DatabaseName());
    m_bus.SendMessage(bus::kDbRefreshByFid, m_fid);
    renewTrack();
    return true;
}

/// What could not be written is kept for its track, which the panel leaves now.
void EditTag::keepForLater()
{
    const std::vector<ColumnValue> values = m_texts.changes();
    if (!values.empty() && !m_fid.isEmpty()) {
        m_writer.keep(m_fid, values);
    }
}

// ---- the library

void EditTag::leaveLibrary()
{
    if (m_isAway) {
        return;
    }
    if (m_isActive) {
        commit();
    }
    m_isAway = true;
    m_timerChange->stop();
    m_data1.closeDatabase();
    if (m_isActive) {
        tellUse();
    }
}

void EditTag::libraryIsBack()
{
    if (!std::exchange(m_isAway, false)) {
        return;
    }
    if (m_data1.DatabaseName() != m_parts.settings.DbName()) {
        libraryChanged();
        return;
    }
    m_writer.writeKept(m_data1.DatabaseName());
    renewTrack();
    commit();
}

void EditTag::libraryChanged()
{
    if (m_isAway || m_data1.DatabaseName() == m_parts.settings.DbName()) {
        renewTrack();
        return;
    }
    commit();
    m_writer.writeKept(m_data1.DatabaseName());
    m_writer.forgetKept();
    m_choices.forget();
    m_fid.clear();
    m_texts.clear();
    m_data1.closeDatabase();
    if (m_isActive) {
        showRow();
    }
}

void EditTag::end()
{
    if (m_isActive) {
        commit();
        keepHeight();
    }
    m_writer.writeKept(m_data1.DatabaseName());
    m_data1.closeDatabase();
}

// ---- the lists

void EditTag::cmdNewGenre()
{
    m_bus.SendMessage(bus::kEditTagShowEditBoxNewGenre);
}

void EditTag::addNewGenre(const MLVMessage& message)
{
    const QString name = trimBlanks(message.Value1.toText());
    if (!canEdit() || name.isEmpty()) {
        return;
    }
    m_choices.addGenre(name);
    m_form.setText(PanelField::Genre, name);
    chosen(PanelField::Genre, name);
    m_bus.SendMessage(bus::kRefreshTreeGenre);
}

// ---- what the user does

void EditTag::typed(PanelField field, const QString& text)
{
    if (!canEdit()) {
        return;
    }
    m_texts.type(field, text);
    // Each letter begins the wait anew: who types on is not disturbed.
    m_timerChange->stop();
    m_timerChange->start();
}

void EditTag::chosen(PanelField field, const QString& text)
{
    if (canEdit()) {
        m_texts.type(field, text);
        commit();
    }
}

void EditTag::fieldLeft(PanelField field)
{
    if (m_texts.isTyped(field)) {
        commit();
    }
}

void EditTag::enterPressed(PanelField field)
{
    if (rowOf(field).isCatalogue || !rowOf(field).isList) {
        commit();
    }
}

void EditTag::escapePressed(PanelField field)
{
    const QString former = m_texts.former(field);
    if (former == m_texts.text(field)) {
        leave();
        return;
    }
    typed(field, former);
    m_form.setText(field, m_texts.text(field));
    commit();
}

void EditTag::rate(int option)
{
    if (canEdit() && option >= 0 && option < paneltexts::kRatings) {
        commit({{u"Note"_s, storedRating(option)}});
    }
}

void EditTag::cmdStart()
{
    if (hasRow()) {
        m_bus.SendMessage(bus::kPlayFromStartPos, m_fid, m_data1.Recordset()->value(u"FrameStart"));
    }
}

void EditTag::cmdStop()
{
    if (hasRow()) {
        m_bus.SendMessage(bus::kPlayFromStopPos, m_fid, m_data1.Recordset()->value(u"FrameStop"));
    }
}

void EditTag::ButtonShowDir()
{
    if (!hasRow()) {
        return;
    }
    const Recordset& row = *m_data1.Recordset();
    const QString stored = row.value(u"Path").toText();
    const QString file = m_parts.placeOf(stored + row.value(u"DName").toText());
    const QString folder = file.isEmpty() ? stored : path::withSeparator(path::parent(file));
    if (!m_parts.run(u"explorer.exe \""_s + folder + u'"')) {
        m_bus.SendMessage(bus::kShowStatusText, m_parts.texts.text(u"edittag.folder", folder));
    }
}

} // namespace melovane
