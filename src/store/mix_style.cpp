#include "store/mix_style.h"

#include "platform/system/leading_number.h"

#include <QList>
#include <QStringList>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kValues = 5;

QString joined(std::initializer_list<int> values)
{
    QStringList texts;
    for (const int value : values) {
        texts.append(QString::number(value));
    }
    return texts.join(u',');
}

} // namespace

MLVMixStyle MixStyleSplit(QStringView text)
{
    MLVMixStyle style;
    const QList<QStringView> values = text.split(u',');
    if (values.size() < kValues) {
        return style;
    }
    style.MixValue1 = leadingLong(values[0]);
    style.MixValue2 = leadingLong(values[1]);
    style.MixValue3 = leadingLong(values[2]);
    style.MixValue4 = leadingLong(values[3]);
    style.MixValue5 = leadingLong(values[4]);
    if (values.size() == kValues + 1) {
        style.MixExtra = leadingLong(values[5]);
    }
    style.IsSet = true;
    return style;
}

QString MixStyleToString(const MLVMixStyle& style)
{
    return joined(
        {style.MixValue1, style.MixValue2, style.MixValue3, style.MixValue4, style.MixValue5});
}

MlvEQStyle EQStyleSplit(QStringView text)
{
    MlvEQStyle style;
    const QList<QStringView> values = text.split(u',');
    if (values.size() != kValues) {
        return style;
    }
    style.EQValue5 = leadingLong(values[0]);
    style.EQValue1 = leadingLong(values[1]);
    style.EQValue2 = leadingLong(values[2]);
    style.EQValue3 = leadingLong(values[3]);
    style.EQValue4 = leadingLong(values[4]);
    style.IsSet = true;
    return style;
}

QString EQStyleToString(const MlvEQStyle& style)
{
    return joined({style.EQValue5, style.EQValue1, style.EQValue2, style.EQValue3, style.EQValue4});
}

MLVMixStyle mixStyleOrDefault(const QString& own, const QString& fallback)
{
    if (own.isEmpty() && fallback != kNoMixStyle) {
        return MixStyleSplit(fallback);
    }
    return MixStyleSplit(own);
}

MlvEQStyle eqStyleOrDefault(const QString& own, const QString& fallback)
{
    return EQStyleSplit(own.isEmpty() ? fallback : own);
}

int mixTimeOrDefault(int own, int fallback)
{
    return own != 0 ? own : qMax(fallback, 0);
}

} // namespace melovane
