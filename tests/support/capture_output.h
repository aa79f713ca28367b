#pragma once

#include "platform/media/audio_output.h"

namespace melovane::test {

/// A sound card that keeps what it is sent. It has no clock: samples go when the test pulls them.
class CaptureOutput : public AudioOutput
{
public:
    [[nodiscard]] std::vector<SoundCard> cards() override { return installed; }

    bool open(int card, const AudioFormat& wanted, SampleSource& from) override
    {
        close();
        if (refuses) {
            return false;
        }
        ++opened;
        openCard = card;
        format = wanted;
        source = &from;
        return true;
    }

    void close() override { source = nullptr; }

    [[nodiscard]] bool isOpen() const override { return source != nullptr && !pulledOut; }

    /// Takes so many samples of each channel; nothing when no card is open.
    void pull(int moments)
    {
        if (source == nullptr) {
            return;
        }
        const size_t before = heard.size();
        // What the source leaves alone shall be seen.
        heard.resize(before + size_t(moments) * size_t(format.channels), qint16{-12345});
        source->fill(std::span(heard).subspan(before));
    }

    std::vector<SoundCard> installed = {{QStringLiteral("Erste"), 1},
                                        {QStringLiteral("Zweite"), 2}};
    bool refuses = false;
    bool pulledOut = false;
    int opened = 0;
    int openCard = -1;
    AudioFormat format;
    SampleSource* source = nullptr;
    std::vector<qint16> heard;
};

} // namespace melovane::test
