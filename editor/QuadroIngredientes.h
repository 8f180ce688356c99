#pragma once

#include <QGroupBox>

#include <QStringList>
#include <memory>

class ArvoreIngredientes;
class Avisos;
class CampoTexto;
class FonteDeItens;
class ComboCompletavel;
class QPushButton;
class QTreeWidgetItem;

/**
 * The frame `fraIngredientes`: the entry fields of an ingredient line and the tree of the lines.
 *
 * While a line is being changed `cmdLimparDados` is visible, otherwise hidden.
 */
class QuadroIngredientes : public QGroupBox
{
    Q_OBJECT
public:
    /// Characters of `txtQtde`; quantities are short texts ("1/2", "2 a 3").
    static constexpr int kLimiteQtde = 20;

    QuadroIngredientes(Avisos &avisos, bool &blnApagandoCombo, QWidget *parent = nullptr);

    void DefinirValores(std::shared_ptr<FonteDeItens> ingredientes, std::shared_ptr<FonteDeItens> unidades);
    /// Replaces all lines and forgets the line being changed.
    void DefinirLinhas(const QStringList &tags);
    QStringList Linhas() const;
    /// The tags of the lines as they would be if what stands in the entry fields were saved too.
    QStringList LinhasComADigitada() const;
    /// Clears the three entry fields, hides cmdLimparDados and forgets the line being changed.
    void EsquecerLinhaEmEdicao();
    void FocarIngrediente();
    /// Shows line `i` (from 0) for mending, as a click on it does; what is half typed in the entry fields
    /// stays there, and then the line is only selected.
    void Apontar(qsizetype i);

private:
    void Salvar();
    void Abandonar();
    void Escolher(QTreeWidgetItem *no);
    void Remover(QTreeWidgetItem *no);

    Avisos &m_avisos;
    CampoTexto *m_txtQtde;
    ComboCompletavel *m_cmbMedida;
    ComboCompletavel *m_cmbIngrediente;
    QPushButton *m_cmdSalvarIngredientes;
    QPushButton *m_cmdLimparDados;
    ArvoreIngredientes *m_arvore;
    QTreeWidgetItem *m_linhaEmEdicao = nullptr;
};
