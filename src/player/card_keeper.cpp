#include "player/card_keeper.h"

#include <algorithm>
#include <utility>

namespace melovane {

namespace {

/// Beats between two looks for a card that is not there: two seconds.
constexpr int kLookBeats = 100;

} // namespace

void CardKeeper::want(const QString& name)
{
    const std::scoped_lock lock(m_mutex);
    m_state.name = name;
    m_isWanted = true;
    m_isNew = true;
}

void CardKeeper::wantNone()
{
    const std::scoped_lock lock(m_mutex);
    m_state.name.clear();
    m_isWanted = false;
    m_isNew = true;
}

CardKeeper::State CardKeeper::state() const
{
    const std::scoped_lock lock(m_mutex);
    return m_state;
}

bool CardKeeper::takeChange()
{
    const std::scoped_lock lock(m_mutex);
    return std::exchange(m_isNew, false);
}

void CardKeeper::close()
{
    m_output.close();
    m_untilLook = 0;
    publish(false, false);
}

/// 0, the system's choice, for a card that is not there.
int CardKeeper::numberOf(const QString& name)
{
    if (name.isEmpty()) {
        return kSystemCard;
    }
    const auto cards = m_output.cards();
    const auto found = std::ranges::find(cards, name, &SoundCard::name);
    return found == cards.end() ? kSystemCard : found->number;
}

void CardKeeper::open()
{
    const QString name = state().name;
    const int number = numberOf(name);
    bool isLost = !name.isEmpty() && number == kSystemCard;
    bool isOpen = (!isLost || m_hasStandIn) && m_output.open(number, CardMixer::kFormat, m_mixer);
    if (!isOpen && number != kSystemCard) {
        isOpen = m_hasStandIn && m_output.open(kSystemCard, CardMixer::kFormat, m_mixer);
        isLost = true;
    }
    m_untilLook = kLookBeats;
    publish(isOpen, isLost);
}

void CardKeeper::beat(bool isSilent)
{
    State now;
    bool isWanted = false;
    {
        const std::scoped_lock lock(m_mutex);
        now = m_state;
        isWanted = m_isWanted;
    }
    if (!isWanted) {
        if (now.isOpen) {
            close();
        }
        return;
    }
    if (now.isOpen && !m_output.isOpen()) {
        // Whatever takes the sound now: nothing is worse than silence.
        m_output.close();
        const bool isOpen = m_hasStandIn && m_output.open(kSystemCard, CardMixer::kFormat, m_mixer);
        m_untilLook = kLookBeats;
        publish(isOpen, !now.name.isEmpty());
        return;
    }
    const bool looks = !now.isOpen || (now.isLost && isSilent);
    if (looks && --m_untilLook < 0 && (!now.isOpen || numberOf(now.name) != kSystemCard)) {
        m_output.close();
        open();
    }
}

void CardKeeper::publish(bool isOpen, bool isLost)
{
    const std::scoped_lock lock(m_mutex);
    m_state.isOpen = isOpen;
    m_state.isLost = isLost;
}

} // namespace melovane
