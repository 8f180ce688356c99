#pragma once

#include "base/ArquivoDeTrabalho.h"
#include "packages/TextoDoPacote.h"
#include "store/TravaDoLivro.h"

#include <QElapsedTimer>
#include <QStringList>

#include <functional>

class Avisos;
class Banco;
class Figuras;
class Relogio;

/**
 * The import of a package, without its dialog: unpacks it, knows its recipes, and adds the chosen ones to the
 * book as new recipes. The package file itself is never touched; the unpacked text, "PacoteReceita.lrs" in
 * the application folder, lives as long as this object.
 */
class ImportacaoDoPacote
{
public:
    ImportacaoDoPacote(const Banco &banco, const Figuras &figuras, Avisos &avisos, const Relogio &relogio);

    /// Unpacks the package file (native path) and finds its recipes. When it is no package, or damaged, the
    /// user is told and the result is false.
    bool Carregar(const QString &strArquivo);
    qsizetype Quantas() const { return m_pacote.Quantas(); }
    /// The recipes' names as they stand in the package, long ones cut, control characters as blanks.
    QStringList Nomes() const;

    /**
     * Adds record n (1 is the first) to the book, unless a recipe of that name exists and the user does not
     * want a second one.
     *
     * @throws ErroBanco when the database refuses a statement (what was executed before stays),
     *         std::runtime_error when something of the recipe is too large or its picture cannot be written
     */
    void EfetuarImportacao(int n);

    enum class Fim {
        Concluida,    ///< the last recipe has been looked at
        EmPausa,      ///< the user closed a question without an answer: Importar() would go on behind it
        Interrompida, ///< Interromper() or the end of the program
    };
    /**
     * Imports the chosen recipes, one after another, letting the window live; another copy that restores,
     * copies or imports is waited for, and it waits for us. What fails is reported and does not take the
     * others with it.
     *
     * @param escolhida whether record i (0 is the first) is wanted
     * @param andamento called after each record with its i
     */
    Fim Importar(const std::function<bool(int)> &escolhida, const std::function<void(int)> &andamento);
    /// Stops a running Importar() before its next recipe, or within a recipe of many lines before the next of
    /// them; what is in the book stays there.
    void Interromper() { m_interromper = true; }
    /// Tells the user how a concluded import went.
    void Concluir();
    /// Whether the import has added anything to the book.
    bool AlgumaEntrou() const { return m_algumaEntrou; }

    /// Removes the unpacked text's name.
    void ApagarTrabalho() { m_trabalho.Remover(); }

private:
    bool Recusar(const QString &texto);
    bool PegarTrava();
    bool Parar() const;
    void Respirar();
    void TentarImportar(int i);
    bool NomeConhecido(const QString &nome) const;
    bool DesejaRepetir(const QString &nome);
    bool GravarFigura(const Pacote::Registro &receita, qint64 lngReceita);
    QString NomeParaMensagem(int i) const;

    const Banco &m_banco;
    const Figuras &m_figuras;
    Avisos &m_avisos;
    const Relogio &m_relogio;

    ArquivoDeTrabalho m_trabalho;
    TravaDoLivro m_trava;
    Pacote::Texto m_pacote;
    QElapsedTimer m_desdeORespiro;
    int m_proxima = 0;
    bool m_importando = false;
    bool m_interromper = false;
    bool m_semResposta = false;    ///< the last question was closed without an answer
    bool m_receitaGravada = false; ///< whether the record being imported already has its row
    bool m_algumaEntrou = false;
    QStringList m_falhas; ///< names of the recipes that did not arrive whole
};
