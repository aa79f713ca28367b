#include "player/player_suite.h"

#include "bus/message_numbers.h"
#include "config/global_settings.h"
#include "platform/db/database.h"
#include "platform/db/sql_text.h"
#include "platform/system/clock.h"
#include "player/air_sequence.h"
#include "player/playing_list.h"
#include "playlists/play_statistics.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Name under which the suite finds the player: keep.
const QString kProgramKey = u"MelovaneDJ.exe"_s;

/// Entries that are read before the library is given away: the longest work on it takes minutes.
constexpr int kKeptWhileAway = 40;

/// How long the window stands still for a program that asks for the library and hangs.
constexpr std::chrono::milliseconds kPatience{1000};

/// The time of a play that is written later.
class MomentOf : public Clock
{
public:
    explicit MomentOf(QDateTime moment)
        : m_moment(std::move(moment))
    {}

    [[nodiscard]] QDateTime now() const override { return m_moment; }

private:
    QDateTime m_moment;
};

} // namespace

PlayerSuite::PlayerSuite(Parts parts)
    : m_parts(std::move(parts))
{}

void PlayerSuite::publish(qint32 window)
{
    const MessageHandle own = m_parts.control.handle();
    m_parts.control.setMessageNumber(
        [this](qint32 id, qint32 wParam, qint32 lParam) { return number(id, wParam, lParam); });
    m_parts.settings.SetMessageHandleDJ(own);
    m_parts.settings.SetHandleDj(window);
    m_parts.settings.WriteKeyValue(section::kMessageHandle.toString(), kProgramKey,
                                   QString::number(own));
}

void PlayerSuite::withdraw()
{
    m_parts.settings.RefreshMessageHandle();
    if (m_parts.settings.MessageHandleDJ() == m_parts.control.handle()) {
        m_parts.settings.SetMessageHandleDJ(0);
    }
}

void PlayerSuite::postToConsole(qint32 id, qint32 wParam, qint32 lParam)
{
    m_parts.settings.RefreshMessageHandle();
    m_console = m_parts.settings.MessageHandleDB();
    if (m_parts.messages.IsMsgWindow(m_console)) {
        m_parts.control.setTarget(m_console);
        m_parts.control.Post(id, wParam, lParam);
    }
}

void PlayerSuite::tellPlaying(Plid playing, Plid next)
{
    m_playing = {playing, next};
    postToConsole(message::kRefreshPlaylistEntry, qint32(numberOf(next)),
                  qint32(numberOf(playing)));
}

void PlayerSuite::showConsole()
{
    postToConsole(message::kBringToFront, 0, 0);
}

void PlayerSuite::dock(bool isDocked)
{
    postToConsole(isDocked ? message::kDock : message::kUndock, 0, 0);
}

qint32 PlayerSuite::number(qint32 id, qint32 wParam, qint32 lParam)
{
    Q_UNUSED(wParam);
    switch (id) {
    case message::kSoundCardChanged:
        m_parts.settings.Refresh();
        m_parts.openCards();
        break;
    case message::kReleaseDatabase:
        giveAway(lParam);
        break;
    case message::kReconnectDatabase:
        m_askers.clear();
        takeBack();
        break;
    case message::kConfigChanged:
        configChanged();
        break;
    case message::kDatabaseChanged:
    case message::kRefreshPlaylist:
    case message::kRefreshPlaylistTree:
        m_parts.playlists.engine.Idle(dbRefreshCache);
        m_parts.sequence.listChanged();
        m_parts.changed();
        break;
    case message::kPlayNext:
    case message::kPlayNow:
        playOrdered(id);
        break;
    case message::kBringToFront:
        m_parts.bringToFront();
        break;
    default:
        break;
    }
    return 0;
}

/// The track stands in the library: an order that comes while that is away waits for it.
void PlayerSuite::playOrdered(qint32 id)
{
    if (isLibraryAway()) {
        m_order = id;
        return;
    }
    m_parts.playlists.engine.Idle(dbRefreshCache);
    const QString fid = takeTodo(id);
    if (!fid.isEmpty()) {
        id == message::kPlayNow ? m_parts.sequence.playNow(fid) : m_parts.sequence.playNext(fid);
    }
}

