#include "bus/mlv_message_bus.h"

#include "config/paths.h"
#include "platform/system/clock.h"
#include "platform/system/files.h"
#include "platform/system/io_error.h"
#include "platform/system/path_text.h"
#include "platform/system/print_line.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

template <typename Handler>
[[nodiscard]] std::shared_ptr<void> keep(std::vector<std::weak_ptr<Handler>>& listeners,
                                         Handler handler)
{
    std::erase_if(listeners, [](const auto& listener) { return listener.expired(); });
    auto listener = std::make_shared<Handler>(std::move(handler));
    listeners.push_back(listener);
    return listener;
}

template <typename Handler, typename Message>
void deliver(const std::vector<std::weak_ptr<Handler>>& listeners, const Message& message)
{
    // A handler may subscribe, or end a subscription; who joins meanwhile gets the next message.
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy keeps who is there now.
    const auto receivers = listeners;
    for (const auto& receiver : receivers) {
        if (const auto listener = receiver.lock()) {
            (*listener)(message);
        }
    }
}

} // namespace

MLVMessageBus::MLVMessageBus(Mod_API& paths, Files& files, const Clock& clock)
    : m_paths(paths)
    , m_files(files)
    , m_clock(clock)
{}

MLVMessageBus::~MLVMessageBus() = default;

MLVMessageBus::Subscription MLVMessageBus::subscribe(Handler handler)
{
    return keep(m_listeners, std::move(handler));
}

MLVMessageBus::Subscription MLVMessageBus::subscribeErrors(ErrorHandler handler)
{
    return keep(m_errorListeners, std::move(handler));
}

void MLVMessageBus::SendBusMessage(const MLVMessage& message)
{
    deliver(m_listeners, message);
}

void MLVMessageBus::SendBusErrorMessage(const MLVErrorMessage& error, bool toFile)
{
    try {
        deliver(m_errorListeners, error);
    } catch (const std::exception&) {
        // Who cannot take the report must not keep it from the file, nor bring its sender down.
    }
    if (toFile && !ErrorFileName.isEmpty()) {
        appendToFile(error);
    }
}

void MLVMessageBus::appendToFile(const MLVErrorMessage& error)
{
    const QString line =
        printLine({m_clock.now().toString(u"dd.MM.yyyy HH:mm:ss"_s), m_paths.programName(),
                   error.ErrorProgram, QString::number(error.ErrorNumber), error.ErrorDescription,
                   error.ErrorSource});
    try {
        m_files.append(path::join(m_paths.GetConfigPath(), ErrorFileName), line.toUtf8() + '\n');
    } catch (const IoError&) {
        // The report has reached the subscribers; a full disk must not bring its sender down.
    }
}

BusSender::BusSender(MLVMessageBus& bus, const QString& name)
    : m_bus(bus)
{
    m_message.Sender = name;
}

void BusSender::SendMessage(QStringView command,
                            const Value& value1,
                            const Value& value2,
                            const Value& value3,
                            const Value& value4)
{
    // The arguments may be values of this very message.
    MLVMessage values;
    values.Value1 = value1;
    values.Value2 = value2;
    values.Value3 = value3;
    values.Value4 = value4;
    m_message.SetMessageValue(values);
    m_message.Command = command.toString();
    m_bus.SendBusMessage(m_message);
}

} // namespace melovane
