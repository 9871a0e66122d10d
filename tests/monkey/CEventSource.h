// The monkey's seeded stream of events. Each event is drawn against the world as it is, so that
// most clicks land inside visible windows, most focus changes reach edit boxes, and the slots
// named are often the filled ones; the event itself keeps every value, so that a replay does
// not need the source.
#pragma once

#include "CMonkeyEvent.h"

#include "platform/system/QzSystem.h"

#include <cstdint>
#include <random>

namespace QzMonkey
{

class CMonkeyWorld;

class CEventSource
{
public:
    explicit CEventSource(uint64_t nSeed) : m_rng(nSeed) {}

    CMonkeyEvent Next(const CMonkeyWorld& world);

private:
    // A number from lo to hi, both included.
    int Uniform(int lo, int hi);
    bool Chance(int nPercent) { return Uniform(0, 99) < nPercent; }
    template <class T, size_t N> T Pick(const T (&values)[N])
    {
        return values[Uniform(0, static_cast<int>(N) - 1)];
    }
    EventKind PickKind();
    POINT PickPoint(const CMonkeyWorld& world);
    CMonkeyEvent MouseEvent(EventKind kind, const CMonkeyWorld& world);
    CMonkeyEvent FocusEvent(const CMonkeyWorld& world);
    int PickAddress(const CMonkeyWorld& world);

    std::mt19937_64 m_rng;
};

} // namespace QzMonkey
