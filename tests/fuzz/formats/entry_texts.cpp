#include "fuzz/formats/formats.h"
#include "playlists/command_map.h"
#include "store/mix_style.h"

namespace melovane::fuzz {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Texts that the player and other programs write into the columns of an entry.
QString check(const QByteArray& bytes)
{
    const QString text = QString::fromUtf8(bytes);
    const MLVMixStyle mix = MixStyleSplit(text);
    const QString mixText = MixStyleToString(mix);
    const MLVMixStyle mixAgain = MixStyleSplit(mixText);
    if (!mixAgain.IsSet || MixStyleToString(mixAgain) != mixText) {
        return u"a mix style reads back otherwise: "_s + mixText;
    }
    const MlvEQStyle eq = EQStyleSplit(text);
    const QString eqText = EQStyleToString(eq);
    if (eq.IsSet && EQStyleSplit(eqText) != eq) {
        return u"band levels read back otherwise: "_s + eqText;
    }
    if (!mixStyleOrDefault(text, kDefaultMixStyleIn.toString()).IsSet && text.isEmpty()) {
        return u"no style where the default stands in"_s;
    }
    const auto map = CommandToMap(text);
    if (map && CommandToMap(MapToCommand(*map)).has_value() &&
        MapToCommand(*CommandToMap(MapToCommand(*map))) != MapToCommand(*map)) {
        return u"keys and values read back otherwise: "_s + MapToCommand(*map);
    }
    if (map && !CommandToMap(MapToCommand(*map))) {
        return u"a key twice: "_s + MapToCommand(*map);
    }
    return {};
}

std::vector<QByteArray> seeds()
{
    CommandMap map;
    map.set(kFormerAktion.toString(), u"3"_s);
    map.set(u"loop"_s, u"1"_s);
    return {kDefaultMixStyleIn.toUtf8(), kDefaultMixStyleOut.toUtf8() + ",7",
            kDefaultEqStyle.toUtf8(), kNoMixStyle.toUtf8(), MapToCommand(map).toUtf8()};
}

} // namespace

Format entryTexts()
{
    return {"entry_texts", check, seeds};
}

} // namespace melovane::fuzz
