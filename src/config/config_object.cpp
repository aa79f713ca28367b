#include "config/config_object.h"

#include <array>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

QString formatted(const QString& form, const std::array<const Value*, 4>& values)
{
    if (form.isEmpty() || form == "Null"_L1) {
        return {};
    }
    QString text = form;
    text.replace("\\n"_L1, "\n"_L1);
    for (size_t number = 0; number < values.size(); ++number) {
        text.replace(u'$' + QString::number(number + 1), values[number]->toText());
    }
    return text;
}

} // namespace

QString ConfigObject::GetDescription(const melovane::Value& p1,
                                     const melovane::Value& p2,
                                     const melovane::Value& p3,
                                     const melovane::Value& p4) const
{
    return formatted(Description, {&p1, &p2, &p3, &p4});
}

QString ConfigObject::GetDescriptionEx(const melovane::Value& p1,
                                       const melovane::Value& p2,
                                       const melovane::Value& p3,
                                       const melovane::Value& p4) const
{
    return formatted(DescriptionEx, {&p1, &p2, &p3, &p4});
}

} // namespace melovane
