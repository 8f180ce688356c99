#pragma once

#include <QList>
#include <QString>

class Abridor;
class Avisos;
class Banco;
class Figuras;
class OperacaoLonga;
class PainelMensagem;
class QFile;
class RecordSet;
class Telas;

/// A selected row of the recipe list.
struct ReceitaSelecionada {
    qint64 lngReceita = 0;
    QString Tag; ///< the recipe's kind, as the row's tag holds it; "" counts as 0
};

/// What the export asks of the recipe list, beside the view switch; implemented by the main window.
class ListaParaExportar
{
public:
    virtual ~ListaParaExportar() = default;
    /// Whether the panel picLstReceitas is visible.
    virtual bool ListaVisivel() const = 0;
    /// The click on imgLstRcta: fills and shows the list.
    virtual void MostrarLista() = 0;
    /// Sets the panel's height, in twips.
    virtual void DefinirAlturaDaLista(int twips) = 0;
};

/**
 * The toolbar's transmit button: the selected recipes become the package "PacoteReceita.lr$" and a message
 * with it attached, "~temppct.eml", both in the application folder, and the desktop's mail program opens the
 * message. When the desktop has none the user is told where both files are. The book and the selection stay as they are.
 */
class Exportacao
{
public:
    /// @param site the maker's site, scheme and host, no trailing slash
    Exportacao(const Banco &banco, const Figuras &figuras, Avisos &avisos, PainelMensagem &painel,
               Telas &telas, ListaParaExportar &lista, Abridor &abridor, const QString &site);

    /**
     * The button's click.
     *
     * @param selecionadas the list's selected rows, in the list's order; kinds 2 and above are left out
     *
     * Asks the user, with a message, for the list view or for a selection when either is missing. A failure
     * of the database, a recipe without name or method, and a file that cannot be written end the export with
     * a stop message and no mail program; a picture that cannot be read only leaves its recipe without one. A
     * click that arrives while an export is under way does nothing.
     */
    void imgTransmit_Click(const QList<ReceitaSelecionada> &selecionadas);

private:
    bool ExigirLista();
    /// Does the work; throws what goes wrong.
    void Exportar(const QList<ReceitaSelecionada> &selecionadas);
    /// Writes the package text; the result is the list of names for the message.
    QString GravarTexto(QFile &arquivo, const QString &caminho, RecordSet rs, OperacaoLonga &operacao) const;

    const Banco &m_banco;
    const Figuras &m_figuras;
    Avisos &m_avisos;
    PainelMensagem &m_painel;
    Telas &m_telas;
    ListaParaExportar &m_lista;
    Abridor &m_abridor;
    QString m_site;
};
