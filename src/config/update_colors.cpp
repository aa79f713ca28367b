#include "config/update_colors.h"

#include "config/global_settings.h"
#include "platform/system/leading_number.h"

#include <algorithm>
#include <array>
#include <utility>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kSection = u"Color"_s;

/// Keys with their built-in values; the siblings read them, too: keep.
constexpr std::array<std::pair<QStringView, QStringView>, 14> kBuiltIn = {{
    {u"FontName", u"Verdana"},
    {u"FontSize", u"9"},
    {u"FontBold", u"0"},
    {u"RowSpacing", u"0"},
    {u"Note1Color", u"12632256"},
    {u"Note2Color", u"2663152"},
    {u"Note3Color", u"16776960"},
    {u"Note4Color", u"3340850"},
    {u"Note5Color", u"65535"},
    {u"NoteTextColor", u"0"},
    {u"NoteTextBold", u"-1"},
    {u"PlayNowColor", u"3340850"},
    {u"RowShowDEL", u"255"},
    {u"RowShowFID", u"3340850"},
}};

bool isSame(const QString& one, QStringView two)
{
    return two.compare(one, Qt::CaseInsensitive) == 0;
}

} // namespace

UpdateColors::UpdateColors(GlobalSettings& settings)
    : m_settings(settings)
{
    dLoadIni();
}

QString UpdateColors::builtIn(QStringView name)
{
    for (const auto& [key, value] : kBuiltIn) {
        if (key.compare(name, Qt::CaseInsensitive) == 0) {
            return value.toString();
        }
    }
    return {};
}

void UpdateColors::dLoadIni()
{
    m_values.clear();
    for (const auto& [key, builtIn] : kBuiltIn) {
        const QString name = key.toString();
        m_values.push_back({name, m_settings.GetKeyValue(kSection, name, builtIn.toString())});
    }
}

const UpdateColors::ColorValue* UpdateColors::find(const QString& name) const
{
    const auto found = std::find_if(m_values.begin(), m_values.end(), [&name](const auto& value) {
        return isSame(value.name, name);
    });
    return found == m_values.end() ? nullptr : &*found;
}

void UpdateColors::SetColorValue(const QString& name, const QString& value)
{
    for (ColorValue& known : m_values) {
        if (isSame(known.name, name)) {
            known.value = value;
            known.changed = true;
        }
    }
}

int UpdateColors::GetColor(const QString& name) const
{
    const ColorValue* const value = find(name);
    return value == nullptr ? 0 : leadingLong(value->value);
}

Colour UpdateColors::colour(const QString& name) const
{
    return Colour::fromBgr(GetColor(name));
}

GridFont UpdateColors::font() const
{
    return {find(u"FontName"_s)->value, GetColor(u"FontSize"_s), GetColor(u"FontBold"_s) != 0,
            GetColor(u"RowSpacing"_s)};
}

void UpdateColors::setFont(const GridFont& font)
{
    SetColorValue(u"FontName"_s, font.name);
    SetColorValue(u"FontSize"_s, QString::number(font.size));
    SetColorValue(u"FontBold"_s, QString::number(font.bold ? -1 : 0));
}

void UpdateColors::UpdateSplitColors(GridControl& grid) const
{
    grid.setGridFont(font());
}

std::optional<CellStyle> UpdateColors::gridStyle(const QString& name) const
{
    if (!isSame(name, u"FIDBOLD")) {
        return std::nullopt;
    }
    CellStyle style;
    style.text = colour(u"RowShowFID"_s);
    style.bold = true;
    return style;
}

void UpdateColors::write(const ColorValue& value)
{
    m_settings.WriteKeyValue(kSection, value.name, value.value);
}

void UpdateColors::SaveChangedData()
{
    for (ColorValue& value : m_values) {
        if (std::exchange(value.changed, false)) {
            write(value);
        }
    }
}

void UpdateColors::SaveIni()
{
    for (const QStringView name : {u"FontName", u"FontBold", u"FontSize"}) {
        write(*find(name.toString()));
    }
}

} // namespace melovane
