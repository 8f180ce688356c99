#pragma once

#include <ctime>

/// How much of the processor's time one statement may take: a busy machine or a slow disk does not count.
class PrazoDoProcessador
{
public:
    void Comecar() { m_desde = Agora(); }
    bool Passou() const { return Agora() - m_desde > kMs; }

private:
    static constexpr long long kMs = 30'000;

    static long long Agora()
    {
        timespec agora = {};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &agora);
        return agora.tv_sec * 1000LL + agora.tv_nsec / 1'000'000;
    }
    long long m_desde = 0;
};
