#include "config/window_position.h"

#include "config/tool_box.h"
#include "platform/system/leading_number.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kHeight = u"Height"_s;
const QString kLeft = u"Left"_s;
const QString kTop = u"Top"_s;
const QString kWhidth = u"Whidth"_s; // "Whidth" is the key's spelling in the file
const QString kWindowState = u"WindowState"_s;

} // namespace

void WindowPosition::read(const ToolBox& file)
{
    const auto number = [&](const QString& key) {
        return toLongHalfEven(file.INI_GetKeyValueLong(name, key, -1));
    };
    Height = number(kHeight);
    Left = number(kLeft);
    Top = number(kTop);
    Whidth = number(kWhidth);
    WindowState = number(kWindowState);
}

void WindowPosition::write(ToolBox& file) const
{
    const auto store = [&](const QString& key, int value) {
        file.INI_WriteKeyValue(name, key, QString::number(value));
    };
    store(kHeight, Height);
    store(kTop, Top);
    store(kLeft, Left);
    store(kWhidth, Whidth);
    store(kWindowState, WindowState);
}

} // namespace melovane
