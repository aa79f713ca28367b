#pragma once

#include "player/fade_curve.h"

#include <algorithm>

namespace melovane {

/// A value that goes from where it is to another one over some frames, without a corner.
class Glide
{
public:
    explicit Glide(double value = 1)
        : m_from(value)
        , m_to(value)
    {}

    /// \param frames at least one
    void to(double value, int frames)
    {
        m_from = this->value();
        m_to = value;
        m_length = std::max(1, frames);
        m_at = 0;
    }

    [[nodiscard]] double target() const { return m_to; }

    [[nodiscard]] bool arrived() const { return m_at >= m_length; }

    [[nodiscard]] double value() const
    {
        return arrived() ? m_to : m_from + (m_to - m_from) * smoothRise(double(m_at) / m_length);
    }

    /// The value of this frame; the next call is the next frame.
    double next()
    {
        const double now = value();
        m_at += arrived() ? 0 : 1;
        return now;
    }

private:
    double m_from;
    double m_to;
    int m_length = 0;
    int m_at = 0;
};

} // namespace melovane
