#pragma once

#include "player/mix_engine.h"
#include "support/capture_output.h"
#include "support/tone_files.h"

#include <algorithm>

namespace melovane::test {

/// The engine over files of tones and two outputs without a clock.
struct AirRig
{
    AirRig() { engine.openCards({}, {}); }

    /// Decodes and mixes so many frames, a beat before each block.
    void run(int frames, int block = 1024)
    {
        for (; frames > 0; frames -= block) {
            engine.beat();
            first.pull(std::min(frames, block));
            second.pull(std::min(frames, block));
        }
    }

    /// Until nothing is being opened any more: a load needs the mix to let go of what it had.
    void settle()
    {
        engine.beat();
        run(2048, 256);
    }

    [[nodiscard]] DeckState state(AirDeck deck) const { return engine.report(deck).state; }

    /// What was heard of the left, 1 is the loudest. Frame n of the card is sample n.
    [[nodiscard]] std::vector<double> left() const
    {
        std::vector<double> out;
        for (size_t i = 0; i < first.heard.size(); i += 2) {
            out.push_back(first.heard[i] / 32768.0);
        }
        return out;
    }

    ToneFiles files;
    CaptureOutput first;
    CaptureOutput second;
    MixEngine engine{files.maker(), first, second};
};

} // namespace melovane::test
