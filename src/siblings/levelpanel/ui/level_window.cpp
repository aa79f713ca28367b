#include "siblings/levelpanel/ui/level_window.h"

#include "config/config_objects.h"
#include "platform/qt/icon_set.h"
#include "siblings/levelpanel/monitor_level.h"
#include "views/volume_picture.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>
#include <QWheelEvent>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Width of the slider, in letters.
constexpr int kWidth = 40;
/// A notch of the wheel, in eighths of a degree.
constexpr int kNotch = 120;

} // namespace

LevelWindow::LevelWindow(MonitorLevel& level, const ConfigObjects& texts, const IconSet& icons)
    : m_level(level)
    , m_texts(texts)
    , m_icons(icons)
    , m_picture(new QLabel(this))
    , m_slider(new QSlider(Qt::Horizontal, this))
    , m_percent(new QLabel(this))
{
    setObjectName(u"LevelWindow"_s);
    setWindowFlags(Qt::Dialog);
    setWindowTitle(texts.text(u"level.title"));
    m_picture->setObjectName(u"lblLevel"_s);
    m_slider->setObjectName(u"sldLevel"_s);
    m_slider->setAccessibleName(windowTitle());
    m_slider->setRange(0, MonitorLevel::kLoudest);
    m_slider->setSingleStep(MonitorLevel::kStep);
    m_slider->setPageStep(MonitorLevel::kStep * 4);
    m_slider->setMinimumWidth(fontMetrics().averageCharWidth() * kWidth);
    m_percent->setObjectName(u"lblPercent"_s);
    m_percent->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_percent->setMinimumWidth(fontMetrics().horizontalAdvance(texts.text(u"level.percent", 100)));
    auto* row = new QHBoxLayout(this);
    const int gap = fontMetrics().height();
    row->setContentsMargins(gap, gap, gap, gap);
    row->setSpacing(gap);
    row->addWidget(m_picture);
    row->addWidget(m_slider, 1);
    row->addWidget(m_percent);
    connect(m_slider, &QSlider::valueChanged, this, [this](int volume) {
        m_level.choose(volume);
        showVolume();
    });
    m_slider->setFocus();
    refresh();
}

void LevelWindow::refresh()
{
    const QSignalBlocker quiet(m_slider);
    m_slider->setValue(m_level.volume());
    showVolume();
}

void LevelWindow::showVolume()
{
    const int volume = m_slider->value();
    m_percent->setText(m_texts.text(u"level.percent"_s, volume * 100 / MonitorLevel::kLoudest));
    const int size = fontMetrics().height();
    m_picture->setPixmap(m_icons.icon(volumePicture(volume)).pixmap(size, size));
}

void LevelWindow::bringToFront()
{
    refresh();
    show();
    raise();
    activateWindow();
}

void LevelWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void LevelWindow::wheelEvent(QWheelEvent* event)
{
    // The slider takes the wheel that turns over it itself.
    m_wheel += event->angleDelta().y();
    m_slider->setValue(m_slider->value() + m_wheel / kNotch * MonitorLevel::kStep);
    m_wheel %= kNotch;
    event->accept();
}

void LevelWindow::changeEvent(QEvent* event)
{
    const bool isOther =
        event->type() == QEvent::LanguageChange; // texts, or colours of the picture
    if (isOther || (event->type() == QEvent::ActivationChange && isActiveWindow())) {
        refresh();
    }
    QWidget::changeEvent(event);
}

} // namespace melovane
