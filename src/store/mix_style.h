#pragma once

#include <QString>
#include <QStringView>

#include <functional>
#include <utility>

namespace melovane {

/// Whom a style tells that it was changed.
///
/// The listener belongs to the one object, not to its value: a copy tells nobody, an object keeps
/// its listener when another style is assigned to it, and styles are equal whoever listens.
class StyleEvent
{
public:
    StyleEvent() = default;
    ~StyleEvent() = default;

    StyleEvent(const StyleEvent&) {}

    StyleEvent& operator=(const StyleEvent&) { return *this; }

    /// An empty one ends the listening.
    StyleEvent& operator=(std::function<void()> listener)
    {
        m_listener = std::move(listener);
        return *this;
    }

    /// Tells the listener, if there is one.
    void operator()() const
    {
        if (m_listener) {
            m_listener();
        }
    }

    bool operator==(const StyleEvent&) const { return true; }

private:
    std::function<void()> m_listener;
};

/// How the player fades into or out of an entry. The program stores and passes on the values and
/// never interprets them; each lies on a scale of 0 to 10000.
struct MLVMixStyle
{
    int MixValue1 = 0;
    int MixValue2 = 0;
    int MixValue3 = 0;
    int MixValue4 = 0;
    int MixValue5 = 0;
    int MixReserved = 0; ///< never written
    int MixExtra = 0;    ///< optional sixth value of a text; read and not written back
    bool IsSet = false;  ///< a text of at least five values was read
    StyleEvent Change;   ///< \see ChangeMix

    /// Called by the control that edits the style, when it has changed values: raises Change.
    void ChangeMix() const { Change(); }

    bool operator==(const MLVMixStyle&) const = default;
};

/// Band levels of an entry in percent; 100 is neutral.
struct MlvEQStyle
{
    int EQValue1 = 0;
    int EQValue2 = 0;
    int EQValue3 = 0;
    int EQValue4 = 0;
    int EQValue5 = 0;   ///< stands first in the text
    bool IsSet = false; ///< a text of exactly five values was read
    StyleEvent Change;  ///< \see ChangeEQ

    /// As MLVMixStyle::ChangeMix.
    void ChangeEQ() const { Change(); }

    bool operator==(const MlvEQStyle&) const = default;
};

/// The text that, as a default mix style, says that there is none.
inline constexpr QStringView kNoMixStyle = u"null";
/// Values of a track or entry that has none of its own: keep, the player has the same.
inline constexpr QStringView kDefaultMixStyleIn = u"5000,2000,3000,0,10000";
inline constexpr QStringView kDefaultMixStyleOut = u"0,3000,2000,5000,10000";
inline constexpr QStringView kDefaultEqStyle = u"0,100,100,100,100";
/// Milliseconds.
inline constexpr int kDefaultMixTime = 5000;

/// Reads "v1,v2,v3,v4,v5" or, with a sixth value, MixExtra. Fewer than five values leave the style
/// unset; of more than six the first five count. A value that is no number reads as 0.
[[nodiscard]] MLVMixStyle MixStyleSplit(QStringView text);

/// The first five values joined by commas, whether set or not.
[[nodiscard]] QString MixStyleToString(const MLVMixStyle& style);

/// Reads exactly five values in the order 5, 1, 2, 3, 4; any other count leaves the style unset.
[[nodiscard]] MlvEQStyle EQStyleSplit(QStringView text);

/// The values in the order of EQStyleSplit.
[[nodiscard]] QString EQStyleToString(const MlvEQStyle& style);

/// The style of `own`; when that text is null or empty the style of `fallback`, unless it is the
/// word "null".
[[nodiscard]] MLVMixStyle mixStyleOrDefault(const QString& own, const QString& fallback);
[[nodiscard]] MlvEQStyle eqStyleOrDefault(const QString& own, const QString& fallback);

/// A time other than 0 as it is, 0 as the default; a default below 1 counts as 0. Milliseconds.
[[nodiscard]] int mixTimeOrDefault(int own, int fallback);

} // namespace melovane
