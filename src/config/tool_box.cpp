#include "config/tool_box.h"

#include "config/paths.h"
#include "platform/system/leading_number.h"
#include "platform/system/path_text.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Letters of a value: a buffer of 260 with its terminator. Keep, siblings cut there, too.
constexpr qsizetype kMaxValue = 259;
/// Letters of a section: keep.
constexpr qsizetype kMaxSection = 30000;

/// The first letters of a text; never half a letter of two code units.
QString cut(const QString& text, qsizetype length)
{
    if (text.size() <= length) {
        return text;
    }
    const bool half = length > 0 && text[length - 1].isHighSurrogate();
    return text.first(length - (half ? 1 : 0));
}

} // namespace

ToolBox::ToolBox(Mod_API& paths, PrivateProfile& profile)
    : m_paths(paths)
    , m_profile(profile)
{}

QString ToolBox::GetLang() const
{
    return INI_GetKeyValue(u"Global"_s, u"Lang"_s, QString());
}

QStringList ToolBox::INI_GetSection(const QString& section) const
{
    QStringList lines;
    qsizetype room = kMaxSection;
    for (const QString& line : m_profile.section(fullName(), m_subSelection + section)) {
        if (room <= 0) {
            break;
        }
        lines.append(cut(line, room));
        room -= line.size() + 1;
    }
    return lines.isEmpty() ? QStringList(QString()) : lines;
}

void ToolBox::INI_SetFilename(const QString& name, bool relative)
{
    m_name = name;
    m_relative = relative;
}

QString ToolBox::INI_GetKeyValue(const QString& section,
                                 const QString& key,
                                 const QString& defaultValue) const
{
    const QString value =
        m_profile.value(fullName(), m_subSelection + section, key).value_or(QString());
    return value.isEmpty() ? defaultValue : cut(value, kMaxValue);
}

double
ToolBox::INI_GetKeyValueLong(const QString& section, const QString& key, int defaultValue) const
{
    return leadingNumber(INI_GetKeyValue(section, key, QString::number(defaultValue)));
}

bool ToolBox::INI_WriteKeyValue(const QString& section,
                                const QString& key,
                                const std::optional<QString>& value)
{
    return m_profile.write(fullName(), m_subSelection + section, key, value);
}

bool ToolBox::INI_WriteAll(std::vector<ProfileEntry> entries)
{
    for (ProfileEntry& entry : entries) {
        entry.section.prepend(m_subSelection);
    }
    return m_profile.writeAll(fullName(), entries);
}

QString ToolBox::fullName() const
{
    return m_relative ? path::join(m_paths.GetConfigPath(), m_name) : m_name;
}

} // namespace melovane
