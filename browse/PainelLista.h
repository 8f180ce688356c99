#pragma once

#include "base/Painel.h"

#include <QList>

#include <memory>

class Avisos;
class Banco;
class Consulta;
class DetalheReceita;
class frmMenu;
class ListaReceitas;
class ModeloLista;
class PainelCartao;
class PainelMensagem;
class Telas;

/// Everything outside the list that it asks for something.
struct PortasLista {
    const Banco &banco;
    Avisos &avisos;
    Telas &telas;
    PainelMensagem &mensagem;
    DetalheReceita &detalhe;
    PainelCartao &cartao;
};

/// The recipe list: every stored recipe, or what the last search found, with its pop-up menu and deletions.
class PainelLista : public Painel
{
    Q_OBJECT
public:
    explicit PainelLista(const PortasLista &portas, QWidget *parent = nullptr);
    ~PainelLista() override;

    /// The query of the next fill, and of that one only; empty lists everything.
    void DefinirConsulta(const QString &strSQLLista) { m_strSQLLista = strSQLLista; }
    /// The calorie limit of the next fill, and of that one only; 0 for none.
    void DefinirLimite(qint64 lngLimiteCalorias) { m_lngLimiteCalorias = lngLimiteCalorias; }
    qint64 Limite() const { return m_lngLimiteCalorias; }

    /**
     * Fills the list and shows its view, rolling the panel open when it was closed. A call while a fill is
     * running returns at once. A query that fails leaves the list empty, without a message.
     */
    void imgLstRcta_Click();
    /// The next fill selects this recipe and brings it into view.
    void MarcarDepois(qint64 lngReceita) { m_marcada = lngReceita; }
    /// The next fill keeps the place in the list: what stood at its top, and the row that has the focus.
    void ManterLugar() { m_manterLugar = true; }
    bool Carregando() const { return m_blnCarregandoLista; }

    /// Numbers of the selected recipes in list order.
    QList<qint64> ReceitasSelecionadas() const;
    /// The same as text, each number followed by a comma; "" when nothing is selected.
    QString SelecaoComoTexto() const;
    /// Number of the recipe that has the focus and is selected, or 0.
    qint64 ReceitaAtual() const;

    /// Name of a listed recipe; "" when it is not in the list.
    QString NomeDaReceita(qint64 lngReceita) const;

    ListaReceitas *lstVwReceitas() const { return m_lstVwReceitas; }

signals:
    /// "&Imprimir Receita" was chosen for this recipe.
    void impressaoPedida(qint64 lngReceita);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    void ComecarPreenchimento();
    bool TomarFatia(int ms);
    void ConcluirPreenchimento();
    void FalharPreenchimento();
    void VoltarAoLugar();
    void OrdenarPor(int coluna);
    void MostrarOrdem();
    void ConsultarReceita(qint64 lngReceita);
    void AlterarReceita(qint64 lngReceita);
    void Excluir(const QList<qint64> &receitas);
    void ExcluirVarias(const QList<qint64> &receitas);
    void ExcluirPeloMenu(qint64 lngReceita);
    void AbrirMenu(const QPoint &global);
    void CriarImagens();
    void LigarMenu();

    PortasLista m_portas;
    ModeloLista *m_modelo;
    ListaReceitas *m_lstVwReceitas;
    frmMenu *m_menu;

    QString m_strSQLLista;
    qint64 m_lngLimiteCalorias = 0;
    bool m_blnCarregandoLista = false;
    qint64 m_marcada = 0;
    bool m_manterLugar = false;
    std::unique_ptr<Consulta> m_consulta; ///< while the list is being filled
    qint64 m_limite = 0;                  ///< of this fill
    bool m_livroInteiro = true;
    bool m_livroVazio = false;
    bool m_comoPreenchida = false; ///< nobody has put the rows in another order since
    int m_chaveDoPreenchimento = -1;
    struct {
        int topo = 0;
        int atual = -1;
        qint64 procurada = 0;
        bool manterLugar = false;
    } m_depois;       ///< what the list does once it is filled
    int m_chave = -1; ///< column that the list is sorted by; -1: as the query gives it
};
