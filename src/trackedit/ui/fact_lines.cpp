#include "trackedit/ui/fact_lines.h"

#include "platform/qt/figures.h"
#include "platform/qt/painted_face.h"
#include "platform/qt/skin.h"
#include "platform/qt/whole_text_tip.h"

#include <QHelpEvent>
#include <QPainter>

#include <algorithm>

namespace melovane {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Units between a caption and its value, between two facts, and between lines.
constexpr int kInner = 8;
constexpr int kOuter = 22;
constexpr int kLead = 5;

} // namespace

FactLines::FactLines(const Skin& skin, QWidget* parent)
    : QWidget(parent)
    , m_skin(skin)
{
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(&skin, &Skin::changed, this, qOverload<>(&QWidget::update));
    setPaintedFace(*this, QAccessible::StaticText);
}

void FactLines::setFacts(const std::vector<PanelTrack::Fact>& facts, size_t ownLine)
{
    m_facts = facts;
    m_ownLine = ownLine;
    QStringList words;
    for (const PanelTrack::Fact& fact : facts) {
        words.append(fact.caption + u' ' + fact.text);
    }
    setAccessibleDescription(words.join(u", "_s));
    updateGeometry();
    update();
}

int FactLines::lineHeight() const
{
    return fontMetrics().height() + kLead;
}

std::vector<FactLines::Place> FactLines::places(int width) const
{
    std::vector<Place> result;
    const QFontMetrics metrics = fontMetrics();
    int x = 0;
    int y = 0;
    for (size_t index = 0; index < m_facts.size(); ++index) {
        const PanelTrack::Fact& fact = m_facts[index];
        const int caption = metrics.horizontalAdvance(fact.caption);
        const int wanted = wholeTextWidth(font(), fact.text, this);
        const bool begins = index == m_ownLine && index > 0;
        if (x > 0 && (begins || x + caption + kInner + wanted > width)) {
            x = 0;
            y += lineHeight();
        }
        const int room = std::max(0, std::min(wanted, width - x - caption - kInner));
        const QString shown =
            room < wanted ? metrics.elidedText(fact.text, Qt::ElideMiddle, room) : fact.text;
        result.push_back({QRect(x, y, caption, lineHeight()),
                          QRect(x + caption + kInner, y, room, lineHeight()), shown});
        x += caption + kInner + room + kOuter;
    }
    return result;
}

int FactLines::heightForWidth(int width) const
{
    const std::vector<Place> all = places(width);
    return all.empty() ? 2 * lineHeight() : all.back().text.bottom() + 1;
}

QSize FactLines::sizeHint() const
{
    return {fontMetrics().averageCharWidth() * 40, 2 * lineHeight()};
}

QSize FactLines::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth() * 12, lineHeight()};
}

bool FactLines::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto& help = static_cast<const QHelpEvent&>(*event);
        const std::vector<Place> all = places(width());
        for (size_t index = 0; index < all.size(); ++index) {
            if (all[index].text.contains(help.pos())) {
                showWholeText(help, this, m_facts[index].text,
                              all[index].shown == m_facts[index].text);
                return true;
            }
        }
        showWholeText(help, this, {}, true);
        return true;
    }
    return QWidget::event(event);
}

void FactLines::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const std::vector<Place> all = places(width());
    for (size_t index = 0; index < all.size(); ++index) {
        painter.setPen(m_skin.theme().qcolor(ThemeRole::TextSecond));
        painter.drawText(all[index].caption, Qt::AlignLeft | Qt::AlignVCenter,
                         m_facts[index].caption);
        painter.setPen(m_skin.theme().qcolor(ThemeRole::Text));
        painter.drawText(all[index].text, Qt::AlignLeft | Qt::AlignVCenter, all[index].shown);
    }
}

} // namespace melovane
