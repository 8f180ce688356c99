#pragma once

#include <QString>

/**
 * How any part of the program speaks to the user in a message box.
 *
 * The title is always "Cozinhario 2005"; it lives in the implementation, once. Parts get an Avisos
 * handed in and never make a box themselves, so that tests answer through the same door.
 */
class Avisos
{
public:
    enum class Icone { Nenhum, Informacao, Exclamacao, Parada };

    virtual ~Avisos() = default;

    /// Shows a box with one OK button and returns when the user has closed it.
    virtual void Avisar(const QString &texto, Icone icone) = 0;

    /// Asks a Yes/No question (question icon, No is the default); true only for Yes.
    virtual bool Perguntar(const QString &texto) = 0;

    enum class Resposta {
        Sim,
        Nao,
        Nenhuma, ///< the box was closed, by Escape or by its window's button
    };
    /// The same question, one of a row of them: tells a "No" from a box that was closed without an answer, by
    /// which the user asks for a way out.
    virtual Resposta PerguntarComSaida(const QString &texto)
    {
        return Perguntar(texto) ? Resposta::Sim : Resposta::Nao;
    }
};
