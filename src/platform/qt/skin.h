#pragma once

#include "platform/controls/window_frame.h"
#include "platform/qt/theme.h"

#include <QObject>

class QApplication;

namespace melovane {

/// The theme in use, `Skin1`: dresses the whole application and tells everybody who paints for
/// himself. Without a theme the desktop's palette and style are followed.
class Skin : public QObject, public SkinControl
{
    Q_OBJECT

public:
    /// Keeps the application's present style and palette as those of the desktop.
    explicit Skin(QApplication& application, QObject* parent = nullptr);

    bool load(const QString& themeText) override;
    void clear() override;
    [[nodiscard]] QString titleOf(const QString& themeText) const override;

    [[nodiscard]] bool isLoaded() const { return m_loaded; }

    [[nodiscard]] const Theme& theme() const { return m_theme; }

signals:
    void changed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void apply();

    QApplication& m_application;
    QPalette m_desktopPalette;
    QString m_desktopStyle;
    Theme m_theme;
    bool m_loaded = false;
    bool m_applying = false;
};

/// The style sheet of the standard controls. Sizes follow from the height of a line of text.
[[nodiscard]] QString styleSheetFor(const Theme& theme, int lineHeight);

} // namespace melovane
