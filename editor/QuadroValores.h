#pragma once

#include <QGroupBox>

class CampoTexto;
class QButtonGroup;
class QRadioButton;
struct ReceitaNaTela;

/// The frame `fraValores`: servings, preparation time, calories and what the calories count.
class QuadroValores : public QGroupBox
{
    Q_OBJECT
public:
    /// Characters that can be typed: numbers of nine digits, a time in a few words ("1 hora e 30 minutos").
    static constexpr int kLimitePorcoes = 9;
    static constexpr int kLimiteCalorias = 9;
    static constexpr int kLimitePreparo = 50;

    explicit QuadroValores(QWidget *parent = nullptr);

    void Definir(const ReceitaNaTela &tela);
    void Ler(ReceitaNaTela &tela) const;
    void FocarPorcoes();
    void FocarCalorias();

private:
    CampoTexto *m_txtPorcoes;
    CampoTexto *m_txtPreparo;
    CampoTexto *m_txtCalorias;
    QRadioButton *m_optReceita;
    QRadioButton *m_optPorcao;
    QButtonGroup *m_base;
};
