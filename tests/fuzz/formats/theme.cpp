#include "platform/qt/theme.h"

#include "fuzz/formats/formats.h"
#include "platform/system/text_file.h"

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

QString textOf(const ThemeFile& file)
{
    QString text = u"Name=%1\n"_s.arg(file.name);
    for (int role = 0; role < kThemeRoles; ++role) {
        const auto which = ThemeRole(role);
        text += Theme::nameOf(which) + u'=' + file.theme.colour(which).toText() + u'\n';
    }
    return text;
}

QString check(const QByteArray& bytes)
{
    const QString text = textfile::decode(bytes);
    const Theme builtIn = Theme::fromPalette(QPalette(Qt::black, Qt::white));
    const ThemeFile file = readTheme(text, builtIn);
    if (file.colours + file.skipped.size() > text.count(u'\n') + 1) {
        return u"more colours than lines"_s;
    }
    if (file.colours == 0 && file.theme != builtIn) {
        return u"a colour from nowhere"_s;
    }
    const ThemeFile again = readTheme(textOf(file), builtIn);
    if (again.theme != file.theme || again.name != file.name || !again.skipped.isEmpty()) {
        return u"reads back otherwise: "_s + textOf(file);
    }
    // What is drawn from it is drawn with colours, whatever they are.
    const QPalette palette = file.theme.palette();
    const Colour panel = file.theme.colour(ThemeRole::Panel);
    const bool drawn = palette.color(QPalette::Text).isValid() &&
                       contrast(readableOn(panel, panel), panel) >= kReadableContrast;
    return drawn ? QString() : u"no text can be read on "_s + panel.toText();
}

std::vector<QByteArray> seeds()
{
    ThemeFile file;
    file.name = u"Abend"_s;
    file.theme = Theme::fromPalette(QPalette(Qt::white, Qt::black));
    return {textOf(file).toUtf8(), (u"; Farben\r\n\r\n"_s + textOf(file)).toUtf8(),
            "gridheadcolor = #102030 \nNoColour=red\nname=\n"};
}

} // namespace

Format theme()
{
    return {"theme", check, seeds};
}

} // namespace melovane::fuzz
