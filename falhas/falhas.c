/*
 * Loaded in front of the system's library (LD_PRELOAD), it counts the calls by which a program changes files below one
 * folder, and at the n-th of them lets the disk fail or ends the program. What it does is read from the environment:
 *
 *   FALHAS_PASTA   the folder; calls that touch nothing below it are not counted
 *   FALHAS_MODO    "erro" (the n-th call fails), "sempre" (it and all after it), "curto" (a write takes half, what cannot
 *                  be halved fails), "morte" (the program is killed before the call); anything else only counts
 *   FALHAS_VEZ     n, from 1; counting begins when the file FALHAS_INICIO exists, at once when that is not set
 *   FALHAS_ERRO    errno of the failure
 *   FALHAS_CONTA   a file that receives the number of calls counted and whether the failure was met
 *
 * Linux, for tests; the program itself knows nothing of it.
 */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <signal.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

enum modo { NADA, ERRO, SEMPRE, CURTO, MORTE };
enum sorte { SEGUE, FALHA, METADE };

static char pasta[PATH_MAX];
static const char *inicio, *conta;
static enum modo modo;
static long vez, contadas, acertou;
static int erro_pedido = ENOSPC;
static int ligado;

__attribute__((constructor)) static void preparar(void)
{
    const char *onde = getenv("FALHAS_PASTA");
    const char *qual = getenv("FALHAS_MODO");
    if (!onde || !realpath(onde, pasta))
        return;
    inicio = getenv("FALHAS_INICIO");
    conta = getenv("FALHAS_CONTA");
    vez = getenv("FALHAS_VEZ") ? atol(getenv("FALHAS_VEZ")) : 0;
    if (getenv("FALHAS_ERRO"))
        erro_pedido = atoi(getenv("FALHAS_ERRO"));
    modo = !qual                      ? NADA
           : !strcmp(qual, "erro")    ? ERRO
           : !strcmp(qual, "sempre")  ? SEMPRE
           : !strcmp(qual, "curto")   ? CURTO
           : !strcmp(qual, "morte")   ? MORTE
                                      : NADA;
    ligado = 1;
}

