#include "bus/published_controls.h"

#include "config/setting_table.h"
#include "config/tool_box.h"
#include "platform/system/leading_number.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QLatin1StringView kHandle = "Handle."_L1;
constexpr QLatin1StringView kProgram = ".exe"_L1;

bool isSame(QStringView one, QStringView two)
{
    return one.compare(two, Qt::CaseInsensitive) == 0;
}

/// A name without what may be left out.
QStringView bare(QStringView name)
{
    if (name.startsWith(kHandle, Qt::CaseInsensitive)) {
        name = name.sliced(kHandle.size());
    }
    return name.endsWith(kProgram, Qt::CaseInsensitive) ? name.chopped(kProgram.size()) : name;
}

void readSection(const ToolBox& settings,
                 const QString& section,
                 std::vector<PublishedControl>& found)
{
    for (const QString& line : settings.INI_GetSection(section)) {
        const qsizetype at = line.indexOf(u'=');
        const MessageHandle handle = at > 0 ? leadingLong(QStringView(line).sliced(at + 1)) : 0;
        if (handle > 0) {
            found.push_back({section, line.first(at), handle});
        }
    }
}

} // namespace

std::vector<PublishedControl> publishedControls(const ToolBox& settings)
{
    std::vector<PublishedControl> found;
    readSection(settings, section::kMessage.toString(), found);
    readSection(settings, section::kMessageHandle.toString(), found);
    const QString global = section::kGlobal.toString();
    for (const QString& key : {u"MessageHandleJobs"_s, u"Message.Handle.Volume.Monitor"_s}) {
        const MessageHandle handle = leadingLong(settings.INI_GetKeyValue(global, key, {}));
        if (handle > 0) {
            found.push_back({global, key, handle});
        }
    }
    return found;
}

std::vector<MessageHandle> handlesFor(const QString& word,
                                      const std::vector<PublishedControl>& published)
{
    bool isNumber = false;
    const MessageHandle number = word.toInt(&isNumber);
    if (isNumber) {
        return {number};
    }
    std::vector<MessageHandle> handles;
    for (const PublishedControl& control : published) {
        if (isSame(control.key, word) || isSame(bare(control.key), bare(word))) {
            handles.push_back(control.handle);
        }
    }
    return handles;
}

QStringList keysOf(MessageHandle handle, const std::vector<PublishedControl>& published)
{
    QStringList keys;
    for (const PublishedControl& control : published) {
        if (control.handle == handle) {
            keys.append(control.key);
        }
    }
    return keys;
}

bool publishControl(ToolBox& settings, const QString& name, MessageHandle handle)
{
    for (const QString& key : {u"Handle.DB"_s, u"Handle.DJ"_s, u"Handle.Kiv"_s}) {
        if (isSame(bare(key), bare(name))) {
            return settings.INI_WriteKeyValue(section::kMessage.toString(), key,
                                              QString::number(handle));
        }
    }
    return settings.INI_WriteKeyValue(section::kMessageHandle.toString(),
                                      bare(name).toString() + kProgram, QString::number(handle));
}

} // namespace melovane
