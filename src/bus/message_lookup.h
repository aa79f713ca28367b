#pragma once

#include "bus/message_names.h"

#include <utility>

namespace melovane::bus {

/// The message of a monitor button: "play.start", "play.center" or "play.stop". Empty for other
/// keys.
[[nodiscard]] inline QStringView monitorMessage(QStringView key)
{
    static constexpr std::pair<QStringView, QStringView> kMessages[] = {
        {u"play.start", kMonitorPlayStart},
        {u"play.center", kMonitorPlayCenter},
        {u"play.stop", kMonitorPlayStop},
    };
    for (const auto& [button, name] : kMessages) {
        if (button == key) {
            return name;
        }
    }
    return {};
}

/// The message that hands tracks of the library to the playlist view, by the message or tool
/// button that asks for it, such as kAllDbAppend. Empty for others.
[[nodiscard]] inline QStringView playlistMessage(QStringView asked)
{
    static constexpr std::pair<QStringView, QStringView> kMessages[] = {
        {kAllDbAppend, kPlaylistAllDbAppendData},
        {kAllDbAppendAktuell, kPlaylistAllDbAppendAktuellData},
        {kAllDbInsert, kPlaylistAllDbInsertData},
        {kAllDbInsertAktuell, kPlaylistAllDbInsertAktuellData},
    };
    for (const auto& [name, answer] : kMessages) {
        if (name.compare(asked, Qt::CaseInsensitive) == 0) {
            return answer;
        }
    }
    return {};
}

} // namespace melovane::bus
