#pragma once

#include <csignal>

#include <sys/resource.h>

/// While it lives no file of this process grows beyond so many bytes: a full disk, for the tests of every
/// room.
class LimiteDeArquivo
{
public:
    explicit LimiteDeArquivo(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_antes);
        const rlimit pouco = {bytes, m_antes.rlim_max};
        setrlimit(RLIMIT_FSIZE, &pouco);
    }
    ~LimiteDeArquivo() { setrlimit(RLIMIT_FSIZE, &m_antes); }
    LimiteDeArquivo(const LimiteDeArquivo &) = delete;
    LimiteDeArquivo &operator=(const LimiteDeArquivo &) = delete;

private:
    rlimit m_antes = {};
};
