#include "config/melovane_configuration.h"

#include "config/built_in_texts.h"
#include "config/config_objects.h"

namespace melovane::MelovaneConfiguration {

using namespace Qt::Literals::StringLiterals;

namespace {

ConfigObject itemOf(const BuiltInText& text)
{
    ConfigObject item;
    item.Name = text.name.toString();
    item.Description = text.description.toString();
    item.DescriptionEx = text.descriptionEx.toString();
    item.Group = text.group.toString();
    item.Typ = text.typ.toString();
    item.HasValue = !text.value.isEmpty();
    item.Value = item.ValueLoaded = item.DefaultValue = text.value.toString();
    return item;
}

void add(ConfigObjects& catalogue, std::span<const BuiltInText> texts)
{
    for (const BuiltInText& text : texts) {
        catalogue.Add(itemOf(text));
    }
}

} // namespace

void fill(ConfigObjects& catalogue)
{
    // The settings file; the name has one spelling here, where letter case counts.
    catalogue.SetFileName(u"melovane.ini"_s);
    add(catalogue, suitetexts::toolTips());
    add(catalogue, suitetexts::messages());
    add(catalogue, suitetexts::settingsWindow());
    add(catalogue, suitetexts::menus());
    add(catalogue, suitetexts::controls());
    add(catalogue, suitetexts::settings());
    add(catalogue, owntexts::windows());
    add(catalogue, owntexts::columns());
    add(catalogue, owntexts::views());
    add(catalogue, owntexts::importer());
    add(catalogue, owntexts::exporting());
    add(catalogue, owntexts::lists());
    add(catalogue, owntexts::tagWriting());
    add(catalogue, owntexts::viewer());
    add(catalogue, owntexts::bench());
    add(catalogue, owntexts::care());
    add(catalogue, owntexts::found());
    catalogue.LoadAllValue();
    catalogue.LoadAllLang(catalogue.value(u"Sprach.Datei"));
}

} // namespace melovane::MelovaneConfiguration
