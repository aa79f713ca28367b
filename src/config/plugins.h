#pragma once

#include <QString>

#include <vector>

namespace melovane {

class ToolBox;

/// A program that the user has added to the menus.
struct PluginProperty
{
    QString Name;     ///< its key
    QString MenuText; ///< empty for none
    QString Program;  ///< the executable's name without extension
    QString Option;   ///< what it gets: "PNID", "PLID" or nothing
};

/// The plug-ins of a settings file in its order. Of equal keys the first counts.
[[nodiscard]] std::vector<PluginProperty> readPlugins(const ToolBox& file);

} // namespace melovane
