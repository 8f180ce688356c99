#pragma once

#include <cerrno>

#include <sqlite3.h>
#include <unistd.h>

/// From the n-th on the engine's writes find no room: stands before them.
class GravacaoQueFalha
{
public:
    explicit GravacaoQueFalha(int boas)
    {
        s_boas = boas;
        Trocar(reinterpret_cast<sqlite3_syscall_ptr>(&GravacaoQueFalha::Escrever));
    }
    ~GravacaoQueFalha() { Trocar(nullptr); }
    GravacaoQueFalha(const GravacaoQueFalha &) = delete;
    GravacaoQueFalha &operator=(const GravacaoQueFalha &) = delete;

private:
    static ssize_t Escrever(int arquivo, const void *bytes, size_t quantos, off_t onde)
    {
        if (s_boas-- <= 0) {
            errno = ENOSPC;
            return -1;
        }
        return ::pwrite(arquivo, bytes, quantos, onde);
    }
    static void Trocar(sqlite3_syscall_ptr funcao)
    {
        sqlite3_vfs *vfs = sqlite3_vfs_find(nullptr);
        for (const char *nome : {"pwrite", "pwrite64"})
            vfs->xSetSystemCall(vfs, nome, funcao); // one of the two is in use
    }
    static inline int s_boas = 0;
};
