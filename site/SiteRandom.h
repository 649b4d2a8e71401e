#pragma once

#include <QList>
#include <QtGlobal>

// splitmix64: the same numbers from the same seed on every platform, which the
// standard distributions do not promise.
class SiteRandom
{
public:
    explicit SiteRandom(quint64 seed) : m_state(seed) {}

    quint64 next()
    {
        quint64 z = (m_state += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    // Uniform in [lo, hi], both included.
    qint64 range(qint64 lo, qint64 hi) { return hi <= lo ? lo : lo + qint64(next() % quint64(hi - lo + 1)); }
    bool chance(int percent) { return range(0, 99) < percent; }
    template<typename T>
    const T &pick(const QList<T> &list) { return list.at(qsizetype(range(0, list.size() - 1))); }

private:
    quint64 m_state;
};
