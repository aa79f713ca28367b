#pragma once

#include "player/air_rig.h"
#include "player/stage_engine.h"

#include <set>

namespace melovane::test {

/// The real engine on a stage: files of tones, and an output that keeps what it is sent. Silence is
/// what is not in the samples.
class CapturedEngine : public StageEngine
{
public:
    void openCards(const QString&, const QString&) override {}

    void closeCards() override {}

    [[nodiscard]] CardReport card(int output) const override { return m_rig.engine.card(output); }

    quint32 load(AirDeck deck, const EntrySound& sound) override
    {
        lay(sound.file);
        m_sounds[deck] = sound;
        return m_rig.engine.load(deck, sound);
    }

    void unload(AirDeck deck) override { m_rig.engine.unload(deck); }

    void startNow(AirDeck deck) override { m_rig.engine.startNow(deck); }

    void startAt(AirDeck deck, qint64 frame) override { m_rig.engine.startAt(deck, frame); }

    void startBeforeEnd(AirDeck deck, AirDeck of, int ms) override
    {
        m_rig.engine.startBeforeEnd(deck, of, ms);
    }

    void cancelStart(AirDeck deck) override { m_rig.engine.cancelStart(deck); }

    void fadeOut(AirDeck deck, int ms) override { m_rig.engine.fadeOut(deck, ms); }

    void seek(AirDeck deck, double ms) override { m_rig.engine.seek(deck, ms); }

    void update(AirDeck deck, const EntrySound& sound) override
    {
        m_rig.engine.update(deck, sound);
    }

    void setPitch(AirDeck deck, int pitch, int glideMs) override
    {
        m_sounds[deck].pitch = pitch;
        glidedMs = glideMs;
        m_rig.engine.setPitch(deck, pitch, glideMs);
    }

    void setVolume(AirDeck deck, int volume) override { m_rig.engine.setVolume(deck, volume); }

    void setTalkover(int volume, int glideMs) override
    {
        m_rig.engine.setTalkover(volume, glideMs);
    }

    [[nodiscard]] DeckReport report(AirDeck deck) const override
    {
        return m_rig.engine.report(deck);
    }

    [[nodiscard]] int pitch(AirDeck deck) override { return m_sounds[deck].pitch; }

    void tick() override
    {
        const qint64 before = now * kAirRate / 1000;
        ++now;
        if (now % MixEngine::kBeatMs == 0) {
            m_rig.engine.beat();
        }
        m_rig.first.heard.clear();
        m_rig.first.pull(int(now * kAirRate / 1000 - before));
        noteSound(std::any_of(m_rig.first.heard.begin(), m_rig.first.heard.end(),
                              [](qint16 sample) { return std::abs(sample) > kAudible; }));
        for (const AirDeck deck : kAirDecks) {
            noteBegun(deck);
        }
    }

private:
    /// The rounding of a tone that was faded away lies below.
    static constexpr int kAudible = 8;

    /// The file as it is by now.
    void lay(const QString& path)
    {
        const auto fault = broken.find(path);
        if (fault != broken.end() && fault->second == 0) {
            m_rig.files[path] = ToneFile();
        } else if (m_rig.files[path].samples.empty()) {
            const auto known = lengths.find(path);
            const int ms = known == lengths.end() ? 20'000 : known->second;
            m_rig.files.addTone(path, 200 + 10.0 * double(lengths.size() % 50), ms / 1000.0);
        }
    }

    void noteBegun(AirDeck deck)
    {
        const DeckReport report = m_rig.engine.report(deck);
        if (report.startedAt >= 0 && m_begun.insert(report.load).second) {
            heard.push_back({deck, m_sounds[deck], now, report.fromMs});
        }
    }

    AirRig m_rig;
    std::map<AirDeck, EntrySound> m_sounds;
    std::set<quint32> m_begun; ///< loads
};

} // namespace melovane::test
