#pragma once

#include "base/Painel.h"
#include "store/Comandos.h"

class Avisos;
class Banco;
class CampoTexto;
class ComboTexto;
class PainelLista;
class QCheckBox;
class QGridLayout;
class QLabel;
class QPushButton;
class Telas;

/// The search panel: seven criteria, which become the list's next query.
class PainelPesquisa : public Painel
{
    Q_OBJECT
public:
    PainelPesquisa(const Banco &banco, Avisos &avisos, Telas &telas, PainelLista &lista,
                   QWidget *parent = nullptr);

    /// Opens the panel, with the choice lists read anew; what was typed in them stays. Throws ErroBanco.
    void imgPesRcta_Click();

    /// Runs the search. Throws ErroBanco, or ErroCriterio for calories that are no number; the list and the
    /// fields then stay as they are.
    void cmdPesquisa_Click();

protected:
    void mouseMoveEvent(QMouseEvent *event) override;
    bool eventFilter(QObject *objeto, QEvent *event) override;

private:
    void CriarCampos();
    void Dispor();
    QLabel *Rotulo(const QString &texto, QWidget *campo);
    void PreencherListas();
    void RecarregarCombo(ComboTexto *combo, const QString &sql);
    Comandos::Pesquisa Criterios() const;

    const Banco &m_banco;
    Avisos &m_avisos;
    Telas &m_telas;
    PainelLista &m_lista;

    QWidget *m_conteudo; ///< of full height, so that nothing moves while the panel rolls open
    CampoTexto *m_txtPesNome;
    ComboTexto *m_cmbPesTipo;
    ComboTexto *m_cmbPesOrigem;
    ComboTexto *m_cmbPesIngrediente;
    CampoTexto *m_txtPesPreparo;
    CampoTexto *m_txtPesCalorias;
    QCheckBox *m_chkPesFoto;
    QPushButton *m_cmdPesquisa;
};
