#include "shell/player_commands.h"

#include "bus/suite_messages.h"
#include "config/config_objects.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

PlayerCommands::PlayerCommands(SuiteMessages& suite,
                               const ConfigObjects& texts,
                               std::function<bool(const QString& order)> start,
                               std::function<void(const QString& text)> show)
    : m_suite(suite)
    , m_texts(texts)
    , m_start(std::move(start))
    , m_show(std::move(show))
{}

bool PlayerCommands::play(const QString& fid, qint32 id)
{
    if (fid.isEmpty()) {
        return false;
    }
    if (m_suite.playerIsAlive()) {
        if (!m_suite.SendToPlayer(fid, id)) {
            m_show(m_texts.text(u"status.player.silent"_s));
        }
    } else {
        m_suite.SetTodo(id, fid);
        start(id == message::kPlayNow ? u"now"_s : u"next"_s);
    }
    return true;
}

void PlayerCommands::start(const QString& order)
{
    if (!m_start(order)) {
        m_show(m_texts.text(u"status.player.missing"_s));
    }
}

bool PlayerCommands::playNext(const QString& fid)
{
    return play(fid, message::kPlayNext);
}

bool PlayerCommands::playNow(const QString& fid)
{
    return play(fid, message::kPlayNow);
}

void PlayerCommands::showPlayer()
{
    if (m_suite.playerIsAlive()) {
        m_suite.postToPlayer(message::kBringToFront);
    } else {
        start({});
    }
}

} // namespace melovane
