#pragma once

#include "packages/Pacote.h"

#include <QDialog>
#include <QStringList>

#include <optional>

class Avisos;
class Banco;
class Figuras;
class QListWidget;
class QProgressBar;
class QPushButton;
class Relogio;

/**
 * The import dialog: lists the recipes of a package, all selected at first, and adds the chosen ones to the
 * book as new recipes. The package file itself is never touched; the unpacked text, "PacoteReceita.lrs" in
 * the application folder, lives as long as the dialog.
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

    /**
     * Adds record n (1 is the first) to the book, unless a recipe of that name exists and the user does not
     * want a second one.
     *
     * @throws ErroBanco when the database refuses a statement (what was executed before stays),
     *         std::runtime_error when the picture cannot be written
     */
    void EfetuarImportacao(int n);

    Desfecho Resultado() const { return m_desfecho; }

public slots:
    /// Cancel, Escape and the window's close button: nothing is imported. Without effect once the import
    /// runs.
    void reject() override;

private:
    void CriarControles();
    void OrganizarControles();
    std::optional<QString> LerPacote(const QString &strArquivo);
    bool Recusar(const QString &texto);
    void Importar();
    void TentarImportar(int linha);
    void Concluir();
    bool NomeConhecido(const QString &nome) const;
    bool DesejaRepetir(const QString &nome);
    QString NomeParaMensagem(int linha) const;
    void ApagarTrabalho();

    const Banco &m_banco;
    const Figuras &m_figuras;
    Avisos &m_avisos;
    const Relogio &m_relogio;

    QListWidget *m_lstImportacao = nullptr;
    QPushButton *m_cmdSalvarIngredientes = nullptr;
    QPushButton *m_cmdCancelar = nullptr;
    QProgressBar *m_PrgrssBr = nullptr;

    std::optional<Pacote::Texto> m_pacote;
    bool m_importacaoIniciada = false; ///< a second click never runs a second import
    bool m_importando = false;
    bool m_receitaGravada = false; ///< whether the record being imported already has its row
    QStringList m_falhas;          ///< names of the recipes that did not arrive whole
    Desfecho m_desfecho = Desfecho::Cancelado;
};
