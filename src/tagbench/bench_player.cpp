#include "tagbench/bench_player.h"

#include "config/config_objects.h"
#include "config/global_settings.h"
#include "platform/system/path_text.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Of the settings, see the monitor of the console: keep.
const QString kVolumeSection = u"Global"_s;
const QString kVolumeKey = u"Volume.Monitor"_s;
constexpr int kDefaultVolume = 7500;

} // namespace

BenchPlayer::BenchPlayer(Parts parts)
    : m_parts(std::move(parts))
{}

QString BenchPlayer::play(const QString& stored, bool fromMiddle)
{
    Player& player = m_parts.player;
    player.stop();
    m_parts.silenceOthers();
    const PlayFault loading = player.load(m_parts.placeOf(stored));
    if (loading != PlayFault::None) {
        return told(loading, stored);
    }
    if (const QString reason = takeCard(); !reason.isEmpty()) {
        return reason;
    }
    player.setVolume(m_parts.settings.GetKeyValueLong(kVolumeSection, kVolumeKey, kDefaultVolume));
    if (fromMiddle) {
        player.seek(player.lengthMs() / 2);
    }
    return told(player.play(), stored);
}

QString BenchPlayer::takeCard()
{
    const QString name = m_parts.settings.SCardNameMonitor();
    const int card = m_parts.settings.SCardNameMonitorID();
    if (!name.isEmpty() && card == kSystemCard) {
        // The system's own choice may be the card that the audience hears.
        return m_parts.texts.text(u"status.card.missing", name);
    }
    m_parts.player.open(card);
    return {};
}

QString BenchPlayer::told(PlayFault fault, const QString& stored) const
{
    const auto text = [&](QStringView key) {
        return m_parts.texts.text(key, path::fileName(stored));
    };
    switch (fault) {
    case PlayFault::None:
        return {};
    case PlayFault::NoCard:
        return text(u"status.card.none");
    case PlayFault::Missing:
        return text(u"status.file.missing");
    case PlayFault::NoAudio:
        return text(u"status.file.noaudio");
    case PlayFault::Broken:
        return text(u"status.file.broken");
    }
    return {};
}

} // namespace melovane
