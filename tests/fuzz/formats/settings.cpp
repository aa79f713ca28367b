#include "config/paths.h"
#include "config/plugins.h"
#include "config/tasten.h"
#include "config/tool_box.h"
#include "config/window_position.h"
#include "fuzz/formats/formats.h"
#include "fuzz/formats/scratch.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/linux_environment.h"
#include "platform/linux/linux_files.h"
#include "platform/system/text_file.h"

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The first line of an input: section, key and value that are written into the rest of it.
struct Change
{
    QString section;
    QString key;
    QString value;
};

Change changeOf(const QString& line)
{
    const QStringList parts = line.split(u'|');
    const auto text = [](QString part) { return part.replace(u"\\n"_s, u"\n"_s); };
    return {text(parts.value(0)), text(parts.value(1)), text(parts.value(2))};
}

bool isLineOf(const QString& line, const QString& key)
{
    return line.left(line.indexOf(u'=')).trimmed().compare(key.trimmed(), Qt::CaseInsensitive) == 0;
}

QStringList withoutKey(QStringList lines, const QString& key)
{
    lines.removeIf([&](const QString& line) { return isLineOf(line, key); });
    return lines;
}

QString textFault(const QString& text, const Change& change)
{
    if (IniText(text).toText() != text) {
        return u"a text that nobody changed is another"_s;
    }
    IniText ini(text);
    const QStringList before = withoutKey(ini.section(change.section), change.key);
    if (!ini.set(change.section, change.key, change.value)) {
        return ini.toText() == text && !IniText::isUsable(change.section, change.key)
                   ? QString()
                   : u"refused and changed"_s;
    }
    IniText again(ini.toText());
    for (const IniText* each : {&ini, &again}) {
        if (each->value(change.section, change.key) != change.value) {
            return u"the value reads back otherwise: "_s + ini.toText();
        }
        if (withoutKey(each->section(change.section), change.key) != before) {
            return u"another line of the section has changed: "_s + ini.toText();
        }
    }
    const bool removed = again.remove(change.section, change.key) &&
                         !again.value(change.section, change.key) &&
                         !IniText(again.toText()).value(change.section, change.key);
    return removed ? QString() : u"a line that cannot be removed"_s;
}

EnvironmentPlaces placesBelow(const QString& folder)
{
    EnvironmentPlaces places;
    places.programFolder = folder;
    places.userData = folder;
    places.commonData = folder;
    places.userDocuments = folder;
    places.commonDocuments = folder;
    places.programFiles = folder;
    places.cacheBase = folder;
    places.runtimeBase = folder;
    places.temporaryBase = folder;
    return places;
}

/// The file as the programs of the suite read it and write into it.
class SettingsFile
{
public:
    SettingsFile()
        : m_environment(placesBelow(m_scratch.folder()))
        , m_paths(m_environment, m_files)
        , m_profile(m_files)
        , m_box(m_paths, m_profile)
    {
        m_box.INI_SetFilename(m_scratch.path(u"a.ini"_s), false);
    }

    QString check(const QByteArray& bytes, const Change& change)
    {
        static_cast<void>(m_scratch.file(u"a.ini"_s, bytes));
        (void)readPlugins(m_box);
        std::vector<Tasten> keys = defaultTasten();
        readTasten(keys, m_box);
        WindowPosition place;
        place.name = u"DBPosition"_s;
        place.read(m_box);
        if (!m_profile.write(m_box.fullName(), change.section, change.key, change.value)) {
            return m_scratch.read(u"a.ini"_s) == bytes ? QString() : u"refused and written"_s;
        }
        IniProfile other(m_files);
        return other.value(m_box.fullName(), change.section, change.key) == change.value
                   ? QString()
                   : u"another program reads another value"_s;
    }

private:
    Scratch m_scratch;
    LinuxFiles m_files;
    LinuxEnvironment m_environment;
    Mod_API m_paths;
    IniProfile m_profile;
    ToolBox m_box;
};

QString check(const QByteArray& bytes)
{
    static SettingsFile file;
    const qsizetype end = bytes.indexOf('\n');
    const Change change = changeOf(QString::fromUtf8(bytes.left(qMax<qsizetype>(end, 0))));
    const QByteArray rest = bytes.mid(end + 1);
    const QString fault = textFault(textfile::decode(rest), change);
    // One of some goes over the disk; always the same ones, so that a find can be repeated.
    return fault.isEmpty() && qChecksum(bytes) % 16 == 0 ? file.check(rest, change) : fault;
}

std::vector<QByteArray> seeds()
{
    const Scratch scratch;
    LinuxFiles files;
    IniProfile profile(files);
    const QString name = scratch.path(u"a.ini"_s);
    profile.write(name, u"Global"_s, u"Lang"_s, u"0"_s);
    profile.write(name, u"DBPosition"_s, u"Whidth"_s, u"800"_s);
    profile.write(name, u"Value"_s, u"Text"_s, u" in \"quotes\"\nand two lines "_s);
    profile.write(name, u"Plugin"_s, u"One"_s, u"Melovanekiv"_s);
    const QByteArray own = scratch.read(u"a.ini"_s);
    return {"Global|Lang|1\n" + own, "New|Key| x \n; a comment\r\n" + own,
            "DBPosition|Whidth|1\\n2\n\xEF\xBB\xBF" + own, "|k|v\n" + own.left(20),
            "a|b|c\n[A]\rB='x'\r[ a ]\nb=\xE4\n"};
}

} // namespace

Format settings()
{
    return {"settings", check, seeds};
}

} // namespace melovane::fuzz
