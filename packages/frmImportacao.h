#pragma once

#include "packages/ImportacaoDoPacote.h"

#include <QDialog>

class Avisos;
class Banco;
class Figuras;
class QListWidget;
class QProgressBar;
class QPushButton;
class Relogio;

/**
 * The import dialog: lists the recipes of a package, all selected at first, and has the chosen ones added to
 * the book (ImportacaoDoPacote).
 *
 * A running import is stopped by Cancel, Escape or the window's close button; what is in the book by then
 * stays. A question about a name that exists already, closed without an answer, counts as No and gives the
 * dialog back: Import goes on with the recipe behind it, Cancel ends.
 */
class frmImportacao : public QDialog
{
    Q_OBJECT
public:
    /// How the dialog's life ended. After Importado the program goes on; every other end is the program's end
    /// as well, which is the caller's business.
    enum class Desfecho { Importado, Cancelado, Recusado };

    frmImportacao(const Banco &banco, const Figuras &figuras, Avisos &avisos, const Relogio &relogio,
                  QWidget *parent = nullptr);
    ~frmImportacao() override;

    /// The whole life of the dialog: loads the package and, if it is one, shows the dialog modally.
    Desfecho Executar(const QString &strArquivo);

    /// Fills the list from the package file (native path). When it is none, or damaged, the user is told and
    /// the result is false.
    bool CarregarReceitas(const QString &strArquivo);

    Desfecho Resultado() const { return m_desfecho; }
    /// Whether the book has new recipes: also after Cancelado, when the import was stopped on its way.
    bool AlgumaEntrou() const { return m_importacao.AlgumaEntrou(); }

public slots:
    /// Cancel, Escape and the window's close button. Before the import nothing is imported; a running one
    /// stops before its next recipe.
    void reject() override;

private:
    void CriarControles();
    void OrganizarControles();
    void Importar();

    Avisos &m_avisos;
    ImportacaoDoPacote m_importacao;

    QListWidget *m_lstImportacao = nullptr;
    QPushButton *m_cmdSalvarIngredientes = nullptr;
    QPushButton *m_cmdCancelar = nullptr;
    QProgressBar *m_PrgrssBr = nullptr;

    /// A second click never runs a second import; after a pause it goes on with the one there is.
    enum class Estado { Escolhendo, Importando, EmPausa, Terminado } m_estado = Estado::Escolhendo;
    Desfecho m_desfecho = Desfecho::Cancelado;
};
