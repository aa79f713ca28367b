#pragma once

#include "platform/controls/splash_form.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace melovane {

class IconSet;
class Skin;

/// The start-up window.
class SplashWindow : public QObject, public SplashForm
{
    Q_OBJECT

public:
    SplashWindow(const Skin& skin, const IconSet& icons);
    ~SplashWindow() override;

    void load(const SplashView& view) override;
    void bringToFront() override;
    void showAsNormal() override;
    void unload() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    const Skin& m_skin;
    const IconSet& m_icons;
    SplashView m_view;
    QPointer<QWidget> m_window;
};

} // namespace melovane
