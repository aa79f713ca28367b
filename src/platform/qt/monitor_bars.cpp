#include "platform/qt/monitor_bars.h"

#include "platform/qt/icon_set.h"
#include "platform/qt/skin.h"
#include "platform/qt/status_bar.h"
#include "platform/qt/value_bar.h"

#include <QLabel>
#include <QShortcut>

#include <algorithm>
#include <limits>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// A key goes so many milliseconds on in the track, and a page key.
constexpr int kStepMs = 5'000;
constexpr int kPageMs = 30'000;

/// The key for the end leaves so much of the track to be heard.
constexpr int kEndMs = 10'000;

constexpr int kLoudest = 10'000;
constexpr int kVolumeStep = 500;
constexpr int kVolumePage = 2'000;

/// Widths that the bars like.
constexpr int kSeekWidth = 240;
constexpr int kVolumeWidth = 84;

int whole(double ms)
{
    return static_cast<int>(std::clamp(ms, 0.0, double{std::numeric_limits<int>::max()}));
}

} // namespace

MonitorBars::MonitorBars(const Skin& skin, const IconSet& icons, StatusBar& status)
    : QObject(&status)
    , m_icons(icons)
    , m_seek(new ValueBar(skin, ThemeRole::Accent, kSeekWidth, &status))
    , m_loudspeaker(new QLabel(&status))
    , m_volume(new ValueBar(skin, ThemeRole::TextSecond, kVolumeWidth, &status))
{
    m_seek->setObjectName(u"MonitorSeek"_s);
    m_seek->setSingleStep(kStepMs);
    m_seek->setPageStep(kPageMs);
    m_loudspeaker->setObjectName(u"MonitorLoudspeaker"_s);
    m_volume->setObjectName(u"MonitorVolume"_s);
    m_volume->setRange(0, kLoudest);
    m_volume->setSingleStep(kVolumeStep);
    m_volume->setPageStep(kVolumePage);
    status.addInFront(StatusPanel::Elapsed, m_seek);
    status.addAtEnd(m_loudspeaker);
    status.addAtEnd(m_volume);
    connectSeek();
    connectVolume();
    hidePlace();
    const auto drawLoudspeaker = [this] {
        const int side = m_loudspeaker->fontMetrics().height();
        m_loudspeaker->setPixmap(
            m_icons.icon(u"volume"_s, ThemeRole::TextSecond).pixmap(side, side));
    };
    drawLoudspeaker();
    connect(&skin, &Skin::changed, this, drawLoudspeaker);
}

void MonitorBars::connectSeek()
{
    connect(m_seek, &ValueBar::dragged, this, [this](int ms) { emit placeOffered(ms); });
    connect(m_seek, &ValueBar::picked, this, [this](int ms) { emit placePicked(ms); });
    connect(m_seek, &ValueBar::dragGivenUp, this, [this] { emit placeOffered(-1); });
    connect(m_seek, &ValueBar::stepped, this,
            [this](int steps) { emit moveWanted(double{kStepMs} * steps); });
    connect(m_seek, &ValueBar::endPressed, this,
            [this] { emit placePicked(std::max(0, m_seek->maximum() - kEndMs)); });
    connect(m_seek, &ValueBar::raised, this, &MonitorBars::volumeStepped);
}

void MonitorBars::connectVolume()
{
    connect(m_volume, &ValueBar::dragged, this, &MonitorBars::volumePicked);
    connect(m_volume, &ValueBar::picked, this, &MonitorBars::volumePicked);
    connect(m_volume, &ValueBar::dragGivenUp, this,
            [this] { emit volumePicked(m_volume->value()); });
    connect(m_volume, &ValueBar::stepped, this, &MonitorBars::volumeStepped);
    connect(m_volume, &ValueBar::raised, this, &MonitorBars::volumeStepped);
    connect(m_volume, &ValueBar::endPressed, this, [this] { emit volumePicked(kLoudest); });
    for (const auto& [key, steps] : {std::pair{Qt::Key_F7, -1}, {Qt::Key_F8, 1}}) {
        auto* shortcut = new QShortcut(key, m_volume);
        connect(shortcut, &QShortcut::activated, this,
                [this, by = steps] { emit volumeStepped(by); });
    }
}

void MonitorBars::setTexts(const MonitorBarTexts& texts)
{
    m_seek->setAccessibleName(texts.seekName);
    m_seek->setToolTip(texts.seekTip);
    m_volume->setAccessibleName(texts.volumeName);
    m_volume->setToolTip(texts.volumeTip);
    m_loudspeaker->setToolTip(texts.volumeTip);
}

void MonitorBars::showPlace(double ms, double lengthMs)
{
    m_seek->setRange(0, whole(lengthMs));
    if (!m_seek->isSliderDown()) {
        m_seek->setValue(whole(ms));
    }
    m_seek->show();
}

void MonitorBars::hidePlace()
{
    if (m_seek->hasFocus()) {
        // The keyboard must not wander through the window because a track is over.
        m_volume->setFocus();
    }
    m_seek->hide();
}

void MonitorBars::showVolume(int volume)
{
    if (!m_volume->isSliderDown()) {
        m_volume->setValue(volume);
    }
}

} // namespace melovane
