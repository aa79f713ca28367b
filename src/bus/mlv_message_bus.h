#pragma once

#include "bus/mlv_message.h"

#include <QString>
#include <QStringView>

#include <functional>
#include <memory>
#include <vector>

namespace melovane {

class Clock;
class Files;
class Mod_API;

/// The bus that the views talk over: every subscriber gets every message, at once, on the sender's
/// stack, in the order of subscription.
///
/// A handler may send; that message reaches all subscribers before the outer one goes on to the
/// next. There is no queue and no filter, on purpose: the views rely on the nesting.
class MLVMessageBus
{
public:
    using Handler = std::function<void(const MLVMessage&)>;
    using ErrorHandler = std::function<void(const MLVErrorMessage&)>;

    /// Ends a subscription when it is destroyed, also in the middle of a delivery.
    using Subscription = std::shared_ptr<void>;

    MLVMessageBus(Mod_API& paths, Files& files, const Clock& clock);
    ~MLVMessageBus();

    /// Name of the error file below the configuration path; empty, as at first, means none.
    QString ErrorFileName;

    /// \param handler gets each message that is sent from now on, until the result is destroyed;
    ///        it catches its own errors
    [[nodiscard]] Subscription subscribe(Handler handler);
    [[nodiscard]] Subscription subscribeErrors(ErrorHandler handler);

    /// Returns when all subscribers have returned.
    void SendBusMessage(const MLVMessage& message);

    /// Tells the subscribers of errors, then appends one line to the error file: date and time,
    /// program, ErrorProgram, ErrorNumber, ErrorDescription, ErrorSource, each beginning at the
    /// next column that is a multiple of 14. Quiet: a subscriber that fails ends the event, a file
    /// that cannot be written is left alone.
    void SendBusErrorMessage(const MLVErrorMessage& error, bool toFile);

private:
    void appendToFile(const MLVErrorMessage& error);

    Mod_API& m_paths;
    Files& m_files;
    const Clock& m_clock;
    std::vector<std::weak_ptr<Handler>> m_listeners;
    std::vector<std::weak_ptr<ErrorHandler>> m_errorListeners;
};

/// A sender on the bus: the reusable message of one view.
class BusSender
{
public:
    /// \param name what stands in `Sender` of all its messages
    BusSender(MLVMessageBus& bus, const QString& name);

    /// \param command one of bus/message_names.h; a value that is left out is null
    void SendMessage(QStringView command,
                     const Value& value1 = {},
                     const Value& value2 = {},
                     const Value& value3 = {},
                     const Value& value4 = {});

    [[nodiscard]] const QString& name() const { return m_message.Sender; }

private:
    MLVMessageBus& m_bus;
    MLVMessage m_message;
};

} // namespace melovane
