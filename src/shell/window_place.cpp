#include "shell/window_place.h"

#include "config/global_settings.h"
#include "platform/controls/window_frame.h"

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Name of the record with the place of this window.
const QString kPosition = u"DBPosition"_s;

/// Values of `WindowState`: keep.
constexpr int kNormal = 0;
constexpr int kMaximised = 2;

/// The least size of the window over an empty library, where the screen has room for it.
constexpr QSize kFirstSize{800, 600};

/// Where the splits are kept, and what they are before anybody has moved them, in thousandths.
const QString kSplitSection = u"Value"_s;
constexpr std::array<int, 3> kFirstSplits{740, 190, 190};

QString splitKey(size_t index)
{
    return u"DBGridSplit-%1"_s.arg(index);
}

/// The part of a window that must be on the screen for the hand to get hold of it.
constexpr int kReachable = 100;

/// Right and lower edge decide: a window may be closed half over the left edge. Its title bar must
/// be in reach. Sums of numbers from a file may leave the 32 bits.
bool liesInside(const WindowPosition& stored, const QRect& screen)
{
    const qint64 right = qint64{stored.Left} + stored.Whidth;
    return stored.Top >= screen.top() && right >= qint64{screen.left()} + kReachable &&
           right <= qint64{screen.left()} + screen.width() &&
           qint64{stored.Top} + stored.Height <= qint64{screen.top()} + screen.height();
}

} // namespace

WindowPlace::WindowPlace(GlobalSettings& settings, WindowFrame& window, SplitControls splits)
    : m_settings(settings)
    , m_window(window)
    , m_splits(splits)
{}

void WindowPlace::restore()
{
    const WindowPosition& stored = m_settings.Position(kPosition);
    if (!liesInside(stored, m_window.screenOf(stored.place()))) {
        return;
    }
    if (stored.WindowState == kMaximised) {
        m_window.maximise();
    } else if (stored.Height >= 0 && stored.Whidth >= 0) {
        m_window.setPlace(stored.place());
    }
}

void WindowPlace::centre()
{
    const QRect area = m_window.screenArea();
    // Two thirds of a large screen: the panels show their texts without being cut. On a small one
    // the title bar must have room, too, or nobody can move the window.
    QRect place(QPoint(), (area.size() * 2 / 3).expandedTo(kFirstSize).boundedTo(area.size()));
    place.moveCenter(area.center());
    m_window.setOuterPlace(place);
}

void WindowPlace::save()
{
    WindowPosition& stored = m_settings.Position(kPosition);
    stored.setPlace(m_window.place());
    stored.WindowState = m_window.isMaximisedNow() ? kMaximised : kNormal;
    m_settings.PositionSave(kPosition);
}

void WindowPlace::restoreSplits()
{
    for (size_t index = 0; index < m_splits.size(); ++index) {
        m_splits[index]->setPosition(
            m_settings.GetKeyValueLong(kSplitSection, splitKey(index), kFirstSplits[index]));
    }
}

void WindowPlace::saveSplits()
{
    for (size_t index = 0; index < m_splits.size(); ++index) {
        m_settings.WriteKeyValue(kSplitSection, splitKey(index),
                                 QString::number(m_splits[index]->position()));
    }
}

} // namespace melovane
