#include "config/melovane_configuration.h"

#include "config/built_in_texts.h"
#include "config/config_objects.h"

#include <QSet>

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

using Table = std::span<const BuiltInText> (*)();

/// In the order of filling: of two items with one name the first stays.
constexpr Table kTables[] = {
    &suitetexts::toolTips,    &suitetexts::messages, &suitetexts::settingsWindow,
    &suitetexts::menus,       &suitetexts::controls, &suitetexts::settings,
    &owntexts::windows,       &owntexts::columns,    &owntexts::views,
    &owntexts::importer,      &owntexts::exporting,  &owntexts::lists,
    &owntexts::tagWriting,    &owntexts::viewer,     &owntexts::bench,
    &owntexts::care,          &owntexts::safety,     &owntexts::found,
    &owntexts::settingsPages, &owntexts::player,     &owntexts::help,
};

/// Calls `use(text)` for each built-in text.
template <typename Use> void forEachText(const Use& use)
{
    for (const Table table : kTables) {
        for (const BuiltInText& text : table()) {
            use(text);
        }
    }
}

} // namespace

void fill(ConfigObjects& catalogue)
{
    // The settings file; the name has one spelling here, where letter case counts.
    catalogue.SetFileName(u"melovane.ini"_s);
    forEachText([&catalogue](const BuiltInText& text) { catalogue.Add(itemOf(text)); });
    catalogue.LoadAllValue();
    catalogue.LoadAllLang(catalogue.value(u"Sprach.Datei"));
}

void speak(ConfigObjects& catalogue, const QString& language)
{
    QSet<QString> done;
    forEachText([&](const BuiltInText& text) {
        ConfigObject* const item = catalogue.FindObject(text.name);
        const QString name = text.name.toString().toUpper();
        if (item == nullptr || done.contains(name)) {
            return;
        }
        done.insert(name);
        item->Description = text.description.toString();
        item->DescriptionEx = text.descriptionEx.toString();
        item->ToolTip.clear();
    });
    catalogue.LoadAllLang(language);
}

} // namespace melovane::MelovaneConfiguration
