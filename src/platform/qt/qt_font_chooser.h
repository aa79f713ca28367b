#pragma once

#include "platform/controls/font_chooser.h"

namespace melovane {

/// What the font dialog says, in the user's language.
struct FontDialogTexts
{
    QString title;
    QString name;
    QString size;
    QString bold;
    QString sample; ///< what is shown in the font
    QString ok;
    QString cancel;
};

/// A dialog for just what the settings keep of a font: name, size and boldness, with a sample.
class QtFontChooser : public FontChooser
{
public:
    explicit QtFontChooser(FontDialogTexts texts);

    [[nodiscard]] std::optional<GridFont> choose(const GridFont& present) override;

private:
    FontDialogTexts m_texts;
};

} // namespace melovane
