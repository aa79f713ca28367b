#include "care/settings_return.h"

#include "config/setting_table.h"
#include "platform/system/files.h"
#include "platform/system/letter_case.h"
#include "platform/system/path_text.h"
#include "platform/system/private_profile.h"

#include <algorithm>
#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kIni = u"melovane.ini"_s;
const QString kLayouts = u"Layout"_s;

/// Keys that belong to the running programs, and to the place of the library.
constexpr std::array kOfThisMachine{u"DBName", u"HandleDB", u"HandleDJ",
                                    u"Message.Handle.Volume.Monitor", u"MessageHandleJobs"};

bool isSettingsFile(const QString& name)
{
    const QString lower = lowerCase(name);
    const bool isText = lower.startsWith(u"lang_"_s) || lower.contains(u"temp"_s);
    return !isText &&
           (lower.endsWith(u".ini"_s) || lower.endsWith(u".conf"_s) || lower.endsWith(u".his"_s));
}

QStringList sectionsOf(const QByteArray& ini)
{
    QStringList sections;
    for (const QString& line : QString::fromUtf8(ini).split(u'\n')) {
        const QString trimmed = line.trimmed();
        if (trimmed.startsWith(u'[') && trimmed.endsWith(u']')) {
            sections.append(trimmed.sliced(1).chopped(1));
        }
    }
    sections.removeDuplicates();
    return sections;
}

bool comesBack(const QString& section, const QString& key)
{
    const auto is = [](const QString& text, QStringView other) {
        return lowerCase(text) == lowerCase(other.toString());
    };
    return !is(section, section::kMessage) && !is(section, section::kMessageHandle) &&
           std::none_of(kOfThisMachine.begin(), kOfThisMachine.end(),
                        [&](QStringView own) { return is(key, own); });
}

bool mergeSettings(const Files& files,
                   PrivateProfile& profile,
                   const QString& source,
                   const QString& target)
{
    std::vector<ProfileEntry> entries;
    for (const QString& section : sectionsOf(files.read(source))) {
        for (const QString& line : profile.section(source, section)) {
            const QString key = line.section(u'=', 0, 0);
            if (comesBack(section, key)) {
                entries.push_back({section, key, line.section(u'=', 1)});
            }
        }
    }
    return profile.writeAll(target, entries);
}

} // namespace

QStringList settingsFiles(const Files& files, const QString& dataFolder)
{
    QStringList found;
    for (const QString& name : files.names(dataFolder)) {
        if (isSettingsFile(name) && files.fileExists(path::join(dataFolder, name))) {
            found.append(name);
        }
    }
    const QString layouts = path::join(dataFolder, kLayouts);
    for (const QString& name : files.names(layouts)) {
        if (files.fileExists(path::join(layouts, name))) {
            found.append(kLayouts + u'/' + name);
        }
    }
    return found;
}

bool takeReturningSettings(Files& files, PrivateProfile& profile, const QString& dataFolder)
{
    const QString folder = path::join(dataFolder, kReturningSettings);
    if (!files.folderExists(folder)) {
        return false;
    }
    const auto take = [&](const QString& name) {
        const QString source = path::join(folder, name);
        const QString target = path::join(dataFolder, name);
        try {
            if (name == kIni) {
                if (!mergeSettings(files, profile, source, target)) {
                    return;
                }
            } else {
                files.makeFolders(path::parent(target));
                files.copy(source, target);
            }
            files.remove(source);
        } catch (const IoError&) {
            // It stays for the next start.
        }
    };
    for (const QString& name : files.names(folder)) {
        if (files.fileExists(path::join(folder, name))) {
            take(name);
        }
    }
    const QString layouts = path::join(folder, kLayouts);
    for (const QString& name : files.names(layouts)) {
        take(kLayouts + u'/' + name);
    }
    files.removeFolder(layouts);
    files.removeFolder(folder);
    return true;
}

} // namespace melovane