void PlayerSuite::configChanged()
{
    const QString before = m_parts.settings.DbName();
    m_parts.settings.Refresh();
    if (!isLibraryAway() && m_parts.settings.DbName() != before) {
        m_parts.sequence.listChanged();
    }
    m_parts.openCards();
    m_parts.changed();
}

void PlayerSuite::giveAway(MessageHandle asker)
{
    m_parts.settings.Refresh();
    if (!isLibraryAway()) {
        m_parts.list.keepAhead(kKeptWhileAway);
        m_givenAway = m_parts.settings.DbName();
        m_parts.playlists.engine.GiveAway(m_givenAway);
    }
    if (m_parts.messages.IsMsgWindow(asker)) {
        m_askers.push_back(asker);
        m_parts.control.setTarget(asker);
        m_parts.control.SendWithin(kPatience, message::kReleaseDatabase, 0,
                                   message::kDatabaseIsFree);
    }
    m_parts.changed();
}

void PlayerSuite::takeBack()
{
    m_parts.settings.Refresh();
    if (!isLibraryAway() || m_parts.isLent(m_givenAway)) {
        return;
    }
    m_parts.playlists.engine.TakeBack(m_givenAway);
    m_givenAway.clear();
    for (const Play& play : std::exchange(m_waiting, {})) {
        write(play);
    }
    m_parts.sequence.listChanged();
    if (m_order) {
        playOrdered(*std::exchange(m_order, std::nullopt));
    }
    m_parts.changed();
}

void PlayerSuite::watch()
{
    const QString library = m_parts.settings.DbName();
    if (!isLibraryAway() && m_parts.isLent(library)) {
        giveAway(0);
    } else if (isLibraryAway()) {
        m_askers.erase(std::remove_if(m_askers.begin(), m_askers.end(),
                                      [this](MessageHandle asker) {
                                          return !m_parts.messages.IsMsgWindow(asker);
                                      }),
                       m_askers.end());
        if (m_askers.empty()) {
            takeBack();
        }
    }
    m_parts.settings.RefreshMessageHandle();
    if (m_parts.settings.MessageHandleDB() != m_console) {
        tellPlaying(m_playing.first, m_playing.second);
    }
}

/// The track in the mailbox row of a number, which is taken out: a number whose row could not be
/// written must not find the one before. Empty when there is none.
QString PlayerSuite::takeTodo(qint32 id)
{
    QString fid;
    const QString where = u" where id="_s + sql::number(qint64{id});
    try {
        quietly(m_parts.playlists.sink, u"Todo"_s, [&] {
            const auto database = m_parts.playlists.engine.OpenDatabase(m_parts.settings.DbName());
            const auto row = database->OpenRecordset(u"select fid from todo"_s + where);
            if (!row->Eof()) {
                fid = row->value(u"fid").toText();
            }
            database->Execute(u"delete from todo"_s + where);
        });
    } catch (const DbError&) {
        return {}; // another program has the library: nobody can have written the row
    }
    return fid;
}

void PlayerSuite::countPlay(const MlvPlaylistDetail& entry)
{
    const bool isWanted =
        m_parts.settings.WriteStatistik() != 0 &&
        (m_parts.settings.WriteStatistikAuto() == 0 || m_parts.sequence.isMixMode());
    if (!isWanted) {
        return;
    }
    const Play play{entry, m_parts.clock.now()};
    if (isLibraryAway()) {
        m_waiting.push_back(play);
    } else {
        write(play);
    }
}

void PlayerSuite::write(const Play& play)
{
    try {
        savePlayStatistics(m_parts.playlists, MomentOf(play.moment), play.entry);
    } catch (const DbError&) {
        m_waiting.push_back(play); // it was lent in between
    }
}

} // namespace melovane
