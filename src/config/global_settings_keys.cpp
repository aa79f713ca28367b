#include "config/global_settings.h"
#include "config/key_names.h"

#include <algorithm>
#include <iterator>

namespace melovane {

void GlobalSettings::InitTasten()
{
    m_tasten = defaultTasten();
}

std::vector<Tasten> GlobalSettings::TastenAllbyTypName(const QString& group) const
{
    std::vector<melovane::Tasten> result;
    std::copy_if(m_tasten.begin(), m_tasten.end(), std::back_inserter(result),
                 [&group](const melovane::Tasten& binding) {
                     return binding.Group.compare(group, Qt::CaseInsensitive) == 0;
                 });
    return result;
}

Tasten& GlobalSettings::Tasten(const QString& id)
{
    for (melovane::Tasten& binding : m_tasten) {
        if (binding.Id.compare(id, Qt::CaseInsensitive) == 0) {
            return binding;
        }
    }
    throw UnknownName(id);
}

void GlobalSettings::TastenSave()
{
    writeTasten(m_tasten, m_toolBox);
}

QString GlobalSettings::GetTastName(qint16 code)
{
    return keyName(code);
}

QString GlobalSettings::GetShiftName(qint16 mask)
{
    return shiftName(mask);
}

QString GlobalSettings::GetKeyStatusString() const
{
    return m_keyboard == nullptr ? QString() : keyStatus(*m_keyboard);
}

} // namespace melovane
