#pragma once

#include "platform/qt/theme.h"

#include <QIcon>
#include <QString>

namespace melovane {

class Skin;

/// The program's line icons by name, drawn in a colour of the theme at the moment of
/// painting and sharp at any scale. Made from the pictures in ":/icons/".
class IconSet
{
public:
    /// `skin` outlives all icons.
    explicit IconSet(const Skin& skin);

    /// An unknown name gives a null icon. `role` is the colour of its normal state.
    [[nodiscard]] QIcon icon(const QString& name, ThemeRole role = ThemeRole::Text) const;

    /// All names, sorted.
    [[nodiscard]] static QStringList names();

private:
    const Skin& m_skin;
};

} // namespace melovane
