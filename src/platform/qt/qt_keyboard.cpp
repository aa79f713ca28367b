#include "platform/qt/qt_keyboard.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>

#include <algorithm>
#include <array>
#include <utility>

namespace melovane {

namespace {

constexpr int kLeftButton = 1;
constexpr int kRightButton = 2;
constexpr int kMiddleButton = 4;
constexpr int kShift = 16;
constexpr int kControl = 17;
constexpr int kAlt = 18;

using CodeOf = std::pair<int, int>;

template <size_t Size> int found(const std::array<CodeOf, Size>& table, int key)
{
    const auto at = std::find_if(table.begin(), table.end(),
                                 [key](const CodeOf& entry) { return entry.first == key; });
    return at == table.end() ? 0 : at->second;
}

/// Signs by the place of their key, in the counting of the X window system.
constexpr std::array<CodeOf, 12> kPlaces = {{{20, 219},
                                             {21, 221},
                                             {34, 186},
                                             {35, 187},
                                             {47, 192},
                                             {48, 222},
                                             {49, 220},
                                             {51, 191},
                                             {59, 188},
                                             {60, 190},
                                             {61, 189},
                                             {94, 226}}};

/// Place of the key "1"; the others follow, "0" behind "9".
constexpr int kPlaceOfOne = 10;
constexpr int kPlaceOfZero = 19;

constexpr std::array<CodeOf, 5> kNumpadSigns = {{{Qt::Key_Asterisk, 106},
                                                 {Qt::Key_Plus, 107},
                                                 {Qt::Key_Minus, 109},
                                                 {Qt::Key_Comma, 110},
                                                 {Qt::Key_Slash, 111}}};

/// Signs without a place.
constexpr std::array<CodeOf, 12> kSigns = {{{Qt::Key_Udiaeresis, 186},
                                            {Qt::Key_Plus, 187},
                                            {Qt::Key_Comma, 188},
                                            {Qt::Key_Minus, 189},
                                            {Qt::Key_Period, 190},
                                            {Qt::Key_NumberSign, 191},
                                            {Qt::Key_Odiaeresis, 192},
                                            {Qt::Key_ssharp, 219},
                                            {Qt::Key_AsciiCircum, 220},
                                            {Qt::Key_Apostrophe, 221},
                                            {Qt::Key_Adiaeresis, 222},
                                            {Qt::Key_Less, 226}}};

constexpr std::array<CodeOf, 35> kNamed = {{{Qt::Key_Backspace, 8},
                                            {Qt::Key_Tab, 9},
                                            {Qt::Key_Backtab, 9},
                                            {Qt::Key_Clear, 12},
                                            {Qt::Key_Return, 13},
                                            {Qt::Key_Enter, 13},
                                            {Qt::Key_Shift, kShift},
                                            {Qt::Key_Control, kControl},
                                            {Qt::Key_Alt, kAlt},
                                            {Qt::Key_Pause, 19},
                                            {Qt::Key_CapsLock, 20},
                                            {Qt::Key_Escape, 27},
                                            {Qt::Key_Space, 32},
                                            {Qt::Key_PageUp, 33},
                                            {Qt::Key_PageDown, 34},
                                            {Qt::Key_End, 35},
                                            {Qt::Key_Home, 36},
                                            {Qt::Key_Left, 37},
                                            {Qt::Key_Up, 38},
                                            {Qt::Key_Right, 39},
                                            {Qt::Key_Down, 40},
                                            {Qt::Key_Select, 41},
                                            {Qt::Key_Printer, 42},
                                            {Qt::Key_Execute, 43},
                                            {Qt::Key_Print, 44},
                                            {Qt::Key_Insert, 45},
                                            {Qt::Key_Delete, 46},
                                            {Qt::Key_Help, 47},
                                            {Qt::Key_Menu, 93},
                                            {Qt::Key_NumLock, 144},
                                            {Qt::Key_ScrollLock, 145},
                                            {Qt::Key_VolumeMute, 173},
                                            {Qt::Key_MediaNext, 176},
                                            {Qt::Key_MediaPrevious, 177},
                                            {Qt::Key_MediaTogglePlayPause, 179}}};

int codeByPlace(int place)
{
    if (place >= kPlaceOfOne && place < kPlaceOfZero) {
        return '1' + place - kPlaceOfOne;
    }
    return place == kPlaceOfZero ? '0' : found(kPlaces, place);
}

int numpadCode(int key)
{
    if (key >= Qt::Key_0 && key <= Qt::Key_9) {
        return 96 + key - Qt::Key_0;
    }
    return key == Qt::Key_Period ? 110 : found(kNumpadSigns, key);
}

/// What tells one key from another while both are down.
quint64 placeOf(const QKeyEvent& event)
{
    constexpr quint64 kWithoutPlace = quint64{1} << 40;
    return event.nativeScanCode() != 0 ? event.nativeScanCode()
                                       : kWithoutPlace + quint64(event.key());
}

bool isModifier(int code)
{
    return code >= kShift && code <= kAlt;
}

} // namespace

int keyCodeOf(const QKeyEvent& event)
{
    const int key = event.key();
    if ((event.modifiers() & Qt::KeypadModifier) != 0) {
        if (const int code = numpadCode(key)) {
            return code;
        }
    }
    if (const int code = found(kNamed, key)) {
        return code;
    }
    if ((key >= Qt::Key_A && key <= Qt::Key_Z)) {
        return key;
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F16) {
        return 112 + key - Qt::Key_F1;
    }
    if (const int code = codeByPlace(int(event.nativeScanCode()))) {
        return code;
    }
    return key >= Qt::Key_0 && key <= Qt::Key_9 ? key : found(kSigns, key);
}

QtKeyboard::QtKeyboard()
{
    QCoreApplication::instance()->installEventFilter(this);
}

QtKeyboard::~QtKeyboard() = default;

bool QtKeyboard::isDown(int code) const
{
    switch (code) {
    case kLeftButton:
        return m_buttons.testFlag(Qt::LeftButton);
    case kRightButton:
        return m_buttons.testFlag(Qt::RightButton);
    case kMiddleButton:
        return m_buttons.testFlag(Qt::MiddleButton);
    case kShift:
        return m_modifiers.testFlag(Qt::ShiftModifier);
    case kControl:
        return m_modifiers.testFlag(Qt::ControlModifier);
    case kAlt:
        return m_modifiers.testFlag(Qt::AltModifier);
    default:
        return code > 0 && std::find(m_keys.begin(), m_keys.end(), code) != m_keys.end();
    }
}

void QtKeyboard::setHandler(QWidget* window, std::function<bool()> handler)
{
    m_window = window;
    m_handler = std::move(handler);
}

bool QtKeyboard::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
        if (isTaken(watched, *static_cast<QKeyEvent*>(event))) {
            // An accepted override keeps the shortcuts out; the press then comes here, too.
            event->accept();
            return true;
        }
        break;
    case QEvent::KeyRelease: {
        const auto& key = *static_cast<QKeyEvent*>(event);
        m_modifiers = key.modifiers();
        if (!key.isAutoRepeat()) {
            m_keys.remove(placeOf(key));
        }
        break;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
        m_buttons = static_cast<QMouseEvent*>(event)->buttons();
        m_modifiers = static_cast<QMouseEvent*>(event)->modifiers();
        break;
    case QEvent::ApplicationDeactivate:
        forgetAll();
        break;
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
        // A key that went down in one window and up between two would stay down for ever.
        m_keys.clear();
        break;
    default:
        break;
    }
    return false;
}

