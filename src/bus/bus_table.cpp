#include "bus/bus_table.h"

#include "bus/message_names.h"
#include "config/global_settings.h"

namespace melovane {

EventGuard guardOverBus(BusSender& sender,
                        const ConfigObjects& texts,
                        const GlobalSettings& settings,
                        ErrorSink log)
{
    return {texts, [&settings] { return settings.DbName(); },
            [&sender](const QString& text) { sender.SendMessage(bus::kShowStatusText, text); },
            std::move(log)};
}

} // namespace melovane
