#include "siblings/mlvmessage/message_tool.h"

#include "bus/published_controls.h"
#include "config/tool_box.h"
#include "platform/linux/linux_messages.h"
#include "platform/linux/process_name.h"
#include "platform/system/clock.h"

#include <QElapsedTimer>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

QString shownText(const QString& text)
{
    QString shown;
    for (const QChar letter : text) {
        if (letter == u'\\') {
            shown += u"\\\\"_s;
        } else if (letter == u'\n') {
            shown += u"\\n"_s;
        } else if (letter.category() == QChar::Other_Control) {
            shown += u"\\x%1"_s.arg(letter.unicode(), 2, 16, QChar(u'0'));
        } else {
            shown += letter;
        }
    }
    return shown;
}

MessageTool::MessageTool(LinuxMessages& messages,
                         ToolBox& settings,
                         const Clock& clock,
                         Print print,
                         std::function<QString()> health)
    : m_messages(messages)
    , m_settings(settings)
    , m_clock(clock)
    , m_print(std::move(print))
    , m_health(std::move(health))
{}

std::optional<MessageResult> MessageTool::run(const MessageCommand& command,
                                              std::function<void(MessageResult)> end)
{
    m_end = std::move(end);
    switch (command.action) {
    case MessageCommand::Action::List:
        return list();
    case MessageCommand::Action::Alive:
        return alive(targetOf(command.target));
    case MessageCommand::Action::Send:
        return send(command, targetOf(command.target));
    case MessageCommand::Action::Post:
        return post(command, targetOf(command.target));
    case MessageCommand::Action::Health:
        m_print(m_health());
        return MessageResult::Done;
    case MessageCommand::Action::Listen:
        break;
    }
    return listen(command) ? std::nullopt : std::optional(MessageResult::NotAlive);
}

MessageHandle MessageTool::targetOf(const QString& word) const
{
    const auto handles = handlesFor(word, publishedControls(m_settings));
    const auto alive = std::find_if(handles.begin(), handles.end(), [this](MessageHandle handle) {
        return m_messages.IsMsgWindow(handle);
    });
    return alive == handles.end() ? 0 : *alive;
}

MessageResult MessageTool::list()
{
    const auto published = publishedControls(m_settings);
    for (const LiveControl& control : m_messages.liveControls()) {
        m_print(u"%1  %2  %3  %4"_s.arg(control.handle, 10)
                    .arg(control.process, 7)
                    .arg(shownText(processName(control.process)), -15)
                    .arg(shownText(keysOf(control.handle, published).join(u", "_s))));
    }
    return MessageResult::Done;
}

MessageResult MessageTool::alive(MessageHandle target)
{
    if (target == 0) {
        return MessageResult::NotAlive;
    }
    m_print(QString::number(target));
    return MessageResult::Done;
}

MessageResult MessageTool::send(const MessageCommand& command, MessageHandle target)
{
    if (target == 0) {
        return MessageResult::NotAlive;
    }
    m_control = m_messages.makeControl();
    m_control->setTarget(target);
    QElapsedTimer watch;
    watch.start();
    const qint32 answer = command.text
                              ? m_control->SendText(command.id, command.wParam, *command.text)
                              : m_control->Send(command.id, command.wParam, command.lParam);
    if (!m_messages.lastSendWasAnswered()) {
        return watch.hasExpired(command.wait.count() - 1) ? MessageResult::NoAnswer
                                                          : MessageResult::NotAlive;
    }
    m_print(QString::number(answer));
    return MessageResult::Done;
}

MessageResult MessageTool::post(const MessageCommand& command, MessageHandle target)
{
    if (target == 0) {
        return MessageResult::NotAlive;
    }
    m_control = m_messages.makeControl();
    m_control->setTarget(target);
    if (command.text) {
        m_control->PostText(command.id, command.wParam, *command.text);
    } else {
        m_control->Post(command.id, command.wParam, command.lParam);
    }
    return MessageResult::Done;
}

bool MessageTool::listen(const MessageCommand& command)
{
    m_control = m_messages.makeControl();
    if (m_control->handle() == 0) {
        return false;
    }
    m_answer = command.answer;
    m_left = command.count;
    m_control->setMessageNumber([this](qint32 id, qint32 wParam, qint32 lParam) {
        return arrived(u"number %1 %2 %3"_s.arg(id).arg(wParam).arg(lParam));
    });
    m_control->setMessageText([this](qint32 id, qint32 number, const QString& text) {
        return arrived(u"text %1 %2 "_s.arg(id).arg(number) + shownText(text));
    });
    if (!command.name.isEmpty() && !publishControl(m_settings, command.name, m_control->handle())) {
        return false;
    }
    m_print(u"handle %1"_s.arg(m_control->handle()));
    return true;
}

MessageResult MessageTool::timeIsOver() const
{
    return m_left > 0 ? MessageResult::NoAnswer : MessageResult::Done;
}

qint32 MessageTool::arrived(const QString& what)
{
    m_print(m_clock.now().toString(u"yyyy-MM-dd HH:mm:ss.zzz  "_s) + what);
    if (m_left > 0 && --m_left == 0) {
        m_end(MessageResult::Done);
    }
    return m_answer;
}

} // namespace melovane
