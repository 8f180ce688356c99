#pragma once

#include <QByteArray>

#include <functional>

class Banco;

/**
 * Between copies of the program: what replaces the book, copies it raw, or adds to it by several statements
 * that belong together, is done by one of them at a time.
 *
 * The lock is on the folder that the book really lies in, so it leaves nothing behind, not even after a kill.
 * Where a drive knows no locks everything goes on without.
 */
class TravaDoLivro
{
public:
    explicit TravaDoLivro(const Banco &banco);
    ~TravaDoLivro();
    TravaDoLivro(const TravaDoLivro &) = delete;
    TravaDoLivro &operator=(const TravaDoLivro &) = delete;

    /// Waits until no other copy has the lock, calling `respirar` now and then; false as soon as that says so.
    /// To take what one has already is no failure.
    bool Pegar(const std::function<bool()> &respirar);
    void Soltar();

private:
    const Banco &m_banco;
    int m_pasta = -1;
};
