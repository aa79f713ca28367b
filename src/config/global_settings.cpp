#include "config/global_settings.h"

#include "config/paths.h"
#include "platform/db/database.h"
#include "platform/db/db_error.h"
#include "platform/system/files.h"
#include "platform/system/leading_number.h"
#include "platform/system/path_text.h"
#include "platform/system/private_profile.h"

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kIniName = u"melovane.ini"_s;
const QString kTempIniName = u"~melovane.ini"_s;

/// Version text of a database that this release can use.
const QString kDbVersion = u"3.4"_s;
/// Shown as the version of a database that could not be asked.
const QString kVersionUnknown = u" (Fehler bei Versionskontrolle !!!) "_s;

bool isSame(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

int fitting(SettingType type, int value)
{
    return type == SettingType::Word ? qBound(-32768, value, 32767) : value;
}

/// Files from before level 343 number the versions.
QString versionStatement(Database& database)
{
    const TableDef table = database.tableDefs().Item(u"db_version"_s);
    const auto isTextId = [](const FieldDef& field) {
        return isSame(field.Name, u"id"_s) && field.Type == FieldType::Text;
    };
    return std::any_of(table.Fields.begin(), table.Fields.end(), isTextId)
               ? u"select * from db_version where id='DB.Version'"_s
               : u"select * from db_version where id=1"_s;
}

} // namespace

GlobalSettings::GlobalSettings(Mod_API& paths,
                               PrivateProfile& profile,
                               Files& files,
                               DBEngine& engine)
    : m_paths(paths)
    , m_profile(profile)
    , m_files(files)
    , m_engine(engine)
    , m_toolBox(paths, profile)
    , m_iniFilename(kIniName)
{
    for (const QString& name : {u"DBPosition"_s, u"DJPosition"_s, u"IMPPosition"_s,
                                u"CONFPosition"_s, u"TAGPosition"_s}) {
        m_positions.emplace_back().name = name;
    }
    Refresh();
}

void GlobalSettings::CreateTempIniFile()
{
    const QString temp = path::join(m_paths.GetConfigPath(), kTempIniName);
    m_files.remove(temp);
    m_profile.replace(temp, path::join(m_paths.GetConfigPath(), kIniName));
    SetIniFilename(kTempIniName);
}

void GlobalSettings::ActivateTempIniFile()
{
    m_profile.replace(path::join(m_paths.GetConfigPath(), kIniName),
                      path::join(m_paths.GetConfigPath(), kTempIniName));
    SetIniFilename(kIniName);
}

void GlobalSettings::SetIniFilename(const QString& name)
{
    m_iniFilename = name;
    m_toolBox.INI_SetFilename(name, true);
}

int GlobalSettings::GetKeyValueLong(const QString& section,
                                    const QString& key,
                                    int defaultValue) const
{
    return toLongHalfEven(m_toolBox.INI_GetKeyValueLong(section, key, defaultValue));
}

QString GlobalSettings::GetKeyValue(const QString& section,
                                    const QString& key,
                                    const QString& defaultValue) const
{
    return m_toolBox.INI_GetKeyValue(section, key, defaultValue);
}

void GlobalSettings::WriteKeyValue(const QString& section,
                                   const QString& key,
                                   const std::optional<QString>& value)
{
    m_toolBox.INI_WriteKeyValue(section, key, value);
}

std::optional<QString> GlobalSettings::defaultOf(QStringView section, QStringView key) const
{
    const SettingRow* const row = findRow(section, key);
    return row == nullptr ? std::nullopt : std::optional(defaultText(*row));
}

QString GlobalSettings::defaultText(const SettingRow& row) const
{
    if (row.type != SettingType::Text) {
        return QString::number(row.number);
    }
    switch (row.base) {
    case DefaultBase::Nothing:
        break;
    case DefaultBase::ConfigPath:
        return path::join(m_paths.GetConfigPath(), row.text);
    case DefaultBase::PlaylistRoot:
        return path::withSeparator(path::join(m_paths.GetPlaylistRoot(), row.text));
    }
    return row.text.toString();
}

void GlobalSettings::SetSoundCardID(const QString& name, int id)
{
    const std::array outputs = {SCardNameMonitor(), SCardNamePlayer1(), SCardNamePlayer2()};
    for (size_t i = 0; i < outputs.size(); ++i) {
        if (outputs[i] == name) {
            m_cards[i] = id;
        }
    }
}

WindowPosition& GlobalSettings::Position(const QString& name)
{
    for (WindowPosition& position : m_positions) {
        if (isSame(position.name, name)) {
            return position;
        }
    }
    throw UnknownName(name);
}

