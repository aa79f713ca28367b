#pragma once

#include "config/config_objects.h"

#include <QDateTime>

namespace melovane {

/// A day as the chosen language writes it: "23.11.2026".
[[nodiscard]] inline QString dayText(const ConfigObjects& texts, const QDateTime& moment)
{
    return moment.toString(texts.text(QStringLiteral("format.day")));
}

/// A moment as the chosen language writes it, to the minute: "23.11.2026 01:40".
[[nodiscard]] inline QString momentText(const ConfigObjects& texts, const QDateTime& moment)
{
    return dayText(texts, moment) + moment.toString(QStringLiteral(" HH:mm"));
}

} // namespace melovane
