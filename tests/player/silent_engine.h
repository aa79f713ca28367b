#pragma once

#include "player/stage_engine.h"
#include "store/milli_sec_to_min.h"

#include <algorithm>
#include <optional>

namespace melovane::test {

/// An engine without sound: what a file is, the test says by its name.
class SilentEngine : public StageEngine
{
public:
    void openCards(const QString&, const QString&) override {}

    void closeCards() override {}

    [[nodiscard]] CardReport card(int) const override
    {
        return {QString(), true, false, now * kAirRate / 1000};
    }

    quint32 load(AirDeck deck, const EntrySound& sound) override
    {
        Place& place = m_places[deck];
        place = Place();
        place.sound = sound;
        place.readyAt = now + loadMs;
        place.report.load = ++m_loads;
        place.report.state = DeckState::Loading;
        return m_loads;
    }

    void unload(AirDeck deck) override { m_places[deck] = Place(); }

    void startNow(AirDeck deck) override { m_places[deck].start = Start(); }

    void startAt(AirDeck, qint64) override {}

    void startBeforeEnd(AirDeck deck, AirDeck of, int ms) override
    {
        m_places[deck].start = Start{of, ms};
        m_places[deck].report.startsLater = true;
    }

    void cancelStart(AirDeck deck) override
    {
        m_places[deck].start.reset();
        m_places[deck].report.startsLater = false;
    }

    void fadeOut(AirDeck deck, int ms) override
    {
        Place& place = m_places[deck];
        if (place.report.state == DeckState::Playing) {
            place.endsAt = now + std::max(5, ms);
            place.report.fadesAway = true;
        }
    }

    void seek(AirDeck deck, double ms) override { m_places[deck].from = ms; }

    void update(AirDeck deck, const EntrySound& sound) override
    {
        Place& place = m_places[deck];
        if (place.report.state == DeckState::Playing || place.report.state == DeckState::Ready) {
            place.sound = sound;
            measure(place);
        }
    }

    void setPitch(AirDeck deck, int pitch, int glideMs) override
    {
        m_places[deck].sound.pitch = pitch;
        glidedMs = glideMs;
    }

    void setVolume(AirDeck, int) override {}

    void setTalkover(int, int) override {}

    [[nodiscard]] int pitch(AirDeck deck) override { return m_places[deck].sound.pitch; }

    [[nodiscard]] DeckReport report(AirDeck deck) const override
    {
        const auto place = m_places.find(deck);
        return place == m_places.end() ? DeckReport() : place->second.report;
    }

    void tick() override
    {
        ++now;
        for (auto& [deck, place] : m_places) {
            moveOn(place);
        }
        for (auto& [deck, place] : m_places) {
            begin(deck, place);
        }
        noteSound(std::any_of(m_places.begin(), m_places.end(), [](const auto& deckAndPlace) {
            return deckAndPlace.second.report.state == DeckState::Playing;
        }));
    }

private:
    struct Start
    {
        std::optional<AirDeck> of;
        int ms = 0;
    };

    struct Place
    {
        EntrySound sound;
        qint64 readyAt = 0;
        std::optional<double> from; ///< ms, asked for while it is loading
        std::optional<Start> start;
        std::optional<qint64> endsAt;
        int breaksAt = -1; ///< ms; -1 for never
        DeckReport report;
    };

    [[nodiscard]] double lengthOf(const QString& file) const
    {
        const auto known = lengths.find(file);
        return known == lengths.end() ? 200'000 : known->second;
    }

    void measure(Place& place) const
    {
        using Mod_MilliSecToMin::kFrameMs;
        const double length = lengthOf(place.sound.file);
        place.report.fromMs = place.sound.frameStart * kFrameMs;
        place.report.fromMs = std::max(place.report.fromMs, place.from.value_or(0));
        place.report.toMs = place.sound.frameStop > place.sound.frameStart
                                ? std::min(length, place.sound.frameStop * kFrameMs)
                                : length;
        const double at = std::max(place.report.positionMs, place.report.fromMs);
        place.report.remainingMs = std::max(0.0, place.report.toMs - at);
    }

    void moveOn(Place& place) const
    {
        DeckReport& report = place.report;
        if (report.state == DeckState::Loading && now >= place.readyAt) {
            const auto fault = broken.find(place.sound.file);
            place.breaksAt = fault == broken.end() ? -1 : fault->second;
            report.state = DeckState::Ready;
            measure(place);
            report.positionMs = report.fromMs;
            if (place.breaksAt == 0 || report.toMs <= report.fromMs) {
                report.state = DeckState::Failed;
                report.fault = PlayFault::NoAudio;
            }
        } else if (report.state == DeckState::Playing) {
            report.positionMs += 1;
            report.remainingMs = std::max(0.0, report.toMs - report.positionMs);
            const bool breaksOff = place.breaksAt >= 0 && report.positionMs >= place.breaksAt;
            if (breaksOff) {
                report.fault = PlayFault::NoAudio;
            }
            if (breaksOff || report.remainingMs <= 0 || (place.endsAt && now >= *place.endsAt)) {
                report.state = DeckState::Ended;
                report.remainingMs = 0;
            }
        }
    }

    void begin(AirDeck deck, Place& place)
    {
        if (place.report.state != DeckState::Ready || !place.start) {
            return;
        }
        if (place.start->of) {
            const DeckReport of = report(*place.start->of);
            if (of.state == DeckState::Playing && of.remainingMs > place.start->ms) {
                return;
            }
        }
        place.report.state = DeckState::Playing;
        place.report.startsLater = false;
        place.report.startedAt = now * kAirRate / 1000;
        heard.push_back({deck, place.sound, now, place.report.fromMs});
    }

    std::map<AirDeck, Place> m_places;
    quint32 m_loads = 0;
};

} // namespace melovane::test
