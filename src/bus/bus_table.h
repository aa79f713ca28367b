#pragma once

#include "bus/event_guard.h"
#include "bus/mlv_message_bus.h"

#include <QStringView>

#include <span>

namespace melovane {

class GlobalSettings;

/// The guard of a view: a failure is told with kShowStatusText, and to the log.
/// \param sender the view's own; it outlives the guard, like texts and settings
[[nodiscard]] EventGuard guardOverBus(BusSender& sender,
                                      const ConfigObjects& texts,
                                      const GlobalSettings& settings,
                                      ErrorSink log);

/// A message that a view acts on, and what it does then.
template <typename View> struct BusRow
{
    QStringView name; ///< one of bus/message_names.h
    void (View::*handler)(const MLVMessage&);
};

/// Has a view act on the messages of a table, from now on and until the result is destroyed: its
/// `MessBus_Message`.
///
/// Cases are not told apart; of two rows with one name the first acts; a name that is not in the
/// table reaches nobody. A handler that fails with a DbError or IoError is told by the guard, under
/// the name of the message, and its sender goes on: the subscribers behind it get the message all
/// the same.
/// \param view  outlives the result, like table and guard
template <typename View>
[[nodiscard]] MLVMessageBus::Subscription subscribe(MLVMessageBus& bus,
                                                    const EventGuard& guard,
                                                    View& view,
                                                    std::span<const BusRow<View>> table)
{
    return bus.subscribe([&guard, &view, table](const MLVMessage& message) {
        for (const BusRow<View>& row : table) {
            if (row.name.compare(message.Command, Qt::CaseInsensitive) == 0) {
                guard.run(row.name.toString(), [&] { (view.*row.handler)(message); });
                return;
            }
        }
    });
}

} // namespace melovane
