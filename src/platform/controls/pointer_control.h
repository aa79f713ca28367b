#pragma once

namespace melovane {

enum class PointerShape
{
    Wait,
    Search, ///< a search inside all texts, which may take longer
};

/// The shape of the mouse pointer over the whole program. Calls nest.
class PointerControl
{
public:
    virtual ~PointerControl() = default;

    virtual void push(PointerShape shape) = 0;
    virtual void pop() = 0;
};

/// Shows a busy pointer as long as it lives.
class BusyCursor
{
public:
    explicit BusyCursor(PointerControl& pointer, PointerShape shape = PointerShape::Wait)
        : m_pointer(pointer)
    {
        m_pointer.push(shape);
    }

    ~BusyCursor() { m_pointer.pop(); }

    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;

private:
    PointerControl& m_pointer;
};

} // namespace melovane
