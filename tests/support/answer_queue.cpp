#include "support/answer_queue.h"

#include <gtest/gtest.h>

namespace melovane::test {

using namespace Qt::Literals::StringLiterals;

AnswerQueue::~AnswerQueue()
{
    for (const Expected& expected : m_expected) {
        ADD_FAILURE() << "no dialog asked for the answer to \"" << expected.part.toStdString()
                      << "\"";
    }
}

void AnswerQueue::expectMessage(const QString& part, WarningAnswer answer)
{
    m_expected.push_back({.kind = Kind::Message, .part = part, .answer = answer});
}

void AnswerQueue::expectMessageAndTick(const QString& part, WarningAnswer answer, bool on)
{
    m_expected.push_back({.kind = Kind::Message, .part = part, .answer = answer, .tick = on});
}

void AnswerQueue::expectInput(const QString& part, std::optional<QString> typed)
{
    m_expected.push_back({.kind = Kind::Input, .part = part, .typed = std::move(typed)});
}

void AnswerQueue::expectInfo(const QString& part)
{
    m_expected.push_back({.kind = Kind::Info, .part = part});
}

void AnswerQueue::expectPopup(int id)
{
    m_expected.push_back({.kind = Kind::Popup, .id = id});
}

std::optional<AnswerQueue::Expected> AnswerQueue::next(Kind kind, const QString& shown)
{
    if (m_expected.empty() || m_expected.front().kind != kind ||
        !shown.contains(m_expected.front().part)) {
        ADD_FAILURE() << "an unexpected dialog: " << shown.toStdString();
        return std::nullopt;
    }
    const Expected expected = m_expected.front();
    m_expected.pop_front();
    return expected;
}

WarningAnswer AnswerQueue::ShowWarning(const QString& text,
                                       WarningType type,
                                       const QString& title,
                                       const QString&,
                                       const QString& suppressName)
{
    MessageView view;
    view.title = title;
    view.text = text;
    view.question = type == WarningType::Question;
    view.suppressCaption = suppressName;
    return ask(view);
}

WarningAnswer AnswerQueue::ask(const MessageView& view)
{
    const QString shown = view.title + u": "_s + view.text;
    messages.append(shown);
    lastMessage = view;
    const auto expected = next(Kind::Message, shown);
    if (expected && expected->tick && view.suppressClicked) {
        view.suppressClicked(*expected->tick);
    }
    return expected ? expected->answer : WarningAnswer::Left;
}

std::optional<QString> AnswerQueue::ask(const InputView& view)
{
    lastInput = view;
    const auto expected = next(Kind::Input, view.caption + u": "_s + view.label);
    return expected ? expected->typed : std::nullopt;
}

void AnswerQueue::show(const InfoView& view)
{
    lastInfo = view;
    static_cast<void>(next(Kind::Info, view.title + view.purpose + view.facts.join(u'\n')));
}

void AnswerQueue::Create()
{
    lastPopup.clear();
}

void AnswerQueue::Append(const PopupEntry& entry)
{
    lastPopup.push_back(entry);
}

int AnswerQueue::Show()
{
    QStringList captions;
    for (const PopupEntry& entry : lastPopup) {
        captions.append(entry.caption);
    }
    const auto expected = next(Kind::Popup, captions.join(u" | "_s));
    return expected ? expected->id : 0;
}

} // namespace melovane::test
