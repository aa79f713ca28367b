#include "shell/edit_box.h"

#include "bus/message_names.h"
#include "config/config_objects.h"
#include "platform/controls/input_box.h"
#include "platform/system/trim_blanks.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

frmEditBox::frmEditBox(const ConfigObjects& texts, MLVMessageBus& bus, InputBox& box)
    : m_texts(texts)
    , m_sender(bus, u"frmEditBox"_s)
    , m_box(box)
{}

void frmEditBox::Show()
{
    constexpr QStringView kKey = u"EditBox.Caption.NewGenre";
    const auto typed = m_box.ask({m_texts.textEx(kKey),
                                  m_texts.text(kKey),
                                  {},
                                  m_texts.text(u"ok"),
                                  m_texts.text(u"Abbruch")});
    const QString name = trimBlanks(typed.value_or(QString()));
    if (!name.isEmpty()) {
        m_sender.SendMessage(bus::kEditBoxAddNewGenre, name);
    }
}

} // namespace melovane
