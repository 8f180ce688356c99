#pragma once

#include "print/ImpressoraAtual.h"

#include <QDialog>

class Impressoras;
class QComboBox;
class QLineEdit;
class QRadioButton;
class QScrollBar;

/**
 * The print options dialog: printer, orientation, quality, colour and copies.
 *
 * It shows the current printer's settings and, when the user confirms, writes the chosen ones back. A step
 * that fails is skipped without a word and the next one runs.
 */
class frmImpressao : public QDialog
{
    Q_OBJECT

public:
    /// @param impressoras the installed printers
    /// @param atual       the program's current printer; untouched when the user cancels
    frmImpressao(const Impressoras &impressoras, ImpressoraAtual &atual, QWidget *parent = nullptr);

    /// List position of the chosen printer; -1: cancelled, or no printer selected.
    qint16 Indice() const { return m_indice; }

protected:
    bool eventFilter(QObject *observado, QEvent *evento) override;

private:
    void Montar();
    void Carregar();
    void Imprimir();
    /// The spin bar's value changed, or an arrow was pressed at the bar's end: `passo` is +1 for the upper
    /// arrow.
    void MudarCopias(int passo);
    void AcertarBarra();
    int NumeroDeCopias() const;
    QRadioButton *NovaOpcao(const QString &nome, const QString &texto, const QString &dica);

    const Impressoras &m_impressoras;
    ImpressoraAtual &m_atual;
    qint16 m_indice = -1;
    int m_valorDaBarra = 1;

    QComboBox *cmbImpressora = nullptr;
    QRadioButton *optRetrato = nullptr;
    QRadioButton *optPaisagem = nullptr;
    QRadioButton *optRascunho = nullptr;
    QRadioButton *optBaixa = nullptr;
    QRadioButton *optNormal = nullptr;
    QRadioButton *optOtima = nullptr;
    QRadioButton *optPretoBranco = nullptr;
    QRadioButton *optColorido = nullptr;
    QLineEdit *txtCopies = nullptr;
    QScrollBar *VScrllCopia = nullptr;
};
