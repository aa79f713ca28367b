#include "config/plugins.h"

#include "config/setting_table.h"
#include "config/tool_box.h"

#include <algorithm>

namespace melovane {

std::vector<PluginProperty> readPlugins(const ToolBox& file)
{
    std::vector<PluginProperty> plugins;
    for (const QString& line : file.INI_GetSection(section::kPlugin.toString())) {
        const qsizetype equals = line.indexOf(u'=');
        const QString name = line.first(qMax<qsizetype>(equals, 0));
        const bool known = std::any_of(plugins.begin(), plugins.end(), [&](const auto& plugin) {
            return plugin.Name.compare(name, Qt::CaseInsensitive) == 0;
        });
        if (name.isEmpty() || known) {
            continue;
        }
        plugins.push_back(
            {name, file.INI_GetKeyValue(section::kPluginMenu.toString(), name, QString()),
             line.sliced(equals + 1),
             file.INI_GetKeyValue(section::kPluginOption.toString(), name, QString())});
    }
    return plugins;
}

} // namespace melovane
