#pragma once

#include "app/HistoricoTelas.h"
#include "base/Telas.h"

#include <functional>

class Painel;
class QLabel;
class QWidget;

/// The panels that the view switch drives.
struct PaineisDasTelas {
    Painel *picLstReceitas = nullptr;
    Painel *picDetReceita = nullptr;
    Painel *picPesReceita = nullptr;
    std::function<void()> esconderNovidades; ///< hides picWeb and the browser in it
};

/// The three stackable working views, their title bar and the history behind "Voltar".
class TelasDaJanela : public Telas
{
public:
    /// Heights in twips of the list and the editor, alone and while the search is open beside them.
    static constexpr int kAlturaInteira = 6540;
    static constexpr int kAlturaComPesquisa = 3780;

    TelasDaJanela(QWidget *picTitulo, QLabel *lblTitulo, std::function<void()> restaurarBotoes);
    /// The panels are made after the switch, which they get handed in; to be called once, before any view
    /// opens.
    void DefinirPaineis(const PaineisDasTelas &paineis) { m_paineis = paineis; }

    void AbrirTela(const QString &request) override;
    void FecharTela() override;
    void FecharDetalhe() override;
    QString TelaAtual() const override;
    void RestaurarBotoes() override { m_restaurarBotoes(); }
    int AlturaDeTrabalho() const override;

    /// Hides the three views and the title bar and forgets the history (after a restore).
    void EsconderTudo();

private:
    void EmpilharTela(const QString &title, const QString &key);
    Painel *PainelDe(const QString &key) const;
    void AjustarAlturas(int twips);
    void Esconder(Painel &painel);
    void MostrarTopo();

    QWidget *m_picTitulo;
    QLabel *m_lblTitulo;
    PaineisDasTelas m_paineis;
    std::function<void()> m_restaurarBotoes;
    HistoricoTelas m_historico;
};
