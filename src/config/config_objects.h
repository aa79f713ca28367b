#pragma once

#include "config/config_object.h"
#include "config/tool_box.h"

#include <QHash>
#include <QString>

#include <memory>
#include <vector>

namespace melovane {

class Files;
class Mod_API;
class PrivateProfile;

/// All texts that the user reads, and small settings of his, by name.
///
/// Values stand in section "Value" of the file of values, texts of a language in the sections
/// "Description", "DescriptionEx" and "ToolTip" of a language file. Names have no letter case.
/// Nothing is reported: a file that is missing leaves what was there.
class ConfigObjects
{
public:
    using Items = std::vector<ConfigObject*>;

    ConfigObjects(Mod_API& paths, PrivateProfile& profile, const Files& files);
    ~ConfigObjects();

    ConfigObjects(const ConfigObjects&) = delete;
    ConfigObjects& operator=(const ConfigObjects&) = delete;

    /// The file of values, below the configuration path.
    void SetFileName(const QString& name);

    /// Adds an item; one whose name is there already is dropped.
    void Add(ConfigObject item);

    /// Makes an item and adds it. The word "Null" means empty; an item with a value is a setting.
    void NewItem(const QString& name,
                 const QString& value,
                 const QString& description,
                 const QString& descriptionEx);

    /// Null for an unknown name.
    [[nodiscard]] ConfigObject* FindObject(QStringView name) const;

    /// The text of `name` for showing; empty for an unknown name. As GetDescription gives it, but
    /// the values stand as they are: a title that holds "$2" keeps it.
    [[nodiscard]] QString text(QStringView name,
                               const Value& p1 = {},
                               const Value& p2 = {},
                               const Value& p3 = {},
                               const Value& p4 = {}) const;

    /// The second text of `name`, likewise.
    [[nodiscard]] QString textEx(QStringView name, const Value& p1 = {}) const;

    /// The current value of `name`; empty for an unknown name and for one without a value.
    [[nodiscard]] QString value(QStringView name) const;

    /// In the order of adding.
    [[nodiscard]] Items AllObjects() const;

    /// Writes the value of a setting.
    void SaveValue(const ConfigObject& item);
    void SaveValueByName(const QString& name);
    /// Reads one value anew; null for an unknown name.
    ConfigObject* LoadValue(const QString& name);
    /// Of all settings; a key that is absent gives the built-in value.
    void LoadAllValue();
    /// Of all items; one without a value loses its key, so that the built-in one comes back.
    void SaveAllValue();

    /// Writes all texts to a language file below the configuration path; empty ones lose their
    /// key.
    void SaveAllLang(const QString& fileName);
    /// Takes what texts a language file below the configuration path holds; the rest stays. Looks
    /// for the file itself in the current folder of the process, which the start of the program
    /// therefore makes the configuration path.
    void LoadAllLang(const QString& fileName);

    /// The items of group "Keys"; made once.
    [[nodiscard]] const Items& GetKeys();
    /// The items of a group, without regard to letter case.
    [[nodiscard]] Items GetCollection(const QString& group) const;

private:
    void readValue(ConfigObject& item) const;

    const Files& m_files;
    ToolBox m_values;
    ToolBox m_language;
    std::vector<std::unique_ptr<ConfigObject>> m_items;
    QHash<QString, ConfigObject*> m_byName; ///< by upper-cased name
    Items m_keys;
    bool m_keysKnown = false;
};

} // namespace melovane