bool QtKeyboard::noteDown(const QKeyEvent& event)
{
    const Qt::KeyboardModifiers before = std::exchange(m_modifiers, event.modifiers());
    const int code = keyCodeOf(event);
    if (isModifier(code)) {
        return before != m_modifiers;
    }
    const quint64 place = placeOf(event);
    const bool isNew = !m_keys.contains(place);
    if (isNew && code != 0) {
        m_keys.insert(place, code);
    }
    // One that is held while windows change repeats; it was not pressed again.
    return isNew && !event.isAutoRepeat();
}

bool QtKeyboard::isTaken(const QObject* watched, const QKeyEvent& event)
{
    const quint64 place = placeOf(event);
    if (noteDown(event)) {
        m_press = {place, false, false};
    } else if (event.isAutoRepeat() && event.type() == QEvent::ShortcutOverride) {
        m_press.asked = false;
    }
    const auto* const widget = qobject_cast<const QWidget*>(watched);
    if (widget == nullptr || widget->window() != m_window || !m_handler || place != m_press.place) {
        return false;
    }
    if (!m_press.asked) {
        m_press.asked = true;
        // A key that was taken stays taken until it is released.
        const bool taken = m_handler();
        m_press.taken = m_press.taken || taken;
    }
    return m_press.taken;
}

void QtKeyboard::forgetAll()
{
    m_keys.clear();
    m_modifiers = {};
    m_buttons = {};
    m_press = {};
}

} // namespace melovane
