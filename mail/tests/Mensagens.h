#pragma once

#include "store/ReceitaNaTela.h"

#include <QByteArray>
#include <QList>

#include <optional>

/// One stored message: tests/data/<nome>.eml is what the program writes for these values, to the byte.
struct MensagemGuardada {
    const char *nome;
    ReceitaNaTela receita;
    std::optional<QByteArray> figura;
};

/// The made-up picture of the stored messages: every byte value, not a whole number of base64 lines.
inline QByteArray FiguraDeExemplo()
{
    QByteArray bytes;
    for (int i = 0; i < 300; ++i)
        bytes.append(static_cast<char>(i * 7));
    return bytes;
}

inline QString Tag(const QString &quantidade, const QString &unidade, const QString &ingrediente)
{
    return quantidade + QChar(160) + unidade + QChar(160) + ingrediente;
}

inline QList<MensagemGuardada> MensagensGuardadas()
{
    ReceitaNaTela pao;
    pao.txtNome = "  Pão d'água <da> casa = fácil & rápida ";
    pao.txtOrigem = " Família Araújo ";
    pao.cmbTipo = "Pães ";
    pao.txtPreparo = " 2 horas";
    pao.txtPorcoes = "8 ";
    pao.txtCalorias = " 215,5";
    pao.optPorcao = true;
    pao.txtModo = "Misture tudo.\r\nDeixe crescer.\r\n\r\nAsse por 40 minutos. ";
    pao.txtObs = "Sirva quente.\r\nRende \u201Cmuito\u201D \u2026 \u20AC 5, \u2603 e \U0001F35E.";
    pao.ingredientes = {Tag("1/2", "kg", "farinha"), Tag("", "", "sal"), Tag("2", "", "ovos"),
                            Tag("", "colher", "açúcar")};
    pao.txtNroReceita = "42";
    pao.txtTipoRect = "2";
    pao.figuraMostrada = true;
    pao.imgFigura = "OLD";

    ReceitaNaTela porReceita = pao;
    porReceita.optPorcao = false;
    porReceita.optReceita = true;
    porReceita.figuraMostrada = false;

    ReceitaNaTela semBase = porReceita;
    semBase.optReceita = false;
    semBase.txtObs = "   ";

    ReceitaNaTela semFatos;
    semFatos.txtNome = "Água";
    semFatos.imgFigura = "NADA";
    semFatos.figuraMostrada = true;

    return {
        {"com_figura_por_porcao", pao, FiguraDeExemplo()},
        {"sem_figura_por_receita", porReceita, std::nullopt},
        {"sem_figura_sem_base_das_calorias", semBase, std::nullopt},
        {"sem_fatos", semFatos, std::nullopt},
        {"figura_que_falta", pao, QByteArray()},
        // 57 bytes fill one base64 line exactly: no line break of its own follows.
        {"figura_de_uma_linha", semBase, FiguraDeExemplo().left(57)},
    };
}
