#include "platform/qt/theme.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Names in the order of ThemeRole.
constexpr std::array<QLatin1StringView, kThemeRoles> kNames{
    "GridHeadColor"_L1,
    "GridColor"_L1,
    "GridColorAlternating"_L1,
    "GridColorSelGotFocus"_L1,
    "GridColorSelLostFocus"_L1,
    "GridColorFavorit"_L1,
    "GridColorAktivePlay"_L1,
    "GridColorNextPlay"_L1,
    "GridColorAktiveFid"_L1,
    "BackColorSizer"_L1,
    "VuMeterColor"_L1,
    "VuMeterColorPeek"_L1,
    "VuMeterColorClip"_L1,
    "Panel"_L1,
    "Hairline"_L1,
    "Text"_L1,
    "TextSecond"_L1,
    "TextDisabled"_L1,
    "Accent"_L1,
    "TextField"_L1,
    "TextSecondSelected"_L1,
};

constexpr Colour kGreen{0x32, 0xC4, 0x6A};
constexpr Colour kAmber{0xF0, 0xB4, 0x29};
constexpr Colour kRed{0xE5, 0x48, 0x4D};

/// The role of a name, or -1.
int roleIndex(QStringView name)
{
    for (int index = 0; index < kThemeRoles; ++index) {
        if (name.compare(kNames[static_cast<size_t>(index)], Qt::CaseInsensitive) == 0) {
            return index;
        }
    }
    return -1;
}

/// Takes one line; false when it says nothing that a theme knows.
bool takeLine(QStringView line, ThemeFile& file)
{
    const qsizetype equals = line.indexOf(u'=');
    if (equals < 0) {
        return false;
    }
    const QStringView key = line.first(equals).trimmed();
    const QStringView value = line.sliced(equals + 1).trimmed();
    if (key.compare("Name"_L1, Qt::CaseInsensitive) == 0) {
        file.name = value.toString();
        return true;
    }
    const int role = roleIndex(key);
    const auto colour = Colour::fromText(value);
    if (role < 0 || !colour) {
        return false;
    }
    file.theme.setColour(static_cast<ThemeRole>(role), *colour);
    ++file.colours;
    return true;
}

} // namespace

QColor toQColor(Colour colour)
{
    return {colour.red, colour.green, colour.blue};
}

Colour fromQColor(const QColor& colour)
{
    return {static_cast<quint8>(colour.red()), static_cast<quint8>(colour.green()),
            static_cast<quint8>(colour.blue())};
}

Theme Theme::fromPalette(const QPalette& palette)
{
    const auto of = [&palette](QPalette::ColorRole role) {
        return fromQColor(palette.color(QPalette::Active, role));
    };
    const Colour base = of(QPalette::Base);
    const Colour window = of(QPalette::Window);
    const Colour text = readableOn(of(QPalette::Text), base);
    const Colour accent = of(QPalette::Highlight);
    Theme theme;
    theme.setColour(ThemeRole::GridHeadColor, window);
    theme.setColour(ThemeRole::GridColor, base);
    theme.setColour(ThemeRole::GridColorAlternating, mixed(base, text, 0.025));
    theme.setColour(ThemeRole::GridColorSelGotFocus, mixed(base, accent, 0.35));
    theme.setColour(ThemeRole::GridColorSelLostFocus, mixed(base, text, 0.12));
    theme.setColour(ThemeRole::GridColorFavorit, mixed(base, kAmber, 0.15));
    theme.setColour(ThemeRole::GridColorAktivePlay, mixed(base, kGreen, 0.2));
    theme.setColour(ThemeRole::GridColorNextPlay, mixed(base, accent, 0.15));
    theme.setColour(ThemeRole::GridColorAktiveFid, mixed(base, kGreen, 0.12));
    theme.setColour(ThemeRole::BackColorSizer, mixed(window, Colour{0, 0, 0}, 0.06));
    theme.setColour(ThemeRole::VuMeterColor, kGreen);
    theme.setColour(ThemeRole::VuMeterColorPeek, kAmber);
    theme.setColour(ThemeRole::VuMeterColorClip, kRed);
    theme.setColour(ThemeRole::Panel, mixed(base, window, 0.25));
    theme.setColour(ThemeRole::Hairline, mixed(window, text, 0.14));
    theme.setColour(ThemeRole::Text, text);
    theme.setColour(ThemeRole::TextSecond, readableOn(mixed(text, base, 0.4), window));
    theme.setColour(ThemeRole::TextDisabled, mixed(text, base, 0.6));
    theme.setColour(ThemeRole::Accent, accent);
    theme.setColour(ThemeRole::TextField, base);
    theme.setColour(ThemeRole::TextSecondSelected, mixed(text, base, 0.2));
    return theme;
}

QString Theme::nameOf(ThemeRole role)
{
    return kNames[static_cast<size_t>(role)];
}

Colour Theme::colour(ThemeRole role) const
{
    return m_colours[static_cast<size_t>(role)];
}

QColor Theme::qcolor(ThemeRole role) const
{
    return toQColor(colour(role));
}

void Theme::setColour(ThemeRole role, Colour colour)
{
    m_colours[static_cast<size_t>(role)] = colour;
}

bool Theme::isDark() const
{
    const Colour panel = colour(ThemeRole::Panel);
    return contrast(panel, Colour{255, 255, 255}) > contrast(panel, Colour{0, 0, 0});
}

QPalette Theme::palette() const
{
    QPalette result(qcolor(ThemeRole::GridHeadColor), qcolor(ThemeRole::Panel));
    const auto set = [&](QPalette::ColorRole role, ThemeRole colour) {
        result.setColor(role, qcolor(colour));
    };
    set(QPalette::WindowText, ThemeRole::Text);
    set(QPalette::Text, ThemeRole::Text);
    set(QPalette::ButtonText, ThemeRole::Text);
    set(QPalette::Base, ThemeRole::TextField);
    set(QPalette::AlternateBase, ThemeRole::GridColorAlternating);
    set(QPalette::Highlight, ThemeRole::GridColorSelGotFocus);
    set(QPalette::HighlightedText, ThemeRole::Text);
    set(QPalette::PlaceholderText, ThemeRole::TextSecond);
    set(QPalette::ToolTipBase, ThemeRole::GridColorSelLostFocus);
    set(QPalette::ToolTipText, ThemeRole::Text);
    set(QPalette::Link, ThemeRole::Accent);
    set(QPalette::Mid, ThemeRole::Hairline);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        result.setColor(QPalette::Disabled, role, qcolor(ThemeRole::TextDisabled));
    }
    return result;
}

ThemeFile readTheme(const QString& text, const Theme& builtIn)
{
    ThemeFile file;
    file.theme = builtIn;
    for (const QStringView raw : QStringView(text).split(u'\n')) {
        const QStringView line = raw.trimmed();
        if (!line.isEmpty() && !line.startsWith(u';') && !takeLine(line, file)) {
            file.skipped.append(line.toString());
        }
    }
    return file;
}

} // namespace melovane