static void anotar(void)
{
    char linha[64];
    int n, arquivo;
    if (!conta)
        return;
    n = snprintf(linha, sizeof linha, "%ld %ld\n", contadas, acertou);
    arquivo = (int)syscall(SYS_openat, AT_FDCWD, conta, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (arquivo < 0)
        return;
    syscall(SYS_write, arquivo, linha, (size_t)n);
    syscall(SYS_close, arquivo);
}

/* Whether the path lies in the watched folder. */
static int interessa(const char *caminho)
{
    const size_t n = strlen(pasta);
    return !strncmp(caminho, pasta, n) && (caminho[n] == '/' || !caminho[n]);
}

static enum sorte ponto(const char *caminho, int pode_metade)
{
    if (!ligado || !caminho || !interessa(caminho))
        return SEGUE;
    if (inicio && syscall(SYS_faccessat, AT_FDCWD, inicio, F_OK) != 0)
        return SEGUE;
    ++contadas;
    const int agora = contadas == vez || (modo == SEMPRE && vez > 0 && contadas > vez);
    if (agora && modo != NADA)
        ++acertou;
    anotar();
    if (!agora || modo == NADA)
        return SEGUE;
    if (modo == MORTE) {
        syscall(SYS_kill, syscall(SYS_getpid), SIGKILL);
        for (;;)
            syscall(SYS_pause);
    }
    if (modo == CURTO && pode_metade)
        return METADE;
    errno = erro_pedido;
    return FALHA;
}

static const char *de_arquivo(int arquivo, char *caminho)
{
    char elo[40];
    snprintf(elo, sizeof elo, "/proc/self/fd/%d", arquivo);
    const ssize_t n = syscall(SYS_readlinkat, AT_FDCWD, elo, caminho, PATH_MAX - 1);
    if (n <= 0)
        return NULL;
    caminho[n] = '\0';
    return caminho;
}

static const char *de_nome(int pasta_do_nome, const char *nome, char *caminho)
{
    char base[PATH_MAX];
    if (!ligado || !nome)
        return NULL;
    if (nome[0] == '/')
        return nome;
    if (pasta_do_nome == AT_FDCWD ? syscall(SYS_getcwd, base, sizeof base) < 0 : !de_arquivo(pasta_do_nome, base))
        return NULL;
    if (snprintf(caminho, PATH_MAX, "%s/%s", base, nome) >= PATH_MAX)
        return NULL;
    return caminho;
}

static int abrir(int onde, const char *nome, int como, mode_t direitos)
{
    char caminho[PATH_MAX];
    const int escreve = (como & O_ACCMODE) != O_RDONLY || (como & (O_CREAT | O_TRUNC));
    if (escreve && ponto(de_nome(onde, nome, caminho), 0) == FALHA)
        return -1;
    return (int)syscall(SYS_openat, onde, nome, como, direitos);
}

#define DIREITOS                                                                                                       \
    mode_t direitos = 0;                                                                                               \
    if (como & (O_CREAT | __O_TMPFILE)) {                                                                              \
        va_list resto;                                                                                                 \
        va_start(resto, como);                                                                                         \
        direitos = va_arg(resto, mode_t);                                                                              \
        va_end(resto);                                                                                                 \
    }
int open(const char *nome, int como, ...) { DIREITOS return abrir(AT_FDCWD, nome, como, direitos); }
int open64(const char *nome, int como, ...) { DIREITOS return abrir(AT_FDCWD, nome, como, direitos); }
int openat(int onde, const char *nome, int como, ...) { DIREITOS return abrir(onde, nome, como, direitos); }
int openat64(int onde, const char *nome, int como, ...) { DIREITOS return abrir(onde, nome, como, direitos); }

static ssize_t escrever(int arquivo, const void *bytes, size_t n, off_t onde, int com_onde)
{
    char caminho[PATH_MAX];
    const enum sorte sorte = ponto(ligado ? de_arquivo(arquivo, caminho) : NULL, n > 1);
    if (sorte == FALHA)
        return -1;
    if (sorte == METADE)
        n /= 2;
    return com_onde ? syscall(SYS_pwrite64, arquivo, bytes, n, onde) : syscall(SYS_write, arquivo, bytes, n);
}
ssize_t write(int arquivo, const void *bytes, size_t n) { return escrever(arquivo, bytes, n, 0, 0); }
ssize_t pwrite(int arquivo, const void *bytes, size_t n, off_t onde) { return escrever(arquivo, bytes, n, onde, 1); }
ssize_t pwrite64(int arquivo, const void *bytes, size_t n, off64_t onde) { return escrever(arquivo, bytes, n, onde, 1); }

#define COM_ARQUIVO(nome, parametros, chamada)                                                                         \
    int nome parametros                                                                                                \
    {                                                                                                                  \
        char caminho[PATH_MAX];                                                                                        \
        if (ponto(ligado ? de_arquivo(arquivo, caminho) : NULL, 0) == FALHA)                                           \
            return -1;                                                                                                 \
        return (int)chamada;                                                                                           \
    }
COM_ARQUIVO(fsync, (int arquivo), syscall(SYS_fsync, arquivo))
COM_ARQUIVO(fdatasync, (int arquivo), syscall(SYS_fdatasync, arquivo))
COM_ARQUIVO(ftruncate, (int arquivo, off_t n), syscall(SYS_ftruncate, arquivo, n))
COM_ARQUIVO(ftruncate64, (int arquivo, off64_t n), syscall(SYS_ftruncate, arquivo, n))
COM_ARQUIVO(fchmod, (int arquivo, mode_t modo_novo), syscall(SYS_fchmod, arquivo, modo_novo))
COM_ARQUIVO(fchown, (int arquivo, uid_t dono, gid_t grupo), syscall(SYS_fchown, arquivo, dono, grupo))
COM_ARQUIVO(flock, (int arquivo, int como), syscall(SYS_flock, arquivo, como))

#define COM_NOME(nome, parametros, qual, chamada)                                                                      \
    int nome parametros                                                                                                \
    {                                                                                                                  \
        char caminho[PATH_MAX];                                                                                        \
        if (ponto(de_nome(AT_FDCWD, qual, caminho), 0) == FALHA)                                                       \
            return -1;                                                                                                 \
        return (int)chamada;                                                                                           \
    }
COM_NOME(unlink, (const char *a), a, syscall(SYS_unlinkat, AT_FDCWD, a, 0))
COM_NOME(rmdir, (const char *a), a, syscall(SYS_unlinkat, AT_FDCWD, a, AT_REMOVEDIR))
COM_NOME(mkdir, (const char *a, mode_t m), a, syscall(SYS_mkdirat, AT_FDCWD, a, m))
COM_NOME(rename, (const char *a, const char *b), b, syscall(SYS_renameat2, AT_FDCWD, a, AT_FDCWD, b, 0))
COM_NOME(link, (const char *a, const char *b), b, syscall(SYS_linkat, AT_FDCWD, a, AT_FDCWD, b, 0))

int renameat2(int d, const char *a, int e, const char *b, unsigned como)
{
    char caminho[PATH_MAX];
    if (ponto(de_nome(e, b, caminho), 0) == FALHA)
        return -1;
    return (int)syscall(SYS_renameat2, d, a, e, b, como);
}

int unlinkat(int d, const char *a, int como)
{
    char caminho[PATH_MAX];
    if (ponto(de_nome(d, a, caminho), 0) == FALHA)
        return -1;
    return (int)syscall(SYS_unlinkat, d, a, como);
}