void GlobalSettings::PositionSave(const QString& name)
{
    Position(name).write(m_toolBox);
}

const PluginProperty& GlobalSettings::Plugin(const QString& name) const
{
    for (const PluginProperty& plugin : m_plugins) {
        if (isSame(plugin.Name, name)) {
            return plugin;
        }
    }
    throw UnknownName(name);
}

const std::vector<PluginProperty>& GlobalSettings::GetPlugIns(bool reload)
{
    if (reload) {
        m_plugins = readPlugins(m_toolBox);
    }
    return m_plugins;
}

void GlobalSettings::read(const SettingRow& row)
{
    const QString section = row.section.toString();
    const QString key = row.key.toString();
    if (row.type == SettingType::Text) {
        m_texts[size_t(row.property)] = GetKeyValue(section, key, defaultText(row));
    } else {
        m_numbers[size_t(row.property)] =
            fitting(row.type, GetKeyValueLong(section, key, row.number));
    }
}

bool GlobalSettings::isLibrary(const QString& name) const
{
    return m_files.fileExists(name) && !path::parent(name).isEmpty();
}

void GlobalSettings::chooseDbName()
{
    QString& name = m_texts[size_t(Setting::DbName)];
    m_namedDbName = name;
    if (!m_heldDbName.isEmpty()) {
        name = m_heldDbName;
    } else if (!isLibrary(name)) {
        name = defaultText(rowOf(Setting::DbName));
    }
}

void GlobalSettings::holdLibrary(const QString& name)
{
    m_heldDbName = name;
    m_texts[size_t(Setting::DbName)] = name;
}

GlobalSettings::NamedLibrary GlobalSettings::namedLibrary() const
{
    if (!isLibrary(m_namedDbName)) {
        return NamedLibrary::Missing;
    }
    return m_namedDbName == m_heldDbName ? NamedLibrary::Held : NamedLibrary::Other;
}

void GlobalSettings::Refresh()
{
    m_toolBox.INI_SetFilename(m_iniFilename, true);
    m_cards = {};
    for (const SettingRow& row : settingTable()) {
        if (row.property != Setting::None) {
            read(row);
        }
    }
    chooseDbName();
    for (WindowPosition& position : m_positions) {
        position.read(m_toolBox);
    }
    readTasten(m_tasten, m_toolBox);
}

void GlobalSettings::RefreshMessageHandle()
{
    for (const Setting handle : {Setting::MessageHandleKiv, Setting::MessageHandleDB,
                                 Setting::MessageHandleDJ, Setting::HandleDB, Setting::HandleDj}) {
        read(rowOf(handle));
    }
}

void GlobalSettings::executeQuietly(const QString& statement)
{
    try {
        m_engine.OpenDatabase(DbName())->Execute(statement);
    } catch (const DbError&) {
        return; // The counts stay as they are; nobody is told.
    }
}

void GlobalSettings::UpdateLastPlayDayCount()
{
    executeQuietly(u"update db_all set PlayCountDay=null where PlayCountDay is not null and play < "
                   "cdate(now-0.5)"_s);
}

void GlobalSettings::DELPlayDayCount()
{
    executeQuietly(u"update db_all set PlayCountDay=null where PlayCountDay is not null"_s);
}

int GlobalSettings::CheckDBVersion()
{
    m_dbVersion = kVersionUnknown;
    try {
        const auto database = m_engine.OpenDatabase(DbName());
        const auto set = database->OpenRecordset(versionStatement(*database));
        if (!set->Eof()) {
            m_dbVersion = set->value(u"Version").toText();
        }
    } catch (const DbError&) {
        return -1;
    }
    return m_dbVersion == kDbVersion ? 0 : -1;
}

const QString& GlobalSettings::text(Setting property) const
{
    return m_texts[size_t(property)];
}

int GlobalSettings::number(Setting property) const
{
    return m_numbers[size_t(property)];
}

void GlobalSettings::setText(Setting property, const QString& value)
{
    const SettingRow& row = rowOf(property);
    m_texts[size_t(property)] = value;
    WriteKeyValue(row.section.toString(), row.key.toString(), value);
}

void GlobalSettings::setNumber(Setting property, int value)
{
    const SettingRow& row = rowOf(property);
    m_numbers[size_t(property)] = fitting(row.type, value);
    WriteKeyValue(row.section.toString(), row.key.toString(), QString::number(number(property)));
}

void GlobalSettings::setHandle(Setting property, int value)
{
    if (value != 0) {
        setNumber(property, value);
        return;
    }
    const SettingRow& row = rowOf(property);
    m_numbers[size_t(property)] = 0;
    WriteKeyValue(row.section.toString(), row.key.toString(), std::nullopt);
}

} // namespace melovane
