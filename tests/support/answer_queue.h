#pragma once

#include "platform/controls/info_form.h"
#include "platform/controls/input_box.h"
#include "platform/controls/message_form.h"
#include "platform/controls/popup_menu.h"
#include "platform/controls/warnings.h"

#include <QStringList>

#include <deque>

namespace melovane::test {

/// Answers the program's dialogs from a queue that the test fills beforehand. A dialog that no
/// answer waits for fails the test, and so does an answer that no dialog asks for.
class AnswerQueue : public Warnings,
                    public MessageForm,
                    public InputBox,
                    public InfoForm,
                    public myPopup
{
public:
    ~AnswerQueue() override;

    /// The next message has `part` in its title or text and is answered so.
    void expectMessage(const QString& part, WarningAnswer answer = WarningAnswer::Ok);
    /// As expectMessage; the user also clicks the check box before.
    void expectMessageAndTick(const QString& part, WarningAnswer answer, bool on = true);
    /// The next box to type in has `part` in its caption or label. Nothing cancels it.
    void expectInput(const QString& part, std::optional<QString> typed);
    /// The next information window has `part` in its texts.
    void expectInfo(const QString& part);
    /// From the next pop-up menu the entry of that number is chosen; 0 leaves the menu.
    void expectPopup(int id);

    [[nodiscard]] bool isEmpty() const { return m_expected.empty(); }

    /// "title: text" of all messages so far.
    QStringList messages;
    MessageView lastMessage;
    InputView lastInput;
    InfoView lastInfo;
    std::vector<PopupEntry> lastPopup;

    // What the program calls.
    WarningAnswer ShowWarning(const QString& text,
                              WarningType type,
                              const QString& title,
                              const QString& messageKey,
                              const QString& suppressName) override;
    [[nodiscard]] WarningAnswer ask(const MessageView& view) override;
    [[nodiscard]] std::optional<QString> ask(const InputView& view) override;
    void show(const InfoView& view) override;
    void Create() override;
    void Append(const PopupEntry& entry) override;
    [[nodiscard]] int Show() override;

private:
    enum class Kind
    {
        Message,
        Input,
        Info,
        Popup
    };

    struct Expected
    {
        Kind kind = Kind::Message;
        QString part = {};
        WarningAnswer answer = WarningAnswer::Ok;
        std::optional<bool> tick = {};
        std::optional<QString> typed = {};
        int id = 0;
    };

    [[nodiscard]] std::optional<Expected> next(Kind kind, const QString& shown);

    std::deque<Expected> m_expected;
};

} // namespace melovane::test
